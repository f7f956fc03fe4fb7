// SPDX-License-Identifier: GPL-2.0-or-later
#include "sourcefinder.h"

#include "sourcepaths.h"
#include "sourcewalk.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSet>

namespace {

/// The first are to be seen at once; later a start of an import is to count for nothing.
const int firstBatch = 16;
const int largestBatch = 1000;
const qint64 longestWaitMs = 300;

} // namespace

SourceFinder::SourceFinder(QObject* parent)
    : QObject(parent)
{
    qRegisterMetaType<QVector<FoundSource>>("QVector<FoundSource>");
    m_thread = std::thread([this] { run(); });
}

SourceFinder::~SourceFinder()
{
    stop();
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isEnding = true;
        m_isAsked.notify_one();
    }
    m_thread.join();
}

void SourceFinder::find(const QStringList& paths)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_waiting.push_back(paths);
    m_isAsked.notify_one();
}

void SourceFinder::stop()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isStopped = true;
    for (QStringList& paths : m_waiting)
        paths.clear();
}

void SourceFinder::run()
{
    QStringList paths;
    while (next(paths)) {
        walk(paths);
        emit done();
    }
}

bool SourceFinder::next(QStringList& paths)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_isAsked.wait(lock, [this] { return m_isEnding || !m_waiting.empty(); });
    if (m_isEnding)
        return false;
    paths = m_waiting.front();
    m_waiting.pop_front();
    m_isStopped = false;
    return true;
}

void SourceFinder::walk(const QStringList& paths)
{
    QList<QByteArray> names;
    for (const QString& path : paths)
        names.append(QFile::encodeName(path));
    const SourcePaths given = SourcePaths::inspect(names, 1, 1);
    for (const QString& path : given.missing)
        emit unusable(path, QStringLiteral("no such file or folder"));
    for (const QString& path : given.special)
        emit unusable(path, QStringLiteral("neither a file nor a folder"));
    for (const QString& path : given.undecodable)
        emit unusable(path, QStringLiteral("the name is no valid text"));

    const QSet<QString> named(given.sources.begin(), given.sources.end());
    SourceWalk walk(given.sources, [this] { return m_isStopped.load(); });
    QVector<FoundSource> batch;
    int batchSize = firstBatch;
    QElapsedTimer sinceBatch;
    sinceBatch.start();
    QByteArray name;
    while (walk.next(name)) {
        const QString path = QFile::decodeName(name);
        if (QFile::encodeName(path) != name) {
            emit unusable(path, QStringLiteral("the name is no valid text"));
            continue;
        }
        const QString canonical = QFileInfo(path).canonicalFilePath(); // empty if it has gone
        batch.append({path, canonical.isEmpty() ? path : canonical, named.contains(path)});
        if (batch.size() < batchSize && sinceBatch.elapsed() < longestWaitMs)
            continue;
        emit found(batch);
        batch.clear();
        batchSize = qMin(batchSize * 4, largestBatch);
        sinceBatch.start();
    }
    if (!m_isStopped && !batch.isEmpty())
        emit found(batch);
    for (const QString& path : walk.unreadable())
        emit unusable(path, QStringLiteral("the folder cannot be read"));
}
