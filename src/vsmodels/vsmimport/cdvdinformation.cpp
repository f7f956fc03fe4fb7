// SPDX-License-Identifier: LGPL-2.1-or-later
#include "cdvdinformation.h"

#include "childlist.h"

namespace Vesk {

class CDVDInformationPrivate : public QSharedData
{
public:
    ~CDVDInformationPrivate() { clearChildList(titles); }

    QList<CDVDTitle*> titles;
    QString url;
    bool isScrambled = false;
    QString dvdName;
};

CDVDInformation::CDVDInformation(QObject* parent)
    : QObject(parent)
    , d(new CDVDInformationPrivate)
{}

CDVDInformation::CDVDInformation(const CDVDInformation& other)
    : QObject()
    , d(other.d)
{}

CDVDInformation& CDVDInformation::operator=(const CDVDInformation& other)
{
    d = other.d;
    return *this;
}

CDVDInformation::~CDVDInformation() {}

int CDVDInformation::titleCount() const
{
    return d->titles.count();
}

void CDVDInformation::setTitleCount(int count)
{
    resizeChildList(d->titles, count);
}

CDVDTitle* CDVDInformation::title(int index) const
{
    return childAt(d->titles, index);
}

QString CDVDInformation::url() const
{
    return d->url;
}

void CDVDInformation::setUrl(const QString& url)
{
    if (d->url != url)
        d->url = url;
}

QString CDVDInformation::dvdName() const
{
    return d->dvdName;
}

void CDVDInformation::setDvdName(const QString& name)
{
    if (d->dvdName != name)
        d->dvdName = name;
}

bool CDVDInformation::isScrambled() const
{
    return d->isScrambled;
}

void CDVDInformation::setIsScrambled(bool scrambled)
{
    d->isScrambled = scrambled;
}

} // namespace Vesk
