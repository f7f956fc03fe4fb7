// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>

namespace engine {

/// The timeline files that this process has written and not yet removed. Hosts name such a file in
/// the temporary folder, have it opened once and never remove it; so the engine does. A file that
/// somebody else wrote, or has replaced since, is never removed. Callable from any thread.

/// To be called when a timeline file has been written.
void rememberWrittenFile(const std::string& path);

/// Removes the file at `path` if it is remembered and still the same, and forgets it.
void removeWrittenFile(const std::string& path);

} // namespace engine
