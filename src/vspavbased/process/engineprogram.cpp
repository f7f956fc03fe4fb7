// SPDX-License-Identifier: LGPL-2.1-or-later
#include "process/engineprogram.h"

namespace engine {

namespace {

const char* const cannotStart = "the engine cannot be started: ";

} // namespace

bool EngineProgram::start()
{
    if (m_link)
        return true;
    std::string reason;
    m_link = SupervisorLink::start(m_path, reason);
    m_isProven = false;
    if (!m_link)
        m_failure = cannotStart + reason;
    return m_link != nullptr;
}

wire::Descriptor EngineProgram::startProcess(std::uint32_t number)
{
    for (int attempt = 0; attempt < 2 && start(); ++attempt) {
        if (wire::Descriptor socket = m_link->startEngine(number))
            return socket;
        // It has ended, or was ended by somebody: another one may live.
        const std::string end = m_link->end();
        m_failure = cannotStart + m_path + " " + (end.empty() ? "takes no orders" : end);
        m_link.reset();
    }
    return {};
}

void EngineProgram::prove()
{
    m_isProven = true;
    m_failure.clear();
}

void EngineProgram::dropWhenUseless()
{
    const std::string end = m_link && !m_isProven ? m_link->end() : std::string();
    if (end.empty())
        return;
    m_failure = cannotStart + m_path + " " + end;
    m_link.reset();
}

} // namespace engine
