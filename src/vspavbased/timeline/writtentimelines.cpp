// SPDX-License-Identifier: GPL-2.0-or-later
#include "timeline/writtentimelines.h"

#include "log.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace engine {

WrittenTimelines& WrittenTimelines::ofThisProcess()
{
    static WrittenTimelines timelines;
    return timelines;
}

void WrittenTimelines::add(const std::string& path)
{
    Identity identity;
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (identify(path, identity))
        m_files.insert_or_assign(path, identity);
}

bool WrittenTimelines::holds(const std::string& path) const
{
    Identity identity;
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto file = m_files.find(path);
    return file != m_files.end() && identify(path, identity) && identity == file->second;
}

void WrittenTimelines::remove(const std::string& path)
{
    if (holds(path) && unlink(path.c_str()) != 0)
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
