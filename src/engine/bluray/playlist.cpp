// SPDX-License-Identifier: GPL-2.0-or-later
#include "bluray/playlist.h"

#include "bytes/bytereader.h"
#include "text.h"

#include <algorithm>

namespace engine {

namespace {

constexpr std::uint8_t entryMark = 1;

/// Of all items; the longest playlists of real discs have some thousands.
constexpr std::size_t mostStreams = 100000;

bool isClipName(const std::string& name)
{
    return name.size() == 5 && std::all_of(name.begin(), name.end(), isDigit);
}

/// Passes over lists of the streams that go together with one.
void skipReferences(ByteReader& bytes, int lists)
{
    for (int i = 0; i < lists; ++i) {
        const std::size_t count = bytes.u8();
        bytes.skip(1);
        bytes.skip(count + count % 2);
    }
}

PlayStream parsePlayStream(ByteReader& bytes)
{
    const std::size_t entryLength = bytes.u8();
    ByteReader entry = bytes.part(entryLength);
    const std::uint8_t source = entry.u8();
    if (source != PlayStream::ofClip) // which other file it lies in
        entry.skip(source == 2 ? 2 : 1);
    const int pid = entry.u16();
    const std::size_t attributesLength = bytes.u8();
    ClipStream stream = parseStream(pid, bytes.part(attributesLength));
    stream.aspect = 0;
    return {source, std::move(stream)};
}

/// What a damaged table still tells.
std::vector<PlayStream> parseStreams(ByteReader bytes)
{
    enum
    {
        Pictures,
        Sound,
        Subtitles,
        Menus,
        Commentaries,
        SecondPictures,
        SecondSubtitles,
        Kinds
    };
    ByteReader table = bytes.part(bytes.u16());
    table.skip(2);
    int counts[Kinds];
    for (int& count : counts)
        count = table.u8();
    table.skip(5);
    counts[Subtitles] += counts[SecondSubtitles];

    std::vector<PlayStream> streams;
    for (const int kind : {Pictures, Sound, Subtitles, Menus, Commentaries, SecondPictures}) {
        for (int i = 0; i < counts[kind] && table.isIntact(); ++i) {
            streams.push_back(parsePlayStream(table));
            skipReferences(table, kind == Commentaries ? 1 : kind == SecondPictures ? 2 : 0);
        }
    }
    if (!table.isIntact() && !streams.empty())
        streams.pop_back();
    return streams;
}

std::optional<PlayItem> parseItem(ByteReader bytes)
{
    constexpr int hasAngles = 0x10;
    PlayItem item;
    item.clip = bytes.text(5);
    bytes.skip(4); // kind of file, always "M2TS"
    const int flags = bytes.u16();
    item.sequence = bytes.u8();
    item.in = bytes.u32();
    item.out = bytes.u32();
    if (!bytes.isIntact() || !isClipName(item.clip))
        return std::nullopt;
    bytes.skip(8 + 4); // what players forbid, and how long the item stands still
    if (flags & hasAngles) {
        const int angles = bytes.u8();
        bytes.skip(1);
        bytes.skip(static_cast<std::size_t>(std::max(angles - 1, 0)) * 10);
    }
    item.streams = parseStreams(bytes);
    return item;
}

bool parseItems(ByteReader bytes, std::vector<PlayItem>& items)
{
    ByteReader list = bytes.part(bytes.u32());
    list.skip(2);
    const int count = list.u16();
    list.skip(2); // number of sub-paths
    std::size_t streams = 0;
    for (int i = 0; i < count; ++i) {
        const std::size_t length = list.u16();
        auto item = parseItem(list.part(length));
        if (!item || !list.isIntact())
            return false;
        streams += item->streams.size();
        if (streams > mostStreams)
            return false;
        items.push_back(std::move(*item));
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
