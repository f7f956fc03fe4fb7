// SPDX-License-Identifier: GPL-2.0-or-later
#include "media/mp4claims.h"

#include "bytes/byteview.h"

#include <algorithm>
#include <bitset>

namespace engine {

namespace {

/// A day of pictures and sound.
constexpr std::uint64_t mostSamples = 7'000'000;

/// That edit lists may add to them by showing some several times.
constexpr std::uint64_t mostCopies = mostSamples / 2;

/// Of PCM sound libav makes an entry for so many samples.
constexpr std::uint64_t pcmSamplesOfEntry = 1024;

constexpr std::uint64_t typeOffset = 4;

/// Makes it free space.
std::vector<Cover> hide(const Mp4Box& box)
{
    return {{box.begin + typeOffset, "free"}};
}

Bytes readContents(const ByteSource& file, const Mp4Box& box, std::size_t most)
{
    Bytes bytes(static_cast<std::size_t>(std::min<std::uint64_t>(box.end - box.contents, most)));
    bytes.resize(file.read(box.contents, bytes.data(), bytes.size()));
    return bytes;
}

} // namespace

/// What the boxes of a track say of its samples.
struct Mp4Claims::Track
{
    bool isSound = false;
    bool isPcm = false;    ///< each sample lasts one unit
    bool isListed = false; ///< each sample has a size of its own
    std::uint64_t samples = 0;
    std::uint64_t chunks = 0;
    std::uint64_t edits = 0;
    std::optional<Mp4Box> editList;
    std::optional<Mp4Box> samplesToChunks;
    int boxes = 0;
};

std::optional<std::vector<Cover>> Mp4Claims::cover(std::uint64_t offset)
{
    const auto box =
        offset < typeOffset ? std::nullopt : readMp4Box(m_file, offset - typeOffset, m_file.size());
    if (!box)
        return std::vector<Cover>();
    if (box->isOneOf({"trak"}))
        return coverTrack(*box);
    m_expectsRuns = m_expectsRuns || box->isOneOf({"tfhd"});
    if (box->isOneOf({"tfhd"}))
        return std::vector<Cover>();
    if (!m_expectsRuns)
        return std::nullopt;
    return isCredibleRun(*box) ? std::vector<Cover>() : hide(*box);
}

std::vector<Cover> Mp4Claims::coverTrack(const Mp4Box& box)
{
    Track track;
    readTrack(box, track, 0);
    std::uint64_t entries = track.samples;
    if (track.isSound && track.isPcm && track.samplesToChunks)
        entries = samplesInChunks(*track.samplesToChunks, track.chunks) / pcmSamplesOfEntry;
    if (!track.isListed) {
        if (m_samples + entries > mostSamples)
            return hide(box);
        m_samples += entries;
    }
    if (track.editList && track.edits > 1) {
        const std::uint64_t copies = (track.edits - 1) * entries;
        if (m_copies + copies > mostCopies)
            return hide(*track.editList);
        m_copies += copies;
    }
    return {};
}

/// Whether the samples that are listed fit into the box, and those of all runs into the file.
bool Mp4Claims::isCredibleRun(const Mp4Box& run)
{
    constexpr std::uint64_t header = 8; // version, flags, number of samples
    const Bytes bytes = readContents(m_file, run, header);
    const ByteView fields(bytes);
    const std::uint32_t flags = fields.u32(0) & 0xFFFFFF;
    const std::uint64_t samples = fields.u32(4);
    const std::uint64_t common = std::bitset<3>(flags & 5).count() * 4;
    const std::uint64_t each = std::bitset<4>(flags >> 8 & 0xF).count() * 4;
    if (header + common + samples * each > run.end - run.contents ||
        m_samples + samples > std::min(mostSamples, m_file.size()))
        return false;
    m_samples += samples;
    return true;
}

void Mp4Claims::readTrack(const Mp4Box& box, Track& track, int level)
{
    constexpr int mostBoxes = 200;
    constexpr int deepest = 4;
    std::uint64_t offset = box.contents;
    while (const auto part = readMp4Box(m_file, offset, box.end)) {
        if (++track.boxes > mostBoxes)
            return;
        if (part->isOneOf({"edts", "mdia", "minf", "stbl"}) && level < deepest)
            readTrack(*part, track, level + 1);
        else
            readTable(*part, track);
        offset = part->end;
    }
}

void Mp4Claims::readTable(const Mp4Box& table, Track& track)
{
    const Bytes bytes = readContents(m_file, table, 16);
    const ByteView fields(bytes);
    if (table.isOneOf({"hdlr"})) {
        track.isSound = fields.part(8, 4).text() == "soun";
    } else if (table.isOneOf({"stts"})) {
        track.isPcm = fields.u32(4) == 1 && fields.u32(12) == 1;
    } else if (table.isOneOf({"stsz"})) {
        track.isListed = fields.u32(4) == 0;
        track.samples = fields.u32(8);
    } else if (table.isOneOf({"stz2"})) {
        track.isListed = true;
        track.samples = fields.u32(8);
    } else if (table.isOneOf({"stco", "co64"})) {
        track.chunks = fields.u32(4);
    } else if (table.isOneOf({"stsc"})) {
        track.samplesToChunks = table;
    } else if (table.isOneOf({"elst"})) {
        track.edits = fields.u32(4);
        track.editList = table;
    }
}

/// Each entry says how many samples the chunks from one on have.
std::uint64_t Mp4Claims::samplesInChunks(const Mp4Box& table, std::uint64_t chunks) const
{
    constexpr std::size_t header = 8;
    constexpr std::size_t entrySize = 12;
    constexpr std::size_t mostEntries = 100000;
    const Bytes bytes = readContents(m_file, table, header + mostEntries * entrySize);
    const ByteView entries(bytes);
    std::uint64_t samples = 0;
    for (std::size_t at = header; entries.holds(at, entrySize); at += entrySize) {
        const std::uint64_t first = entries.u32(at);
        const bool isLast = !entries.holds(at + entrySize, entrySize);
        const std::uint64_t next = isLast ? chunks + 1 : entries.u32(at + entrySize);
        if (next > first)
            samples += std::min(next - first, chunks) * entries.u32(at + 4);
    }
    return samples;
}

} // namespace engine
