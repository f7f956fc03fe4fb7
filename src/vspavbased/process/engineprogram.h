// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "process/supervisorlink.h"

#include <memory>
#include <string>

namespace engine {

/// One of the engine's programs, which is started when a process of it is wanted. Guarded by the
/// pool's lock.
class EngineProgram
{
public:
    /// `path` lives longer.
    explicit EngineProgram(const std::string& path)
        : m_path(path)
    {}

    /// Starts it unless it runs. False, with the reason in failure(), when it cannot be started.
    bool start();

    /// The socket of a new process, which is called `number`. None when there is no program.
    wire::Descriptor startProcess(std::uint32_t number);

    /// Null while it does not run. Others may hold it longer than the program does.
    const std::shared_ptr<SupervisorLink>& link() const { return m_link; }
    std::shared_ptr<SupervisorLink> takeLink() { return std::move(m_link); }

    /// A process of it has answered.
    void prove();
    bool isProven() const { return m_link && m_isProven; }

    /// Lets go of a program that has ended before it was of any use: it cannot be used.
    void dropWhenUseless();

    /// Why it cannot be used; empty when nothing is known against it.
    const std::string& failure() const { return m_failure; }

private:
    const std::string& m_path;
    std::shared_ptr<SupervisorLink> m_link;
    bool m_isProven = false;
    std::string m_failure;
};

} // namespace engine
