// SPDX-License-Identifier: LGPL-2.1-or-later
#include "cbdfile.h"

#include "cbdfileclip.h"
#include "childlist.h"
#include "clipindex.h"
#include "vspbased/veskqt.h"

namespace Vesk {

namespace {

bool startsEarlier(const CBDFileClip* a, const CBDFileClip* b)
{
    return a->timeStart() < b->timeStart();
}

/// Leaves, of each run of clips in `sorted` with the same start, only the last.
void removeEqualStarts(QList<CBDFileClip*>& sorted)
{
    double previousStart = -1.0;
    for (int i = sorted.count() - 1; i >= 0; --i) {
        const double start = sorted.at(i)->timeStart();
        if (!qFuzzyCompare(previousStart, -1.0) && qFuzzyCompare(start, previousStart))
            sorted.removeAt(i);
        else
            previousStart = start;
    }
}

} // namespace

class CBDFilePrivate
{
public:
    ~CBDFilePrivate()
    {
        snapList.clear();
        clearChildList(clips);
    }

    QList<CBDFileClip*> clips;
    ClipIndex index;
    QList<CBDFileClip*> snapList;
    int snapListClipCount = 0;
    CMovieInfomation movieInfo;
    QString url;
};

CBDFile::CBDFile(QObject* parent)
    : QObject(parent)
    , d(new CBDFilePrivate)
{}

CBDFile::~CBDFile()
{
    delete d;
}

CMovieInfomation* CBDFile::movieInfo() const
{
    return &d->movieInfo;
}

void CBDFile::setMovieInfo(CMovieInfomation* info)
{
    d->movieInfo = *info;
}

QString CBDFile::url() const
{
    return d->url;
}

void CBDFile::setUrl(const QString& url)
{
    if (d->url != url)
        d->url = url;
}

QList<CBDFileClip*>& CBDFile::clips()
{
    return d->clips;
}

CBDFileClip* CBDFile::appendClip(double timeStart, double timeEnd)
{
    if (CBDFileClip* known = d->index.find(d->clips, timeStart, timeEnd))
        return known;
    CBDFileClip* clip = new CBDFileClip(0);
    clip->setTimeStart(timeStart);
    clip->setTimeEnd(timeEnd);
    clip->setFile(this);
    return clip;
}

QObject* CBDFile::clipObject(CBDFileClip* clip)
{
    return clip;
}

void CBDFile::clipMoved()
{
    d->index.clear();
}

bool CBDFile::empty() const
{
    return d->clips.isEmpty();
}

QList<CBDFileClip*>& CBDFile::snapClips()
{
    if (d->clips.count() != d->snapListClipCount) {
        d->snapList = d->clips;
        quickSort(d->snapList, startsEarlier);
        removeEqualStarts(d->snapList);
        d->snapListClipCount = d->clips.count();
    }
    return d->snapList;
}

} // namespace Vesk
