// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "enginelink/descriptor.h"

#include <cstddef>

namespace engine {

/// Memory of the near half's that pictures are written to.
class Canvas
{
public:
    Canvas() = default;
    ~Canvas() { unmap(); }

    /// Takes other memory in the place of the former. Throws when it cannot be had.
    void use(const wire::Descriptor& memory, std::size_t size);

    /// False when there is no room for so many bytes.
    bool write(const void* pixels, std::size_t size);

    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

private:
    void unmap();

    void* m_start = nullptr;
    std::size_t m_size = 0;
};

} // namespace engine
