// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "enginelink/timeline/timeline.h"

#include <memory>
#include <string>

namespace engine {

/// The timeline files that this process has written and not yet removed, and what they say. Hosts
/// name such a file in the temporary folder, have it opened once and never remove it; so this side
/// does. A file that somebody else wrote, or has replaced since, is neither opened nor removed.
/// Callable from any thread.

/// Writes the file and remembers it. False, with the reason in the log, when it cannot be written.
bool writeTimeline(const std::string& path, const Timeline& timeline);

/// What the file at `path` says; null when it is none of ours.
std::shared_ptr<const Timeline> writtenTimeline(const std::string& path);

/// Removes the file at `path` if it is remembered and still the same, and forgets it.
void removeWrittenTimeline(const std::string& path);

} // namespace engine
