// SPDX-License-Identifier: GPL-2.0-or-later
#include "dvd/titlelayout.h"

#include "enginelink/log.h"

#include <algorithm>

namespace engine {

namespace {

/// Several times what the longest titles have. Tables may claim more by naming the same sectors
/// again and again, or sectors that are not there; what comes behind is left out.
constexpr std::size_t mostVobus = 200000;
constexpr std::size_t mostAddresses = 200000;

} // namespace

TitleLayout::TitleLayout(const TitleSet& set, const Title& title, std::uint64_t sectorCount)
{
    Ticks start = 0;
    for (const Cell& cell : title.cells) {
        m_cells.push_back({start, m_vobus.size(), 0, false});
        placeCell(set, cell, sectorCount);
        m_cells.back().vobuCount = m_vobus.size() - m_cells.back().firstVobu;
        start += cell.duration;
    }
    if (isFull())
        log("a title of too many parts");
}

bool TitleLayout::isFull() const
{
    return m_vobus.size() >= mostVobus || m_addressCount >= mostAddresses;
}

/// The sectors from a cell's first to its last are its own, unless it is interleaved with others.
void TitleLayout::placeCell(const TitleSet& set, const Cell& cell, std::uint64_t sectorCount)
{
    const CellAddress whole{cell.vobId, cell.cellId, cell.firstSector, cell.lastSector};
    auto [address, end] =
        std::equal_range(set.cellAddresses.begin(), set.cellAddresses.end(), whole);
    if (address == end && !isFull())
        placePiece(set, whole, sectorCount);
    for (; address != end && !isFull(); ++address)
        placePiece(set, *address, sectorCount);
}

void TitleLayout::placePiece(const TitleSet& set, const CellAddress& address,
                             std::uint64_t sectorCount)
{
    ++m_addressCount;
    const std::uint64_t first = address.firstSector;
    const std::uint64_t last = std::min<std::uint64_t>(address.lastSector, sectorCount - 1);
    m_cells.back().isCut = m_cells.back().isCut || last < address.lastSector;
    if (first >= sectorCount || last < first)
        return;
    const std::size_t cell = m_cells.size() - 1;
    const auto begin = std::lower_bound(set.vobuSectors.begin(), set.vobuSectors.end(), first);
    const auto end = std::upper_bound(begin, set.vobuSectors.end(), last);
    // Wherever the map may put them, the first sector of a piece begins one.
    if (begin == end || *begin != first)
        m_vobus.push_back({m_sectorCount, cell});
    for (auto sector = begin; sector != end && m_vobus.size() < mostVobus; ++sector)
        m_vobus.push_back({m_sectorCount + (*sector - first), cell});
    m_pieces.push_back({first, last - first + 1});
    m_sectorCount += last - first + 1;
}

std::size_t TitleLayout::cellAt(Ticks time) const
{
    const auto behind =
        std::upper_bound(m_cells.begin(), m_cells.end(), time,
                         [](Ticks wanted, const PlacedCell& cell) { return wanted < cell.start; });
    return behind == m_cells.begin() ? 0 : static_cast<std::size_t>(behind - m_cells.begin()) - 1;
}

std::size_t TitleLayout::vobuAtSector(std::uint64_t titleSector) const
{
    const auto behind = std::upper_bound(
        m_vobus.begin(), m_vobus.end(), titleSector,
        [](std::uint64_t wanted, const Vobu& vobu) { return wanted < vobu.titleSector; });
    return behind == m_vobus.begin() ? 0 : static_cast<std::size_t>(behind - m_vobus.begin()) - 1;
}

} // namespace engine
