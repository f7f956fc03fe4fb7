// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspavbased/vspavbasedglobal.h"

namespace AVBased {

/// @addtogroup control
/// @{

/// Receives one message of the engine or of a library below it, a line without a
/// line break. UTF-8, but for names of files that are not. Called on the thread that the message
/// comes from, one call at a time.
typedef void (*LogReceiver)(const char* message, void* context);

/// Directs the engine's messages to `receiver`, which gets `context` with each; with null, as at
/// the start, they are dropped. When setLogReceiver() returns, the former receiver is not running
/// and is never called again. A receiver must not call it.
VSPAVBASED_EXPORT void setLogReceiver(LogReceiver receiver, void* context);

/// @}

} // namespace AVBased
