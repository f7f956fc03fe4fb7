// SPDX-License-Identifier: GPL-2.0-or-later
#include "server/supervisor.h"

#include "enginelink/supervision.h"

#include <poll.h>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>

#include <csignal>
#include <cstring>
#include <utility>

namespace engine {

Supervisor::Supervisor(wire::Descriptor socket, pid_t starter)
    : m_socket(std::move(socket))
    , m_starter(static_cast<int>(syscall(SYS_pidfd_open, starter, 0)))
{
    sigset_t ended;
    sigemptyset(&ended);
    sigaddset(&ended, SIGCHLD);
    sigprocmask(SIG_BLOCK, &ended, nullptr);
    m_ended.reset(signalfd(-1, &ended, SFD_CLOEXEC | SFD_NONBLOCK));
    // Who was gone before it could be watched.
    m_isDone = !m_ended || getppid() != starter;
}

wire::Descriptor Supervisor::run()
{
    while (!m_isDone && waitForWork()) {
        if (wire::Descriptor socket = takeOrder())
            return socket;
    }
    endAll();
    return {};
}

/// Until there is an order. False when the starter is gone.
bool Supervisor::waitForWork()
{
    for (;;) {
        // Without a descriptor for the starter, of an old kernel, the socket alone tells.
        pollfd files[] = {
            {m_socket.get(), POLLIN, 0}, {m_starter.get(), POLLIN, 0}, {m_ended.get(), POLLIN, 0}};
        if (poll(files, 3, -1) < 0)
            continue;
        if (files[2].revents)
            reportEnded();
        if (files[1].revents)
            return false;
        if (files[0].revents)
            return true;
    }
}

/// The socket of a new engine process, in that process; else none.
wire::Descriptor Supervisor::takeOrder()
{
    wire::Order order{};
    iovec part = {&order, sizeof(order)};
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int))] = "";
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control;
    message.msg_controllen = sizeof(control);
    const ssize_t count = recvmsg(m_socket.get(), &message, MSG_CMSG_CLOEXEC);
    wire::Descriptor passed;
    if (const cmsghdr* header = CMSG_FIRSTHDR(&message)) {
        int descriptor = -1;
        std::memcpy(&descriptor, CMSG_DATA(header), sizeof(descriptor));
        passed.reset(descriptor);
    }
    if (count != sizeof(order)) {
        m_isDone = true;
        return {};
    }
    if (order.kind == wire::Order::Start)
        return start(order.engine, std::move(passed));
    const auto engine = m_engines.find(order.engine);
    if (engine != m_engines.end())
        kill(engine->second, SIGKILL);
    return {};
}

wire::Descriptor Supervisor::start(std::uint32_t engine, wire::Descriptor socket)
{
    const pid_t supervisor = getpid();
    const pid_t process = fork();
    if (process != 0) {
        if (process > 0)
            m_engines.emplace(engine, process);
        return {}; // a socket that is closed again tells the starter
    }
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != supervisor)
        _exit(0);
    m_socket.reset();
    m_starter.reset();
    m_ended.reset();
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    return socket;
}

void Supervisor::reportEnded()
{
    signalfd_siginfo ignored;
    while (read(m_ended.get(), &ignored, sizeof(ignored)) > 0) {
    }
    for (auto engine = m_engines.begin(); engine != m_engines.end();) {
        int status = 0;
        if (waitpid(engine->second, &status, WNOHANG) != engine->second) {
            ++engine;
            continue;
        }
        const wire::Notice notice = {engine->first, status};
        send(m_socket.get(), &notice, sizeof(notice), MSG_NOSIGNAL | MSG_DONTWAIT);
        engine = m_engines.erase(engine);
    }
}

/// None stays behind, whatever it is at.
void Supervisor::endAll()
{
    for (const auto& [engine, process] : m_engines)
        kill(process, SIGKILL);
    for (const auto& [engine, process] : m_engines)
        waitpid(process, nullptr, 0);
    m_engines.clear();
}

} // namespace engine
