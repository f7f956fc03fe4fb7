// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <map>
#include <mutex>
#include <string>
#include <tuple>

#include <sys/types.h>

namespace engine {

/// The timeline files that this process has written and not yet removed: the only ones that may be
/// opened, since a timeline can name any file. Hosts put them in the temporary folder, have each
/// opened once and never remove it; so the engine does. A file that somebody else wrote, or has put
/// in the place of one, does not count. Callable from any thread.
class WrittenTimelines
{
public:
    static WrittenTimelines& ofThisProcess();

    /// To be called when the file at `path` has been written.
    void add(const std::string& path);

    /// Whether the file at `path` is one of them, and still the same.
    bool holds(const std::string& path) const;

    /// Removes the file at `path` if it is one of them, and forgets it.
    void remove(const std::string& path);

private:
    /// What tells a file from another that has taken its name: device, number, size and time of the
    /// last change.
    using Identity = std::tuple<dev_t, ino_t, off_t, time_t, long>;

    WrittenTimelines() = default;
    static bool identify(const std::string& path, Identity& identity);

    mutable std::mutex m_mutex;
    std::map<std::string, Identity> m_files;
};

} // namespace engine
