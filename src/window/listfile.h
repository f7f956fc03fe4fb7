// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QCoreApplication>
#include <QtCore/QStringList>

/// A list of sources in a file: their paths, one a line, as the command-line program reads them
/// with
/// --files-from; if one of them has a line's end in it, each ended by a NUL byte, for
/// --files0-from.
class ListFile
{
    Q_DECLARE_TR_FUNCTIONS(ListFile)

public:
    /// False, with the reason in `error`, when it cannot be written; what was there then remains.
    static bool write(const QString& fileName, const QStringList& paths, QString& error);
    /// Relative paths are below the file's folder. False when it cannot be read.
    static bool read(const QString& fileName, QStringList& paths, QString& error);
};
