// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "deadline.h"
#include "libav.h"

#include <string>

namespace engine {

/// Whether the media file at `path`, open as `context`, is under digital rights management: libav
/// reads such a file like any other, and only its decoders would find nothing in it. What is not
/// found by the deadline is not there.
bool isProtected(const AVFormatContext& context, const std::string& path, Deadline& deadline);

} // namespace engine
