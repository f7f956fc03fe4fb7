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

    /// Count setters shrink from the end and grow by default objects; a negative count is 0.
    /// Lookups outside the list give null.
    int chapterCount() const;
    void setChapterCount(int count);
    CDVDChapter* chapter(int index) const;

    int trackCount() const;
    void setTrackCount(int count);
    CDVDTrack* track(int index) const;

    /// Subtitles are also children of the title.
    int subtitleCount() const;
    void setSubtitleCount(int count);
    CDVDSubtitle* subtitle(int index) const;

    /// Owned by the title; setVideo() shares the record of `video`.
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
