// SPDX-License-Identifier: LGPL-2.1-or-later
#include "timeline/writtentimelines.h"

#include "enginelink/descriptor.h"
#include "enginelink/log.h"
#include "enginelink/timeline/timelinetext.h"
#include "ofprocess.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace engine {

namespace {

bool writeAll(int file, const std::string& text)
{
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t count = ::write(file, text.data() + done, text.size() - done);
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
    wire::Descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!file)
        return false;
    bool isWritten = writeAll(file.get(), text);
    isWritten = close(file.release()) == 0 && isWritten;
    if (!isWritten)
        unlink(path.c_str());
    return isWritten;
}

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

WrittenTimelines& WrittenTimelines::ofThisProcess()
{
    static OfProcess<WrittenTimelines> timelines;
    return timelines.get();
}

void WrittenTimelines::end()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_files.clear();
}

void WrittenTimelines::write(const std::string& path, const Timeline& timeline)
{
    if (!writeFile(path, timelineText(timeline)))
        return;
    Written written;
    written.timeline = std::make_shared<const Timeline>(timeline);
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (identify(path, written.identity))
        m_files.insert_or_assign(path, written);
}

std::shared_ptr<const Timeline> WrittenTimelines::find(const std::string& path) const
{
    Identity identity;
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto file = m_files.find(path);
    const bool isOne =
        file != m_files.end() && identify(path, identity) && identity == file->second.identity;
    return isOne ? file->second.timeline : nullptr;
}

void WrittenTimelines::remove(const std::string& path)
{
    if (find(path) && unlink(path.c_str()) != 0)
        log(path + ": " + std::strerror(errno));
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_files.erase(path);
}

/// False when there is no file. A link is none of them, wherever it leads.
bool WrittenTimelines::identify(const std::string& path, Identity& identity)
{
    struct stat status;
    if (lstat(path.c_str(), &status) != 0)
        return false;
    identity = {status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec,
                status.st_mtim.tv_nsec};
    return true;
}

} // namespace engine
