// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "dvd/dvdlocation.h"
#include "dvd/titleset.h"
#include "dvd/videots.h"

#include <optional>
#include <string>
#include <vector>

namespace engine {

/// A title that the disc's table of contents names.
struct DvdTitle
{
    int number = 0; ///< within its set, counted from 1
    Title facts;    ///< empty when the set does not describe it
};

struct DvdTitleSet
{
    int number = 0;        ///< counted from 1
    bool isUsable = false; ///< whether its IFO file could be read, and it is wanted
    VideoAttributes video;
    std::vector<DvdTitle> titles;
};

/// All that the disc's tables tell.
struct DvdDisc
{
    std::string name;
    std::vector<DvdTitleSet> titleSets; ///< by their numbers, without gaps
};

/// Reads the tables of the disc at `location`, whose files are `files`; where an IFO file is
/// missing or damaged, its copy. Nothing when there is nothing on the disc that it could play.
///
/// They are taken apart here rather than by libdvdread: that reaches beyond its own memory when
/// tables or directories are damaged.
std::optional<DvdDisc> readDvd(const VideoTs& files, const DvdLocation& location);

/// Reads the tables of one title set.
std::optional<TitleSet> readTitleSet(const VideoTs& files, int number);

} // namespace engine
