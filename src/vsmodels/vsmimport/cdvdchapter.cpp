// SPDX-License-Identifier: LGPL-2.1-or-later
#include "cdvdchapter.h"

namespace Vesk {

class CDVDChapterPrivate
{
public:
    double timeStart = 0.0;
    double timeEnd = 0.0;
    CDVDTitle* title = nullptr;
};

CDVDChapter::CDVDChapter(QObject* parent)
    : QObject(parent)
    , d(new CDVDChapterPrivate)
{}

CDVDChapter::~CDVDChapter()
{
    delete d;
}

double CDVDChapter::timeStart() const
{
    return d->timeStart;
}

void CDVDChapter::setTimeStart(double seconds)
{
    d->timeStart = seconds;
}

double CDVDChapter::timeEnd() const
{
    return d->timeEnd;
}

void CDVDChapter::setTimeEnd(double seconds)
{
    d->timeEnd = seconds;
}

double CDVDChapter::duration() const
{
    return d->timeEnd - d->timeStart;
}

CDVDTitle* CDVDChapter::title() const
{
    return d->title;
}

void CDVDChapter::setTitle(CDVDTitle* title)
{
    d->title = title;
}

} // namespace Vesk
