// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

namespace engine {

constexpr int sectorSize = 2048; ///< bytes; discs are addressed and read in sectors

/// A file of a disc, readable at any place. Used on one thread at a time.
class DiscFile
{
public:
    virtual ~DiscFile() = default;

    virtual std::uint64_t size() const = 0;

    /// Reads up to `size` bytes that begin at `offset`: how many, 0 at the end and on an error.
    virtual std::size_t read(std::uint64_t offset, std::uint8_t* buffer, std::size_t size) = 0;
};

} // namespace engine
