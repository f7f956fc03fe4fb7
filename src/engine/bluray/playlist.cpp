// SPDX-License-Identifier: GPL-2.0-or-later
#include "bluray/playlist.h"

#include "bytes/bytereader.h"
#include "text.h"

#include <algorithm>

namespace engine {

namespace {

constexpr std::uint8_t entryMark = 1;

bool isClipName(const std::string& name)
{
    return name.size() == 5 && std::all_of(name.begin(), name.end(), isDigit);
}

/// Further angles and the table of streams follow in the item's bytes; they are not needed.
std::optional<PlayItem> parseItem(ByteReader bytes)
{
    PlayItem item;
    item.clip = bytes.text(5);
    bytes.skip(4); // kind of file, always "M2TS"
    bytes.skip(2); // whether there are angles, and how the item joins the one before
    item.sequence = bytes.u8();
    item.in = bytes.u32();
    item.out = bytes.u32();
    if (!bytes.isIntact() || !isClipName(item.clip))
        return std::nullopt;
    return item;
}

bool parseItems(ByteReader bytes, std::vector<PlayItem>& items)
{
    ByteReader list = bytes.part(bytes.u32());
    list.skip(2);
    const int count = list.u16();
    list.skip(2); // number of sub-paths
    for (int i = 0; i < count; ++i) {
        const std::size_t length = list.u16();
        const auto item = parseItem(list.part(length));
        if (!item || !list.isIntact())
            return false;
        items.push_back(*item);
    }
    return !items.empty();
}

void parseMarks(ByteReader bytes, Playlist& playlist)
{
    ByteReader list = bytes.part(bytes.u32());
    const int count = list.u16();
    for (int i = 0; i < count; ++i) {
        ByteReader entry = list.part(14);
        if (!list.isIntact())
            return;
        entry.skip(1);
        const std::uint8_t kind = entry.u8();
        PlayMark mark;
        mark.item = entry.u16();
        mark.time = entry.u32();
        if (kind == entryMark && mark.item < playlist.items.size())
            playlist.marks.push_back(mark);
    }
}

} // namespace

std::optional<Playlist> parsePlaylist(const Bytes& bytes)
{
    const ByteReader file(bytes);
    ByteReader header = file;
    if (header.text(4) != "MPLS")
        return std::nullopt;
    header.skip(4); // version: what is read here is the same in all
    const std::uint32_t itemsAt = header.u32();
    const std::uint32_t marksAt = header.u32();

    Playlist playlist;
    if (!header.isIntact() || !parseItems(file.from(itemsAt), playlist.items))
        return std::nullopt;
    parseMarks(file.from(marksAt), playlist);
    return playlist;
}

} // namespace engine
