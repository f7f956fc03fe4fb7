// SPDX-License-Identifier: GPL-2.0-or-later
#include "timeline/timelinefile.h"

#include "bytes/plainfile.h"
#include "enginelink/log.h"
#include "enginelink/timeline/timelinetext.h"
#include "text.h"

#include <algorithm>
#include <cstring>
#include <sstream>

namespace engine {

namespace {

/// A few hundred bytes an item, for the longest timeline.
constexpr std::size_t largestFile = std::size_t{128} * 1024 * 1024;

} // namespace

std::optional<Timeline> readTimelineFile(const std::string& path)
{
    const auto file = PlainFile::open(path);
    if (!file || file->size() > largestFile)
        return std::nullopt;
    const Bytes bytes = readBeginning(*file, largestFile);
    std::istringstream text(std::string(bytes.begin(), bytes.end()));
    Timeline timeline;
    const int wrongLine = parseTimeline(text, timeline);
    if (wrongLine == 0)
        return timeline;
    log(path + ": line " + std::to_string(wrongLine) + " breaks the rules of timelines");
    return std::nullopt;
}

} // namespace engine
