// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "dvd/ifotable.h"

#include <vector>

namespace engine {

constexpr int mostTitleSets = 99;
constexpr std::size_t mostTitles = 99;

/// Where a title of the disc is to be found.
struct TitleReference
{
    int titleSet = 0; ///< counted from 1
    int number = 0;   ///< within the set, counted from 1
};

/// The disc's table of contents, as VIDEO_TS.IFO holds it.
struct VideoManager
{
    int titleSetCount = 0;
    std::vector<TitleReference> titles; ///< in the disc's order, which need not be that of the sets
};

/// Nothing, and a finding, when the file is none of a disc or the table is lost.
std::optional<VideoManager> parseVideoManager(const ByteView& ifo, IfoFindings& findings);

} // namespace engine
