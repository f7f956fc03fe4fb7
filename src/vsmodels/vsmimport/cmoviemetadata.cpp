// SPDX-License-Identifier: LGPL-2.1-or-later
#include "cmoviemetadata.h"

namespace Vesk {

class CMovieMetaDataPrivate
{
public:
    QString key;
    QString value;
};

CMovieMetaData::CMovieMetaData(QObject* parent)
    : QObject(parent)
    , d(new CMovieMetaDataPrivate)
{}

CMovieMetaData::~CMovieMetaData()
{
    delete d;
}

QString CMovieMetaData::key() const
{
    return d->key;
}

void CMovieMetaData::setKey(const QString& key)
{
    if (d->key == key)
        return;
    d->key = key;
    Q_EMIT keyChanged();
}

QString CMovieMetaData::value() const
{
    return d->value;
}

void CMovieMetaData::setValue(const QString& value)
{
    if (d->value == value)
        return;
    d->value = value;
    Q_EMIT valueChanged();
}

} // namespace Vesk
