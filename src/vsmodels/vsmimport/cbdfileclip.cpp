// SPDX-License-Identifier: LGPL-2.1-or-later
#include "cbdfileclip.h"

#include "cbdfile.h"

namespace Vesk {

class CBDFileClipPrivate
{
public:
    double timeStart = 0.0;
    double timeEnd = 0.0;
    CBDFile* file = nullptr;
    QString imageUrl;
};

CBDFileClip::CBDFileClip(QObject* parent)
    : QObject(parent)
    , d(new CBDFileClipPrivate)
{}

CBDFileClip::~CBDFileClip()
{
    delete d;
}

double CBDFileClip::timeStart() const
{
    return d->timeStart;
}

void CBDFileClip::setTimeStart(double seconds)
{
    d->timeStart = seconds;
    if (d->file)
        d->file->clipMoved();
}

double CBDFileClip::timeEnd() const
{
    return d->timeEnd;
}

void CBDFileClip::setTimeEnd(double seconds)
{
    d->timeEnd = seconds;
    if (d->file)
        d->file->clipMoved();
}

double CBDFileClip::duration() const
{
    return d->timeEnd - d->timeStart;
}

CBDFile* CBDFileClip::file() const
{
    return d->file;
}

void CBDFileClip::setFile(CBDFile* file)
{
    if (d->file == file)
        return;
    d->file = file;
    if (file)
        file->clips().append(this);
}

QString CBDFileClip::imageUrl() const
{
    return d->imageUrl;
}

void CBDFileClip::setImageUrl(const QString& url)
{
    if (d->imageUrl == url)
        return;
    d->imageUrl = url;
    Q_EMIT imageUrlChanged();
}

} // namespace Vesk
