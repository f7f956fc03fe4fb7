// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "dvd/titleset.h"

#include <cstdint>
#include <vector>

namespace engine {

/// Where the pictures of one title lie. The sectors that it plays are numbered through in the order
/// of playing: title sectors.
class TitleLayout
{
public:
    /// A run of sectors of the title set's video.
    struct Piece
    {
        std::uint64_t sector;
        std::uint64_t count;
    };

    /// A unit of about half a second, which begins with a navigation packet and, if there is video
    /// in it, a picture that needs none before it.
    struct Vobu
    {
        std::uint64_t titleSector;
        std::size_t cell; ///< index
    };

    struct PlacedCell
    {
        Ticks start;           ///< within the title
        std::size_t firstVobu; ///< index
        std::size_t vobuCount; ///< 0 for a cell that lies outside the files
        bool isCut;            ///< its end does
    };

    /// Cells, or parts of them, that lie outside the `sectorCount` sectors of the title set's files
    /// take up no place in the title, only time.
    TitleLayout(const TitleSet& set, const Title& title, std::uint64_t sectorCount);

    const std::vector<Piece>& pieces() const { return m_pieces; } ///< in the order of playing
    const std::vector<Vobu>& vobus() const { return m_vobus; }
    const std::vector<PlacedCell>& cells() const { return m_cells; }

    /// Index of the last cell that begins at `time` or before, or of the first. Requires that there
    /// is a VOBU.
    std::size_t cellAt(Ticks time) const;

    /// Index of the VOBU that holds the title sector; the first for sectors before it. Requires
    /// that there is a VOBU.
    std::size_t vobuAtSector(std::uint64_t titleSector) const;

private:
    bool isFull() const;
    void placeCell(const TitleSet& set, const Cell& cell, std::uint64_t sectorCount);
    void placePiece(const TitleSet& set, const CellAddress& address, std::uint64_t sectorCount);

    std::vector<Piece> m_pieces;
    std::vector<Vobu> m_vobus;
    std::vector<PlacedCell> m_cells;
    std::uint64_t m_sectorCount = 0;
    std::size_t m_addressCount = 0; ///< looked at, inside and outside of the files
};

} // namespace engine
