// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "enginelink/channel.h"
#include "process/canvas.h"
#include "process/job.h"

#include <cstdint>
#include <memory>
#include <string>

namespace engine {

class EngineProgram;
class ItemFiles;
class SupervisorLink;

/// An engine process as this side sees it. Nothing that it says is believed: what is no sensible
/// answer to what was asked counts as its end. Used on one thread at a time.
class EngineProcess
{
public:
    /// `program`, to which it belongs, outlives it.
    EngineProcess(EngineProgram& program, std::uint32_t number, wire::Descriptor socket);
    ~EngineProcess();

    enum class Outcome
    {
        answered,
        failed, ///< the process has ended, or is to be ended
        late,   ///< the same, since it gave no answer in time
        unasked ///< the same, for what it was at before: the job can be run by another
    };

    /// Runs a job: asks, opens files for the process while it works, and takes its answer.
    /// `failure` says why there is none; it is empty when the process has closed its socket, of
    /// which the supervisor knows more.
    Outcome run(Job& job, std::string& failure);

    /// Waits until it has told what it has given up, which is the first thing that it says.
    bool awaitBegin(wire::Clock::time_point deadline);

    /// Has it close what it has open of the last item. Answers nothing, and does not wait.
    void letGo();

    /// Whether it has said nothing, and not closed its socket, while nothing was asked.
    bool isQuiet() const;

    EngineProgram& program() const { return m_program; }
    /// Who has started it, and knows how it ends.
    const std::shared_ptr<SupervisorLink>& supervisor() const { return m_supervisor; }
    std::uint32_t number() const { return m_number; }
    /// The item of the last job, which it may have open still.
    const std::string& lastItem() const { return m_lastItem; }
    /// What it has given up; 0 until it has answered something.
    std::uint32_t protections() const { return m_protections; }

private:
    using Result = wire::Channel::Result;

    Result ask(Job& job, const ItemFiles& files, wire::Clock::time_point deadline);
    Result awaitAnswer(Job& job, const ItemFiles& files, wire::Clock::time_point deadline,
                       bool& isOfAnother);
    Result prepareCanvas(std::size_t size, wire::Clock::time_point deadline);
    Result serve(const ItemFiles& files, wire::Clock::time_point deadline, bool& isServed);

    EngineProgram& m_program;
    std::shared_ptr<SupervisorLink> m_supervisor;
    std::uint32_t m_number;
    int m_socket; ///< m_channel's
    wire::Channel m_channel;
    wire::Letter m_letter;
    std::unique_ptr<SharedCanvas> m_canvas;
    std::string m_lastItem;
    std::uint32_t m_protections = 0;
    std::uint32_t m_request = 0; ///< number of the one at hand
    int m_logLines = 0;          ///< of this job
};

} // namespace engine
