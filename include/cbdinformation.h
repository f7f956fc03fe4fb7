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
    CBDInformation(QObject* parent = 0);
    CBDInformation(const CBDInformation& other);
    CBDInformation& operator=(const CBDInformation& other);
    virtual ~CBDInformation();

    /// Count setters shrink from the end and grow by default objects; a negative count is 0.
    /// Lookups outside the list give null.
    int fileCount() const;
    void setFileCount(int count);
    CBDFile* file(int index) const;

    int titleCount() const;
    void setTitleCount(int count);
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
