// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QHash>
#include <QtCore/QMutex>
#include <QtCore/QString>

/// Why items could not be imported: the engine says it when it refuses one, the import only that it
/// failed. Collects as long as it lives, from any thread. One object a process.
class Refusals
{
public:
    Refusals();
    ~Refusals();

    /// The reason for the item at `path`, for people, which is then forgotten; empty when none is
    /// known.
    QString take(const QString& path);

private:
    struct Refusal
    {
        int kind;
        QString reason;
    };

    static void receive(const char* path, int kind, const char* reason, void* context);

    QMutex m_mutex;
    QHash<QString, Refusal> m_refusals;

    Q_DISABLE_COPY(Refusals)
};
