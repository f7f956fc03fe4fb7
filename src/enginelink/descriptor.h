// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <unistd.h>

#include <utility>

namespace wire {

/// Owns a file descriptor, or none.
class Descriptor
{
public:
    Descriptor() = default;
    explicit Descriptor(int descriptor)
        : m_descriptor(descriptor)
    {}
    Descriptor(Descriptor&& other) noexcept
        : m_descriptor(other.release())
    {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        reset(other.release());
        return *this;
    }
    ~Descriptor() { reset(); }

    int get() const { return m_descriptor; }
    explicit operator bool() const { return m_descriptor >= 0; }
    int release() { return std::exchange(m_descriptor, -1); }
    void reset(int descriptor = -1)
    {
        const int former = std::exchange(m_descriptor, descriptor);
        if (former >= 0)
            close(former);
    }

private:
    int m_descriptor = -1;
};

} // namespace wire
