// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "dvd/programchain.h"
#include "dvd/streamattributes.h"

#include <tuple>
#include <vector>

namespace engine {

/// What a title plays. Of several angles it plays the first.
struct Title
{
    std::vector<Cell> cells; ///< in the order of playing
    Ticks duration = 0;      ///< of all cells
    std::vector<Ticks> chapterStarts;
    std::vector<AudioTrack> audio;
    std::vector<SubpictureTrack> subpictures;
};

/// A run of sectors of the title set's video that belongs to a cell.
struct CellAddress
{
    int vobId = 0;
    int cellId = 0;
    std::uint32_t firstSector = 0;
    std::uint32_t lastSector = 0;

    /// By the cell that they belong to.
    bool operator<(const CellAddress& other) const
    {
        return std::tie(vobId, cellId) < std::tie(other.vobId, other.cellId);
    }
};

/// A title set, as its IFO file describes it.
struct TitleSet
{
    VideoAttributes video;
    std::vector<Title> titles;
    std::vector<CellAddress> cellAddresses; ///< by cell; several for one interleaved with others
    std::vector<std::uint32_t> vobuSectors; ///< where units of about half a second begin; ascending
};

/// Nothing, and a finding, when the file is none of a title set or one of its main tables is lost.
/// Titles and chapters whose numbers lead nowhere are left empty or out.
std::optional<TitleSet> parseTitleSet(const ByteView& ifo, IfoFindings& findings);

} // namespace engine
