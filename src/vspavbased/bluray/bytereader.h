// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace engine {

using Bytes = std::vector<std::uint8_t>;

/// Reads big-endian numbers out of bytes that nobody vouches for. What lies behind the end reads as
/// zeros, and isIntact() is false from then on; callers that loop over a count look at it each
/// time.
class ByteReader
{
public:
    ByteReader(const std::uint8_t* data, std::size_t size)
        : m_data(data)
        , m_size(size)
    {}
    explicit ByteReader(const Bytes& bytes)
        : ByteReader(bytes.data(), bytes.size())
    {}

    std::uint8_t u8() { return static_cast<std::uint8_t>(number(1)); }
    std::uint16_t u16() { return static_cast<std::uint16_t>(number(2)); }
    std::uint32_t u32() { return number(4); }

    std::string text(std::size_t length)
    {
        const ByteReader bytes = part(length);
        return std::string(reinterpret_cast<const char*>(bytes.m_data), bytes.m_size);
    }

    void skip(std::size_t count) { part(count); }

    /// The next `length` bytes, which are passed over here. Cut short at the end.
    ByteReader part(std::size_t length)
    {
        const std::size_t available = std::min(length, m_size);
        m_isIntact = m_isIntact && available == length;
        const ByteReader bytes(m_data, available);
        m_data += available;
        m_size -= available;
        return bytes;
    }

    /// All that follows `offset` bytes from here, as a reader of its own.
    ByteReader from(std::size_t offset) const
    {
        ByteReader bytes(*this);
        bytes.skip(offset);
        return bytes;
    }

    std::size_t remaining() const { return m_size; }

    /// Whether nothing has been read behind the end.
    bool isIntact() const { return m_isIntact; }

private:
    std::uint32_t number(std::size_t width)
    {
        const ByteReader bytes = part(width);
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < width; ++i)
            value = (value << 8) | (i < bytes.m_size ? bytes.m_data[i] : 0u);
        return value;
    }

    const std::uint8_t* m_data;
    std::size_t m_size;
    bool m_isIntact = true;
};

} // namespace engine
