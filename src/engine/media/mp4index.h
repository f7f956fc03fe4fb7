// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "deadline.h"

#include <string>

namespace engine {

/// Whether the file at `path` begins as MP4 and QuickTime files do and ends without a movie header,
/// which says where everything is: recorders write it last. False when the deadline passes.
bool mp4LacksIndex(const std::string& path, Deadline& deadline);

} // namespace engine
