// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "bytes/bytesource.h"
#include "media/claims.h"

namespace engine {

/// The number of tracks, attachments, chapters and tags that a Matroska file has. libav makes an
/// object of up to a kilobyte for each, and compares each tag with all others.
class MatroskaClaims final : public Claims
{
public:
    explicit MatroskaClaims(const ByteSource& file)
        : m_file(file)
    {}

    /// Takes the elements that hold them, by their identifiers of four bytes. Each is to be hidden
    /// that brings more of them than any film has.
    std::optional<std::vector<Cover>> cover(std::uint64_t offset) override;

private:
    bool isTooMuch(std::uint64_t offset);

    const ByteSource& m_file;
    int m_parts = 0; ///< of the elements so far that are not hidden
};

} // namespace engine
