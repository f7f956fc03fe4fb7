// SPDX-License-Identifier: GPL-2.0-or-later
#include "dvd/scrambling.h"

#include "disc/sector.h"

namespace engine {

bool isScrambledSector(const ByteView& sector)
{
    constexpr std::uint32_t packStart = 0x000001BA;
    if (sector.u32(0) != packStart)
        return false;
    const std::size_t packet = 14 + (sector.u8(13) & 7u); // behind the pack's stuffing
    const int streamId = sector.u8(packet + 3);
    const int flags = sector.u8(packet + 6);
    const bool hasPayload = streamId == 0xBD || (streamId >= 0xC0 && streamId <= 0xEF);
    return hasPayload && sector.u16(packet) == 0 && sector.u8(packet + 2) == 1 &&
           (flags & 0xC0) == 0x80 && (flags & 0x30) != 0;
}

bool isScrambled(const ByteSource& video)
{
    constexpr int samples = 8;
    constexpr std::size_t sectorsPerSample = 32;
    Bytes bytes(sectorsPerSample * sectorSize);
    for (int i = 0; i < samples; ++i) {
        const std::uint64_t sector = video.size() / sectorSize * static_cast<unsigned>(i) / samples;
        const ByteView sample(bytes.data(),
                              video.read(sector * sectorSize, bytes.data(), bytes.size()));
        for (std::size_t offset = 0; offset < sample.size(); offset += sectorSize) {
            if (isScrambledSector(sample.part(offset, sectorSize)))
                return true;
        }
    }
    return false;
}

} // namespace engine
