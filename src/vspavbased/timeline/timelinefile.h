// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "timeline/timeline.h"

#include <optional>
#include <string>

namespace engine {

/// Whether the file at `path` is called as timelines are.
bool isTimelineFile(const std::string& path);

/// Nothing, with the reason in the log, when the file cannot be read or breaks the format's rules.
std::optional<Timeline> readTimelineFile(const std::string& path);

/// Writes the file as a whole or not at all; what was there before is replaced. False, with the
/// reason in the log, when it cannot be written.
bool writeTimelineFile(const std::string& path, const Timeline& timeline);

} // namespace engine
