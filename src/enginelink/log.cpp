// SPDX-License-Identifier: LGPL-2.1-or-later
#include "enginelink/log.h"

#include "enginelink/ascii.h"
#include "enginelink/receiver.h"
#include "vspavbased/enginecontrol.h"
#include "vspavbased/enginelog.h"

#include <cstdio>

namespace engine {

namespace {

Receiver<AVBased::LogReceiver>& messages()
{
    static Receiver<AVBased::LogReceiver> receiver;
    return receiver;
}

Receiver<AVBased::LogReceiver>& failures()
{
    static Receiver<AVBased::LogReceiver> receiver;
    return receiver;
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
        messages().tell(asLine(message).c_str());
}

void logFailure(const std::string& message)
{
    log(message);
    failures().tell(asLine(message).c_str());
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
