// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "cdvdchapter.h"
#include "cdvdsubtitle.h"
#include "cmovieinfomation.h"
#include "vspimportglobal.h"

#include <QtCore/QObject>

namespace Vesk {

class CDVDTitlePrivate;
class CDVDTrack;
class CDVDVideo;

/// One title of a DVD. Owns its chapters, tracks and subtitles.
class VSPIMPORT_EXPORT CDVDTitle : public QObject
{
    Q_OBJECT

public:
    /// Without streams, chapters, tracks and subtitles.
    CDVDTitle(QObject* parent = 0);
    virtual ~CDVDTitle();

    /// Number of camera angles. An import leaves it at 0.
    int angles() const;
    void setAngles(int angles);

    /// Seconds. An import leaves it at 0; the title's length is movieInfo()->duration().
    double duration() const;
    void setDuration(double seconds);

    /// True for the title that a person would call the film.
    bool isMainTitle() const;
    void setIsMainTitle(bool isMainTitle);

    /// Chapters in playing order. Setting shrinks from the end, deleting what it removes, and grows
    /// by default objects; a negative count is 0.
    int chapterCount() const;
    void setChapterCount(int count);
    /// Null outside the list. Owned by the title.
    CDVDChapter* chapter(int index) const;

    /// Audio tracks, whose class is the module's own: a host sees the audio streams of movieInfo().
    /// Setting as with chapters.
    int trackCount() const;
    void setTrackCount(int count);
    /// Null outside the list. Owned by the title.
    CDVDTrack* track(int index) const;

    /// Subtitle streams. Setting as with chapters.
    int subtitleCount() const;
    void setSubtitleCount(int count);
    /// Null outside the list. A child of the title.
    CDVDSubtitle* subtitle(int index) const;

    /// The video's record, of a class that is the module's own. Owned by the title; setVideo()
    /// shares the record of `video`.
    CDVDVideo* video() const;
    void setVideo(CDVDVideo* video);

    /// The title's streams. Owned by the title; setMovieInfo() shares the record of `info`, which
    /// stays the caller's. Its imageUrl() is the picture of the last chapter (see CDVDChapter).
    CMovieInfomation* movieInfo() const;
    void setMovieInfo(CMovieInfomation* info);

private:
    CDVDTitlePrivate* d;

    Q_DISABLE_COPY(CDVDTitle)
};

} // namespace Vesk
