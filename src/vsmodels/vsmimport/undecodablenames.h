// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace Vesk {

/// The names of files and folders in the folder `path` that are no valid text in the file system's
/// encoding, as far as they can be written: what cannot be is replaced. Hidden entries and special
/// files are left out. Always empty where file names are text.
QStringList undecodableNames(const QString& path);

} // namespace Vesk
