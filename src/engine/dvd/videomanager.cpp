// SPDX-License-Identifier: GPL-2.0-or-later
#include "dvd/videomanager.h"

#include <algorithm>

namespace engine {

namespace {

constexpr std::size_t titleSetCount = 0x3E; ///< offset
constexpr TableFormat titleTable{"title table", 0xC4, 8, 12, true};

} // namespace

std::optional<VideoManager> parseVideoManager(const ByteView& ifo, IfoFindings& findings)
{
    if (!ifo.beginsWith("DVDVIDEO-VMG")) {
        findings.add("no IFO file of a disc");
        return std::nullopt;
    }
    const auto table = findTable(ifo, titleTable, findings);
    if (!table)
        return std::nullopt;

    VideoManager manager;
    manager.titleSetCount = std::min<int>(ifo.u16(titleSetCount), mostTitleSets);
    for (std::size_t i = 0; i < std::min(table->entryCount, mostTitles); ++i) {
        const ByteView entry = table->bytes.from(titleTable.headerSize + titleTable.entrySize * i);
        const TitleReference title{entry.u8(6), entry.u8(7)};
        if (title.titleSet < 1 || title.titleSet > mostTitleSets || title.number < 1)
            findings.add("a title of a title set that no disc has");
        else
            manager.titles.push_back(title);
    }
    if (manager.titles.empty()) {
        findings.add("no titles");
        return std::nullopt;
    }
    return manager;
}

} // namespace engine
