// SPDX-License-Identifier: GPL-2.0-or-later
#include "dvd/titleclock.h"

#include "disc/sector.h"
#include "enginelink/log.h"

namespace engine {

std::optional<std::uint32_t> parseVobuStart(const ByteView& sector)
{
    constexpr std::uint32_t packStart = 0x000001BA;
    constexpr std::uint32_t privateStream2 = 0x000001BF;
    constexpr std::size_t packetOffset = 0x26;
    constexpr std::size_t startStampOffset = 0x39;
    if (!sector.holds(0, sectorSize) || sector.u32(0) != packStart ||
        sector.u32(packetOffset) != privateStream2)
        return std::nullopt;
    return sector.u32(startStampOffset);
}

TitleClock::TitleClock(std::shared_ptr<const TitleLayout> layout, ByteSourcePtr title)
    : m_layout(std::move(layout))
    , m_title(std::move(title))
    , m_firstStamps(m_layout->cells().size())
{}

/// The VOBU that begins before, while the next begins later or the cell is over. What cannot be
/// read is taken for too late, and so for the place from which on the files are damaged.
std::optional<std::size_t> TitleClock::vobuAt(Ticks time)
{
    const std::size_t cellIndex = m_layout->cellAt(time);
    const TitleLayout::PlacedCell& cell = m_layout->cells()[cellIndex];
    if (cell.vobuCount == 0 || !firstStampOf(cellIndex))
        return std::nullopt;
    std::size_t found = cell.firstVobu;
    std::size_t end = cell.firstVobu + cell.vobuCount;
    bool endIsDamaged = cell.isCut;
    while (end - found > 1) {
        const std::size_t middle = found + (end - found) / 2;
        const auto stamp = readStamp(middle);
        const auto start = stamp ? timeInCell(cellIndex, *stamp) : std::nullopt;
        if (start && *start <= time) {
            found = middle;
        } else {
            end = middle;
            endIsDamaged = !start;
        }
    }
    return endIsDamaged ? std::nullopt : std::optional(found);
}

std::optional<Ticks> TitleClock::timeOf(std::uint64_t titleSector, std::int64_t stamp)
{
    const std::size_t vobu = m_layout->vobuAtSector(titleSector);
    return timeInCell(m_layout->vobus()[vobu].cell, static_cast<std::uint32_t>(stamp));
}

std::optional<std::uint32_t> TitleClock::readStamp(std::size_t vobu)
{
    const std::uint64_t sector = m_layout->vobus()[vobu].titleSector;
    std::uint8_t bytes[sectorSize];
    const std::size_t count = m_title->read(sector * sectorSize, bytes, sectorSize);
    const auto stamp = parseVobuStart({bytes, count});
    if (!stamp)
        log("no navigation packet at sector " + std::to_string(sector) + " of the title");
    return stamp;
}

std::optional<std::uint32_t> TitleClock::firstStampOf(std::size_t cell)
{
    KnownStamp& known = m_firstStamps[cell];
    if (!known.isRead) {
        known.isRead = true;
        known.stamp = readStamp(m_layout->cells()[cell].firstVobu);
    }
    return known.stamp;
}

/// Stamps are compared as 32-bit numbers, which may overflow within a cell.
std::optional<Ticks> TitleClock::timeInCell(std::size_t cell, std::uint32_t stamp)
{
    const auto first = firstStampOf(cell);
    if (!first)
        return std::nullopt;
    return m_layout->cells()[cell].start + static_cast<std::int32_t>(stamp - *first);
}

} // namespace engine
