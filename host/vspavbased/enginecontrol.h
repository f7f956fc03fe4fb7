// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspavbased/vspavbasedglobal.h"

namespace AVBased {

/// What an engine that works in processes of its own offers a host beside the interfaces. Callable
/// from any thread.

/// Starts the engine, which otherwise starts with the first item. False when it cannot be started:
/// engineFailure() says why, and every item will fail.
VSPAVBASED_EXPORT bool startEngine();

/// Why the engine cannot be used, in one line; empty when nothing is known against it. Valid until
/// the next call on the same thread.
VSPAVBASED_EXPORT const char* engineFailure();

/// Ends what the engine is doing, at once, and refuses what it is asked until the next
/// IAVManager::beginImport(). The import that goes on finds that items cannot be opened.
VSPAVBASED_EXPORT void stopEngine();

/// What the engine's processes have given up before they see a source, by name and separated by
/// commas; those that the kernel refuses stand behind "without". Starts the engine if need be.
/// Valid until the next call on the same thread.
VSPAVBASED_EXPORT const char* engineProtections();

} // namespace AVBased
