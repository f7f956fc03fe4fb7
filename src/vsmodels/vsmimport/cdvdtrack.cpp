// SPDX-License-Identifier: LGPL-2.1-or-later
#include "cdvdtrack.h"

namespace Vesk {

class CDVDTrackPrivate
{
public:
    QString text1;
    QString text2;
    QString text3;
    int number1 = -1;
    int number2 = 0;
    int number3 = 0;
    int number4 = -1;
};

CDVDTrack::CDVDTrack(QObject* parent)
    : QObject(parent)
    , d(new CDVDTrackPrivate)
{}

CDVDTrack::~CDVDTrack()
{
    delete d;
}

QString CDVDTrack::text1() const
{
    return d->text1;
}

void CDVDTrack::setText1(QString text)
{
    d->text1 = text;
}

QString CDVDTrack::text2() const
{
    return d->text2;
}

void CDVDTrack::setText2(QString text)
{
    d->text2 = text;
}

QString CDVDTrack::text3() const
{
    return d->text3;
}

void CDVDTrack::setText3(QString text)
{
    d->text3 = text;
}

int CDVDTrack::number1() const
{
    return d->number1;
}

void CDVDTrack::setNumber1(int number)
{
    d->number1 = number;
}

int CDVDTrack::number2() const
{
    return d->number2;
}

void CDVDTrack::setNumber2(int number)
{
    d->number2 = number;
}

int CDVDTrack::number3() const
{
    return d->number3;
}

void CDVDTrack::setNumber3(int number)
{
    d->number3 = number;
}

int CDVDTrack::number4() const
{
    return d->number4;
}

void CDVDTrack::setNumber4(int number)
{
    d->number4 = number;
}

} // namespace Vesk
