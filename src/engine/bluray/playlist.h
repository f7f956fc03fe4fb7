// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "bytes/bytesource.h"

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace engine {

/// One item of a playlist: a part of a stream file. Times are time stamps of the stream in units of
/// 1/45000 s, as the disc has them: `in` need not be before `out`, nor either in the file.
struct PlayItem
{
    std::string clip;      ///< five digits: the stream file's name without its suffix
    std::uint8_t sequence; ///< number of the stream's clock that the times refer to
    std::uint32_t in;
    std::uint32_t out;

    bool operator<(const PlayItem& other) const
    {
        return std::tie(clip, sequence, in, out) <
               std::tie(other.clip, other.sequence, other.in, other.out);
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

/// Nothing when the bytes are no playlist, or its items are incomplete. Marks that make no sense
/// are left out.
std::optional<Playlist> parsePlaylist(const Bytes& bytes);

} // namespace engine
