// SPDX-License-Identifier: GPL-2.0-or-later
#include "bytes/joinedbytes.h"

#include <algorithm>

namespace engine {

void JoinedBytes::append(ByteSourcePtr source, std::uint64_t offset, std::uint64_t size)
{
    m_size += size;
    m_pieces.push_back({m_size, size, offset, std::move(source)});
}

std::size_t JoinedBytes::read(std::uint64_t offset, std::uint8_t* buffer, std::size_t size) const
{
    auto piece =
        std::upper_bound(m_pieces.begin(), m_pieces.end(), offset,
                         [](std::uint64_t wanted, const Piece& each) { return wanted < each.end; });
    std::size_t done = 0;
    for (; piece != m_pieces.end() && done < size; ++piece) {
        const std::uint64_t inPiece = offset + done - (piece->end - piece->size);
        const auto wanted =
            static_cast<std::size_t>(std::min<std::uint64_t>(size - done, piece->size - inPiece));
        std::size_t count = wanted;
        if (piece->source)
            count = piece->source->read(piece->offset + inPiece, buffer + done, wanted);
        else
            std::fill_n(buffer + done, wanted, std::uint8_t{0});
        done += count;
        if (count < wanted)
            break;
    }
    return done;
}

} // namespace engine
