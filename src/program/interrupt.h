// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QObject>
#include <QtCore/QScopedPointer>

class QSocketNotifier;

/// Turns Ctrl-C, a request to terminate and the end of the terminal into a signal on the main
/// thread. Another one a second later or more ends the process at once, should the first not be
/// heard. One object a process.
class Interrupt : public QObject
{
    Q_OBJECT

public:
    explicit Interrupt(QObject* parent = nullptr);
    ~Interrupt() override;

Q_SIGNALS:
    void interrupted();

private Q_SLOTS:
    void receive();

private:
    QScopedPointer<QSocketNotifier> m_notifier;

    Q_DISABLE_COPY(Interrupt)
};
