// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "cmovieinfomation.h"
#include "vspimportglobal.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>

namespace Vesk {

class CBDFileClip;
class CBDFilePrivate;

/// One stream file of a Blu-ray disc, with the parts of it (clips) that titles and chapters play.
///
/// Clips are QObjects whose one public property is "imageUrl". They belong to the file.
class VSPIMPORT_EXPORT CBDFile : public QObject
{
public:
    CBDFile(QObject* parent = 0);
    virtual ~CBDFile();

    /// The file's streams. Owned by the file.
    CMovieInfomation* movieInfo() const;
    /// Shares the record of `info`, which stays the caller's.
    void setMovieInfo(CMovieInfomation* info);

    /// Name or path of the stream file.
    QString url() const;
    void setUrl(const QString& url);

    /// All clips, in the order in which they came up.
    QList<CBDFileClip*>& clips();

    /// The clip of that range (seconds): the file's own when it has one already, else a new one.
    CBDFileClip* appendClip(double timeStart, double timeEnd);

    /// True when the file has no clips.
    bool empty() const;

    /// The clips that get a snapshot: by start time, at most one a start. Made anew when the number
    /// of clips has changed since the last call; the reference lives as long as the file.
    QList<CBDFileClip*>& snapClips();

private:
    void clipMoved();

    CBDFilePrivate* d;

    Q_DISABLE_COPY(CBDFile)
    friend class CBDFileClip;
};

} // namespace Vesk
