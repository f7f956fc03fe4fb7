// SPDX-License-Identifier: GPL-2.0-or-later
#include "memoryfile.h"

#include "libavlog.h"

#include <fcntl.h>
#include <sys/mman.h>

#include <cerrno>
#include <cstdlib>

MemoryFile::MemoryFile(const std::string& path)
    : m_path(path)
    , m_memory(memfd_create("input", MFD_CLOEXEC))
{
    if (!m_memory)
        std::abort();
    engine::useFiles(*this);
    engine::joinLibavLog(); // else it writes to the terminal
}

void MemoryFile::clear()
{
    if (ftruncate(m_memory.get(), 0) != 0)
        std::abort();
}

void MemoryFile::write(std::uint64_t offset, const std::uint8_t* data, std::size_t size)
{
    if (pwrite(m_memory.get(), data, size, off_t(offset)) != ssize_t(size))
        std::abort();
}

engine::FileKind MemoryFile::kindOf(const std::string& path)
{
    return path == m_path ? engine::FileKind::file : engine::FileKind::none;
}

wire::Descriptor MemoryFile::open(const std::string& path)
{
    errno = ENOENT;
    return path == m_path ? wire::Descriptor(fcntl(m_memory.get(), F_DUPFD_CLOEXEC, 0))
                          : wire::Descriptor();
}

std::vector<engine::FolderEntry> MemoryFile::list(const std::string& /*folder*/,
                                                  std::size_t /*most*/)
{
    return {};
}
