// SPDX-License-Identifier: GPL-2.0-or-later
//
// The desktop window, a host of the import module on its public classes:
//
//   Library        what has been imported, and the imports that bring it:
//   SourceFinder     looks up what lies at and below paths, in a thread of its own
//   ImportQueue      runs the imports, each with a thread of its own
//   LibraryModel     items, their titles, chapters and clips as a tree for views
//   MainWindow     the views of it, with a LibraryFilter between; DetailsPane, FailureBar,
//   ImportBar PictureCache   the pictures in sight, loaded in a thread of its own Exporter writes
//   files, in a thread of Qt's pool
//
// All objects live on the window's thread, which sees plain values (facts::Item) alone: no task,
// and no file but those that a person opens and saves lists by.
#pragma once

#include "importqueue.h"
#include "importresult.h"
#include "librarymodel.h"
#include "logcollector.h"
#include "refusals.h"
#include "sourcefinder.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>
#include <QtCore/QTimer>

/// How far the imports are, of all since nothing was to be done.
struct ImportProgress
{
    int listed = 0;   ///< sources that were found so far
    int imported = 0; ///< items
    int without = 0;  ///< sources that gave no item
    int finished = 0; ///< items with all that they will have
    int pictures = 0; ///< that are to be taken of the items
    int picturesTaken = 0;
    QString path; ///< at hand
    bool isBusy = false;
    bool isStopped = false; ///< since then there may have been more

    /// How many of the sources gave what they have, and of the items came with all.
    int importPercent() const;
    int picturePercent() const;

    /// 0 to 1; never less than before while it is busy.
    double fraction = 0.0;
};

/// The items that a person has brought in, and what brings them. One object a process.
class Library : public QObject
{
    Q_OBJECT

public:
    using Failure = ImportResult::Failure;

    /// `model`, which outlives this, gets the items. The module is loaded, and its context set.
    explicit Library(LibraryModel& model, QObject* parent = nullptr);
    /// Stops what is running, and waits for it.
    ~Library() override;

    /// Imports what lies at and below `paths`, absolute, behind what was asked for before. What is
    /// there already is shownAgain() instead.
    void add(const QStringList& paths);
    /// What has been found stays.
    void stop();

    /// Imports all that could not be once more.
    void tryAgain();
    const std::vector<Failure>& failures() const { return m_failures; }
    void dropFailures();

    void remove(const QStringList& keys);

    const ImportProgress& progress() const { return m_progress; }
    /// Files of other kinds, which were passed over, since nothing was to be done.
    int otherKinds() const { return m_otherKinds; }
    QList<LogCollector::Record> logRecords() const { return m_log.records(); }

Q_SIGNALS:
    /// At most some times a second, and when the last import is over.
    void progressChanged();
    void failuresChanged();
    /// Pictures are missing behind an import, since they cannot be written.
    void picturesLost(const QString& reason);
    /// Keys of items that were asked for and are there.
    void shownAgain(const QStringList& keys);

private Q_SLOTS:
    void onFound(const QVector<FoundSource>& sources);
    void onUnusable(const QString& path, const QString& reason);
    void onDone();
    /// Shows what has come since the last time.
    void flush();

private:
    /// Something that waits for its import.
    struct Claim
    {
        QString key;
        bool isNamed = false;
    };

    void receive(const ImportEvent& event);
    void receiveItem(const ImportEvent& event);
    void receiveFailure(int type, const QString& path);
    Claim takeClaim(const QString& path);
    void addFailure(const Failure& failure);
    void scheduleFlush();
    void updateBusy();
    void dropClaims();
    void receiveNothing(const QString& path);

    LibraryModel& m_model;
    LogCollector m_log{false};
    Refusals m_refusals;
    SourceFinder m_finder;
    int m_finds = 0; ///< that are not done
    bool m_isStopping = false;
    QStringList m_later; ///< asked for while it is stopping: what that drops would count as there

    QHash<QString, Claim> m_claims; ///< by path
    QSet<QString> m_claimedKeys;
    std::vector<QString> m_keys;                 ///< of the items of the import at hand
    QHash<QString, LibraryModel::Entry> m_fresh; ///< for the model, by key
    QStringList m_freshOrder;
    QStringList m_again;

    std::vector<Failure> m_failures;
    QSet<QString> m_failedPaths;
    bool m_hasNewFailures = false;
    int m_otherKinds = 0;
    ImportProgress m_progress;
    QTimer m_flushTimer;
    ImportQueue m_imports;
};
