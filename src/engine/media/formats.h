// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>

namespace engine {

/// The demuxers that may open a media file, as libav's list of names: those that hold sound or
/// moving pictures of their own. Left out are playlists and whatever else names other files, still
/// images, subtitles and plain text, which libav would also call media.
const std::string& mediaFormatNames();

} // namespace engine
