// SPDX-License-Identifier: GPL-2.0-or-later
#include "disc/discfolder.h"

#include "bytes/plainfile.h"
#include "files/files.h"

namespace engine {

DiscFolder::DiscFolder(const std::string& root)
    : DiscFiles(root)
    , m_root(root)
{}

bool DiscFolder::hasFolder(const std::string& path) const
{
    return files().kindOf(absolute(path)) == FileKind::folder;
}

ByteSourcePtr DiscFolder::openFile(const std::string& path) const
{
    return PlainFile::open(absolute(path));
}

std::vector<DiscFiles::Entry> DiscFolder::entries(const std::string& folder) const
{
    std::vector<Entry> found;
    for (FolderEntry& entry : files().list(absolute(folder), mostEntries))
        found.push_back({std::move(entry.name), entry.isFolder});
    return found;
}

} // namespace engine
