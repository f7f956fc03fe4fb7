// SPDX-License-Identifier: LGPL-2.1-or-later
#include "process/enginepool.h"

#include "enginelink/log.h"
#include "enginelink/supervision.h"
#include "ofprocess.h"
#include "policy.h"
#include "process/protections.h"

#include <algorithm>
#include <exception>

namespace engine {

namespace {

/// For the end of a process whose socket has closed; what else closes it is not an end.
constexpr std::chrono::milliseconds timeToEnd{100};
constexpr std::chrono::milliseconds noTime{0};

/// Jobs that wait for a process: when one takes long, the others still have some to do.
constexpr std::size_t plannedForEach = 8;

/// For a process to begin, on a machine that has a lot to do.
constexpr std::chrono::milliseconds timeToBegin{10000};

} // namespace

EnginePool& EnginePool::instance()
{
    policy(); // before the pool, which it is to outlive
    static OfProcess<EnginePool> pool;
    return pool.get();
}

EnginePool::EnginePool()
    : m_engine(policy().program)
    , m_tables(policy().tablesProgram)
    , m_lastUse(wire::Clock::now())
{}

void EnginePool::end()
{
    std::vector<std::thread> threads;
    {
        const Lock lock(m_mutex);
        m_isEnding = true;
        m_queue.clear();
        killBusy();
        threads.swap(m_threads);
    }
    m_changed.notify_all();
    m_timer.notify_all();
    for (std::thread& thread : threads)
        thread.join();
    const Lock lock(m_mutex);
    m_idle = std::vector<ProcessPtr>();
    m_costly.clear();
    m_engine.takeLink();
    m_tables.takeLink();
    m_hasEnded = true;
    m_changed.notify_all();
}

bool EnginePool::start()
{
    const Lock lock(m_mutex);
    return start(m_engine);
}

bool EnginePool::start(EngineProgram& program)
{
    if (program.link() || m_isEnding)
        return !m_isEnding;
    m_lastUse = wire::Clock::now();
    m_hasTimer = m_hasTimer || startThread(&EnginePool::endWhenIdle);
    m_timer.notify_all();
    return program.start();
}

/// Without memory for one, what it would do is not done: nothing that was asked for.
bool EnginePool::startThread(void (EnginePool::*work)())
{
    try {
        m_threads.emplace_back(work, this);
        return true;
    } catch (const std::exception& error) {
        log(std::string("a thread cannot be started: ") + error.what());
        return false;
    }
}

std::size_t EnginePool::mostAhead() const
{
    const unsigned processes = policy().processes;
    return policy().readsAhead && processes > 1 ? plannedForEach * processes : 0;
}

bool EnginePool::run(const JobPtr& job)
{
    Lock lock(m_mutex);
    for (;;) {
        // In a process that ends, what the caller would do next with other libraries comes too
        // late.
        m_changed.wait(lock, [this] { return m_isEnding == m_hasEnded; });
        if (job->m_state == Job::State::answered)
            return true;
        const bool isRefused = m_isStopped || m_isEnding || m_costly.count(job->item().path) > 0;
        if (job->m_state == Job::State::failed ||
            (isRefused && job->m_state != Job::State::running))
            return false;
        if (job->m_state != Job::State::running) {
            if (ProcessPtr process = takeProcess(*job)) {
                m_queue.erase(std::remove(m_queue.begin(), m_queue.end(), job), m_queue.end());
                execute(lock, job, std::move(process));
                continue;
            }
            if (!m_engine.link()) {
                logFailure(job->item().path + ": " + m_engine.failure());
                return false;
            }
        }
        const bool awaitsProcess = job->m_state != Job::State::running;
        m_askers += awaitsProcess;
        m_changed.wait(lock);
        m_askers -= awaitsProcess;
    }
}

void EnginePool::runAhead(const JobPtr& job)
{
    const Lock lock(m_mutex);
    if (m_isStopped || m_isEnding || job->m_state != Job::State::fresh)
        return;
    job->m_state = Job::State::queued;
    m_queue.push_back(job);
    if (m_workers < policy().processes && startThread(&EnginePool::workAhead))
        ++m_workers;
    m_changed.notify_all();
}

void EnginePool::drop(const JobPtr& job)
{
    const Lock lock(m_mutex);
    m_queue.erase(std::remove(m_queue.begin(), m_queue.end(), job), m_queue.end());
    if (job->m_state == Job::State::queued)
        job->m_state = Job::State::failed;
}

void EnginePool::letGo(const std::string& item)
{
    const Lock lock(m_mutex);
    for (const ProcessPtr& process : m_idle) {
        if (process->lastItem() == item)
            process->letGo();
    }
}

void EnginePool::workAhead()
{
    Lock lock(m_mutex);
    while (!m_isEnding) {
        if (!m_queue.empty() && m_askers == 0) {
            if (ProcessPtr process = takeProcess(*m_queue.front())) {
                const JobPtr job = m_queue.front();
                m_queue.pop_front();
                execute(lock, job, std::move(process));
                continue;
            }
        }
        m_changed.wait(lock);
    }
}

/// A process that suits the job and that nobody uses, or a new one if there may be more. Null when
/// all are at work, or none can be started.
EnginePool::ProcessPtr EnginePool::takeProcess(const Job& job)
{
    ProcessPtr process = takeIdle(job);
    if (!process && m_busy.size() < policy().processes) {
        // The engine can do all, but begins later.
        if (!job.needsDecoding() && !m_engine.isProven())
            process = startProcess(m_tables);
        if (!process)
            process = startProcess(m_engine);
    }
    if (process)
        m_busy.emplace(process->number(), process->supervisor());
    return process;
}

/// Preferably one that has the item open.
EnginePool::ProcessPtr EnginePool::takeIdle(const Job& job)
{
    const auto suits = [&](const ProcessPtr& process) {
        return &process->program() == &m_engine || !job.needsDecoding();
    };
    const auto hasOpen = [&](const ProcessPtr& process) {
        return suits(process) && process->lastItem() == job.item().path;
    };
    for (;;) {
        auto chosen = std::find_if(m_idle.rbegin(), m_idle.rend(), hasOpen);
        if (chosen == m_idle.rend())
            chosen = std::find_if(m_idle.rbegin(), m_idle.rend(), suits);
        if (chosen == m_idle.rend())
            return nullptr;
        ProcessPtr process = std::move(*chosen);
        m_idle.erase(std::next(chosen).base());
        if (!process->hasEnded())
            return process;
        process->supervisor()->endEngine(process->number(), noTime);
    }
}

EnginePool::ProcessPtr EnginePool::startProcess(EngineProgram& program)
{
    if (!start(program))
        return nullptr;
    const std::uint32_t number = ++m_lastNumber;
    wire::Descriptor socket = program.startProcess(number);
    return socket ? std::make_unique<EngineProcess>(program, number, std::move(socket)) : nullptr;
}

/// Runs the job with the lock released.
void EnginePool::execute(Lock& lock, const JobPtr& job, ProcessPtr process)
{
    if (m_costly.count(job->item().path) > 0) {
        job->m_state = Job::State::failed;
        putBack(std::move(process));
        m_changed.notify_all();
        return;
    }
    job->m_state = Job::State::running;
    lock.unlock();
    std::string failure;
    bool isAnswered = false;
    try {
        isAnswered = process->run(*job, failure);
    } catch (const std::exception& error) {
        failure = std::string("could not be asked: ") + error.what();
    }
    lock.lock();
    m_lastUse = wire::Clock::now();
    noteAnswer(*process);
    if (isAnswered) {
        putBack(std::move(process));
    } else {
        endProcess(lock, *job, std::move(process), failure);
    }
    job->m_state = isAnswered ? Job::State::answered : Job::State::failed;
    m_changed.notify_all();
}

void EnginePool::putBack(ProcessPtr process)
{
    m_busy.erase(process->number());
    if (!m_isEnding)
        m_idle.push_back(std::move(process));
}

/// Ends what has ended by itself, or has to.
void EnginePool::endProcess(Lock& lock, const Job& job, ProcessPtr process,
                            const std::string& failure)
{
    const std::uint32_t number = process->number();
    EngineProgram& program = process->program();
    const std::shared_ptr<SupervisorLink> supervisor = process->supervisor();
    const bool wasStopped = m_isStopped || m_isEnding;
    if (!wasStopped)
        m_costly.insert(job.item().path);
    lock.unlock();
    process.reset();
    const std::string end = supervisor->endEngine(number, failure.empty() ? timeToEnd : noTime);
    lock.lock();
    m_busy.erase(number);
    program.dropWhenUseless();
    if (wasStopped)
        return;
    std::string message = program.failure();
    if (message.empty()) {
        const std::string ended = end.empty() ? "closed its socket" : end;
        message = "the engine process " + (failure.empty() ? ended : failure);
    } else {
        m_costly.erase(job.item().path); // no fault of its own
    }
    lock.unlock();
    logFailure(job.item().path + ": " + message);
    lock.lock();
}

void EnginePool::killBusy()
{
    for (const auto& [number, supervisor] : m_busy)
        supervisor->kill(number);
}

void EnginePool::stop()
{
    const Lock lock(m_mutex);
    m_isStopped = true;
    m_queue.clear();
    killBusy();
    m_changed.notify_all();
}

void EnginePool::beginImport()
{
    const Lock lock(m_mutex);
    m_isStopped = false;
    m_costly.clear();
    m_queue.clear();
}

std::string EnginePool::failure() const
{
    const Lock lock(m_mutex);
    return m_engine.failure().empty() ? m_tables.failure() : m_engine.failure();
}

std::uint32_t EnginePool::protections()
{
    Lock lock(m_mutex);
    ProcessPtr process = m_protections == 0 ? startProcess(m_engine) : nullptr;
    if (!process)
        return m_protections;
    lock.unlock();
    const bool hasBegun = process->awaitBegin(wire::Clock::now() + timeToBegin);
    lock.lock();
    noteAnswer(*process);
    if (hasBegun)
        m_idle.push_back(std::move(process));
    else
        m_engine.dropWhenUseless();
    m_changed.notify_all();
    return m_protections;
}

/// What the kernel refuses is said once.
void EnginePool::noteAnswer(const EngineProcess& process)
{
    if (process.protections() == 0)
        return;
    process.program().prove();
    if (m_protections == 0 && process.protections() != wire::allProtections)
        log("the engine's processes have " + protectionsInWords(process.protections()));
    m_protections = process.protections();
}

/// After a while without work all processes are ended, the programs too.
void EnginePool::endWhenIdle()
{
    Lock lock(m_mutex);
    while (!m_isEnding) {
        const auto end = m_lastUse + policy().idle;
        if (!m_engine.link() && !m_tables.link()) {
            m_timer.wait(lock);
        } else if (!m_busy.empty() || wire::Clock::now() < end) {
            m_timer.wait_until(lock, m_busy.empty() ? end : wire::Clock::now() + policy().idle);
        } else {
            m_idle.clear();
            auto engine = m_engine.takeLink();
            auto tables = m_tables.takeLink();
            lock.unlock(); // nobody else has to wait for the end of the programs
            engine.reset();
            tables.reset();
            lock.lock();
        }
    }
}

} // namespace engine
