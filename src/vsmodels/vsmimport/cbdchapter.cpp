// SPDX-License-Identifier: LGPL-2.1-or-later
#include "cbdchapter.h"

#include "childlist.h"

namespace Vesk {

class CBDChapterPrivate
{
public:
    double timeStamp = 0.0;
    double duration = 0.0;
    CBDTitle* title = nullptr;
    QList<CBDFileClip*> clips; ///< owned by their files
};

CBDChapter::CBDChapter(QObject* parent)
    : QObject(parent)
    , d(new CBDChapterPrivate)
{}

CBDChapter::~CBDChapter()
{
    delete d;
}

double CBDChapter::timeStamp() const
{
    return d->timeStamp;
}

void CBDChapter::setTimeStamp(double seconds)
{
    d->timeStamp = seconds;
}

double CBDChapter::duration() const
{
    return d->duration;
}

void CBDChapter::setDuration(double seconds)
{
    d->duration = seconds;
}

CBDTitle* CBDChapter::title() const
{
    return d->title;
}

void CBDChapter::setTitle(CBDTitle* title)
{
    d->title = title;
}

int CBDChapter::clipCount() const
{
    return d->clips.count();
}

CBDFileClip* CBDChapter::clip(int index) const
{
    return childAt(d->clips, index);
}

void CBDChapter::appendClip(CBDFileClip* clip)
{
    d->clips.append(clip);
}

} // namespace Vesk
