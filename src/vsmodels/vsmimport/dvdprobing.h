// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <QtCore/QString>

namespace AVBased {
class IAVImporter;
}

namespace Vesk {

class CDVDInformation;
class CImportTask;

/// Opens the DVD at `path` and describes it in a new task, which the caller owns. Null when the
/// engine cannot open it as a DVD.
CImportTask* probeDvd(const QString& path);

/// Appends the disc's titles of at least two seconds, and sets its name. False when a pointer is
/// null or the importer knows no DVD.
bool copyDvdInfo(AVBased::IAVImporter* importer, CDVDInformation* info);

} // namespace Vesk
