// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "bytes/bytesource.h"

#include <string>

namespace engine {

/// A regular file, held open.
class PlainFile final : public ByteSource
{
public:
    /// Null when there is no regular file at `path`, or it cannot be read. Links are followed.
    static std::shared_ptr<const PlainFile> open(const std::string& path);

    ~PlainFile() override;

    std::uint64_t size() const override { return m_size; }
    std::size_t read(std::uint64_t offset, std::uint8_t* buffer, std::size_t size) const override;

    PlainFile(const PlainFile&) = delete;
    PlainFile& operator=(const PlainFile&) = delete;

private:
    PlainFile(int descriptor, std::uint64_t size)
        : m_descriptor(descriptor)
        , m_size(size)
    {}

    int m_descriptor;
    std::uint64_t m_size;
};

} // namespace engine
