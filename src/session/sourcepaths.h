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

    /// A part of a disc (its VIDEO_TS, BDMV or BDAV folder, or a file of its navigation there)
    /// stands for the disc, unless the import knows it by itself. What is unusable belongs to one
    /// of `shardCount` parts, and is left out of the others.
    static SourcePaths inspect(const QList<QByteArray>& paths, int shard, int shardCount);

    /// Whether the item at `path` is of that part, 1 … `count`. By a hash, so that the parts are
    /// about of a size wherever the items lie, and every machine says the same.
    static bool isInShard(const QByteArray& path, int shard, int count);
};
