// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspbased/cvesklist.h"
#include "vspbased/cveskobject.h"
#include "vspimportglobal.h"

#include <QtCore/QString>

#include <climits>

namespace Vesk {

class CImportReplyPrivate;
class CImportSource;
class CImportTask;

/// One running import. Made by CImportModel::open(), deleted by its caller.
///
/// Signals, in their order. Each path: for each item found, taskProcess(ImportDone) or the model's
/// importError(), then importUrl() (a file refused by its suffix gives importError() alone; a path
/// where nothing is gives nothing at all); after the path importPercentChanged(). Then
/// importFinished(). Snapshots, if the source is for import or conversion: for each task
/// snapPercentChanged(), taskProcess(SnapDone); then snapFinished(), unless stopped. Last
/// finished(), from the thread that called open(), which must run an event loop. The import begins
/// some milliseconds after open(), so that signals are connected right behind it.
///
/// All but finished() and terminated() come from the import's thread: receivers on other threads
/// get them queued, for which the host registers the argument types of taskProcess() once with Qt:
///
///     qRegisterMetaType<Vesk::CImportTask*>("Vesk::CImportTask*");
///     qRegisterMetaType<Vesk::CImportReply::ProcessType>("Vesk::CImportReply::ProcessType");
///
/// A percentage is the one of its signal only while that is emitted. In a queued slot the import
/// may be further: a host that wants each value reads it in a slot that is connected with
/// Qt::DirectConnection, and hands it on itself.
///
/// Deleting a reply at any moment stops its import: the destructor waits for the item at hand, no
/// signal is emitted any more once it has begun, and tasks that were not signalled are deleted. A
/// reply is not deleted from a slot that runs on the import's thread. A host that ends early and
/// wants every task calls exit() and wait(), and then reads tasks().
class VSPIMPORT_EXPORT CImportReply : public CVeskObject
{
    Q_OBJECT
    Q_ENUMS(ProcessType)
    Q_PROPERTY(int importPercent READ importPercent NOTIFY importPercentChanged)
    Q_PROPERTY(Vesk::CVeskList* tasks READ tasks NOTIFY tasksChanged)

public:
    /// What has become of a task.
    enum ProcessType
    {
        ImportDone = 0, ///< the task was made; its source path, type and size may be read
        SnapDone = 1    ///< the task's snapshots were taken, as far as they could be
    };

    /// Of no import: it is finished, and has no tasks.
    CImportReply(QObject* parent = 0);
    virtual ~CImportReply();

    /// Waits up to `time` milliseconds for the import's thread to end. True when it has.
    bool wait(unsigned long time = ULONG_MAX);

    /// True when no thread runs.
    bool isFinished() const;

    /// The tasks so far, in the order made. The list belongs to the reply, the tasks to the host.
    CVeskList* tasks();

    /// Progress of the import and of the snapshots, 0 to 100. Readable at any time, from any
    /// thread.
    int importPercent() const;
    int snapPercent() const;

Q_SIGNALS:
    /// The import's thread has ended: all of the tasks may be read now. Emitted once, whatever the
    /// end, from the thread that called open().
    void finished();
    void terminated(); ///< the thread was killed; comes before finished()
    /// All paths were looked at, or the import was stopped: no task will be added.
    void importFinished();
    /// All tasks had their turn. Not emitted when the import was stopped, or takes no snapshots.
    void snapFinished();
    /// `task` was made, or its snapshots were taken.
    void taskProcess(Vesk::CImportTask* task, Vesk::CImportReply::ProcessType type);
    /// A path was done, and importPercent() is the share of the paths that are.
    void importPercentChanged();
    /// The item at the absolute path `url` was done, with a task or an error.
    void importUrl(const QString& url);
    /// A task had its turn, and snapPercent() is the share of the tasks that did.
    void snapPercentChanged();
    void tasksChanged();   ///< never emitted
    void resultsChanged(); ///< never emitted

public Q_SLOTS:
    /// Asks the import to stop before its next item, and returns. It still ends in order, with
    /// importFinished() and finished(). An import that has not begun yet, some milliseconds after
    /// open(), only gives finished(); one that waits for another to end cannot be stopped any more.
    void exit(int code = -1);

protected:
    /// For subclasses with a private part of their own, which becomes the object's: `dd`.
    CImportReply(CImportReplyPrivate& dd, QObject* parent);

private:
    void setSource(CImportSource& source);
    CImportSource* source();
    void run();

    VESK_DECLARE_PRIVATE(CImportReply)
    Q_DISABLE_COPY(CImportReply)
    friend class CImportModel;
};

} // namespace Vesk
