// SPDX-License-Identifier: GPL-2.0-or-later
#include "dvd/programchain.h"

namespace engine {

namespace {

// Offsets within a chain, and sizes; bytes.
constexpr std::size_t programCount = 2;
constexpr std::size_t cellCount = 3;
constexpr std::size_t audioControl = 12;
constexpr std::size_t subpictureControl = 28;
constexpr std::size_t programMap = 230;
constexpr std::size_t cellPlayback = 232;
constexpr std::size_t cellPosition = 234;
constexpr std::size_t chainSize = 236;
constexpr std::size_t playbackSize = 24;
constexpr std::size_t positionSize = 4;

/// Values of a cell's place in a block, and the type of a block of angles.
constexpr int firstOfBlock = 1;
constexpr int angleBlock = 1;

Cell parseCell(const ByteView& playback, const ByteView& position, bool isNtsc,
               IfoFindings& findings)
{
    const int blockMode = playback.u8(0) >> 6;
    const int blockType = playback.u8(0) >> 4 & 3;
    Cell cell;
    cell.vobId = position.u16(0);
    cell.cellId = position.u8(3);
    cell.firstSector = playback.u32(8);
    cell.lastSector = playback.u32(20);
    cell.isOtherAngle = blockType == angleBlock && blockMode != firstOfBlock;
    if (const auto duration = parseTime(playback.from(4), isNtsc))
        cell.duration = *duration;
    else
        findings.add("a cell without a playing time");
    return cell;
}

} // namespace

std::optional<ProgramChain> parseProgramChain(const ByteView& bytes, bool isNtsc,
                                              IfoFindings& findings)
{
    const std::size_t programs = bytes.u8(programCount);
    const std::size_t cells = bytes.u8(cellCount);
    const bool holdsTables = bytes.holds(bytes.u16(programMap), programs) &&
                             bytes.holds(bytes.u16(cellPlayback), cells * playbackSize) &&
                             bytes.holds(bytes.u16(cellPosition), cells * positionSize);
    if (!bytes.holds(0, chainSize) || !holdsTables) {
        findings.add("a program chain outside its table");
        return std::nullopt;
    }

    ProgramChain chain;
    for (std::size_t i = 0; i < chain.audioControl.size(); ++i)
        chain.audioControl[i] = bytes.u16(audioControl + 2 * i);
    for (std::size_t i = 0; i < chain.subpictureControl.size(); ++i)
        chain.subpictureControl[i] = bytes.u32(subpictureControl + 4 * i);
    for (std::size_t i = 0; i < programs; ++i)
        chain.programs.push_back(bytes.u8(bytes.u16(programMap) + i));
    for (std::size_t i = 0; i < cells; ++i) {
        chain.cells.push_back(parseCell(bytes.from(bytes.u16(cellPlayback) + i * playbackSize),
                                        bytes.from(bytes.u16(cellPosition) + i * positionSize),
                                        isNtsc, findings));
    }
    return chain;
}

} // namespace engine
