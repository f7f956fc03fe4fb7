// SPDX-License-Identifier: LGPL-2.1-or-later
#include "cbdinformation.h"

#include "childlist.h"

namespace Vesk {

class CBDInformationPrivate : public QSharedData
{
public:
    /// Titles refer to the clips of files, so they go first.
    ~CBDInformationPrivate()
    {
        clearChildList(titles);
        clearChildList(files);
    }

    QList<CBDFile*> files;
    QList<CBDTitle*> titles;
    QString url;
    QString bdName;
};

CBDInformation::CBDInformation(QObject* parent)
    : QObject(parent)
    , d(new CBDInformationPrivate)
{}

CBDInformation::CBDInformation(const CBDInformation& other)
    : QObject()
    , d(other.d)
{}

CBDInformation& CBDInformation::operator=(const CBDInformation& other)
{
    d = other.d;
    return *this;
}

CBDInformation::~CBDInformation() {}

int CBDInformation::fileCount() const
{
    return d->files.count();
}

void CBDInformation::setFileCount(int count)
{
    resizeChildList(d->files, count);
}

CBDFile* CBDInformation::file(int index) const
{
    return childAt(d->files, index);
}

int CBDInformation::titleCount() const
{
    return d->titles.count();
}

void CBDInformation::setTitleCount(int count)
{
    resizeChildList(d->titles, count);
}

CBDTitle* CBDInformation::title(int index) const
{
    return childAt(d->titles, index);
}

QString CBDInformation::url() const
{
    return d->url;
}

void CBDInformation::setUrl(const QString& url)
{
    if (d->url != url)
        d->url = url;
}

QString CBDInformation::bdName() const
{
    return d->bdName;
}

void CBDInformation::setBdName(const QString& name)
{
    if (d->bdName != name)
        d->bdName = name;
}

} // namespace Vesk
