// SPDX-License-Identifier: GPL-2.0-or-later
#include "disc/discimage.h"

#include "bytes/plainfile.h"
#include "disc/isovolume.h"
#include "disc/udfvolume.h"

#include <algorithm>

namespace engine {

std::unique_ptr<DiscImage> DiscImage::open(const std::string& path)
{
    const auto file = PlainFile::open(path);
    if (!file)
        return nullptr;
    // Images for players have both file systems, and only UDF tells all: long names, large files.
    std::unique_ptr<Volume> volume = UdfVolume::open(file, path);
    if (!volume || volume->readFolder(volume->root(), 1).empty()) {
        if (auto other = IsoVolume::open(file))
            volume = std::move(other);
    }
    return volume ? std::unique_ptr<DiscImage>(new DiscImage(path, std::move(volume))) : nullptr;
}

DiscImage::DiscImage(const std::string& path, std::unique_ptr<Volume> volume)
    : DiscFiles(path)
    , m_volume(std::move(volume))
{}

bool DiscImage::hasFolder(const std::string& path) const
{
    const auto entry = find(path);
    return entry && entry->isFolder;
}

ByteSourcePtr DiscImage::openFile(const std::string& path) const
{
    const auto entry = find(path);
    return entry && !entry->isFolder ? m_volume->open(*entry) : nullptr;
}

std::vector<DiscFiles::Entry> DiscImage::entries(const std::string& folder) const
{
    std::vector<Entry> found;
    if (const auto entry = find(folder)) {
        for (const auto& [name, child] : read(*entry))
            found.push_back({name, child.isFolder});
    }
    return found;
}

/// Names in the image are spelled as they are asked for.
std::optional<VolumeEntry> DiscImage::find(const std::string& path) const
{
    VolumeEntry entry = m_volume->root();
    for (std::size_t begin = 0; begin < path.size();) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        const VolumeFolder& folder = read(entry);
        const auto found = folder.find(path.substr(begin, end - begin));
        if (found == folder.end())
            return std::nullopt;
        entry = found->second;
        begin = end + 1;
    }
    return entry;
}

/// Empty for what is no folder.
const VolumeFolder& DiscImage::read(const VolumeEntry& folder) const
{
    auto known = m_folders.find(folder.place);
    if (known == m_folders.end())
        known = m_folders.emplace(folder.place, m_volume->readFolder(folder, mostEntries)).first;
    return known->second;
}

} // namespace engine
