// SPDX-License-Identifier: LGPL-2.1-or-later
#include "cdvdvideo.h"

namespace Vesk {

class CDVDVideoPrivate : public QSharedData
{
public:
    int number1 = 0;
    int number2 = 0;
    int number3 = 0;
    QString text1;
    QString text2;
    double real1 = 0.0;
};

CDVDVideo::CDVDVideo(QObject* parent)
    : QObject(parent)
    , d(new CDVDVideoPrivate)
{}

CDVDVideo::CDVDVideo(const CDVDVideo& other)
    : QObject()
    , d(other.d)
{}

CDVDVideo& CDVDVideo::operator=(const CDVDVideo& other)
{
    d = other.d;
    return *this;
}

CDVDVideo::~CDVDVideo() {}

int CDVDVideo::number1() const
{
    return d->number1;
}

void CDVDVideo::setNumber1(int number)
{
    d->number1 = number;
}

int CDVDVideo::number2() const
{
    return d->number2;
}

void CDVDVideo::setNumber2(int number)
{
    d->number2 = number;
}

int CDVDVideo::number3() const
{
    return d->number3;
}

void CDVDVideo::setNumber3(int number)
{
    d->number3 = number;
}

QString CDVDVideo::text1() const
{
    return d->text1;
}

void CDVDVideo::setText1(const QString& text)
{
    d->text1 = text;
}

QString CDVDVideo::text2() const
{
    return d->text2;
}

void CDVDVideo::setText2(const QString& text)
{
    d->text2 = text;
}

double CDVDVideo::real1() const
{
    return d->real1;
}

void CDVDVideo::setReal1(double real)
{
    d->real1 = real;
}

} // namespace Vesk
