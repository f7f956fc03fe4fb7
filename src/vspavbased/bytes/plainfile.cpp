// SPDX-License-Identifier: GPL-2.0-or-later
#include "bytes/plainfile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

namespace engine {

std::shared_ptr<const PlainFile> PlainFile::open(const std::string& path)
{
    // Anything but a regular file might never end, or never begin.
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        return nullptr;
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        return nullptr;
    struct stat status;
    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        close(descriptor);
        return nullptr;
    }
    return std::shared_ptr<const PlainFile>(
        new PlainFile(descriptor, static_cast<std::uint64_t>(status.st_size)));
}

PlainFile::~PlainFile()
{
    close(m_descriptor);
}

std::size_t PlainFile::read(std::uint64_t offset, std::uint8_t* buffer, std::size_t size) const
{
    std::size_t done = 0;
    while (done < size && offset + done < m_size) {
        const ssize_t count =
            pread(m_descriptor, buffer + done, size - done, static_cast<off_t>(offset + done));
        if (count > 0)
            done += static_cast<std::size_t>(count);
        else if (count == 0 || errno != EINTR)
            break;
    }
    return done;
}

} // namespace engine
