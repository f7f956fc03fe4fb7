// SPDX-License-Identifier: GPL-2.0-or-later
#include "interrupt.h"

#include <QtCore/QSocketNotifier>

#include <atomic>
#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace {

const int statusInterrupted = 130;
const int signalNumbers[] = {SIGINT, SIGTERM};

int ends[2] = {-1, -1};
std::atomic<bool> hasInterrupted{false};

/// Only what a signal handler may do.
void handleSignal(int)
{
    if (hasInterrupted.exchange(true))
        _exit(statusInterrupted);
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
    for (const int number : signalNumbers) {
        // A job in the background of a script is started with Ctrl-C ignored, and stays so.
        if (std::signal(number, handleSignal) == SIG_IGN)
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
