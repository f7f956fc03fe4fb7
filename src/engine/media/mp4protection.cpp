// SPDX-License-Identifier: GPL-2.0-or-later
#include "media/mp4protection.h"

#include "bytes/byteview.h"
#include "bytes/plainfile.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace engine {

namespace {

/// More boxes than this nobody needs to describe some tracks; it bounds the work on a hostile file.
constexpr int mostBoxes = 20000;
constexpr int deepestLevel = 8;

struct Box
{
    std::string type;
    std::uint64_t contents; ///< offset of what is inside
    std::uint64_t end;

    bool isOneOf(std::initializer_list<std::string_view> types) const
    {
        return std::find(types.begin(), types.end(), type) != types.end();
    }
};

/// Walks the boxes that lead to the sample entries.
class BoxWalk
{
public:
    explicit BoxWalk(const ByteSource& file)
        : m_file(file)
    {}

    bool findsProtection() { return searchBoxes({{}, 0, m_file.size()}, 0); }

private:
    std::optional<Box> readBox(std::uint64_t offset, std::uint64_t limit);
    bool searchBoxes(const Box& parent, int level);
    bool searchSampleEntries(const Box& table, int level);

    const ByteSource& m_file;
    int m_boxes = 0;
};

std::optional<Box> BoxWalk::readBox(std::uint64_t offset, std::uint64_t limit)
{
    std::uint8_t bytes[16];
    const ByteView header(bytes, m_file.read(offset, bytes, sizeof(bytes)));
    if (++m_boxes > mostBoxes || offset >= limit)
        return std::nullopt;
    const std::uint64_t room = limit - offset;
    const bool isLong = header.u32(0) == 1;
    const std::uint64_t headerSize = isLong ? 16 : 8;
    std::uint64_t size =
        isLong ? std::uint64_t{header.u32(8)} << 32 | header.u32(12) : std::uint64_t{header.u32(0)};
    if (size == 0) // to the end
        size = room;
    if (!header.holds(0, headerSize) || size < headerSize || size > room)
        return std::nullopt;
    return Box{header.part(4, 4).text(), offset + headerSize, offset + size};
}

bool BoxWalk::searchBoxes(const Box& parent, int level)
{
    if (level == deepestLevel)
        return false;
    std::uint64_t offset = parent.contents;
    while (const auto box = readBox(offset, parent.end)) {
        if (box->isOneOf({"sinf"}))
            return true;
        if (box->isOneOf({"moov", "trak", "mdia", "minf", "stbl"}) && searchBoxes(*box, level + 1))
            return true;
        if (box->isOneOf({"stsd"}) && searchSampleEntries(*box, level + 1))
            return true;
        offset = box->end;
    }
    return false;
}

bool BoxWalk::searchSampleEntries(const Box& table, int level)
{
    constexpr std::uint64_t tableHeader = 8; // version, flags, number of entries
    std::uint64_t offset = table.contents + tableHeader;
    while (const auto entry = readBox(offset, table.end)) {
        if (entry->isOneOf({"encv", "enca", "enct", "encs", "drms", "drmi", "aavd"}))
            return true;
        // Behind fields whose length depends on the kind: picture, sound or anything else.
        for (const std::uint64_t fields : {78, 28, 8}) {
            if (searchBoxes({entry->type, entry->contents + fields, entry->end}, level + 1))
                return true;
        }
        offset = entry->end;
    }
    return false;
}

} // namespace

bool mp4DeclaresProtection(const std::string& path)
{
    const auto file = PlainFile::open(path);
    return file && BoxWalk(*file).findsProtection();
}

} // namespace engine
