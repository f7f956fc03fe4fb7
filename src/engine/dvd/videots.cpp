// SPDX-License-Identifier: GPL-2.0-or-later
#include "dvd/videots.h"

#include "bytes/joinedbytes.h"
#include "disc/sector.h"
#include "text.h"

#include <cstdio>

namespace engine {

std::unique_ptr<VideoTs> VideoTs::open(const DvdLocation& location)
{
    auto files = DiscFiles::open(location.path);
    if (!files)
        return nullptr;
    std::string folder;
    if (location.kind == DvdLocation::Kind::image) {
        const auto found = files->findFolder("VIDEO_TS");
        if (!found)
            return nullptr;
        folder = *found + '/';
    }
    return std::unique_ptr<VideoTs>(new VideoTs(std::move(files), folder));
}

VideoTs::VideoTs(std::unique_ptr<DiscFiles> files, const std::string& folder)
    : m_files(std::move(files))
{
    for (const std::string& name : m_files->fileNames(folder, {}))
        m_paths.emplace(toUpper(name), folder + name);
}

std::optional<Bytes> VideoTs::read(const std::string& name) const
{
    const auto path = m_paths.find(name);
    return path == m_paths.end() ? std::nullopt : m_files->read(path->second);
}

ByteSourcePtr VideoTs::openVideo(int titleSet) const
{
    constexpr int mostParts = 9;
    const auto video = std::make_shared<JoinedBytes>();
    for (int i = 1; i <= mostParts; ++i) {
        char name[16];
        std::snprintf(name, sizeof(name), "VTS_%02d_%d.VOB", titleSet, i);
        const auto path = m_paths.find(name);
        ByteSourcePtr part = path == m_paths.end() ? nullptr : m_files->openFile(path->second);
        if (!part)
            break;
        const std::uint64_t size = part->size() / sectorSize * sectorSize;
        video->append(std::move(part), 0, size);
    }
    return video->size() > 0 ? video : nullptr;
}

} // namespace engine
