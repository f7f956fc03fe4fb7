// SPDX-License-Identifier: GPL-2.0-or-later
#include "unreadablefolders.h"

#include <QtCore/QFile>

#include <fts.h>
#include <memory>
#include <unistd.h>

namespace {

struct CloseWalk
{
    void operator()(FTS* walk) const { fts_close(walk); }
};

bool isReadableFolder(const FTSENT* entry)
{
    return access(entry->fts_accpath, R_OK | X_OK) == 0;
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
        const bool isClosed = entry->fts_info == FTS_D && !isReadableFolder(entry);
        if (isClosed)
            fts_set(walk.get(), entry, FTS_SKIP);
        if (isClosed || entry->fts_info == FTS_DNR || entry->fts_info == FTS_ERR)
            folders.append(QFile::decodeName(entry->fts_path));
    }
    return folders;
}
