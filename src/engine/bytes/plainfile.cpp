// SPDX-License-Identifier: GPL-2.0-or-later
#include "bytes/plainfile.h"

#include "files/files.h"
#include "refusal.h"

#include <unistd.h>

#include <cerrno>

namespace engine {

std::shared_ptr<const PlainFile> PlainFile::open(const std::string& path)
{
    wire::Descriptor descriptor = files().open(path);
    if (!descriptor)
        noteFileError(errno);
    const off_t size = descriptor ? lseek(descriptor.get(), 0, SEEK_END) : -1;
    if (size < 0)
        return nullptr;
    return std::shared_ptr<const PlainFile>(
        new PlainFile(std::move(descriptor), static_cast<std::uint64_t>(size)));
}

std::size_t PlainFile::read(std::uint64_t offset, std::uint8_t* buffer, std::size_t size) const
{
    std::size_t done = 0;
    while (done < size && offset + done < m_size) {
        const ssize_t count = pread(m_descriptor.get(), buffer + done, size - done,
                                    static_cast<off_t>(offset + done));
        if (count > 0)
            done += static_cast<std::size_t>(count);
        else if (count == 0)
            break;
        else if (errno != EINTR) {
            noteFileError(EIO); // whatever the number: it is there, and cannot be read
            break;
        }
    }
    return done;
}

} // namespace engine
