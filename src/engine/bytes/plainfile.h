// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "bytes/bytesource.h"
#include "enginelink/descriptor.h"

#include <string>

namespace engine {

/// A regular file, held open.
class PlainFile final : public ByteSource
{
public:
    /// Null when there is no regular file at `path`, or it cannot be read. Links are followed.
    static std::shared_ptr<const PlainFile> open(const std::string& path);

    std::uint64_t size() const override { return m_size; }
    std::size_t read(std::uint64_t offset, std::uint8_t* buffer, std::size_t size) const override;

private:
    PlainFile(wire::Descriptor descriptor, std::uint64_t size)
        : m_descriptor(std::move(descriptor))
        , m_size(size)
    {}

    wire::Descriptor m_descriptor;
    std::uint64_t m_size;
};

} // namespace engine
