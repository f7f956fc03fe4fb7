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

/// Of sound whose samples last one unit each, as PCM's do, libav makes an entry for so many of
/// them; for fewer where a track says that they come in frames.
constexpr std::uint64_t samplesOfEntry = 1024;
constexpr std::uint64_t fewestSamplesOfEntry = 800;
constexpr std::uint64_t samplesOfLargeFrame = 160;

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
    bool isPicture = false;
    bool isPcm = false;    ///< each sample lasts one unit
    bool isListed = false; ///< each sample has a size of its own
    std::uint64_t samples = 0;
    std::uint64_t samplesOfEntry = engine::samplesOfEntry;
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
    const bool isInChunks = !track.isPicture && track.isPcm && track.samplesToChunks;
    std::uint64_t entries = track.samples;
    if (isInChunks) {
        const std::uint64_t ofChunk = mostSamplesOfChunk(*track.samplesToChunks);
        entries = (ofChunk / track.samplesOfEntry + 1) * track.chunks;
    }
    if (!track.isListed || isInChunks) {
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
    const Bytes bytes = readContents(m_file, table, 48);
    const ByteView fields(bytes);
    if (table.isOneOf({"hdlr"})) {
        // The last of these counts; there are others, for the way that data is kept.
        const std::string kind = fields.part(8, 4).text();
        if (kind == "vide" || kind == "soun")
            track.isPicture = kind == "vide";
    } else if (table.isOneOf({"stsd"})) {
        const bool hasFrames = fields.u16(24) == 1; // the version of a description of sound
        const std::uint64_t frame = fields.u32(44);
        if (hasFrames)
            track.samplesOfEntry = frame < samplesOfLargeFrame ? fewestSamplesOfEntry : frame;
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

/// Each entry says how many samples the chunks from one on have. To add them up would mean to do so
/// just as libav does; chunks of a film have about as many each.
std::uint64_t Mp4Claims::mostSamplesOfChunk(const Mp4Box& table) const
{
    constexpr std::uint64_t header = 8;
    constexpr std::uint64_t entrySize = 12;
    constexpr std::uint64_t step = 4096 * entrySize;
    std::uint64_t most = 0;
    for (std::uint64_t begin = table.contents + header; begin < table.end; begin += step) {
        const Mp4Box part = {table.type, begin, begin, std::min(begin + step, table.end)};
        const Bytes bytes = readContents(m_file, part, step);
        const ByteView entries(bytes);
        for (std::size_t at = 0; entries.holds(at, entrySize); at += entrySize)
            most = std::max<std::uint64_t>(most, entries.u32(at + 4));
    }
    return most;
}

} // namespace engine
