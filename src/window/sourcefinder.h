// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtCore/QVector>

#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

/// Something to import, and what it is known by: its canonical path, the same however it was come
/// to.
struct FoundSource
{
    QString path;
    QString key;
    bool isNamed = false; ///< was given itself, and not found in a folder
};

/// Looks up what lies at and below paths, in a thread of its own, so that no window waits for a
/// disk.
class SourceFinder : public QObject
{
    Q_OBJECT

public:
    explicit SourceFinder(QObject* parent = nullptr);
    ~SourceFinder() override;

    /// Looks up all that `paths`, absolute, stand for. Callable from any thread, as the next.
    void find(const QStringList& paths);
    /// What was not signalled yet will not be, but for finished paths.
    void stop();

Q_SIGNALS:
    /// On the finder's thread, as the others; the more there is, the more at once.
    void found(const QVector<FoundSource>& sources);
    void unusable(const QString& path, const QString& reason);
    /// All that one find() has asked for has been found.
    void done();

private:
    void run();
    bool next(QStringList& paths);
    void walk(const QStringList& paths);

    std::mutex m_mutex;
    std::condition_variable m_isAsked;
    std::deque<QStringList> m_waiting;
    bool m_isEnding = false;
    std::atomic<bool> m_isStopped{false};
    std::thread m_thread; ///< begins when all else is there
};

Q_DECLARE_METATYPE(FoundSource)
