// SPDX-License-Identifier: GPL-2.0-or-later
#include "dvd/titlebytes.h"

#include <algorithm>

namespace engine {

int TitleBytes::read(std::uint8_t* buffer, int size)
{
    const std::uint64_t sector = static_cast<std::uint64_t>(m_position) / sectorSize;
    const std::uint64_t offset = static_cast<std::uint64_t>(m_position) % sectorSize;
    const TitleLayout::Piece piece = m_layout->locate(sector);
    if (piece.count == 0 || size <= 0)
        return 0;
    const std::uint64_t wanted = std::min<std::uint64_t>(static_cast<std::uint64_t>(size),
                                                         piece.count * sectorSize - offset);
    const std::size_t count = m_vobs->read(piece.discSector * sectorSize + offset, buffer,
                                           static_cast<std::size_t>(wanted));
    if (count == 0)
        return -1; // the files have sectors here, so they cannot be read
    m_position += static_cast<std::int64_t>(count);
    return static_cast<int>(count);
}

bool TitleBytes::seek(std::int64_t offset)
{
    if (offset < 0 || offset > size())
        return false;
    m_position = offset;
    return true;
}

std::int64_t TitleBytes::size() const
{
    return static_cast<std::int64_t>(m_layout->sectorCount() * sectorSize);
}

} // namespace engine
