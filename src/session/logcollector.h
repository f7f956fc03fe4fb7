// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QList>
#include <QtCore/QMutex>
#include <QtCore/QString>

/// Collects, as long as it lives, the records that the module flushes to the host's log and what
/// the engine lost items or pictures by, and with `verbose` shows the module's debug lines and the
/// engine's messages on standard error. The records may come from any thread.
class LogCollector
{
public:
    struct Record
    {
        int code; ///< 0 for the engine's
        QString message;
        bool isOfEngine;
    };

    explicit LogCollector(bool verbose);
    ~LogCollector();

    QList<Record> records() const;

private:
    struct Receivers;

    void add(const Record& record);

    mutable QMutex m_mutex;
    QList<Record> m_records;

    Q_DISABLE_COPY(LogCollector)
};
