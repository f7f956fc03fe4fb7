// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "bytes/bytesource.h"

namespace engine {

/// Stretches of other sources, which follow one another here as if they were one.
class JoinedBytes final : public ByteSource
{
public:
    /// Puts `size` bytes that begin at `offset` of `source` behind the others; zeros when it is
    /// null.
    void append(ByteSourcePtr source, std::uint64_t offset, std::uint64_t size);

    std::uint64_t size() const override { return m_size; }
    std::size_t read(std::uint64_t offset, std::uint8_t* buffer, std::size_t size) const override;

private:
    struct Piece
    {
        std::uint64_t end; ///< here; it begins with the end of the piece before
        std::uint64_t size;
        std::uint64_t offset; ///< in its source
        ByteSourcePtr source;
    };

    std::vector<Piece> m_pieces;
    std::uint64_t m_size = 0;
};

} // namespace engine
