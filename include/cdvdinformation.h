// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "cdvdtitle.h"
#include "vspimportglobal.h"

#include <QtCore/QObject>
#include <QtCore/QSharedData>
#include <QtCore/QString>

namespace Vesk {

class CDVDInformationPrivate;

/// A DVD with its titles. Copies share one record, as those of CMovieInfomation do; the record owns
/// the titles.
class VSPIMPORT_EXPORT CDVDInformation : public QObject
{
    Q_OBJECT

public:
    /// With a record of its own, which is empty.
    CDVDInformation(QObject* parent = 0);
    /// A new object without parent that shares the record of `other`.
    CDVDInformation(const CDVDInformation& other);
    /// Shares the record of `other` and lets go of this object's own.
    CDVDInformation& operator=(const CDVDInformation& other);
    virtual ~CDVDInformation();

    /// Setting shrinks from the end, deleting what it removes, and grows by default objects; a
    /// negative count is 0.
    int titleCount() const;
    void setTitleCount(int count);
    /// Null outside the list.
    CDVDTitle* title(int index) const;

    /// Path of the source.
    Q_INVOKABLE QString url() const;
    void setUrl(const QString& url);

    /// The disc's name; may be empty.
    QString dvdName() const;
    void setDvdName(const QString& name);

    /// True when the disc's video is scrambled; it then has no pictures.
    bool isScrambled() const;
    void setIsScrambled(bool scrambled);

private:
    QExplicitlySharedDataPointer<CDVDInformationPrivate> d;
};

} // namespace Vesk
