// SPDX-License-Identifier: GPL-2.0-or-later
#include "dvd/titleset.h"

#include "dvd/videomanager.h"

#include <algorithm>
#include <map>

namespace engine {

namespace {

constexpr TableFormat chapterTable{"chapter table", 0xC8, 8, 4, true};
constexpr TableFormat chainTable{"program chain table", 0xCC, 8, 8, true};
constexpr TableFormat cellAddressTable{"cell address table", 0xE0, 8, 12, false};
constexpr TableFormat vobuTable{"VOBU address map", 0xE4, 4, 4, false};

/// More than discs may have; tables may claim more by naming the same bytes again and again.
constexpr std::size_t mostChapters = 999;
constexpr std::size_t mostCells = 5000;
constexpr std::size_t mostChainEntries = 100000; ///< programs and cells of all titles of a set
constexpr std::size_t mostCellAddresses = 200000;
constexpr std::size_t mostVobus = 200000;

/// How many entries of a table are read.
std::size_t entriesUpTo(std::size_t most, const IfoTable& table, IfoFindings& findings)
{
    if (table.entryCount > most)
        findings.add("more entries in a table than a disc can have");
    return std::min(table.entryCount, most);
}

/// Reads the titles of one set.
class TitleParser
{
public:
    TitleParser(const ByteView& ifo, const VideoAttributes& video, const IfoTable& chapters,
                const IfoTable& chains, IfoFindings& findings)
        : m_ifo(ifo)
        , m_video(video)
        , m_chapters(chapters)
        , m_chains(chains)
        , m_findings(findings)
    {}

    Title parse(std::size_t index);

private:
    using ProgramStarts = std::vector<std::optional<Ticks>>;

    ByteView chapterEntries(std::size_t index);
    std::optional<ProgramChain> parseChain(std::size_t number);
    ProgramStarts append(const ProgramChain& chain, std::size_t firstProgram, Title& title);

    ByteView m_ifo;
    const VideoAttributes& m_video;
    const IfoTable& m_chapters;
    const IfoTable& m_chains;
    IfoFindings& m_findings;
    std::size_t m_chainEntries = 0; ///< read so far
};

/// The title plays the chains that its chapters name, each once.
Title TitleParser::parse(std::size_t index)
{
    Title title;
    std::map<std::size_t, ProgramStarts> startsOfChains;
    const ByteView entries = chapterEntries(index);
    const std::size_t count = std::min(entries.size() / 4, mostChapters);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t chainNumber = entries.u16(4 * i);
        const std::size_t program = entries.u16(4 * i + 2);
        auto known = startsOfChains.find(chainNumber);
        if (known == startsOfChains.end()) {
            const auto chain = parseChain(chainNumber);
            // Only the title itself can begin in the middle of a chain: that leads to the next.
            const std::size_t first = title.cells.empty() ? program : 1;
            const ProgramStarts starts = chain ? append(*chain, first, title) : ProgramStarts();
            known = startsOfChains.emplace(chainNumber, starts).first;
        }
        const ProgramStarts& starts = known->second;
        if (program >= 1 && program <= starts.size() && starts[program - 1])
            title.chapterStarts.push_back(*starts[program - 1]);
        else
            m_findings.add("a chapter that leads nowhere");
    }
    return title;
}

/// The title's chapters, each a number of a chain and one of a program in it.
ByteView TitleParser::chapterEntries(std::size_t index)
{
    const std::size_t entry = chapterTable.headerSize + 4 * index;
    const bool isLast = index + 1 == m_chapters.entryCount;
    const std::size_t begin = m_chapters.bytes.u32(entry);
    const std::size_t end = isLast ? m_chapters.bytes.size() : m_chapters.bytes.u32(entry + 4);
    if (begin >= end || end > m_chapters.bytes.size()) {
        m_findings.add("a title whose chapters lie outside the table");
        return {};
    }
    return m_chapters.bytes.part(begin, end - begin);
}

/// Chains are numbered from 1.
std::optional<ProgramChain> TitleParser::parseChain(std::size_t number)
{
    if (number < 1 || number > m_chains.entryCount) {
        m_findings.add("a chapter of a program chain that does not exist");
        return std::nullopt;
    }
    const std::size_t entry = chainTable.headerSize + chainTable.entrySize * (number - 1);
    const std::size_t offset = m_chains.bytes.u32(entry + 4);
    if (m_chainEntries > mostChainEntries) {
        m_findings.add("more cells than a title set can have");
        return std::nullopt;
    }
    auto chain = parseProgramChain(m_chains.rest.from(offset), m_video.isNtsc, m_findings);
    m_chainEntries += 1 + (chain ? chain->programs.size() + chain->cells.size() : 0);
    return chain;
}

/// Lets the title go on with `chain`, from a program of it on: where in the title each of the
/// chain's programs begins. Nothing for those before.
TitleParser::ProgramStarts TitleParser::append(const ProgramChain& chain, std::size_t firstProgram,
                                               Title& title)
{
    if (title.cells.size() + chain.cells.size() > mostCells) {
        m_findings.add("a title of too many cells");
        return {};
    }
    if (title.cells.empty()) {
        title.audio = parseAudioTracks(m_ifo, chain, m_findings);
        title.subpictures = parseSubpictureTracks(m_ifo, chain, m_video.isWide(), m_findings);
    }
    const bool isProgram = firstProgram >= 1 && firstProgram <= chain.programs.size();
    const int firstCell = isProgram ? chain.programs[firstProgram - 1] : 1;
    std::vector<std::optional<Ticks>> cellStarts;
    for (const Cell& cell : chain.cells) {
        const bool isBefore = static_cast<int>(cellStarts.size()) + 1 < firstCell;
        cellStarts.push_back(isBefore ? std::nullopt : std::optional(title.duration));
        if (isBefore || cell.isOtherAngle)
            continue;
        title.cells.push_back(cell);
        title.duration += cell.duration;
    }
    ProgramStarts starts;
    for (const int cell : chain.programs) {
        const auto index = static_cast<std::size_t>(cell - 1);
        starts.push_back(index < cellStarts.size() ? cellStarts[index] : std::nullopt);
    }
    return starts;
}

std::vector<CellAddress> parseCellAddresses(const ByteView& ifo, IfoFindings& findings)
{
    std::vector<CellAddress> addresses;
    const auto table = findTable(ifo, cellAddressTable, findings);
    const std::size_t count = table ? entriesUpTo(mostCellAddresses, *table, findings) : 0;
    for (std::size_t i = 0; i < count; ++i) {
        const ByteView entry =
            table->bytes.from(cellAddressTable.headerSize + cellAddressTable.entrySize * i);
        addresses.push_back({entry.u16(0), entry.u8(2), entry.u32(4), entry.u32(8)});
    }
    if (!std::is_sorted(addresses.begin(), addresses.end()))
        std::stable_sort(addresses.begin(), addresses.end());
    return addresses;
}

std::vector<std::uint32_t> parseVobuSectors(const ByteView& ifo, IfoFindings& findings)
{
    std::vector<std::uint32_t> sectors;
    const auto table = findTable(ifo, vobuTable, findings);
    const std::size_t count = table ? entriesUpTo(mostVobus, *table, findings) : 0;
    for (std::size_t i = 0; i < count; ++i)
        sectors.push_back(table->bytes.u32(vobuTable.headerSize + vobuTable.entrySize * i));
    if (!std::is_sorted(sectors.begin(), sectors.end())) {
        findings.add("the VOBU address map is out of order");
        std::sort(sectors.begin(), sectors.end());
    }
    return sectors;
}

} // namespace

std::optional<TitleSet> parseTitleSet(const ByteView& ifo, IfoFindings& findings)
{
    if (!ifo.beginsWith("DVDVIDEO-VTS")) {
        findings.add("no IFO file of a title set");
        return std::nullopt;
    }
    const auto chapters = findTable(ifo, chapterTable, findings);
    const auto chains = findTable(ifo, chainTable, findings);
    if (!chapters || !chains)
        return std::nullopt;

    TitleSet set;
    set.video = parseVideoAttributes(ifo);
    TitleParser parser(ifo, set.video, *chapters, *chains, findings);
    for (std::size_t i = 0; i < std::min(chapters->entryCount, mostTitles); ++i)
        set.titles.push_back(parser.parse(i));
    set.cellAddresses = parseCellAddresses(ifo, findings);
    set.vobuSectors = parseVobuSectors(ifo, findings);
    return set;
}

} // namespace engine
