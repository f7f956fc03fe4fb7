// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "enginelink/channel.h"

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace engine {

/// The engine's program, running: it starts engine processes and tells how they end. Destroying
/// this ends it and all of them. Callable from any thread.
class SupervisorLink
{
public:
    /// Starts the program. Null, with the reason in `error`, when it cannot be started.
    static std::unique_ptr<SupervisorLink> start(const std::string& program, std::string& error);

    ~SupervisorLink();

    /// The socket of a new engine process, which is called `engine`. None when the program is gone.
    wire::Descriptor startEngine(std::uint32_t engine);
    void kill(std::uint32_t engine);

    /// Waits as long as that for the process to end by itself, and then kills it. How it has ended,
    /// in words: "ended by signal 11 (Segmentation fault)"; empty when it had to be killed.
    std::string endEngine(std::uint32_t engine, std::chrono::milliseconds patience);

    /// How the program has ended, in words; empty while it runs. Afterwards it is of no use.
    std::string end();

    SupervisorLink(const SupervisorLink&) = delete;
    SupervisorLink& operator=(const SupervisorLink&) = delete;

private:
    SupervisorLink(wire::Descriptor socket, pid_t process);

    std::optional<int> awaitEnd(std::uint32_t engine, std::chrono::milliseconds patience);
    bool order(std::uint32_t kind, std::uint32_t engine, int descriptor);

    std::mutex m_mutex;
    wire::Descriptor m_socket;
    wire::Descriptor m_signals; ///< where the process may be sent one, even when it was waited for
    bool m_hasEngines = false;
    pid_t m_process;                     ///< -1 once it has been waited for
    std::map<std::uint32_t, int> m_ends; ///< heard of and not asked for yet
};

} // namespace engine
