// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "bytes/bufferedbytes.h"
#include "media/claims.h"
#include "media/mp4boxes.h"

namespace engine {

/// The numbers of samples that an MP4 or QuickTime file claims to have. libav makes an index entry
/// of some 32 bytes for each, and a few bytes of a file can claim billions.
class Mp4Claims final : public Claims
{
public:
    explicit Mp4Claims(const ByteSource& file)
        : m_file(file)
    {}

    /// Takes tracks ("trak"), headers of fragments ("tfhd") and runs of samples ("trun"). Before
    /// the first fragment the letters of a run are those of a text, as of "trunk".
    std::optional<std::vector<Cover>> cover(std::uint64_t offset) override;

private:
    struct Track;

    bool isCredibleRun(const Mp4Box& run);
    void readTrack(const Mp4Box& box, Track& track, int level);
    void readTable(const Mp4Box& table, Track& track);
    std::uint64_t mostSamplesOfChunk(const Mp4Box& table) const;

    std::vector<Cover> coverTrack(const Mp4Box& box);

    const BufferedBytes m_file;
    bool m_expectsRuns = false;
    std::uint64_t m_samples = 0; ///< that have been believed though they are not listed one by one
    std::uint64_t m_copies = 0;  ///< of samples, for edit lists
};

} // namespace engine
