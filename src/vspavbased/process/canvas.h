// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "enginelink/descriptor.h"

#include <cstddef>
#include <memory>

namespace engine {

/// Memory that an engine process writes a picture to and this process reads: made here, and sealed,
/// so that nobody takes its pages away from under the reader.
class SharedCanvas
{
public:
    /// Null, with the reason in errno, when there is no memory.
    static std::unique_ptr<SharedCanvas> make(std::size_t size);

    ~SharedCanvas();

    const void* pixels() const { return m_start; }
    std::size_t size() const { return m_size; }
    const wire::Descriptor& descriptor() const { return m_memory; }

    SharedCanvas(const SharedCanvas&) = delete;
    SharedCanvas& operator=(const SharedCanvas&) = delete;

private:
    SharedCanvas(wire::Descriptor memory, void* start, std::size_t size)
        : m_memory(std::move(memory))
        , m_start(start)
        , m_size(size)
    {}

    wire::Descriptor m_memory;
    void* m_start;
    std::size_t m_size;
};

} // namespace engine
