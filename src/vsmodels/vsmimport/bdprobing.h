// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <QtCore/QString>

namespace AVBased {
class IBDLoader;
}

namespace Vesk {

class CBDInformation;
class CImportTask;

/// Opens the Blu-ray disc at `path` and describes it in a new task, which the caller owns. Null
/// when the engine cannot open it as one.
CImportTask* probeBd(const QString& path);

/// Appends the disc's stream files and titles, and sets its name. False when a pointer is null or
/// the loader has no files or no titles to list.
bool copyBdInfo(AVBased::IBDLoader* loader, CBDInformation* info);

} // namespace Vesk
