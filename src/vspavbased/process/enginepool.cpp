// SPDX-License-Identifier: LGPL-2.1-or-later
#include "process/enginepool.h"

#include "enginelink/log.h"
#include "enginelink/supervision.h"
#include "policy.h"
#include "process/protections.h"

#include <algorithm>
#include <exception>

namespace engine {

namespace {

/// For the end of a process whose socket has closed; what else closes it is not an end.
constexpr std::chrono::milliseconds timeToEnd{100};
constexpr std::chrono::milliseconds noTime{0};

/// For a process to begin, on a machine that has a lot to do.
constexpr std::chrono::milliseconds timeToBegin{10000};

const char* const cannotStart = "the engine cannot be started: ";

/// The pool of this process. A host may fork: the child has none of the threads and must leave the
/// processes alone, so what it inherits stays untouched.
class PoolOfProcess
{
public:
    ~PoolOfProcess()
    {
        if (m_owner == getpid())
            delete m_pool;
    }

    template <typename Make>
    EnginePool& get(Make make)
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        if (!m_pool || m_owner != getpid()) {
            m_pool = make();
            m_owner = getpid();
        }
        return *m_pool;
    }

private:
    std::mutex m_mutex;
    EnginePool* m_pool = nullptr;
    pid_t m_owner = -1;
};

} // namespace

EnginePool& EnginePool::instance()
{
    static PoolOfProcess pool;
    return pool.get([] { return new EnginePool; });
}

EnginePool::EnginePool()
    : m_lastUse(wire::Clock::now())
{}

EnginePool::~EnginePool()
{
    {
        const Lock lock(m_mutex);
        m_isEnding = true;
        m_queue.clear();
        for (const std::uint32_t number : m_busy)
            m_supervisor->kill(number);
    }
    m_changed.notify_all();
    for (std::thread& thread : m_threads)
        thread.join();
}

bool EnginePool::start()
{
    const Lock lock(m_mutex);
    return startSupervisor();
}

bool EnginePool::startSupervisor()
{
    if (m_supervisor)
        return true;
    std::string failure;
    m_supervisor = SupervisorLink::start(policy().program, failure);
    if (!m_supervisor) {
        m_failure = cannotStart + failure;
        return false;
    }
    m_isProven = false;
    m_lastUse = wire::Clock::now();
    m_hasTimer = m_hasTimer || startThread(&EnginePool::endWhenIdle);
    return true;
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
    return policy().readsAhead && processes > 1 ? std::size_t{2} * processes : 0;
}

bool EnginePool::run(const JobPtr& job)
{
    Lock lock(m_mutex);
    for (;;) {
        if (job->m_state == Job::State::answered)
            return true;
        const bool isRefused = m_isStopped || m_isEnding || m_costly.count(job->item().path) > 0;
        if (job->m_state == Job::State::failed ||
            (isRefused && job->m_state != Job::State::running))
            return false;
        if (job->m_state != Job::State::running) {
            if (ProcessPtr process = takeProcess(job->item().path)) {
                m_queue.erase(std::remove(m_queue.begin(), m_queue.end(), job), m_queue.end());
                execute(lock, job, std::move(process));
                continue;
            }
            if (!m_supervisor) {
                logFailure(job->item().path + ": " + m_failure);
                return false;
            }
        }
        ++m_askers;
        m_changed.wait(lock);
        --m_askers;
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
            if (ProcessPtr process = takeProcess(m_queue.front()->item().path)) {
                const JobPtr job = m_queue.front();
                m_queue.pop_front();
                execute(lock, job, std::move(process));
                continue;
            }
        }
        m_changed.wait(lock);
    }
}

/// A process that nobody uses, preferably one that has the item open; a new one if there may be
/// more. Null when all are at work, or none can be started.
EnginePool::ProcessPtr EnginePool::takeProcess(const std::string& item)
{
    while (!m_idle.empty()) {
        auto chosen = std::find_if(m_idle.begin(), m_idle.end(), [&item](const auto& process) {
            return process->lastItem() == item;
        });
        if (chosen == m_idle.end())
            chosen = m_idle.end() - 1;
        ProcessPtr process = std::move(*chosen);
        m_idle.erase(chosen);
        if (!process->hasEnded()) {
            m_busy.insert(process->number());
            return process;
        }
        m_supervisor->endEngine(process->number(), noTime);
    }
    if (m_busy.size() >= policy().processes)
        return nullptr;
    for (int attempt = 0; attempt < 2 && startSupervisor(); ++attempt) {
        const std::uint32_t number = ++m_lastNumber;
        if (wire::Descriptor socket = m_supervisor->startEngine(number)) {
            m_busy.insert(number);
            return std::make_unique<EngineProcess>(number, std::move(socket));
        }
        m_supervisor.reset(); // it was ended by somebody: another one may live
    }
    return nullptr;
}

/// Runs the job with the lock released.
void EnginePool::execute(Lock& lock, const JobPtr& job, ProcessPtr process)
{
    if (m_costly.count(job->item().path) > 0) {
        job->m_state = Job::State::failed;
        m_busy.erase(process->number());
        m_idle.push_back(std::move(process));
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
        m_busy.erase(process->number());
        m_idle.push_back(std::move(process));
    } else {
        endProcess(lock, *job, std::move(process), failure);
    }
    job->m_state = isAnswered ? Job::State::answered : Job::State::failed;
    m_changed.notify_all();
}

/// Ends what has ended by itself, or has to.
void EnginePool::endProcess(Lock& lock, const Job& job, ProcessPtr process,
                            const std::string& failure)
{
    const std::uint32_t number = process->number();
    const std::shared_ptr<SupervisorLink> supervisor = m_supervisor;
    const bool wasStopped = m_isStopped || m_isEnding;
    if (!wasStopped)
        m_costly.insert(job.item().path);
    lock.unlock();
    process.reset();
    std::string reason = failure;
    if (supervisor) {
        const std::string end = supervisor->endEngine(number, failure.empty() ? timeToEnd : noTime);
        if (reason.empty())
            reason = end.empty() ? "closed its socket" : end;
    }
    lock.lock();
    m_busy.erase(number);
    noteEndOfSupervisor();
    if (wasStopped)
        return;
    if (!m_failure.empty())
        m_costly.erase(job.item().path);
    const std::string message = m_failure.empty() ? "the engine process " + reason : m_failure;
    lock.unlock();
    logFailure(job.item().path + ": " + message);
    lock.lock();
}

/// A program that ends before it was of any use cannot be used; what was never begun is no item's
/// fault.
void EnginePool::noteEndOfSupervisor()
{
    const std::string end = m_supervisor && !m_isProven ? m_supervisor->end() : std::string();
    if (end.empty())
        return;
    m_failure = cannotStart + policy().program + " " + end;
    m_supervisor.reset();
}

void EnginePool::stop()
{
    const Lock lock(m_mutex);
    m_isStopped = true;
    m_queue.clear();
    for (const std::uint32_t number : m_busy)
        m_supervisor->kill(number);
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
    return m_failure;
}

std::uint32_t EnginePool::protections()
{
    Lock lock(m_mutex);
    ProcessPtr process = m_protections == 0 ? takeProcess({}) : nullptr;
    if (!process)
        return m_protections;
    lock.unlock();
    const bool hasBegun = process->awaitBegin(wire::Clock::now() + timeToBegin);
    lock.lock();
    noteAnswer(*process);
    m_busy.erase(process->number());
    if (hasBegun)
        m_idle.push_back(std::move(process));
    else
        noteEndOfSupervisor();
    m_changed.notify_all();
    return m_protections;
}

/// What the kernel refuses is said once.
void EnginePool::noteAnswer(const EngineProcess& process)
{
    if (process.protections() == 0)
        return;
    m_isProven = true;
    m_failure.clear();
    if (m_protections == 0 && process.protections() != wire::allProtections)
        log("the engine's processes have " + protectionsInWords(process.protections()));
    m_protections = process.protections();
}

/// After a while without work all processes are ended, the program too.
void EnginePool::endWhenIdle()
{
    Lock lock(m_mutex);
    while (!m_isEnding) {
        const auto end = m_lastUse + policy().idle;
        if (!m_supervisor) {
            m_changed.wait(lock);
        } else if (!m_busy.empty() || wire::Clock::now() < end) {
            m_changed.wait_until(lock, m_busy.empty() ? end : wire::Clock::now() + policy().idle);
        } else {
            m_idle.clear();
            std::shared_ptr<SupervisorLink> ended = std::move(m_supervisor);
            lock.unlock();
            ended.reset(); // waits for the program's end, for which nobody else has to wait
            lock.lock();
        }
    }
}

} // namespace engine
