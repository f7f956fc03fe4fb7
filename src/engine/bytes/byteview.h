// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "bytes/bytesource.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace engine {

/// A look at bytes that belong to somebody else, with big-endian and little-endian numbers. Nothing
/// outside is read: what does not lie inside is 0, and parts end where the bytes end. Who has to
/// tell the two apart asks holds().
class ByteView
{
public:
    ByteView() = default;
    ByteView(const std::uint8_t* data, std::size_t size)
        : m_data(data)
        , m_size(size)
    {}
    ByteView(const Bytes& bytes)
        : ByteView(bytes.data(), bytes.size())
    {}

    const std::uint8_t* data() const { return m_data; }
    std::size_t size() const { return m_size; }

    bool holds(std::size_t offset, std::size_t length) const
    {
        return offset <= m_size && length <= m_size - offset;
    }

    bool beginsWith(std::string_view text) const
    {
        return holds(0, text.size()) && std::equal(text.begin(), text.end(), m_data);
    }

    ByteView part(std::size_t offset, std::size_t length) const
    {
        if (offset >= m_size)
            return {};
        return {m_data + offset, std::min(length, m_size - offset)};
    }
    ByteView from(std::size_t offset) const { return part(offset, m_size); }

    std::string text() const { return std::string(m_data, m_data + m_size); }

    std::uint8_t u8(std::size_t offset) const
    {
        return holds(offset, 1) ? m_data[offset] : std::uint8_t{0};
    }

    std::uint16_t u16(std::size_t offset) const { return bigEndian<std::uint16_t>(offset); }
    std::uint32_t u32(std::size_t offset) const { return bigEndian<std::uint32_t>(offset); }

    std::uint16_t le16(std::size_t offset) const { return littleEndian<std::uint16_t>(offset); }
    std::uint32_t le32(std::size_t offset) const { return littleEndian<std::uint32_t>(offset); }
    std::uint64_t le64(std::size_t offset) const { return littleEndian<std::uint64_t>(offset); }

private:
    template <typename T>
    T bigEndian(std::size_t offset) const
    {
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < sizeof(T) && holds(offset, sizeof(T)); ++i)
            value = value << 8 | m_data[offset + i];
        return static_cast<T>(value);
    }

    template <typename T>
    T littleEndian(std::size_t offset) const
    {
        std::uint64_t value = 0;
        for (std::size_t i = sizeof(T); i > 0 && holds(offset, sizeof(T)); --i)
            value = value << 8 | m_data[offset + i - 1];
        return static_cast<T>(value);
    }

    const std::uint8_t* m_data = nullptr;
    std::size_t m_size = 0;
};

} // namespace engine
