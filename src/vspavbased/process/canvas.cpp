// SPDX-License-Identifier: LGPL-2.1-or-later
#include "process/canvas.h"

#include <fcntl.h>
#include <sys/mman.h>

namespace engine {

std::unique_ptr<SharedCanvas> SharedCanvas::make(std::size_t size)
{
    wire::Descriptor memory(memfd_create("vspimport-picture", MFD_CLOEXEC | MFD_ALLOW_SEALING));
    if (!memory || ftruncate(memory.get(), static_cast<off_t>(size)) != 0 ||
        fcntl(memory.get(), F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL) != 0)
        return nullptr;
    void* start = mmap(nullptr, size, PROT_READ, MAP_SHARED, memory.get(), 0);
    if (start == MAP_FAILED)
        return nullptr;
    return std::unique_ptr<SharedCanvas>(new SharedCanvas(std::move(memory), start, size));
}

SharedCanvas::~SharedCanvas()
{
    munmap(m_start, m_size);
}

} // namespace engine
