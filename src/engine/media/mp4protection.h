// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "deadline.h"

#include <string>

namespace engine {

/// Whether the MP4 or QuickTime file at `path` declares a protected track: a sample entry of a
/// protected kind, or one with protection scheme information. libav shows the original kind
/// instead, and cannot open some such files at all. False for other files, and when the deadline
/// passes before the movie's header is found.
bool mp4DeclaresProtection(const std::string& path, Deadline& deadline);

} // namespace engine
