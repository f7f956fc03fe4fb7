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

    struct Refusal
    {
        int kind = 0;   ///< an AVBased::Refusal
        QString reason; ///< for people; empty when none is known
    };

    /// What is known of the item at `path`, which is then forgotten.
    Refusal take(const QString& path);

private:
    static void receive(const char* path, int kind, const char* reason, void* context);

    QMutex m_mutex;
    QHash<QString, Refusal> m_refusals;

    Q_DISABLE_COPY(Refusals)
};
