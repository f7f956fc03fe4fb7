// SPDX-License-Identifier: GPL-2.0-or-later
#include "bluray/clipinformation.h"

#include "bluray/codings.h"
#include "text.h"

#include <algorithm>

namespace engine {

namespace {

/// Where the parts of the file begin.
struct Sections
{
    ByteReader sequences;
    ByteReader programs;
    ByteReader entryPoints;
};

std::optional<Sections> findSections(const Bytes& bytes)
{
    const ByteReader file(bytes);
    ByteReader header = file;
    if (header.text(4) != "HDMV")
        return std::nullopt;
    header.skip(4); // version
    const std::uint32_t sequencesAt = header.u32();
    const std::uint32_t programsAt = header.u32();
    const std::uint32_t entryPointsAt = header.u32();
    if (!header.isIntact())
        return std::nullopt;
    return Sections{file.from(sequencesAt), file.from(programsAt), file.from(entryPointsAt)};
}

/// Real discs have one, and rarely a few more.
constexpr std::size_t mostSequences = 255;

/// The sequences of the clock, whichever recording they belong to. An empty one makes the whole
/// section useless, for then the numbers of the others mean nothing.
std::vector<ClockSequence> parseSequences(ByteReader bytes)
{
    ByteReader section = bytes.part(bytes.u32());
    section.skip(1);
    const int recordings = section.u8();
    std::vector<ClockSequence> sequences;
    for (int i = 0; i < recordings; ++i) {
        section.skip(4); // where the recording begins
        const int count = section.u8();
        section.skip(1); // number of its first sequence: they are numbered throughout
        for (int j = 0; j < count; ++j) {
            section.skip(2); // stream with the clock
            ClockSequence sequence;
            sequence.firstPacket = section.u32();
            sequence.start = section.u32();
            sequence.end = section.u32();
            if (!section.isIntact() || sequence.start >= sequence.end ||
                sequences.size() == mostSequences)
                return {};
            sequences.push_back(sequence);
        }
    }
    return sequences;
}

std::string parseLanguage(ByteReader& bytes)
{
    const std::string code = bytes.text(3);
    const bool isCode = code.size() == 3 && std::all_of(code.begin(), code.end(), isLetter);
    return isCode ? code : "";
}

/// The streams of the first program; real discs have one.
std::vector<ClipStream> parseStreams(ByteReader bytes)
{
    ByteReader section = bytes.part(bytes.u32());
    section.skip(1);
    const int programs = section.u8();
    section.skip(4 + 2); // where the program begins, and the stream with its map
    const int count = programs > 0 ? section.u8() : 0;
    section.skip(1);
    std::vector<ClipStream> streams;
    for (int i = 0; i < count; ++i) {
        const int pid = section.u16();
        const std::size_t length = section.u8();
        const ClipStream stream = parseStream(pid, section.part(length));
        if (!section.isIntact())
            return {};
        streams.push_back(stream);
    }
    return streams;
}

/// Each point is split in two tables: a fine one with the low bits of all points, and a coarse one
/// with the high bits of the points from a given one on.
std::vector<EntryPoint> joinTables(ByteReader coarse, std::uint32_t coarseCount, ByteReader fine,
                                   std::uint32_t fineCount)
{
    constexpr std::uint32_t lowPacketBits = 0x1FFFF;
    std::vector<EntryPoint> points;
    std::uint32_t point = 0;
    for (std::uint32_t i = 0; i < coarseCount; ++i) {
        const std::uint32_t firstAndTime = coarse.u32();
        const std::uint32_t packet = coarse.u32();
        const bool isLast = i + 1 == coarseCount;
        const std::uint32_t end = isLast ? fineCount : ByteReader(coarse).u32() >> 14;
        if (!coarse.isIntact() || firstAndTime >> 14 != point)
            return {};
        for (; point < end; ++point) {
            const std::uint32_t low = fine.u32();
            if (!fine.isIntact())
                return {};
            points.push_back({((firstAndTime & 0x3FFE) << 18) + ((low >> 17 & 0x7FF) << 8),
                              (packet & ~lowPacketBits) + (low & lowPacketBits)});
        }
    }
    return points;
}

std::vector<EntryPoint> parseEntryPoints(ByteReader section)
{
    section.skip(4 + 2); // length and kind of the section
    const ByteReader map = section;
    section.skip(1);
    if (section.u8() == 0)
        return {};
    section.skip(2); // the stream
    const std::uint32_t highCount = section.u16() & 0x3;
    const std::uint32_t counts = section.u32();
    ByteReader coarse = map.from(section.u32());
    const ByteReader tables = coarse;
    const ByteReader fine = tables.from(coarse.u32());
    return joinTables(coarse, highCount << 14 | counts >> 18, fine, counts & 0x3FFFF);
}

} // namespace

ClipStream parseStream(int pid, ByteReader bytes)
{
    ClipStream stream;
    stream.pid = pid;
    stream.coding = bytes.u8();
    switch (findCoding(stream.coding).attributes) {
    case Coding::Attributes::picture: {
        const int formatAndRate = bytes.u8();
        stream.format = formatAndRate >> 4;
        stream.rate = formatAndRate & 0xF;
        stream.aspect = bytes.u8() >> 4;
        break;
    }
    case Coding::Attributes::sound: {
        const int formatAndRate = bytes.u8();
        stream.format = formatAndRate >> 4;
        stream.rate = formatAndRate & 0xF;
        stream.language = parseLanguage(bytes);
        break;
    }
    case Coding::Attributes::text:
        bytes.skip(1); // character set
        stream.language = parseLanguage(bytes);
        break;
    case Coding::Attributes::graphics:
        stream.language = parseLanguage(bytes);
        break;
    case Coding::Attributes::none:
        break;
    }
    return stream;
}

std::int64_t ClipInformation::duration() const
{
    return offsetOf(sequences.size());
}

std::int64_t ClipInformation::offsetOf(std::size_t sequence) const
{
    std::int64_t ticks = 0;
    for (std::size_t i = 0; i < sequence; ++i)
        ticks += sequences[i].end - sequences[i].start;
    return ticks;
}

std::size_t ClipInformation::sequenceOf(std::uint8_t number, std::uint32_t time) const
{
    const auto holds = [time](const ClockSequence& sequence) {
        return sequence.start <= time && time < sequence.end;
    };
    if (number < sequences.size() && holds(sequences[number]))
        return number;
    const auto found = std::find_if(sequences.begin(), sequences.end(), holds);
    if (found != sequences.end())
        return static_cast<std::size_t>(found - sequences.begin());
    return number < sequences.size() ? number : 0;
}

std::int64_t ClipInformation::positionOf(std::uint32_t time, std::size_t sequence) const
{
    const ClockSequence& clock = sequences[sequence];
    return offsetOf(sequence) + (std::clamp(time, clock.start, clock.end) - clock.start);
}

std::optional<ClipInformation> parseClipInformation(const Bytes& bytes)
{
    const auto sections = findSections(bytes);
    if (!sections)
        return std::nullopt;
    ClipInformation information;
    information.sequences = parseSequences(sections->sequences);
    information.streams = parseStreams(sections->programs);
    information.entryPoints = parseEntryPoints(sections->entryPoints);
    if (information.sequences.empty() || information.streams.empty())
        return std::nullopt;
    return information;
}

} // namespace engine
