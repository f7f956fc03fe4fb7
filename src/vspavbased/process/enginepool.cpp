// SPDX-License-Identifier: LGPL-2.1-or-later
#include "process/enginepool.h"

#include "enginelink/log.h"
#include "enginelink/supervision.h"
#include "ofprocess.h"
#include "policy.h"
#include "process/protections.h"

#include <algorithm>
#include <exception>
#include <utility>

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
    } catch (const std::exception&) {
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
        const bool isRefused = m_isStopped || m_isEnding || m_costly.count(job->item().path) > 0;
        switch (job->m_state) {
        case Job::State::answered:
            return true;
        case Job::State::failed:
            return fail(lock, *job);
        case Job::State::running:
            m_changed.wait(lock);
            continue;
        default:
            break;
        }
        if (isRefused)
            return fail(lock, *job);
        if (ProcessPtr process = takeProcess(*job)) {
            m_queue.remove(job);
            execute(lock, job, std::move(process));
        } else if (m_busy.size() < policy().processes) {
            job->m_failure = m_engine.failure();
            job->m_refusal = AVBased::RefusedNoEngine;
            return fail(lock, *job);
        } else {
            ++m_askers;
            m_changed.wait(lock);
            --m_askers;
        }
    }
}

/// Says why there is no answer, once, unless it is because of a stop. False.
bool EnginePool::fail(Lock& lock, Job& job)
{
    const auto costly = m_costly.find(job.item().path);
    const bool isCostly = costly != m_costly.end();
    std::string& failure = isCostly ? costly->second.message : job.m_failure;
    if (isCostly)
        job.m_refusal = costly->second.refusal;
    const std::string message = std::exchange(failure, std::string());
    m_changed.notify_all(); // who works ahead may have waited for this one
    lock.unlock();
    if (!message.empty())
        logFailure(job.item().path + ": " + message);
    return false;
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
    m_queue.remove(job);
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
        if (process->isQuiet())
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
    using Outcome = EngineProcess::Outcome;
    job->m_state = Job::State::running;
    const unsigned import = m_import;
    lock.unlock();
    EngineProgram& program = process->program();
    std::string failure;
    std::string ownFailure;
    Outcome outcome = Outcome::unasked;
    try {
        outcome = process->run(*job, failure);
    } catch (const std::exception& error) { // of this process: no fault of the item
        ownFailure = error.what();
    }
    lock.lock();
    m_lastUse = wire::Clock::now();
    noteAnswer(lock, *process);
    if (outcome == Outcome::answered) {
        job->m_state = Job::State::answered;
        putBack(std::move(process));
    } else {
        const std::string reason = endProcess(lock, std::move(process), failure);
        const bool isRetried = outcome == Outcome::unasked && ownFailure.empty();
        const bool isOfThisImport = import == m_import && !m_isStopped && !m_isEnding;
        job->m_failure = program.failure().empty() ? ownFailure : program.failure();
        if (!job->m_failure.empty())
            job->m_refusal = ownFailure.empty() ? AVBased::RefusedNoEngine : AVBased::RefusedOther;
        // What was never begun is no item's fault.
        else if (!isRetried && isOfThisImport)
            m_costly.emplace(
                job->item().path,
                Cost{outcome == Outcome::late ? AVBased::RefusedTooLong : AVBased::RefusedCrashed,
                     "the engine process " + reason});
        job->m_state = isRetried ? Job::State::fresh : Job::State::failed;
    }
    m_changed.notify_all();
}

void EnginePool::putBack(ProcessPtr process)
{
    m_busy.erase(process->number());
    if (!m_isEnding)
        m_idle.push_back(std::move(process));
}

/// Ends what has ended by itself, or has to. How it has ended, or why it had to.
std::string EnginePool::endProcess(Lock& lock, ProcessPtr process, const std::string& failure)
{
    const std::uint32_t number = process->number();
    EngineProgram& program = process->program();
    const std::shared_ptr<SupervisorLink> supervisor = process->supervisor();
    lock.unlock();
    process.reset();
    const std::string end = supervisor->endEngine(number, failure.empty() ? timeToEnd : noTime);
    lock.lock();
    m_busy.erase(number);
    program.dropWhenUseless();
    if (!failure.empty())
        return failure;
    return end.empty() ? "closed its socket" : end;
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
    ++m_import;
    m_queue.clear();
    killBusy();
    m_changed.notify_all();
}

void EnginePool::beginImport()
{
    const Lock lock(m_mutex);
    m_isStopped = false;
    ++m_import;
    m_costly.clear();
    m_queue.clear();
}

std::string EnginePool::failure() const
{
    const Lock lock(m_mutex);
    return m_engine.failure();
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
    noteAnswer(lock, *process);
    if (hasBegun)
        m_idle.push_back(std::move(process));
    else
        m_engine.dropWhenUseless();
    m_changed.notify_all();
    return m_protections;
}

/// What the kernel refuses is said once.
void EnginePool::noteAnswer(Lock& lock, const EngineProcess& process)
{
    const std::uint32_t protections = process.protections();
    if (protections == 0)
        return;
    process.program().prove();
    const bool isNews = m_protections == 0 && protections != wire::allProtections;
    m_protections = protections;
    if (!isNews)
        return;
    lock.unlock();
    log("the engine's processes have " + protectionsInWords(protections));
    lock.lock();
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
