// SPDX-License-Identifier: GPL-2.0-or-later
#include "timeline/timelinefile.h"

#include "log.h"
#include "text.h"
#include "timeline/timelinetext.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>

namespace engine {

namespace {

const char suffix[] = ".seix";

/// A few hundred bytes an item, for the longest timeline.
constexpr off_t largestFile = off_t{128} * 1024 * 1024;

bool isRegularFile(const std::string& path)
{
    struct stat status;
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
           status.st_size <= largestFile;
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
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (file < 0)
        return false;
    bool isWritten = writeAll(file, text);
    isWritten = close(file) == 0 && isWritten;
    if (!isWritten)
        unlink(path.c_str());
    return isWritten;
}

} // namespace

bool isTimelineFile(const std::string& path)
{
    return endsWith(path, suffix) && isRegularFile(path);
}

std::optional<Timeline> readTimelineFile(const std::string& path)
{
    if (!isRegularFile(path))
        return std::nullopt;
    std::ifstream file(path, std::ios::binary);
    Timeline timeline;
    const int wrongLine = parseTimeline(file, timeline);
    if (wrongLine == 0)
        return timeline;
    log(path + ": line " + std::to_string(wrongLine) + " breaks the rules of timelines");
    return std::nullopt;
}

bool writeTimelineFile(const std::string& path, const Timeline& timeline)
{
    const std::string part = path + ".part";
    if (!writeNewFile(part, timelineText(timeline))) {
        log(part + ": " + std::strerror(errno));
        return false;
    }
    if (std::rename(part.c_str(), path.c_str()) == 0)
        return true;
    log(path + ": " + std::strerror(errno));
    unlink(part.c_str());
    return false;
}

} // namespace engine
