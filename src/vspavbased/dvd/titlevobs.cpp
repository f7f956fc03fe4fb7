// SPDX-License-Identifier: GPL-2.0-or-later
#include "dvd/titlevobs.h"

#include <algorithm>
#include <cstdio>

namespace engine {

std::shared_ptr<TitleVobs> TitleVobs::open(VideoTs& files, int titleSet)
{
    constexpr int mostParts = 9;
    std::shared_ptr<TitleVobs> vobs(new TitleVobs);
    for (int i = 1; i <= mostParts; ++i) {
        char name[16];
        std::snprintf(name, sizeof(name), "VTS_%02d_%d.VOB", titleSet, i);
        std::unique_ptr<DiscFile> file = files.openFile(name);
        if (!file)
            break;
        const std::uint64_t size = file->size() / sectorSize * sectorSize;
        vobs->m_parts.push_back({vobs->m_size, size, std::move(file)});
        vobs->m_size += size;
    }
    return vobs->m_size > 0 ? vobs : nullptr;
}

std::size_t TitleVobs::read(std::uint64_t offset, std::uint8_t* buffer, std::size_t size)
{
    std::size_t done = 0;
    for (Part& part : m_parts) {
        const std::uint64_t end = part.begin + part.size;
        if (done == size || offset + done >= end || offset + done < part.begin)
            continue;
        const std::uint64_t wanted = std::min<std::uint64_t>(size - done, end - (offset + done));
        const std::size_t count = part.file->read(offset + done - part.begin, buffer + done,
                                                  static_cast<std::size_t>(wanted));
        done += count;
        if (count < wanted)
            break;
    }
    return done;
}

} // namespace engine
