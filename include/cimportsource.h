// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspimportglobal.h"

#include <QtCore/QObject>
#include <QtCore/QSharedData>
#include <QtCore/QStringList>

namespace Vesk {

class CImportSourcePrivate;

/// What to import, and what for.
///
/// Copies share one record and no write detaches it. A running import shares the host's record too:
/// the list is read once when it starts, the flags as it goes.
class VSPIMPORT_EXPORT CImportSource : public QObject
{
    Q_OBJECT

public:
    /// With a record of its own: no paths, for nothing.
    CImportSource(QObject* parent = 0);
    /// A new object without parent that shares the record of `other`.
    CImportSource(const CImportSource& other);
    /// Shares the record of `other` and lets go of this object's own.
    CImportSource& operator=(const CImportSource& other);
    virtual ~CImportSource();

    /// Media files, folders, disc images, DVD and Blu-ray folders, DVD IFO files. A path where
    /// nothing is gives neither a task nor an error: a host that wants to tell looks for itself.
    QStringList sources() const;
    void setSources(const QStringList& paths);

    /// Into the host's list: snapshots are taken.
    bool forImport() const;
    void setForImport(bool forImport);

    /// For playing. Changes nothing in the import.
    bool forPlay() const;
    void setForPlay(bool forPlay);

    /// For an immediate conversion: snapshots are taken, media files of all formats are tried, and
    /// errors are not reported.
    bool forConvert() const;
    void setForConvert(bool forConvert);

    /// The record, of a class that is the module's own.
    CImportSourcePrivate* d_func();
    const CImportSourcePrivate* d_func() const;

protected:
    /// Shares the record `dd`.
    CImportSource(CImportSourcePrivate& dd, QObject* parent);

private:
    QExplicitlySharedDataPointer<CImportSourcePrivate> d;
};

} // namespace Vesk
