// SPDX-License-Identifier: LGPL-2.1-or-later
#include "vsputils/cvesklog.h"

#include "vsputils/cveskexception.h"

#include <cstdio>
#include <mutex>

namespace Vesk {

namespace {

struct Target
{
    std::mutex mutex;
    CVeskLog::Receiver receiver = nullptr;
    void* context = nullptr;
};

/// Never destroyed: records may still come from static destructors.
Target& target()
{
    static Target* const instance = new Target;
    return *instance;
}

void writeToStandardError(const CVeskException& record)
{
    std::fprintf(stderr, "vspimport: error %d: %s (%s:%d)\n", record.code(),
                 record.message().toLocal8Bit().constData(),
                 record.file().toLocal8Bit().constData(), record.line());
}

} // namespace

void CVeskLog::setReceiver(Receiver receiver, void* context)
{
    Target& log = target();
    std::lock_guard<std::mutex> lock(log.mutex);
    log.receiver = receiver;
    log.context = context;
}

void CVeskLog::write(const CVeskException& record)
{
    Target& log = target();
    std::lock_guard<std::mutex> lock(log.mutex);
    if (log.receiver)
        log.receiver(record, log.context);
    else
        writeToStandardError(record);
}

} // namespace Vesk
