// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "enginelink/timeline/timeline.h"

#include <optional>
#include <string>

namespace engine {

/// Nothing, with the reason in the log, when the file cannot be read or breaks the format's rules.
std::optional<Timeline> readTimelineFile(const std::string& path);

} // namespace engine
