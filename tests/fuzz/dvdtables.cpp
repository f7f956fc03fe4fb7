// SPDX-License-Identifier: GPL-2.0-or-later
//
// IFO files: the table of contents of a DVD, or the tables of a title set.
#include "dvd/maintitle.h"
#include "dvd/titlelayout.h"
#include "dvd/titlerecords.h"
#include "dvd/videomanager.h"

using namespace engine;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::uint64_t sectors = 1500; // of the video
    IfoFindings findings("input");
    const Bytes bytes(data, data + size); // so that what lies behind is known not to be its
    parseVideoManager(bytes, findings);
    const auto set = parseTitleSet(bytes, findings);
    if (!set)
        return 0;
    DvdDisc disc;
    DvdTitleSet& known = disc.titleSets.emplace_back();
    known.number = 1;
    known.isUsable = true;
    known.video = set->video;
    for (const Title& title : set->titles) {
        const TitleLayout layout(*set, title, sectors);
        if (!layout.vobus().empty()) {
            layout.cellAt(title.duration / 2);
            layout.vobuAtSector(sectors / 2);
        }
        describeTitleMovie(set->video, title);
        known.titles.push_back({int(known.titles.size()) + 1, title});
    }
    findMainTitle(disc);
    const TitleSetRecord record(known);
    return 0;
}
