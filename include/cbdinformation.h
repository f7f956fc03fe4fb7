// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "cbdfile.h"
#include "cbdtitle.h"
#include "vspimportglobal.h"

#include <QtCore/QObject>
#include <QtCore/QSharedData>
#include <QtCore/QString>

namespace Vesk {

class CBDInformationPrivate;

/// A Blu-ray disc: its stream files, and the titles that play parts of them.
///
/// Copies share one record, as those of CMovieInfomation do. The record owns files and titles.
class VSPIMPORT_EXPORT CBDInformation : public QObject
{
    Q_OBJECT

public:
    /// With a record of its own, which is empty.
    CBDInformation(QObject* parent = 0);
    /// A new object without parent that shares the record of `other`.
    CBDInformation(const CBDInformation& other);
    /// Shares the record of `other` and lets go of this object's own.
    CBDInformation& operator=(const CBDInformation& other);
    virtual ~CBDInformation();

    /// The disc's stream files. Setting shrinks from the end, deleting what it removes, and grows
    /// by default objects; a negative count is 0.
    int fileCount() const;
    void setFileCount(int count);
    /// Null outside the list. Owned by the record.
    CBDFile* file(int index) const;

    /// The disc's titles. Setting shrinks from the end, deleting what it removes, and grows by
    /// default objects; a negative count is 0.
    int titleCount() const;
    void setTitleCount(int count);
    /// Null outside the list. Owned by the record.
    CBDTitle* title(int index) const;

    /// Path of the source.
    QString url() const;
    void setUrl(const QString& url);

    /// The disc's name; may be empty.
    QString bdName() const;
    void setBdName(const QString& name);

private:
    QExplicitlySharedDataPointer<CBDInformationPrivate> d;
};

} // namespace Vesk
