// SPDX-License-Identifier: GPL-2.0-or-later
#include "library.h"

#include "cimportmodel.h"
#include "errornames.h"
#include "lostpictures.h"

#include <algorithm>

using Vesk::CImportModel;

namespace {

/// Often enough for eyes; views take some milliseconds for each.
const int flushIntervalMs = 60;

int percentOf(int done, int all)
{
    return all > 0 ? std::min(100, int(100LL * done / all)) : 100;
}

} // namespace

int ImportProgress::importPercent() const
{
    return percentOf(imported + without, listed);
}

int ImportProgress::picturePercent() const
{
    return percentOf(finished, imported);
}

Library::Library(LibraryModel& model, QObject* parent)
    : QObject(parent)
    , m_model(model)
    , m_imports([this](const ImportEvent& event) { receive(event); })
{
    m_flushTimer.setInterval(flushIntervalMs);
    m_flushTimer.setSingleShot(true);
    connect(&m_flushTimer, &QTimer::timeout, this, &Library::flush);
    connect(&m_finder, &SourceFinder::found, this, &Library::onFound);
    connect(&m_finder, &SourceFinder::unusable, this, &Library::onUnusable);
    connect(&m_finder, &SourceFinder::done, this, &Library::onDone);
}

Library::~Library()
{
    m_finder.stop();
    m_imports.stop();
}

void Library::add(const QStringList& paths)
{
    if (m_isStopping)
        m_later.append(paths);
    if (m_isStopping || paths.isEmpty())
        return;
    ++m_finds;
    m_finder.find(paths);
    updateBusy();
}

void Library::stop()
{
    m_isStopping = m_progress.isBusy;
    m_progress.isStopped = m_progress.isStopped || m_isStopping;
    m_later.clear();
    m_finder.stop();
    m_imports.stop();
}

void Library::tryAgain()
{
    QStringList paths;
    for (const Failure& failure : m_failures)
        paths.append(failure.path);
    dropFailures();
    add(paths);
}

void Library::dropFailures()
{
    m_failures.clear();
    m_failedPaths.clear();
    emit failuresChanged();
}

void Library::remove(const QStringList& keys)
{
    m_model.removeKeys(keys);
    for (const QString& key : keys)
        m_claimedKeys.remove(key);
}

void Library::onFound(const QVector<FoundSource>& sources)
{
    if (m_isStopping)
        return;
    ImportRequest request;
    request.forImport = true;
    request.describes = true;
    for (const FoundSource& source : sources) {
        if (m_claimedKeys.contains(source.key)) {
            m_again.append(source.key);
            continue;
        }
        m_claimedKeys.insert(source.key);
        m_claims.insert(source.path, {source.key, source.isNamed});
        request.sources.append(source.path);
    }
    m_progress.listed += request.sources.size();
    if (!request.sources.isEmpty())
        m_imports.add(request);
    scheduleFlush();
}

void Library::onUnusable(const QString& path, const QString& reason)
{
    if (!m_isStopping)
        addFailure({CImportModel::ErrorImportFalsed, path, reason});
}

void Library::onDone()
{
    --m_finds;
    updateBusy();
}

void Library::receive(const ImportEvent& event)
{
    switch (event.kind) {
    case ImportEvent::Found:
        m_refusals.take(event.path); // of an image, as the other kind of disc
        ++m_progress.imported;
        m_progress.pictures += event.item->pictureCount();
        m_keys.push_back(takeClaim(event.path).key);
        receiveItem(event);
        break;
    case ImportEvent::Ready:
        ++m_progress.finished;
        m_progress.picturesTaken += event.pictureCount;
        receiveItem(event);
        break;
    case ImportEvent::Failed:
        receiveFailure(event.value, event.path);
        break;
    case ImportEvent::Seen:
    case ImportEvent::Pictured:
        m_progress.path = event.path;
        break;
    case ImportEvent::Finished:
        m_keys.clear();
        updateBusy();
        break;
    default:
        break;
    }
    scheduleFlush();
}

/// One that was removed from the list meanwhile does not come back.
void Library::receiveItem(const ImportEvent& event)
{
    const QString& key = m_keys.at(std::size_t(event.value));
    if (!m_claimedKeys.contains(key))
        return;
    if (!m_fresh.contains(key))
        m_freshOrder.append(key);
    m_fresh.insert(key, {key, event.item});
}

/// The module puts a separator behind some paths.
Library::Claim Library::takeClaim(const QString& path)
{
    const bool hasSeparator = path.length() > 1 && path.endsWith(QLatin1Char('/'));
    return m_claims.take(hasSeparator ? path.chopped(1) : path);
}

void Library::receiveFailure(int type, const QString& path)
{
    const Claim claim = takeClaim(path);
    m_claimedKeys.remove(claim.key);
    ++m_progress.without;
    if (type != CImportModel::ErrorImportFalsed && !claim.isNamed) {
        ++m_otherKinds;
        return;
    }
    QString reason;
    if (type == CImportModel::ErrorImportFalsed)
        reason = m_refusals.take(path).reason;
    addFailure({type, path, reason.isEmpty() ? QString::fromUtf8(errorName(type).reason) : reason});
}

void Library::addFailure(const Failure& failure)
{
    if (m_failedPaths.contains(failure.path))
        return;
    m_failedPaths.insert(failure.path);
    m_failures.push_back(failure);
    m_hasNewFailures = true;
    scheduleFlush();
}

void Library::scheduleFlush()
{
    if (!m_flushTimer.isActive())
        m_flushTimer.start();
}

void Library::flush()
{
    std::vector<LibraryModel::Entry> entries;
    for (const QString& key : m_freshOrder) {
        if (m_claimedKeys.contains(key))
            entries.push_back(m_fresh.value(key));
    }
    m_fresh.clear();
    m_freshOrder.clear();
    m_model.put(entries);
    if (m_hasNewFailures)
        emit failuresChanged();
    m_hasNewFailures = false;
    QStringList again;
    again.swap(m_again);
    if (!again.isEmpty())
        emit shownAgain(again);

    // Both halves of the work on each source; those that are still to be found may be many.
    const int done = m_progress.imported + m_progress.finished + 2 * m_progress.without;
    const double fraction = done / (2.0 * std::max(1, m_progress.listed));
    if (m_progress.isBusy)
        m_progress.fraction = std::max(m_progress.fraction, std::min(fraction, 0.99));
    emit progressChanged();
}

void Library::updateBusy()
{
    const bool isBusy = m_finds > 0 || !m_imports.isIdle();
    if (isBusy) {
        if (!m_progress.isBusy) {
            m_progress = ImportProgress();
            m_otherKinds = 0;
        }
        m_progress.isBusy = true;
        scheduleFlush();
        return;
    }
    const bool wasBusy = m_progress.isBusy;
    dropClaims();
    flush();
    m_progress.isBusy = false;
    m_progress.fraction = 1.0;
    emit progressChanged();
    if (wasBusy && m_progress.picturesTaken < m_progress.pictures) {
        for (const QString& reason : reasonsForLostPictures(QString()))
            emit picturesLost(reason);
    }

    m_isStopping = false;
    QStringList later;
    later.swap(m_later);
    add(later);
}

/// Those that are left were stopped. Otherwise nothing was said of them: their import could not be
/// started, or they have gone since they were found.
void Library::dropClaims()
{
    for (auto claim = m_claims.cbegin(); claim != m_claims.cend(); ++claim) {
        m_claimedKeys.remove(claim->key);
        if (!m_isStopping)
            receiveNothing(claim.key());
    }
    m_claims.clear();
}

void Library::receiveNothing(const QString& path)
{
    ++m_progress.without;
    const int type = CImportModel::ErrorImportFalsed;
    addFailure({type, path, QString::fromUtf8(errorName(type).reason)});
}
