// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "enginelink/ratio.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace engine {

/// A part of a media file, as a timeline plays it.
struct TimelineItem
{
    static constexpr std::int32_t noStream = -2;

    std::string path; ///< absolute; of the file, or of a file inside an image
    std::int32_t movie = 0;
    std::int32_t videoStream = noStream;
    std::int32_t audioStream = noStream;
    std::int32_t subtitleStream = noStream;
    std::int32_t inMs = 0; ///< the part that is played, in milliseconds
    std::int32_t outMs = 0;

    int width = 0; ///< 0 stands for unknown here and below
    int height = 0;
    Ratio frameRate;
    Ratio displayAspect;
    int sampleRate = 0;
    int channels = 0;

    std::int64_t lengthMs() const { return std::max<std::int64_t>(std::int64_t{outMs} - inMs, 0); }
};

/// Parts of media files that are played one after another.
struct Timeline
{
    /// More than a disc can have stream files.
    static constexpr std::size_t mostItems = 200000;

    std::vector<TimelineItem> items;
};

} // namespace engine
