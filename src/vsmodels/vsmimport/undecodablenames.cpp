// SPDX-License-Identifier: LGPL-2.1-or-later
#include "undecodablenames.h"

#include <QtCore/QFile>

#ifdef Q_OS_UNIX
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <memory>
#endif

namespace Vesk {

#ifdef Q_OS_UNIX

namespace {

struct CloseFolder
{
    void operator()(DIR* folder) const { closedir(folder); }
};

bool isFileOrFolder(DIR* folder, const char* name)
{
    struct stat status;
    return fstatat(dirfd(folder), name, &status, 0) == 0 &&
           (S_ISREG(status.st_mode) || S_ISDIR(status.st_mode));
}

bool isPlainAscii(const char* name)
{
    for (; *name; ++name) {
        if (*name & 0x80)
            return false;
    }
    return true;
}

} // namespace

QStringList undecodableNames(const QString& path)
{
    QStringList names;
    std::unique_ptr<DIR, CloseFolder> folder(opendir(QFile::encodeName(path).constData()));
    if (!folder)
        return names;
    while (const dirent* entry = readdir(folder.get())) {
        const char* name = entry->d_name;
        if (name[0] == '.' || isPlainAscii(name))
            continue;
        const QString decoded = QFile::decodeName(name);
        if (QFile::encodeName(decoded) != name && isFileOrFolder(folder.get(), name))
            names.append(decoded);
    }
    return names;
}

#else

QStringList undecodableNames(const QString&)
{
    return QStringList();
}

#endif

} // namespace Vesk
