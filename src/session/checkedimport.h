// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "importsession.h"
#include "namelock.h"
#include "pictureindex.h"

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

    /// As ImportSession's.
    bool start(const ImportRequest& request);
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
    void receiveAgain(const ImportEvent& event);
    /// Whether `ready` is as it should be; otherwise it is among m_again.
    bool isOwn(const ImportEvent& ready);
    /// Imports again, or ends.
    void next();
    bool importAgain();
    void giveUp(std::vector<Again>& those);

    ImportSession::Receiver m_receiver;
    QString m_folder;                      ///< of the pictures of all
    std::unique_ptr<PictureIndex> m_index; ///< of the import's thread while that runs
    std::unique_ptr<NameLock> m_lock;      ///< the same, as the next two
    std::unique_ptr<FileClock> m_clock;
    FileTime m_picturesSince = 0; ///< no picture of the item that is older was taken now
    ImportRequest m_request;
    std::vector<Again> m_again; ///< for the next round
    std::vector<Again> m_left;  ///< of the round at hand
    int m_round = 0;
    std::atomic<bool> m_stopped{false};
    ImportSession m_session;
    ImportSession m_repeated; ///< apart, since its failures are no news

    Q_DISABLE_COPY(CheckedImport)
};
