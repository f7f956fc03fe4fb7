// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>

namespace engine {

/// Random access to a stream of bytes that is no plain file: cells of a DVD title, a file in a disc
/// image. Used by one demuxer on one thread.
class ByteSource
{
public:
    virtual ~ByteSource() = default;

    /// Reads up to `size` bytes at the position and moves it on: how many, 0 at the end, negative
    /// on an error.
    virtual int read(std::uint8_t* buffer, int size) = 0;

    /// Moves to `offset` bytes from the start; false when there is no such place.
    virtual bool seek(std::int64_t offset) = 0;

    virtual std::int64_t position() const = 0;
    virtual std::int64_t size() const = 0;
};

} // namespace engine
