// SPDX-License-Identifier: LGPL-2.1-or-later
#include "enginelink/log.h"

#include "enginelink/ascii.h"
#include "vspavbased/enginelog.h"

#include <atomic>
#include <cstdio>
#include <mutex>

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

} // namespace engine

void AVBased::setLogReceiver(LogReceiver receiver, void* context)
{
    engine::Target& log = engine::target();
    std::lock_guard<std::mutex> lock(log.mutex);
    log.receiver = receiver;
    log.context = context;
}
