// SPDX-License-Identifier: LGPL-2.1-or-later
#include "timeline/writtentimelines.h"

#include "enginelink/log.h"
#include "enginelink/timeline/timelinetext.h"

#include <fcntl.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <map>
#include <mutex>
#include <optional>
#include <tuple>

namespace engine {

namespace {

/// What tells a file from another that has taken its name: device, number, size and time of the
/// last change.
using Identity = std::tuple<dev_t, ino_t, off_t, time_t, long>;

struct Written
{
    Identity identity;
    std::shared_ptr<const Timeline> timeline;
};

struct Registry
{
    std::mutex mutex;
    std::map<std::string, Written> files;
};

Registry& registry()
{
    static Registry instance;
    return instance;
}

std::optional<Identity> identityOf(const std::string& path)
{
    struct stat status;
    if (lstat(path.c_str(), &status) != 0)
        return std::nullopt;
    return Identity(status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec,
                    status.st_mtim.tv_nsec);
}

bool writeAll(int file, const std::string& text)
{
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t count = write(file, text.data() + done, text.size() - done);
        if (count < 0)
            return false;
        done += static_cast<std::size_t>(count);
    }
    return true;
}

/// A new file, never one that somebody else has put there, nor through a link. Leaves nothing
/// behind when it fails.
bool writeNewFile(const std::string& path, const std::string& text)
{
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (file < 0)
        return false;
    bool isWritten = writeAll(file, text);
    isWritten = close(file) == 0 && isWritten;
    if (!isWritten)
        unlink(path.c_str());
    return isWritten;
}

/// The file appears as a whole or not at all.
bool writeFile(const std::string& path, const std::string& text)
{
    const std::string part = path + ".part";
    if (!writeNewFile(part, text)) {
        log(part + ": " + std::strerror(errno));
        return false;
    }
    if (std::rename(part.c_str(), path.c_str()) == 0)
        return true;
    log(path + ": " + std::strerror(errno));
    unlink(part.c_str());
    return false;
}

} // namespace

bool writeTimeline(const std::string& path, const Timeline& timeline)
{
    if (!writeFile(path, timelineText(timeline)))
        return false;
    const auto identity = identityOf(path);
    std::lock_guard<std::mutex> lock(registry().mutex);
    if (identity) {
        registry().files.insert_or_assign(
            path, Written{*identity, std::make_shared<const Timeline>(timeline)});
    }
    return identity.has_value();
}

std::shared_ptr<const Timeline> writtenTimeline(const std::string& path)
{
    std::lock_guard<std::mutex> lock(registry().mutex);
    const auto file = registry().files.find(path);
    const bool isOurs = file != registry().files.end() && identityOf(path) == file->second.identity;
    return isOurs ? file->second.timeline : nullptr;
}

void removeWrittenTimeline(const std::string& path)
{
    std::lock_guard<std::mutex> lock(registry().mutex);
    const auto file = registry().files.find(path);
    if (file == registry().files.end())
        return;
    if (identityOf(path) == file->second.identity && unlink(path.c_str()) != 0)
        log(path + ": " + std::strerror(errno));
    registry().files.erase(file);
}

} // namespace engine
