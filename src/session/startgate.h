// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <mutex>

/// Holds an import back until its receivers are connected. It begins some milliseconds after it was
/// opened, which on a busy machine may be before that, and what it signals then nobody hears.
/// Before anything else its thread writes a debug line; the receiver of those waits here.
///
/// Held by the main thread from before open() until the connections are made. Recursive, since
/// open() writes a debug line too.
inline std::recursive_mutex& startGate()
{
    static std::recursive_mutex gate;
    return gate;
}
