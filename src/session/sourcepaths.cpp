// SPDX-License-Identifier: GPL-2.0-or-later
#include "sourcepaths.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QtEndian>

namespace {

/// Beyond this size the import takes an IFO file for its disc or title set.
const qint64 largestStrayIfo = Q_INT64_C(10) * 1024 * 1024;

bool isOneOf(const QString& name, std::initializer_list<const char*> names)
{
    for (const char* candidate : names) {
        if (name.compare(QLatin1String(candidate), Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

/// The name of a file or folder, also of one given with a separator behind it, or as ".".
QFileInfo named(const QString& path)
{
    return QFileInfo(QDir::cleanPath(QFileInfo(path).absoluteFilePath()));
}

bool isNavigationFile(const QFileInfo& file)
{
    if (!file.isFile())
        return false;
    const QString folder = file.dir().dirName();
    if (isOneOf(file.suffix(), {"ifo"}))
        return isOneOf(folder, {"VIDEO_TS"}) && file.size() <= largestStrayIfo;
    return isOneOf(file.fileName(),
                   {"index.bdmv", "MovieObject.bdmv", "INDEX.BDM", "MOVIEOBJ.BDM"}) &&
           isOneOf(folder, {"BDMV"});
}

QString discOf(const QString& path)
{
    const QFileInfo info = named(path);
    if (isNavigationFile(info))
        return QFileInfo(info.absolutePath()).absolutePath();
    if (info.isDir() && isOneOf(info.fileName(), {"VIDEO_TS", "BDMV", "BDAV"}))
        return info.absolutePath();
    return path;
}

} // namespace

SourcePaths SourcePaths::inspect(const QList<QByteArray>& paths, int shard, int shardCount)
{
    SourcePaths result;
    for (const QByteArray& bytes : paths) {
        const QString path = QFile::decodeName(bytes);
        const QFileInfo info(path);
        result.given.append(path);
        const bool isDecodable = QFile::encodeName(path) == bytes;
        if (isDecodable && (info.isFile() || info.isDir()))
            result.sources.append(discOf(path));
        else if (!isInShard(bytes, shard, shardCount))
            continue;
        else if (!isDecodable)
            result.undecodable.append(info.absoluteFilePath());
        else
            (info.exists() ? result.special : result.missing).append(path);
    }
    return result;
}

bool SourcePaths::isInShard(const QByteArray& path, int shard, int count)
{
    const QByteArray code = QCryptographicHash::hash(path, QCryptographicHash::Sha1);
    return qFromBigEndian<quint64>(code.constData()) % quint64(count) == quint64(shard - 1);
}
