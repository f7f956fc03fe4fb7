// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "enginelink/timeline/timeline.h"

#include <optional>
#include <string>

namespace engine {

/// Whether the file at `path` holds a timeline, by its suffix and its first line.
bool isTimelineFile(const std::string& path);

/// Nothing, with the reason in the log, when the file cannot be read or breaks the format's rules.
std::optional<Timeline> readTimelineFile(const std::string& path);

} // namespace engine
