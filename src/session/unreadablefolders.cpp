// SPDX-License-Identifier: GPL-2.0-or-later
#include "unreadablefolders.h"

#include <QtCore/QFile>

#include <cerrno>
#include <fts.h>
#include <memory>
#include <unistd.h>

namespace {

struct CloseWalk
{
    void operator()(FTS* walk) const { fts_close(walk); }
};

bool isUnreadable(const FTSENT* entry)
{
    switch (entry->fts_info) {
    case FTS_D:
        return access(entry->fts_accpath, R_OK | X_OK) != 0;
    case FTS_DNR:
    case FTS_ERR:
    case FTS_NS:
        return entry->fts_errno != ENOENT; // else it has gone since
    default:
        return false;
    }
}

} // namespace

QStringList unreadableFolders(const QByteArray& path)
{
    QStringList folders;
    QByteArray root(path);
    char* const roots[] = {root.data(), nullptr};
    const std::unique_ptr<FTS, CloseWalk> walk(
        fts_open(roots, FTS_PHYSICAL | FTS_COMFOLLOW | FTS_NOCHDIR | FTS_NOSTAT, nullptr));
    while (FTSENT* entry = walk ? fts_read(walk.get()) : nullptr) {
        if (!isUnreadable(entry))
            continue;
        folders.append(QFile::decodeName(entry->fts_path));
        fts_set(walk.get(), entry, FTS_SKIP);
    }
    return folders;
}
