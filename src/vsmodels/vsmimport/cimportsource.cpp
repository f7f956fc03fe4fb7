// SPDX-License-Identifier: LGPL-2.1-or-later
#include "cimportsource.h"

#include "cimportsource_p.h"

namespace Vesk {

CImportSource::CImportSource(QObject* parent)
    : QObject(parent)
    , d(new CImportSourcePrivate)
{}

CImportSource::CImportSource(CImportSourcePrivate& dd, QObject* parent)
    : QObject(parent)
    , d(&dd)
{}

CImportSource::CImportSource(const CImportSource& other)
    : QObject()
    , d(other.d)
{}

CImportSource& CImportSource::operator=(const CImportSource& other)
{
    d = other.d;
    return *this;
}

CImportSource::~CImportSource() {}

QStringList CImportSource::sources() const
{
    return d->sources;
}

void CImportSource::setSources(const QStringList& paths)
{
    d->sources = paths;
}

bool CImportSource::forImport() const
{
    return d->forImport;
}

void CImportSource::setForImport(bool forImport)
{
    d->forImport = forImport;
}

bool CImportSource::forPlay() const
{
    return d->forPlay;
}

void CImportSource::setForPlay(bool forPlay)
{
    d->forPlay = forPlay;
}

bool CImportSource::forConvert() const
{
    return d->forConvert;
}

void CImportSource::setForConvert(bool forConvert)
{
    d->forConvert = forConvert;
}

CImportSourcePrivate* CImportSource::d_func()
{
    return d.data();
}

const CImportSourcePrivate* CImportSource::d_func() const
{
    return d.constData();
}

} // namespace Vesk
