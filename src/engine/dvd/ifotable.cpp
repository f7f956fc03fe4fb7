// SPDX-License-Identifier: GPL-2.0-or-later
#include "dvd/ifotable.h"

#include "disc/sector.h"
#include "enginelink/log.h"
#include "text.h"

namespace engine {

namespace {

std::optional<int> decimal(std::uint8_t digits)
{
    const int tens = digits >> 4;
    const int ones = digits & 0x0F;
    if (tens > 9 || ones > 9)
        return std::nullopt;
    return tens * 10 + ones;
}

} // namespace

void IfoFindings::add(const std::string& finding)
{
    // A file of random numbers has any number of them.
    constexpr int mostLogged = 20;
    if (++m_count <= mostLogged)
        log(m_file + ": " + finding);
}

std::optional<IfoTable> findTable(const ByteView& ifo, const TableFormat& format,
                                  IfoFindings& findings)
{
    const std::string name = format.name;
    const std::size_t sector = ifo.u32(format.pointer);
    IfoTable table;
    table.rest = ifo.from(sector * sectorSize);
    if (sector == 0 || !table.rest.holds(0, format.headerSize)) {
        findings.add("no " + name);
        return std::nullopt;
    }
    const std::size_t claimedCount = format.hasCount ? table.rest.u16(0) : 0;
    std::size_t claimedSize = std::size_t{table.rest.u32(format.headerSize - 4)} + 1;
    if (claimedSize == 1 && format.hasCount) // some discs leave it open
        claimedSize = format.headerSize + format.entrySize * claimedCount;
    if (!table.rest.holds(0, claimedSize))
        findings.add("the " + name + " is cut off");
    table.bytes = table.rest.part(0, std::max(claimedSize, format.headerSize));

    table.entryCount = (table.bytes.size() - format.headerSize) / format.entrySize;
    if (format.hasCount) {
        if (claimedCount > table.entryCount)
            findings.add("the " + name + " has no room for its entries");
        table.entryCount = std::min(table.entryCount, claimedCount);
    }
    return table;
}

std::optional<Ticks> parseTime(const ByteView& bytes, bool isNtsc)
{
    const auto hours = decimal(bytes.u8(0));
    const auto minutes = decimal(bytes.u8(1));
    const auto seconds = decimal(bytes.u8(2));
    const auto pictures = decimal(bytes.u8(3) & 0x3F);
    if (!hours || !minutes || !seconds || !pictures)
        return std::nullopt;
    // 1 says 25 pictures a second, 3 says 30; where it says neither, the video is asked.
    const int rateCode = bytes.u8(3) >> 6;
    const bool counts30 = rateCode == 3 || (rateCode != 1 && isNtsc);
    const Ticks wholeSeconds = (Ticks{*hours} * 60 + *minutes) * 60 + *seconds;
    if (counts30)
        return (wholeSeconds * 30 + *pictures) * ticksPerNtscPicture;
    return (wholeSeconds * 25 + *pictures) * ticksPerPalPicture;
}

std::string parseLanguage(std::uint16_t code)
{
    const char first = static_cast<char>(code >> 8);
    const char second = static_cast<char>(code & 0xFF);
    if (!isLetter(first) || !isLetter(second))
        return {};
    return {static_cast<char>(first | 0x20), static_cast<char>(second | 0x20)};
}

} // namespace engine
