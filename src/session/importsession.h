// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "cimportmodel.h"
#include "cimportreply.h"
#include "facts/item.h"
#include "pictureindex.h"

#include <QtCore/QObject>
#include <QtCore/QScopedPointer>
#include <QtCore/QStringList>
#include <QtCore/QThread>

#include <functional>
#include <memory>
#include <vector>

struct ImportEvent;

/// What to import, and what for.
struct ImportRequest
{
    QStringList sources;
    bool forImport = false;
    bool forPlay = false;
    bool forConvert = false;

    /// Whether Found has the item as far as it is known then, without pictures, and Ready the
    /// number of pictures.
    bool describes = false;

    /// Called on the import's thread before the pictures of the item at `path` are taken. Those of
    /// items with another `name` have other names.
    std::function<void(const QString& path, const QString& name)> beforePictures;
    /// Called with Ready as soon as they were taken, mostly on the same thread.
    std::function<void(ImportEvent& ready)> afterPictures;

    bool takesPictures() const { return forImport || forConvert; }
};

/// What happens in an import: the signals of the reply and the model, and Ready.
struct ImportEvent
{
    enum Kind
    {
        NotStarted,    ///< before Finished, instead of all others
        Found,         ///< `path`: taskProcess(ImportDone). `value` counts them from 0
        Pictured,      ///< `path`: taskProcess(SnapDone)
        Failed,        ///< `path`, `value` is a CImportModel::ErrorType
        Seen,          ///< `path`: importUrl()
        ImportPercent, ///< `value`
        ImportFinished,
        PicturePercent, ///< `value`
        PicturesFinished,
        Ready,   ///< `item`: nothing more will change in it. `value` as that of Found
        Finished ///< the last one
    };

    ImportEvent(Kind what, const QString& where = QString(), int number = 0)
        : kind(what)
        , path(where)
        , value(number)
    {}

    Kind kind;
    QString path;
    int value;
    std::shared_ptr<facts::Item> item; ///< of Ready, and of Found where it is asked for
    int pictureCount = 0;              ///< of Ready where it is asked for: those that are there
    PictureIndex::Verdict pictures = PictureIndex::Own; ///< of Ready, where they are checked
};

/// Imports, one at a time, and says what happens as plain values on its own thread. Tasks are read
/// on the import's thread as soon as their pictures are there, and deleted with the import: nobody
/// else gets to see one.
class ImportSession : public QObject
{
    Q_OBJECT

public:
    /// Receives the events of all imports of this object, on the thread that start() is called on.
    using Receiver = std::function<void(const ImportEvent& event)>;

    explicit ImportSession(Receiver receiver);
    ~ImportSession() override;

    /// Begins an import; its events arrive through the event loop, to Finished. False when it
    /// cannot be started. One at a time.
    bool start(const ImportRequest& request);

    /// Asks the running import to stop. What has been found still arrives, and Finished.
    void stop();

    /// As if an import had failed at `path`; `type` is a CImportModel::ErrorType.
    void reportFailure(int type, const QString& path);

    /// Writes the errors so far, as CImportModel::saveReport().
    bool saveReport(QIODevice* device);

private Q_SLOTS:
    void onImportError(int type, const QString& path);
    void onFinished();
    void end();

private:
    /// What belongs to the import's thread while that runs.
    struct Worker;

    void connectReply();
    void post(ImportEvent event);

    Receiver m_receiver;
    Vesk::CImportModel m_model; ///< outlives the reply
    std::shared_ptr<Worker> m_worker;
    QScopedPointer<Vesk::CImportReply> m_reply;
    std::unique_ptr<QThread> m_rest; ///< reads what a stopped import has left unread

    Q_DISABLE_COPY(ImportSession)
};
