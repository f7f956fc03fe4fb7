// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "enginelink/descriptor.h"

#include <sys/types.h>

#include <cstdint>
#include <map>

namespace engine {

/// Starts engine processes as copies of itself, which costs a fraction of a new program's start,
/// and tells how they end. Reads nothing that comes from a source. Ends, and all of them with it,
/// when its starter closes the socket or is gone.
class Supervisor
{
public:
    /// `socket` leads to the starter, whose process number is `starter`.
    Supervisor(wire::Descriptor socket, pid_t starter);

    /// In an engine process: its socket. In the supervisor: none, when it is to end.
    wire::Descriptor run();

private:
    bool waitForWork();
    wire::Descriptor takeOrder();
    wire::Descriptor start(std::uint32_t engine, wire::Descriptor socket);
    void reportEnded();
    void endAll();

    wire::Descriptor m_socket;
    wire::Descriptor m_starter; ///< readable when it is gone
    wire::Descriptor m_ended;   ///< readable when an engine process has ended
    std::map<std::uint32_t, pid_t> m_engines;
    bool m_isDone = false;
};

} // namespace engine
