// SPDX-License-Identifier: GPL-2.0-or-later
#include "media/mp4protection.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <memory>
#include <sys/stat.h>

namespace engine {

namespace {

/// More boxes than this nobody needs to describe some tracks; it bounds the work on a hostile file.
constexpr int mostBoxes = 20000;
constexpr int deepestLevel = 8;

struct CloseFile
{
    void operator()(std::FILE* file) const { std::fclose(file); }
};

std::uint32_t fourcc(const char* text)
{
    return static_cast<std::uint32_t>(text[0]) << 24 | static_cast<std::uint32_t>(text[1]) << 16 |
           static_cast<std::uint32_t>(text[2]) << 8 | static_cast<std::uint32_t>(text[3]);
}

bool isOneOf(std::uint32_t type, std::initializer_list<const char*> names)
{
    return std::any_of(names.begin(), names.end(),
                       [type](const char* name) { return fourcc(name) == type; });
}

std::uint32_t bigEndian32(const std::uint8_t* bytes)
{
    return static_cast<std::uint32_t>(bytes[0]) << 24 | static_cast<std::uint32_t>(bytes[1]) << 16 |
           static_cast<std::uint32_t>(bytes[2]) << 8 | static_cast<std::uint32_t>(bytes[3]);
}

struct Box
{
    std::uint32_t type;
    std::int64_t contents; ///< offset of what is inside
    std::int64_t end;
};

/// Walks the boxes that lead to the sample entries.
class BoxWalk
{
public:
    BoxWalk(std::FILE* file, std::int64_t size)
        : m_file(file)
        , m_size(size)
    {}

    bool findsProtection() { return searchBoxes({0, 0, m_size}, 0); }

private:
    bool readBox(std::int64_t offset, std::int64_t limit, Box& box);
    bool searchBoxes(const Box& parent, int level);
    bool searchSampleEntries(const Box& table, int level);

    std::FILE* m_file;
    std::int64_t m_size;
    int m_boxes = 0;
};

bool BoxWalk::readBox(std::int64_t offset, std::int64_t limit, Box& box)
{
    std::uint8_t header[16];
    if (++m_boxes > mostBoxes || limit - offset < 8 || fseeko(m_file, offset, SEEK_SET) != 0 ||
        std::fread(header, 8, 1, m_file) != 1)
        return false;
    std::uint64_t size = bigEndian32(header);
    std::int64_t headerSize = 8;
    if (size == 1) {
        if (std::fread(header + 8, 8, 1, m_file) != 1)
            return false;
        size = static_cast<std::uint64_t>(bigEndian32(header + 8)) << 32 | bigEndian32(header + 12);
        headerSize = 16;
    } else if (size == 0) {
        size = static_cast<std::uint64_t>(limit - offset);
    }
    if (size < static_cast<std::uint64_t>(headerSize) ||
        size > static_cast<std::uint64_t>(limit - offset))
        return false;
    box = {bigEndian32(header + 4), offset + headerSize, offset + static_cast<std::int64_t>(size)};
    return true;
}

bool BoxWalk::searchBoxes(const Box& parent, int level)
{
    Box box{};
    for (std::int64_t offset = parent.contents;
         level < deepestLevel && readBox(offset, parent.end, box); offset = box.end) {
        if (isOneOf(box.type, {"sinf"}))
            return true;
        if (isOneOf(box.type, {"moov", "trak", "mdia", "minf", "stbl"}) &&
            searchBoxes(box, level + 1))
            return true;
        if (isOneOf(box.type, {"stsd"}) && searchSampleEntries(box, level + 1))
            return true;
    }
    return false;
}

bool BoxWalk::searchSampleEntries(const Box& table, int level)
{
    constexpr std::int64_t tableHeader = 8; // version, flags, number of entries
    Box entry{};
    for (std::int64_t offset = table.contents + tableHeader; readBox(offset, table.end, entry);
         offset = entry.end) {
        if (isOneOf(entry.type, {"encv", "enca", "enct", "encs", "drms", "drmi"}))
            return true;
        // Behind fields whose length depends on the kind: picture, sound or anything else.
        for (const std::int64_t fields : {78, 28, 8}) {
            if (searchBoxes({entry.type, entry.contents + fields, entry.end}, level + 1))
                return true;
        }
    }
    return false;
}

} // namespace

bool mp4DeclaresProtection(const std::string& path)
{
    struct stat status;
    if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return false;
    const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(path.c_str(), "rb"));
    return file && BoxWalk(file.get(), status.st_size).findsProtection();
}

} // namespace engine
