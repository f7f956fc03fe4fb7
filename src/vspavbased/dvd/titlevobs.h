// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "dvd/discfile.h"
#include "dvd/videots.h"

#include <memory>
#include <vector>

namespace engine {

/// The VOB files that hold the video of a title set, as the one file that they were cut from.
class TitleVobs final : public DiscFile
{
public:
    /// Null when the first of the files is missing; those behind a missing one do not count.
    static std::shared_ptr<TitleVobs> open(VideoTs& files, int titleSet);

    std::uint64_t size() const override { return m_size; }
    std::size_t read(std::uint64_t offset, std::uint8_t* buffer, std::size_t size) override;

    std::uint64_t sectorCount() const { return m_size / sectorSize; }

private:
    struct Part
    {
        std::uint64_t begin;
        std::uint64_t size;
        std::unique_ptr<DiscFile> file;
    };

    TitleVobs() = default;

    std::vector<Part> m_parts;
    std::uint64_t m_size = 0;
};

} // namespace engine
