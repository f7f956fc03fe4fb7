// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>

namespace engine {

/// Whether the regular file at `path` begins like an image of a disc with a UDF file system.
bool isUdfImage(const std::string& path);

/// Whether the image also has the descriptor from which all others are found. libudfread complains
/// on the terminal about images that lack it, so it is only to be asked about those that do not.
bool hasUdfAnchor(const std::string& path);

} // namespace engine
