// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "enginelink/timeline/timeline.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <tuple>

#include <sys/types.h>

namespace engine {

template <typename T>
class OfProcess;

/// The timeline files that this process has written and not yet removed: the only ones that may be
/// opened, since a timeline can name any file. The module puts them in the temporary folder, has
/// each opened once and never removes it; so the engine does. A file that somebody else wrote, or
/// has put in the place of one, does not count. Callable from any thread.
class WrittenTimelines
{
public:
    static WrittenTimelines& ofThisProcess();

    /// Writes the file, which appears as a whole or not at all. Says why not in the log.
    void write(const std::string& path, const Timeline& timeline);

    /// What the file at `path` says, if it is one of them and still the same; else null.
    std::shared_ptr<const Timeline> find(const std::string& path) const;

    /// Removes the file at `path` if it is one of them, and forgets it.
    void remove(const std::string& path);

    /// Forgets all of them.
    void end();

private:
    friend class OfProcess<WrittenTimelines>;

    /// What tells a file from another that has taken its name: device, number, size and time of the
    /// last change.
    using Identity = std::tuple<dev_t, ino_t, off_t, time_t, long>;

    struct Written
    {
        Identity identity;
        std::shared_ptr<const Timeline> timeline;
    };

    WrittenTimelines() = default;
    static bool identify(const std::string& path, Identity& identity);

    mutable std::mutex m_mutex;
    std::map<std::string, Written> m_files;
};

} // namespace engine
