// SPDX-License-Identifier: LGPL-2.1-or-later
#include "enginelink/log.h"

#include "enginelink/ascii.h"
#include "vspavbased/enginecontrol.h"
#include "vspavbased/enginelog.h"

#include <atomic>
#include <cstdio>
#include <mutex>
#include <type_traits>

namespace engine {

namespace {

/// A receiver and the lock under which it is called.
class Target
{
public:
    bool isSet() const { return m_receiver.load() != nullptr; }

    void set(AVBased::LogReceiver receiver, void* context)
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_receiver = receiver;
        m_context = context;
    }

    void send(const std::string& line)
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        if (const AVBased::LogReceiver receiver = m_receiver)
            receiver(line.c_str(), m_context);
    }

private:
    std::mutex m_mutex;
    std::atomic<AVBased::LogReceiver> m_receiver{nullptr};
    void* m_context = nullptr;
};

static_assert(std::is_trivially_destructible_v<Target>, "libraries speak while the process ends");

Target& messages()
{
    static Target target;
    return target;
}

Target& failures()
{
    static Target target;
    return target;
}

std::string asLine(const std::string& message)
{
    std::string line = message;
    while (!line.empty() && isControl(line.back()))
        line.pop_back();
    for (char& c : line) {
        if (isControl(c))
            c = ' ';
    }
    return line;
}

} // namespace

bool logIsOpen()
{
    return messages().isSet();
}

void log(const std::string& message)
{
    if (logIsOpen())
        messages().send(asLine(message));
}

void logFailure(const std::string& message)
{
    log(message);
    failures().send(asLine(message));
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
    engine::messages().set(receiver, context);
}

void AVBased::setFailureReceiver(LogReceiver receiver, void* context)
{
    engine::failures().set(receiver, context);
}
