// SPDX-License-Identifier: GPL-2.0-or-later
#include "disc/udfdescriptor.h"

#include "disc/sector.h"
#include "text.h"

#include <numeric>

namespace engine {

UdfTag udfTagOf(const ByteView& bytes)
{
    constexpr std::size_t tagSize = 16;
    constexpr std::size_t checksumAt = 4;
    if (!bytes.holds(0, tagSize))
        return UdfTag::none;
    const int sum = std::accumulate(bytes.data(), bytes.data() + tagSize, 0);
    const int checksum = bytes.u8(checksumAt);
    if (((sum - checksum) & 0xFF) != checksum)
        return UdfTag::none;
    return static_cast<UdfTag>(bytes.le16(0));
}

Bytes readUdfBlock(const ByteSource& source, std::uint64_t block)
{
    Bytes bytes(sectorSize);
    bytes.resize(source.read(block * sectorSize, bytes.data(), bytes.size()));
    return bytes;
}

std::string decodeUdfText(const ByteView& bytes)
{
    const bool isWide = bytes.u8(0) == 16;
    if (!isWide && bytes.u8(0) != 8)
        return {};
    const std::size_t width = isWide ? 2 : 1;
    std::u16string text;
    for (std::size_t i = 1; bytes.holds(i, width); i += width)
        text.push_back(isWide ? bytes.u16(i) : bytes.u8(i));
    return toUtf8(text);
}

} // namespace engine
