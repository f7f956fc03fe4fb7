// SPDX-License-Identifier: GPL-2.0-or-later
#include "timeline/writtenfiles.h"

#include "log.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
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

struct Registry
{
    std::mutex mutex;
    std::map<std::string, Identity> files;
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

} // namespace

void rememberWrittenFile(const std::string& path)
{
    const auto identity = identityOf(path);
    std::lock_guard<std::mutex> lock(registry().mutex);
    if (identity)
        registry().files.insert_or_assign(path, *identity);
}

void removeWrittenFile(const std::string& path)
{
    std::lock_guard<std::mutex> lock(registry().mutex);
    const auto file = registry().files.find(path);
    if (file == registry().files.end())
        return;
    if (identityOf(path) == file->second && unlink(path.c_str()) != 0)
        log(path + ": " + std::strerror(errno));
    registry().files.erase(file);
}

} // namespace engine
