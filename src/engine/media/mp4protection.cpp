// SPDX-License-Identifier: GPL-2.0-or-later
#include "media/mp4protection.h"

#include "bytes/bufferedbytes.h"
#include "bytes/plainfile.h"
#include "media/mp4boxes.h"

namespace engine {

namespace {

/// More boxes than this nobody needs to describe some tracks; it bounds the work on a hostile file.
constexpr int mostBoxes = 20000;
constexpr int deepestLevel = 8;

/// Walks the boxes that lead to the sample entries.
class BoxWalk
{
public:
    BoxWalk(const ByteSource& file, Deadline& deadline)
        : m_file(file)
        , m_deadline(deadline)
    {}

    bool findsProtection();

private:
    std::optional<Mp4Box> readBox(std::uint64_t offset, std::uint64_t limit);
    bool searchBoxes(const Mp4Box& parent, int level);
    bool searchSampleEntries(const Mp4Box& table, int level);

    const BufferedBytes m_file;
    Deadline& m_deadline;
    int m_boxes = 0;
};

std::optional<Mp4Box> BoxWalk::readBox(std::uint64_t offset, std::uint64_t limit)
{
    if (++m_boxes > mostBoxes || m_deadline.expired())
        return std::nullopt;
    return readMp4Box(m_file, offset, limit);
}

/// All tracks are declared in the first movie header: what comes behind it are fragments, often
/// thousands.
bool BoxWalk::findsProtection()
{
    std::uint64_t offset = 0;
    while (const auto box = readBox(offset, m_file.size())) {
        if (box->isOneOf({"moov"}))
            return searchBoxes(*box, 1);
        offset = box->end;
    }
    return false;
}

bool BoxWalk::searchBoxes(const Mp4Box& parent, int level)
{
    if (level == deepestLevel)
        return false;
    std::uint64_t offset = parent.contents;
    while (const auto box = readBox(offset, parent.end)) {
        if (box->isOneOf({"sinf"}))
            return true;
        if (box->isOneOf({"trak", "mdia", "minf", "stbl"}) && searchBoxes(*box, level + 1))
            return true;
        if (box->isOneOf({"stsd"}) && searchSampleEntries(*box, level + 1))
            return true;
        offset = box->end;
    }
    return false;
}

bool BoxWalk::searchSampleEntries(const Mp4Box& table, int level)
{
    constexpr std::uint64_t tableHeader = 8; // version, flags, number of entries
    std::uint64_t offset = table.contents + tableHeader;
    while (const auto entry = readBox(offset, table.end)) {
        if (entry->isOneOf({"encv", "enca", "enct", "encs", "drms", "drmi", "aavd"}))
            return true;
        // Behind fields whose length depends on the kind: picture, sound or anything else.
        for (const std::uint64_t fields : {78, 28, 8}) {
            if (searchBoxes({entry->type, entry->begin, entry->contents + fields, entry->end},
                            level + 1))
                return true;
        }
        offset = entry->end;
    }
    return false;
}

} // namespace

bool mp4DeclaresProtection(const std::string& path, Deadline& deadline)
{
    const auto file = PlainFile::open(path);
    return file && BoxWalk(*file, deadline).findsProtection();
}

} // namespace engine
