// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "bytes/byteview.h"

namespace engine {

/// Reads big-endian numbers one after another out of bytes that nobody vouches for. What lies
/// behind the end reads as zeros, and isIntact() is false from then on; callers that loop over a
/// count look at it each time.
class ByteReader
{
public:
    explicit ByteReader(const ByteView& bytes)
        : m_rest(bytes)
    {}

    std::uint8_t u8() { return take(1).u8(0); }
    std::uint16_t u16() { return take(2).u16(0); }
    std::uint32_t u32() { return take(4).u32(0); }

    std::string text(std::size_t length) { return take(length).text(); }

    void skip(std::size_t count) { take(count); }

    /// The next `length` bytes, which are passed over here. Cut short at the end.
    ByteReader part(std::size_t length) { return ByteReader(take(length)); }

    /// All that follows `offset` bytes from here, as a reader of its own.
    ByteReader from(std::size_t offset) const
    {
        ByteReader bytes(*this);
        bytes.skip(offset);
        return bytes;
    }

    /// Whether nothing has been read behind the end.
    bool isIntact() const { return m_isIntact; }

private:
    ByteView take(std::size_t length)
    {
        const ByteView bytes = m_rest.part(0, length);
        m_isIntact = m_isIntact && bytes.size() == length;
        m_rest = m_rest.from(length);
        return bytes;
    }

    ByteView m_rest;
    bool m_isIntact = true;
};

} // namespace engine
