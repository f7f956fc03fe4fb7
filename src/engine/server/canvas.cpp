// SPDX-License-Identifier: GPL-2.0-or-later
#include "server/canvas.h"

#include <sys/mman.h>

#include <cstring>
#include <new>

namespace engine {

void Canvas::use(const wire::Descriptor& memory, std::size_t size)
{
    unmap();
    void* start = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, memory.get(), 0);
    if (start == MAP_FAILED)
        throw std::bad_alloc();
    m_start = start;
    m_size = size;
}

bool Canvas::write(const void* pixels, std::size_t size)
{
    if (size > m_size)
        return false;
    std::memcpy(m_start, pixels, size);
    return true;
}

void Canvas::unmap()
{
    if (m_start)
        munmap(m_start, m_size);
    m_start = nullptr;
    m_size = 0;
}

} // namespace engine
