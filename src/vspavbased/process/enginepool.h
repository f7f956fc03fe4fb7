// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "process/engineprocess.h"
#include "process/engineprogram.h"

#include <condition_variable>
#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace engine {

template <typename T>
class OfProcess;

/// The engine's processes, and the jobs that they do, one at a time each.
///
/// A job that is asked for is run on the asking thread. Jobs ahead of being asked for are run on
/// threads of the pool's, when no asked one waits for a process. A process that ends, that does not
/// answer or answers nonsense is replaced, and costs the job that it was at: its item is not asked
/// about again until the next import. Callable from any thread.
class EnginePool
{
public:
    static EnginePool& instance();

    /// Starts the engine's program, which the first job would do as well. False, with the reason in
    /// failure(), when it cannot be started.
    bool start();

    /// Runs the job, or waits for it when it is under way. Whether there is an answer.
    bool run(const JobPtr& job);

    /// Has the job run when a process is free.
    void runAhead(const JobPtr& job);

    /// Has it not run, unless it is running already.
    void drop(const JobPtr& job);

    /// Has processes that wait close what they have open of the item.
    void letGo(const std::string& item);

    /// How many jobs may be planned ahead of being asked for, of which as many are under way as
    /// there are processes; 0 with a single process.
    std::size_t mostAhead() const;

    /// Ends what is under way, and refuses what comes until beginImport().
    void stop();
    void beginImport();

    /// Why the engine's program cannot be used; empty when nothing is known against it.
    std::string failure() const;
    /// What the processes have given up, as a sum of wire::Protection. Starts one if none has told
    /// yet; 0 when it cannot be started.
    std::uint32_t protections();

    /// Ends all processes and threads, for good. Who waits for an answer gets none.
    void end();

    EnginePool(const EnginePool&) = delete;
    EnginePool& operator=(const EnginePool&) = delete;

private:
    using Lock = std::unique_lock<std::mutex>;
    using ProcessPtr = std::unique_ptr<EngineProcess>;

    friend class OfProcess<EnginePool>;

    EnginePool();

    bool start(EngineProgram& program);
    bool startThread(void (EnginePool::*work)());
    ProcessPtr takeProcess(const Job& job);
    ProcessPtr takeIdle(const Job& job);
    ProcessPtr startProcess(EngineProgram& program);
    void execute(Lock& lock, const JobPtr& job, ProcessPtr process);
    std::string endProcess(Lock& lock, ProcessPtr process, const std::string& failure);
    bool fail(Lock& lock, Job& job);
    void workAhead();
    void endWhenIdle();
    void noteAnswer(Lock& lock, const EngineProcess& process);
    void killBusy();
    void putBack(ProcessPtr process);

    mutable std::mutex m_mutex;
    std::condition_variable m_changed; ///< a process is free, a job is done, or there is a job
    std::condition_variable m_timer;   ///< a program has been started, or all is to end
    EngineProgram m_engine;
    EngineProgram m_tables; ///< starts faster, and only describes DVDs
    std::vector<ProcessPtr> m_idle;
    /// Processes at work, by their numbers.
    std::map<std::uint32_t, std::shared_ptr<SupervisorLink>> m_busy;
    std::uint32_t m_lastNumber = 0;
    std::list<JobPtr> m_queue; ///< ahead
    int m_askers = 0;          ///< threads that wait for a process, not for its answer
    struct Cost
    {
        AVBased::Refusal refusal;
        std::string message; ///< until it is in the log
    };
    std::map<std::string, Cost> m_costly; ///< items that have cost a process in this import
    unsigned m_import = 0;                ///< changes with each, and with a stop
    std::uint32_t m_protections = 0;
    bool m_isStopped = false;
    bool m_isEnding = false;
    bool m_hasEnded = false;
    wire::Clock::time_point m_lastUse;
    std::vector<std::thread> m_threads;
    unsigned m_workers = 0;  ///< among them
    bool m_hasTimer = false; ///< also among them
};

} // namespace engine
