// SPDX-License-Identifier: LGPL-2.1-or-later
#include "cdvdtitle.h"

#include "cdvdtrack.h"
#include "cdvdvideo.h"
#include "childlist.h"

namespace Vesk {

class CDVDTitlePrivate
{
public:
    // Destroyed from the last to the first: the movie goes before the video.
    int angles = 0;
    double duration = 0.0;
    bool isMainTitle = false;
    QList<CDVDChapter*> chapters;
    QList<CDVDTrack*> tracks;
    QList<CDVDSubtitle*> subtitles;
    CDVDVideo video;
    CMovieInfomation movieInfo;
};

CDVDTitle::CDVDTitle(QObject* parent)
    : QObject(parent)
    , d(new CDVDTitlePrivate)
{}

/// Subtitles are children of the title, so all lists are cleared before QObject deletes children.
CDVDTitle::~CDVDTitle()
{
    clearChildList(d->chapters);
    clearChildList(d->tracks);
    clearChildList(d->subtitles);
    delete d;
}

int CDVDTitle::angles() const
{
    return d->angles;
}

void CDVDTitle::setAngles(int angles)
{
    d->angles = angles;
}

double CDVDTitle::duration() const
{
    return d->duration;
}

void CDVDTitle::setDuration(double seconds)
{
    d->duration = seconds;
}

bool CDVDTitle::isMainTitle() const
{
    return d->isMainTitle;
}

void CDVDTitle::setIsMainTitle(bool isMainTitle)
{
    d->isMainTitle = isMainTitle;
}

int CDVDTitle::chapterCount() const
{
    return d->chapters.count();
}

void CDVDTitle::setChapterCount(int count)
{
    resizeChildList(d->chapters, count);
}

CDVDChapter* CDVDTitle::chapter(int index) const
{
    return childAt(d->chapters, index);
}

int CDVDTitle::trackCount() const
{
    return d->tracks.count();
}

void CDVDTitle::setTrackCount(int count)
{
    resizeChildList(d->tracks, count);
}

CDVDTrack* CDVDTitle::track(int index) const
{
    return childAt(d->tracks, index);
}

int CDVDTitle::subtitleCount() const
{
    return d->subtitles.count();
}

void CDVDTitle::setSubtitleCount(int count)
{
    resizeChildList(d->subtitles, count, this);
}

CDVDSubtitle* CDVDTitle::subtitle(int index) const
{
    return childAt(d->subtitles, index);
}

CDVDVideo* CDVDTitle::video() const
{
    return &d->video;
}

void CDVDTitle::setVideo(CDVDVideo* video)
{
    d->video = *video;
}

CMovieInfomation* CDVDTitle::movieInfo() const
{
    return &d->movieInfo;
}

void CDVDTitle::setMovieInfo(CMovieInfomation* info)
{
    d->movieInfo = *info;
}

} // namespace Vesk
