// SPDX-License-Identifier: GPL-2.0-or-later
#include "bytes/bufferedbytes.h"

#include <algorithm>

namespace engine {

namespace {

constexpr std::size_t pieceSize = 4096;

} // namespace

std::size_t BufferedBytes::read(std::uint64_t offset, std::uint8_t* buffer, std::size_t size) const
{
    if (size > pieceSize)
        return m_source.read(offset, buffer, size);
    const auto isThere = [&] {
        return offset >= m_start && offset - m_start + size <= m_piece.size();
    };
    if (!isThere()) {
        m_start = offset;
        m_piece.resize(pieceSize);
        m_piece.resize(m_source.read(offset, m_piece.data(), pieceSize));
    }
    const std::size_t count = std::min(size, m_piece.size());
    std::copy_n(m_piece.begin() + static_cast<std::ptrdiff_t>(offset - m_start), count, buffer);
    return count;
}

} // namespace engine
