// SPDX-License-Identifier: GPL-2.0-or-later
#include "log.h"

#include "libav.h"
#include "text.h"
#include "vspavbased/enginelog.h"

#include <atomic>
#include <cstdio>
#include <mutex>
#include <new>

namespace engine {

namespace {

struct Target
{
    std::mutex mutex;
    std::atomic<AVBased::LogReceiver> receiver{nullptr};
    void* context = nullptr;
};

/// Never destroyed: libraries may still speak while the process ends.
Target& target()
{
    static Target* const instance = new Target;
    return *instance;
}

void receiveFromLibav(void* object, int level, const char* format, va_list arguments)
{
    if (level > AV_LOG_WARNING || !logIsOpen())
        return;
    const AVClass* type = object ? *static_cast<const AVClass* const*>(object) : nullptr;
    try {
        logFormatted(type ? type->item_name(object) : "libav", format, arguments);
    } catch (const std::bad_alloc&) {
        return; // no exception may pass through libav; the line is lost
    }
}

} // namespace

bool logIsOpen()
{
    return target().receiver.load() != nullptr;
}

void log(const std::string& message)
{
    if (!logIsOpen())
        return;
    std::string line = message;
    while (!line.empty() && isControl(line.back()))
        line.pop_back();
    for (char& c : line) {
        if (isControl(c))
            c = ' ';
    }
    std::lock_guard<std::mutex> lock(target().mutex);
    if (const AVBased::LogReceiver receiver = target().receiver)
        receiver(line.c_str(), target().context);
}

void logFormatted(const char* origin, const char* format, va_list arguments)
{
    if (!logIsOpen())
        return;
    char text[1024] = "";
    std::vsnprintf(text, sizeof(text), format, arguments);
    log(std::string(origin) + ": " + text);
}

void joinLibavLog()
{
    static std::once_flag once;
    std::call_once(once, [] { av_log_set_callback(receiveFromLibav); });
}

} // namespace engine

void AVBased::setLogReceiver(LogReceiver receiver, void* context)
{
    engine::Target& log = engine::target();
    std::lock_guard<std::mutex> lock(log.mutex);
    log.receiver = receiver;
    log.context = context;
}
