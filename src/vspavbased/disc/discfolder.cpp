// SPDX-License-Identifier: GPL-2.0-or-later
#include "disc/discfolder.h"

#include "bytes/plainfile.h"
#include "log.h"

#include <filesystem>

namespace fs = std::filesystem;

namespace engine {

DiscFolder::DiscFolder(const std::string& root)
    : DiscFiles(root)
    , m_root(root)
{}

bool DiscFolder::hasFolder(const std::string& path) const
{
    std::error_code error;
    return fs::is_directory(absolute(path), error);
}

ByteSourcePtr DiscFolder::openFile(const std::string& path) const
{
    return PlainFile::open(absolute(path));
}

std::vector<DiscFiles::Entry> DiscFolder::entries(const std::string& folder) const
{
    std::vector<Entry> found;
    if (!hasFolder(folder))
        return found;
    std::error_code error;
    fs::directory_iterator entry(absolute(folder), error);
    for (; !error && entry != fs::directory_iterator() && found.size() < mostEntries;
         entry.increment(error)) {
        std::error_code statusError;
        const bool isFolder = entry->is_directory(statusError);
        if (isFolder || entry->is_regular_file(statusError))
            found.push_back({entry->path().filename().string(), isFolder});
    }
    if (error)
        log(absolute(folder) + ": " + error.message());
    return found;
}

} // namespace engine
