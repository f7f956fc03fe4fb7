// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "cimportmodel.h"
#include "vspbased/cveskobject.h"

#include <QtCore/QList>
#include <QtCore/QReadWriteLock>
#include <QtCore/QString>

namespace Vesk {

struct ImportErrorRecord
{
    CImportModel::ErrorType type;
    QString url; ///< absolute path of the item
};

class CImportModelPrivate : public CVeskObjectPrivate
{
public:
    CImportModelPrivate()
        : savedCount(0)
    {}

    QReadWriteLock lock;             ///< guards what follows
    QList<ImportErrorRecord> errors; ///< all errors ever reported; none is removed
    int savedCount;                  ///< how many of them saveReport() has written

    VESK_DECLARE_PUBLIC(CImportModel)
};

} // namespace Vesk
