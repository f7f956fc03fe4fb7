// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspimportglobal.h"

#include <QtCore/QObject>
#include <QtCore/QString>

namespace Vesk {

class CMovieMetaDataPrivate;

/// One tag of a movie. Owned by its CMovieInfomation. Setters emit when the value changes.
class VSPIMPORT_EXPORT CMovieMetaData : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString key READ key WRITE setKey NOTIFY keyChanged)
    Q_PROPERTY(QString value READ value WRITE setValue NOTIFY valueChanged)

public:
    /// Without key and value.
    CMovieMetaData(QObject* parent = 0);
    virtual ~CMovieMetaData();

    /// What the tag is about: "title", "artist".
    QString key() const;
    void setKey(const QString& key);

    /// What it says.
    QString value() const;
    void setValue(const QString& value);

Q_SIGNALS:
    void keyChanged();   ///< emitted by setKey() with another key
    void valueChanged(); ///< emitted by setValue() with another value

private:
    CMovieMetaDataPrivate* d;

    Q_DISABLE_COPY(CMovieMetaData)
};

} // namespace Vesk
