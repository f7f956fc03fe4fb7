// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "bytes/bytereader.h"

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace engine {

/// Times on a disc count in 1/45000 s.
constexpr std::int64_t blurayTicksPerSecond = 45000;

/// A stretch of a stream file with one running clock.
struct ClockSequence
{
    std::uint32_t firstPacket; ///< where it begins in the file, in packets
    std::uint32_t start;       ///< its first time stamp, in ticks
    std::uint32_t end;         ///< its last; behind `start`
};

/// One elementary stream, in the disc's own codes.
struct ClipStream
{
    int pid;
    int coding;
    int format = 0; ///< size of the picture, or arrangement of channels
    int rate = 0;   ///< of frames or samples
    int aspect = 0; ///< of the picture; playlists do not tell it
    std::string language;

    bool operator<(const ClipStream& other) const
    {
        return std::tie(pid, coding, format, rate, aspect, language) <
               std::tie(other.pid, other.coding, other.format, other.rate, other.aspect,
                        other.language);
    }
};

/// A stream from its attributes, as clip information and playlists have them.
ClipStream parseStream(int pid, ByteReader attributes);

/// A place in a stream file where decoding can begin.
struct EntryPoint
{
    std::uint32_t time;   ///< a little (up to 6 ms) before that of the picture, in ticks
    std::uint32_t packet; ///< of 192 bytes, from the start of the file
};

/// What the disc says about a stream file.
struct ClipInformation
{
    std::vector<ClockSequence> sequences; ///< at least one, in the order of the file
    std::vector<ClipStream> streams;

    /// Those of the first stream in the disc's list, in the order of the file. Empty when the disc
    /// tells none, or some that cannot be.
    std::vector<EntryPoint> entryPoints;

    /// Length of the stream file in ticks: that of all sequences.
    std::int64_t duration() const;

    /// Ticks from the start of the stream file to that of the sequence.
    std::int64_t offsetOf(std::size_t sequence) const;

    /// The sequence that playlists call `number` when it holds `time`, else one that does, else
    /// any. There is at least one.
    std::size_t sequenceOf(std::uint8_t number, std::uint32_t time) const;

    /// Ticks from the start of the stream file to `time` of that sequence; the nearest place in the
    /// sequence when it does not hold the time.
    std::int64_t positionOf(std::uint32_t time, std::size_t sequence) const;
};

/// Nothing when the bytes are no clip information, or tell no times or no streams.
std::optional<ClipInformation> parseClipInformation(const Bytes& bytes);

} // namespace engine
