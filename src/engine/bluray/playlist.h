// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "bluray/clipinformation.h"
#include "bytes/bytesource.h"

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace engine {

/// A stream that may be chosen while an item plays.
struct PlayStream
{
    static constexpr std::uint8_t ofClip = 1;

    std::uint8_t source; ///< ofClip when it lies in the item's stream file
    ClipStream stream;

    bool operator<(const PlayStream& other) const
    {
        return std::tie(source, stream) < std::tie(other.source, other.stream);
    }
};

/// One item of a playlist: a part of a stream file. Times are time stamps of the stream in units of
/// 1/45000 s, as the disc has them: `in` need not be before `out`, nor either in the file.
struct PlayItem
{
    std::string clip;      ///< five digits: the stream file's name without its suffix
    std::uint8_t sequence; ///< number of the stream's clock that the times refer to
    std::uint32_t in;
    std::uint32_t out;
    std::vector<PlayStream> streams;

    bool operator<(const PlayItem& other) const
    {
        return std::tie(clip, sequence, in, out, streams) <
               std::tie(other.clip, other.sequence, other.in, other.out, other.streams);
    }
};

/// The beginning of a chapter: a time stamp in the stream file of an item.
struct PlayMark
{
    std::uint16_t item; ///< an index that exists
    std::uint32_t time; ///< anywhere

    bool operator<(const PlayMark& other) const
    {
        return std::tie(item, time) < std::tie(other.item, other.time);
    }
};

/// What a playlist file says, with its first angle.
struct Playlist
{
    std::vector<PlayItem> items;
    std::vector<PlayMark> marks; ///< those that begin chapters

    /// Playlists that are equal play the same.
    bool operator<(const Playlist& other) const
    {
        return std::tie(items, marks) < std::tie(other.items, other.marks);
    }
};

/// Nothing when the bytes are no playlist, or its items are incomplete or have more streams than
/// any. Marks that make no sense are left out.
std::optional<Playlist> parsePlaylist(const Bytes& bytes);

} // namespace engine
