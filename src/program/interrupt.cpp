// SPDX-License-Identifier: GPL-2.0-or-later
#include "interrupt.h"

#include <QtCore/QSocketNotifier>

#include <atomic>
#include <csignal>
#include <cstdint>
#include <ctime>
#include <sys/socket.h>
#include <unistd.h>

namespace {

const int statusInterrupted = 130;
const int signalNumbers[] = {SIGINT, SIGTERM, SIGHUP};

/// What ends a job often sends its signal twice, to the process and to its group.
const std::int64_t repeatMs = 1000;

int ends[2] = {-1, -1};
std::atomic<std::int64_t> firstMs{-1}; ///< when the first signal came; -1 before

std::int64_t nowMs()
{
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return std::int64_t{now.tv_sec} * 1000 + now.tv_nsec / 1000000;
}

/// Only what a signal handler may do.
void handleSignal(int)
{
    std::int64_t first = -1;
    const std::int64_t now = nowMs();
    if (!firstMs.compare_exchange_strong(first, now)) {
        if (now - first >= repeatMs)
            _exit(statusInterrupted);
        return;
    }
    const char byte = 0;
    if (write(ends[0], &byte, 1) != 1)
        _exit(statusInterrupted);
}

} // namespace

Interrupt::Interrupt(QObject* parent)
    : QObject(parent)
{
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        return;
    m_notifier.reset(new QSocketNotifier(ends[1], QSocketNotifier::Read));
    connect(m_notifier.data(), SIGNAL(activated(int)), this, SLOT(receive()));
    // Also where they were ignored: a script that sends one to its background job means it. But
    // what is to outlive its terminal does.
    for (const int number : signalNumbers) {
        if (std::signal(number, handleSignal) == SIG_IGN && number == SIGHUP)
            std::signal(number, SIG_IGN);
    }
}

Interrupt::~Interrupt()
{
    for (const int number : signalNumbers)
        std::signal(number, SIG_DFL);
    m_notifier.reset();
    for (int& end : ends) {
        if (end >= 0)
            ::close(end);
        end = -1;
    }
}

void Interrupt::receive()
{
    char byte;
    if (read(ends[1], &byte, 1) == 1)
        Q_EMIT interrupted();
}
