// SPDX-License-Identifier: LGPL-2.1-or-later
#include "cbdtitle.h"

#include "childlist.h"

namespace Vesk {

class CBDTitlePrivate
{
public:
    ~CBDTitlePrivate() { clearChildList(chapters); }

    QList<CBDChapter*> chapters;
    double duration = 0.0;
    int titleId = -1;
    QList<CBDFileClip*> clips; ///< owned by their files
};

CBDTitle::CBDTitle(QObject* parent)
    : QObject(parent)
    , d(new CBDTitlePrivate)
{}

CBDTitle::~CBDTitle()
{
    delete d;
}

double CBDTitle::duration() const
{
    return d->duration;
}

void CBDTitle::setDuration(double seconds)
{
    d->duration = seconds;
}

int CBDTitle::titleId() const
{
    return d->titleId;
}

void CBDTitle::setTitleId(int id)
{
    d->titleId = id;
}

int CBDTitle::chapterCount() const
{
    return d->chapters.count();
}

void CBDTitle::setChapterCount(int count)
{
    resizeChildList(d->chapters, count);
}

CBDChapter* CBDTitle::chapter(int index) const
{
    return childAt(d->chapters, index);
}

int CBDTitle::clipCount() const
{
    return d->clips.count();
}

CBDFileClip* CBDTitle::clip(int index) const
{
    return childAt(d->clips, index);
}

void CBDTitle::appendClip(CBDFileClip* clip)
{
    d->clips.append(clip);
}

} // namespace Vesk
