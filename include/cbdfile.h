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
/// Clips belong to the file. Their class is not a host's to see; as objects, which clipObject()
/// gives, they have one property and its change signal: "imageUrl", the URL of the clip's snapshot
/// in the form of CMovieInfomation::imageUrl(), empty for a clip that is not among snapClips().
class VSPIMPORT_EXPORT CBDFile : public QObject
{
public:
    /// Without name, streams and clips.
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

    /// The clip as the object that it is: clipObject(clip)->property("imageUrl").
    static QObject* clipObject(CBDFileClip* clip);

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
