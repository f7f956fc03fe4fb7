// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "bytes/bytesource.h"

namespace engine {

/// The bytes of another source, which is read in pieces: for readers of many small things that lie
/// near each other. One reader alone may use it, while nobody writes to what is below.
class BufferedBytes final : public ByteSource
{
public:
    /// `source` lives longer.
    explicit BufferedBytes(const ByteSource& source)
        : m_source(source)
    {}

    std::uint64_t size() const override { return m_source.size(); }
    std::size_t read(std::uint64_t offset, std::uint8_t* buffer, std::size_t size) const override;

private:
    const ByteSource& m_source;
    mutable std::uint64_t m_start = 0; ///< of the piece that is there
    mutable Bytes m_piece;
};

} // namespace engine
