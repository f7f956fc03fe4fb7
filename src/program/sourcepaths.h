// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// The paths of the command line, looked at before the import gets them.
struct SourcePaths
{
    QStringList given;       ///< as text; what is no valid text is replaced
    QStringList sources;     ///< for the import
    QStringList undecodable; ///< exist perhaps, but their names are no valid text
    QStringList missing;     ///< nothing there
    QStringList special;     ///< neither file nor folder
    QStringList unreadable;  ///< folders, at or below the sources, that cannot be listed

    /// A part of a disc (its VIDEO_TS, BDMV or BDAV folder, or a file of its navigation there)
    /// stands for the disc, unless the import knows it by itself.
    static SourcePaths inspect(const QList<QByteArray>& paths);
};
