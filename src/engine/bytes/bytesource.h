// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace engine {

using Bytes = std::vector<std::uint8_t>;

/// Bytes that can be read at any place: of a file, of a file inside a disc image, of the cells that
/// a DVD title plays. Reading changes nothing in it, so several readers may share one.
class ByteSource
{
public:
    virtual ~ByteSource() = default;

    virtual std::uint64_t size() const = 0;

    /// Reads up to `size` bytes that begin at `offset`: how many. Fewer than asked for only at the
    /// end, and before what cannot be read.
    virtual std::size_t read(std::uint64_t offset, std::uint8_t* buffer,
                             std::size_t size) const = 0;
};

using ByteSourcePtr = std::shared_ptr<const ByteSource>;

/// What can be read from the beginning, at most `most` bytes.
Bytes readBeginning(const ByteSource& source, std::size_t most);

} // namespace engine
