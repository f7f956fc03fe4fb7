// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "enginelink/timeline/timeline.h"

#include <istream>
#include <string>

namespace engine {

/// Timelines as text; docs/timeline-format.md describes the format.

/// Of the files that hold them.
constexpr char timelineSuffix[] = ".seix";

constexpr char timelineFirstLine[] = "vspimport timeline 1";

std::string timelineText(const Timeline& timeline);

/// Reads a timeline: 0, or the number of the first line that breaks the format's rules.
int parseTimeline(std::istream& text, Timeline& timeline);

} // namespace engine
