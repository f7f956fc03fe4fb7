// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <cstdarg>
#include <string>

namespace engine {

/// Hands a message to the receiver that AVBased::setLogReceiver() named; dropped without one. Line
/// breaks and other control characters become blanks. Callable from any thread.
void log(const std::string& message);

/// The same for what has cost an item, or its pictures, through no fault that it was found to have:
/// the receiver that AVBased::setFailureReceiver() named hears of it too.
void logFailure(const std::string& message);

/// As log(), for the callbacks of libraries, which print like printf(). `origin` names the library.
void logFormatted(const char* origin, const char* format, va_list arguments);

/// Whether anybody listens, so that costly messages need not be made.
bool logIsOpen();

} // namespace engine
