// SPDX-License-Identifier: GPL-2.0-or-later
#include "media/mp4boxes.h"

#include "bytes/byteview.h"

#include <algorithm>

namespace engine {

bool Mp4Box::isOneOf(std::initializer_list<std::string_view> types) const
{
    return std::find(types.begin(), types.end(), type) != types.end();
}

std::optional<Mp4Box> readMp4Box(const ByteSource& file, std::uint64_t offset, std::uint64_t limit)
{
    if (offset >= limit)
        return std::nullopt;
    std::uint8_t bytes[16];
    const ByteView header(bytes, file.read(offset, bytes, sizeof(bytes)));
    const std::uint64_t room = limit - offset;
    const bool isLong = header.u32(0) == 1;
    const std::uint64_t headerSize = isLong ? 16 : 8;
    std::uint64_t size =
        isLong ? std::uint64_t{header.u32(8)} << 32 | header.u32(12) : std::uint64_t{header.u32(0)};
    if (size == 0 || size > room) // 0 is to the end
        size = room;
    if (!header.holds(0, headerSize) || size < headerSize)
        return std::nullopt;
    return Mp4Box{header.part(4, 4).text(), offset, offset + headerSize, offset + size};
}

} // namespace engine
