// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QtGlobal>

namespace Vesk {

/// A file or folder whose name is no valid text in the file system's encoding. Qt cannot open it.
struct UndecodableEntry
{
    QString name; ///< as far as it can be written: what cannot be is replaced
    bool isFolder;
    qint64 size; ///< bytes, of a file
};

/// Those in the folder `path`. Hidden entries, special files and empty folders are left out. Always
/// empty where file names are text.
QList<UndecodableEntry> undecodableEntries(const QString& path);

} // namespace Vesk
