// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>

namespace engine {

/// Whether the regular file at `path` begins like an image of a disc with a UDF file system.
/// libudfread complains on the terminal about files that do not, so it is asked only about others.
bool isUdfImage(const std::string& path);

} // namespace engine
