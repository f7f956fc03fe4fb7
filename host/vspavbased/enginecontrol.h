// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspavbased/enginelog.h"

namespace AVBased {

/// @addtogroup control
/// What an engine that works in processes of its own offers a host beside the interfaces. Callable
/// from any thread.
/// @{

/// How many processes the engine may have at work at once: 1 to 4, by default as many as there are
/// processors. With one alone nothing is done ahead of being asked for. To be called before the
/// first item.
VSPAVBASED_EXPORT void setEngineProcesses(unsigned count);

/// Starts the engine, which otherwise starts with the first item. False when it cannot be started:
/// engineFailure() says why, and every item will fail.
VSPAVBASED_EXPORT bool startEngine();

/// Why the engine cannot be used, in one line; empty when nothing is known against it. Valid until
/// the next call on the same thread.
VSPAVBASED_EXPORT const char* engineFailure();

/// Ends what the engine is doing, at once, and refuses what it is asked until the next
/// IAVManager::beginImport(). The import that goes on finds that items cannot be opened.
VSPAVBASED_EXPORT void stopEngine();

/// How the engine's processes are confined before they see a source: protections by name, separated
/// by commas, and those that the system refuses behind "; refused by this system: ". Starts the
/// engine if need be, and may take as long as that; empty when it cannot be started. Valid until
/// the next call on the same thread.
VSPAVBASED_EXPORT const char* engineProtections();

/// Directs to `receiver` what has cost an item or its pictures: a line that names the item, and how
/// its process ended or which limit it passed, or why there is none. setLogReceiver()'s receiver
/// has these lines among its own, and its rules hold.
VSPAVBASED_EXPORT void setFailureReceiver(LogReceiver receiver, void* context);

/// @}

} // namespace AVBased
