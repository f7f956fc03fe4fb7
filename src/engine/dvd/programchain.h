// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "dvd/ifotable.h"

#include <array>
#include <vector>

namespace engine {

/// The part of a title set's video that bears one number. `vobId` and `cellId` together name it
/// within the set.
struct Cell
{
    int vobId = 0;
    int cellId = 0;
    Ticks duration = 0;
    std::uint32_t firstSector = 0; ///< of the title set's video
    std::uint32_t lastSector = 0;
    bool isOtherAngle = false; ///< shown in place of the cell before, not after it
};

constexpr int mostAudioStreams = 8;
constexpr int mostSubpictureStreams = 32;

/// Cells that are played one after another, and which streams go with them.
struct ProgramChain
{
    std::vector<Cell> cells;
    std::vector<int> programs; ///< first cell of each, counted from 1
    std::array<std::uint16_t, mostAudioStreams> audioControl{};
    std::array<std::uint32_t, mostSubpictureStreams> subpictureControl{};
};

/// The chain that begins `bytes`. Nothing, and a finding, when its tables do not lie in them.
std::optional<ProgramChain> parseProgramChain(const ByteView& bytes, bool isNtsc,
                                              IfoFindings& findings);

} // namespace engine
