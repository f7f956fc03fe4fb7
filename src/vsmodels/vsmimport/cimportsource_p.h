// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <QtCore/QSharedData>
#include <QtCore/QStringList>

namespace Vesk {

/// What CImportSource objects share.
class CImportSourcePrivate : public QSharedData
{
public:
    QStringList sources;
    bool forImport = false;
    bool forPlay = false;
    bool forConvert = false;
};

} // namespace Vesk
