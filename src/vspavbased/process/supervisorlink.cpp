// SPDX-License-Identifier: LGPL-2.1-or-later
#include "process/supervisorlink.h"

#include "enginelink/supervision.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <thread>

namespace engine {

namespace {

/// A killed process ends at once, unless the system has it wait for a disk.
constexpr std::chrono::milliseconds waitForNotice{1000};

/// In milliseconds: the sockets of a program that ends are not closed all at once.
constexpr int timeToHangUp = 100;

bool makeSocketPair(int type, wire::Descriptor& ours, wire::Descriptor& theirs)
{
    int sockets[2];
    if (socketpair(AF_UNIX, type | SOCK_CLOEXEC, 0, sockets) != 0)
        return false;
    ours.reset(sockets[0]);
    theirs.reset(sockets[1]);
    return true;
}

std::string endInWords(int status)
{
    if (WIFSIGNALED(status)) {
        return "ended by signal " + std::to_string(WTERMSIG(status)) + " (" +
               strsignal(WTERMSIG(status)) + ")";
    }
    switch (WEXITSTATUS(status)) {
    case wire::EndedForMemory:
        return "ended for want of memory";
    default:
        return "ended with status " + std::to_string(WEXITSTATUS(status));
    }
}

/// What a new program is given: three empty streams, its socket, default signals, and nothing of
/// the environment.
class Start
{
public:
    Start()
    {
        posix_spawn_file_actions_init(&m_files);
        posix_spawnattr_init(&m_attributes);
        sigset_t all;
        sigfillset(&all);
        posix_spawnattr_setsigdefault(&m_attributes, &all);
        sigset_t none;
        sigemptyset(&none);
        posix_spawnattr_setsigmask(&m_attributes, &none);
        posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
    }
    ~Start()
    {
        posix_spawn_file_actions_destroy(&m_files);
        posix_spawnattr_destroy(&m_attributes);
    }

    /// 0, or the reason as a number of errno.
    int run(const std::string& program, const wire::Descriptor& socket, pid_t& process)
    {
        // In this order, since the socket may have one of these numbers.
        wire::Descriptor copy(fcntl(socket.get(), F_DUPFD_CLOEXEC, wire::supervisorSocket + 1));
        if (!copy)
            return errno;
        posix_spawn_file_actions_adddup2(&m_files, copy.get(), wire::supervisorSocket);
        posix_spawn_file_actions_addopen(&m_files, STDIN_FILENO, "/dev/null", O_RDWR, 0);
        posix_spawn_file_actions_adddup2(&m_files, STDIN_FILENO, STDOUT_FILENO);
#ifndef VSPIMPORT_SANITIZED // which have something to say there
        posix_spawn_file_actions_adddup2(&m_files, STDIN_FILENO, STDERR_FILENO);
#endif
        std::string starter = std::to_string(getpid());
        std::string path = program;
        char* arguments[] = {path.data(), starter.data(), nullptr};
#ifdef VSPIMPORT_SANITIZED
        return posix_spawn(&process, program.c_str(), &m_files, &m_attributes, arguments, environ);
#else
        char* environment[] = {nullptr};
        return posix_spawn(&process, program.c_str(), &m_files, &m_attributes, arguments,
                           environment);
#endif
    }

    Start(const Start&) = delete;
    Start& operator=(const Start&) = delete;

private:
    posix_spawn_file_actions_t m_files;
    posix_spawnattr_t m_attributes;
};

} // namespace

std::unique_ptr<SupervisorLink> SupervisorLink::start(const std::string& program,
                                                      std::string& error)
{
    wire::Descriptor ours;
    wire::Descriptor theirs;
    if (!makeSocketPair(SOCK_SEQPACKET, ours, theirs)) {
        error = std::string("the engine's socket: ") + std::strerror(errno);
        return nullptr;
    }
    pid_t process = -1;
    const int failure = Start().run(program, theirs, process);
    if (failure != 0) {
        error = program + ": " + std::strerror(failure);
        return nullptr;
    }
    return std::unique_ptr<SupervisorLink>(new SupervisorLink(std::move(ours), process));
}

SupervisorLink::SupervisorLink(wire::Descriptor socket, pid_t process)
    : m_socket(std::move(socket))
    , m_signals(static_cast<int>(syscall(SYS_pidfd_open, process, 0)))
    , m_process(process)
{}

/// The program ends all its processes when the socket closes; without any it may be ended while it
/// still begins. It is waited for by its own number: a host that waits for any child may have been
/// faster.
SupervisorLink::~SupervisorLink()
{
    if (!m_hasEngines && m_signals)
        syscall(SYS_pidfd_send_signal, m_signals.get(), SIGKILL, nullptr, 0);
    shutdown(m_socket.get(), SHUT_RDWR); // whoever has a copy of it, as of a host that forked
    while (m_process >= 0 && waitpid(m_process, nullptr, 0) < 0 && errno == EINTR) {
    }
}

std::string SupervisorLink::end()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    pollfd file = {m_socket.get(), 0, 0};
    if (poll(&file, 1, timeToHangUp) == 0)
        return {};
    // It has closed its socket, and will have ended in a moment.
    const auto deadline = wire::Clock::now() + waitForNotice;
    int status = 0;
    pid_t ended = 0;
    while ((ended = waitpid(m_process, &status, WNOHANG)) == 0 && wire::Clock::now() < deadline)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    if (ended == 0)
        return "closed its socket";
    m_process = -1;
    return ended < 0 ? "ended" : endInWords(status);
}

wire::Descriptor SupervisorLink::startEngine(std::uint32_t engine)
{
    wire::Descriptor ours;
    wire::Descriptor theirs;
    m_hasEngines = true;
    if (!makeSocketPair(SOCK_STREAM, ours, theirs) ||
        !order(wire::Order::Start, engine, theirs.get()))
        return {};
    return ours;
}

void SupervisorLink::kill(std::uint32_t engine)
{
    order(wire::Order::Kill, engine, -1);
}

bool SupervisorLink::order(std::uint32_t kind, std::uint32_t engine, int descriptor)
{
    wire::Order order = {static_cast<wire::Order::Kind>(kind), engine};
    iovec part = {&order, sizeof(order)};
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int))] = "";
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    if (descriptor >= 0) {
        message.msg_control = control;
        message.msg_controllen = sizeof(control);
        cmsghdr* header = CMSG_FIRSTHDR(&message);
        header->cmsg_level = SOL_SOCKET;
        header->cmsg_type = SCM_RIGHTS;
        header->cmsg_len = CMSG_LEN(sizeof(int));
        std::memcpy(CMSG_DATA(header), &descriptor, sizeof(descriptor));
    }
    return sendmsg(m_socket.get(), &message, MSG_NOSIGNAL) == sizeof(order);
}

std::string SupervisorLink::endEngine(std::uint32_t engine, std::chrono::milliseconds patience)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (const auto status = awaitEnd(engine, patience))
        return endInWords(*status);
    kill(engine);
    awaitEnd(engine, waitForNotice);
    return {};
}

/// The status with which the process has ended; nothing when it does not in time.
std::optional<int> SupervisorLink::awaitEnd(std::uint32_t engine,
                                            std::chrono::milliseconds patience)
{
    const auto deadline = wire::Clock::now() + patience;
    for (;;) {
        const auto end = m_ends.find(engine);
        if (end != m_ends.end()) {
            const int status = end->second;
            m_ends.erase(end);
            return status;
        }
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(deadline - wire::Clock::now());
        pollfd file = {m_socket.get(), POLLIN, 0};
        wire::Notice notice{};
        if (poll(&file, 1, static_cast<int>(std::max<std::int64_t>(left.count(), 0))) <= 0 ||
            recv(m_socket.get(), &notice, sizeof(notice), MSG_DONTWAIT) != sizeof(notice))
            return std::nullopt;
        m_ends[notice.engine] = notice.status;
    }
}

} // namespace engine
