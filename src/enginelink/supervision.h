// SPDX-License-Identifier: LGPL-2.1-or-later
//
// What the near half and the supervisor of the engine processes say to each other: records of this
// size through a socket that keeps them apart.
#pragma once

#include <cstdint>

namespace wire {

/// Where the supervisor finds its socket when it starts.
constexpr int supervisorSocket = 3;

/// To the supervisor.
struct Order
{
    enum Kind : std::uint32_t
    {
        Start, ///< an engine process, whose socket comes along
        Kill
    };

    Kind kind;
    std::uint32_t engine; ///< the near half's number for it
};

/// From the supervisor.
struct Notice
{
    std::uint32_t engine;
    std::int32_t status; ///< how it ended, as waitpid() tells
};

/// Exit status of an engine process that ran out of memory.
constexpr int EndedForMemory = 3;

/// What a process has given up before it sees a source; bits of Confined.
enum Protection : std::uint32_t
{
    NoNewPrivileges = 1,
    SystemCalls = 2, ///< all but those that decoding needs
    FileSystem = 4,  ///< by the kernel's rules for paths, beside the system calls
    MemoryLimit = 8,
    DescriptorLimit = 16,
    NoCoreDumps = 32,
    Untraceable = 64 ///< by other processes of the same user
};

constexpr std::uint32_t allProtections = 127;

} // namespace wire
