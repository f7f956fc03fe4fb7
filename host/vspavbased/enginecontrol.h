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

/// Why an item cannot be opened. The greater the number, the more it tells: of several reasons for
/// one path, as of an image that is tried as a Blu-ray disc and then as a DVD, take the greatest.
enum Refusal
{
    RefusedOther = 0,
    RefusedUnknown = 1,     ///< not a media file, or of a kind that is not known
    RefusedNoDisc = 2,      ///< a folder or an image without a disc of the kind that was looked for
    RefusedNoStreams = 3,   ///< neither video nor audio
    RefusedDamaged = 4,     ///< of a known kind, but not as such a file has to be
    RefusedCutOff = 5,      ///< the file ends before what has to be there
    RefusedNoIndex = 6,     ///< an MP4 or QuickTime file whose end, and with it the index, is lost
    RefusedProtected = 7,   ///< encrypted
    RefusedTooLong = 8,     ///< reading it was given up
    RefusedCrashed = 9,     ///< the process that read it has ended
    RefusedEmpty = 10,      ///< a file of no bytes
    RefusedUnreadable = 11, ///< the device reports errors
    RefusedNoFile = 12,     ///< a pipe, a device: neither a file nor a folder
    RefusedGone = 13,       ///< nothing is there
    RefusedDenied = 14,     ///< no permission for the item, or for something that it needs
    RefusedNoEngine = 15    ///< engineFailure() says why
};

/// Receives the reason, a Refusal, why the item at `path` cannot be opened; `path` is what the
/// engine was given. `reason` says it to people: a phrase in lower case without a full stop.
typedef void (*RefusalReceiver)(const char* path, int refusal, const char* reason, void* context);

/// Has `receiver`, which gets `context` too, told of every item that IAVManager::createImporter()
/// or IBDLoader::open() cannot open, on the calling thread, before they return. RefusedProtected is
/// told of each protected media file, even of one that can be opened: whether to let it in is the
/// caller's to decide. Nothing is told of what stopEngine() has ended. The log has the same as a
/// line "PATH: REASON", or one that says more. As for setLogReceiver(), calls come one at a time,
/// and a former receiver is not called any more; null ends it.
VSPAVBASED_EXPORT void setRefusalReceiver(RefusalReceiver receiver, void* context);

/// @}

} // namespace AVBased
