// SPDX-License-Identifier: LGPL-2.1-or-later
#include "undecodablenames.h"

#include <QtCore/QFile>

#ifdef Q_OS_UNIX
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <memory>
#endif

namespace Vesk {

#ifdef Q_OS_UNIX

namespace {

struct CloseFolder
{
    void operator()(DIR* folder) const { closedir(folder); }
};

typedef std::unique_ptr<DIR, CloseFolder> FolderPtr;

/// The folder `name` in `parent`; null when it cannot be listed.
FolderPtr openFolder(DIR* parent, const char* name)
{
    const int handle = openat(dirfd(parent), name, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    FolderPtr folder(handle == -1 ? 0 : fdopendir(handle));
    if (!folder && handle != -1)
        close(handle);
    return folder;
}

bool isEmptyFolder(DIR* parent, const char* name)
{
    const FolderPtr folder = openFolder(parent, name);
    while (const dirent* entry = folder ? readdir(folder.get()) : 0) {
        if (entry->d_name[0] != '.')
            return false;
    }
    return true;
}

bool isPlainAscii(const char* name)
{
    for (; *name; ++name) {
        if (*name & 0x80)
            return false;
    }
    return true;
}

bool isDecodable(const char* name)
{
    return isPlainAscii(name) || QFile::encodeName(QFile::decodeName(name)) == name;
}

/// UTF-8 is read with a mark for each byte that is none. Qt 4 would drop those from a file name,
/// and might leave the name of a neighbour.
QString textOf(const char* name)
{
    return QString::fromUtf8(name);
}

} // namespace

QList<UndecodableEntry> undecodableEntries(const QString& path)
{
    QList<UndecodableEntry> found;
    const FolderPtr folder(opendir(QFile::encodeName(path).constData()));
    while (const dirent* entry = folder ? readdir(folder.get()) : 0) {
        const char* name = entry->d_name;
        struct stat status;
        if (name[0] == '.' || isDecodable(name) ||
            fstatat(dirfd(folder.get()), name, &status, 0) != 0)
            continue;
        const bool isFolder = S_ISDIR(status.st_mode);
        if (isFolder ? isEmptyFolder(folder.get(), name) : !S_ISREG(status.st_mode))
            continue;
        const UndecodableEntry item = {textOf(name), isFolder, qint64(status.st_size)};
        found.append(item);
    }
    return found;
}

#else

QList<UndecodableEntry> undecodableEntries(const QString&)
{
    return QList<UndecodableEntry>();
}

#endif

} // namespace Vesk
