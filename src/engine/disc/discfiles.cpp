// SPDX-License-Identifier: GPL-2.0-or-later
#include "disc/discfiles.h"

#include "disc/discfolder.h"
#include "disc/discimage.h"
#include "enginelink/log.h"
#include "files/files.h"
#include "text.h"

#include <algorithm>
#include <climits>
#include <filesystem>

namespace fs = std::filesystem;

namespace engine {

std::unique_ptr<DiscFiles> DiscFiles::open(const std::string& path)
{
    if (files().kindOf(path) == FileKind::folder)
        return std::make_unique<DiscFolder>(path);
    return DiscImage::open(path);
}

std::optional<DiscPath> DiscFiles::split(const std::string& path)
{
    if (path.size() > PATH_MAX)
        return std::nullopt;
    fs::path found(path);
    while (found.has_relative_path() && files().kindOf(found) == FileKind::none)
        found = found.parent_path();
    if (files().kindOf(found) != FileKind::file)
        return std::nullopt;
    // A file that is there lies in the stream folder below the root folder of its disc.
    if (found == path)
        found = found.parent_path().parent_path().parent_path();
    return DiscPath{found.string(), fs::path(path).lexically_relative(found).string()};
}

std::optional<std::string> DiscFiles::findFolder(const std::string& name) const
{
    for (const Entry& entry : entries({})) {
        if (entry.isFolder && toUpper(entry.name) == toUpper(name))
            return entry.name;
    }
    return std::nullopt;
}

std::vector<std::string> DiscFiles::fileNames(const std::string& folder,
                                              const std::string& suffix) const
{
    std::vector<std::string> names;
    for (Entry& entry : entries(folder)) {
        const bool isHidden = entry.name[0] == '.';
        if (!entry.isFolder && !isHidden && endsWith(toUpper(entry.name), toUpper(suffix)))
            names.push_back(std::move(entry.name));
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::optional<Bytes> DiscFiles::read(const std::string& path, std::size_t most) const
{
    const ByteSourcePtr file = openFile(path);
    if (!file || m_tableBytesLeft == 0)
        return std::nullopt;
    Bytes bytes = readBeginning(*file, std::min(most, m_tableBytesLeft));
    m_tableBytesLeft -= bytes.size();
    if (m_tableBytesLeft == 0)
        log(m_path + ": more tables than a disc can have");
    return bytes;
}

} // namespace engine
