// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "importsession.h"
#include "namelock.h"
#include "pictureindex.h"

#include <QtCore/QEventLoop>

#include <atomic>

/// An import whose items come with pictures of their own: those that came with another source's are
/// imported again into folders of their own, behind the rest.
class CheckedImport
{
public:
    /// `receiver` gets the events of the import itself, among them Ready without another's
    /// pictures; for what was imported again it comes late, before Finished.
    explicit CheckedImport(ImportSession::Receiver receiver);
    ~CheckedImport();

    /// Runs an import to its end, in an event loop. False when it cannot be started.
    bool run(const ImportRequest& request);

    /// As ImportSession's.
    void stop();
    void reportFailure(int type, const QString& path) { m_session.reportFailure(type, path); }
    bool saveReport(QIODevice* device) { return m_session.saveReport(device); }

private:
    /// One that is imported again, and where its pictures go.
    struct Again
    {
        ImportEvent ready;
        QString folder; ///< empty for one of its own
    };

    /// On the import's thread. An empty `folder` is one of the item's own.
    void beforePictures(const QString& path, const QString& name, const QString& folder);
    void afterPictures(ImportEvent& ready);

    void receive(const ImportEvent& event);
    void receiveAgain(const ImportEvent& event, std::vector<Again>& left);
    /// Whether `ready` is as it should be; otherwise it is among m_again.
    bool isOwn(const ImportEvent& ready);
    void importAgain();
    void giveUp(Again& again);

    ImportSession::Receiver m_receiver;
    QString m_folder;                      ///< of the pictures of all
    std::unique_ptr<PictureIndex> m_index; ///< of the import's thread while that runs
    std::unique_ptr<NameLock> m_lock;      ///< the same, as the next two
    std::unique_ptr<FileClock> m_clock;
    FileTime m_picturesSince = 0; ///< no picture of the item that is older was taken now
    ImportRequest m_request;
    std::vector<Again> m_again;
    ImportSession m_session;
    ImportSession m_repeated; ///< apart, since its failures are no news
    ImportSession::Receiver m_repeatedReceiver;
    std::atomic<bool> m_stopped{false};
    QEventLoop m_loop;

    Q_DISABLE_COPY(CheckedImport)
};
