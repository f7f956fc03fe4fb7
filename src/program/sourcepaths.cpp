// SPDX-License-Identifier: GPL-2.0-or-later
#include "sourcepaths.h"

#include "unreadablefolders.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

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

SourcePaths SourcePaths::inspect(const QList<QByteArray>& paths)
{
    SourcePaths result;
    for (const QByteArray& bytes : paths) {
        const QString path = QFile::decodeName(bytes);
        const QFileInfo info(path);
        result.given.append(path);
        if (QFile::encodeName(path) != bytes)
            result.undecodable.append(info.absoluteFilePath());
        else if (info.isFile() || info.isDir())
            result.sources.append(discOf(path));
        else
            (info.exists() ? result.special : result.missing).append(path);
        if (info.isDir())
            result.unreadable += unreadableFolders(bytes);
    }
    return result;
}
