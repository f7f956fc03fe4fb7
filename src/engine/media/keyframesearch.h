// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "media/framereader.h"

#include <cstdint>
#include <optional>

namespace engine {

/// Whether packets have to be read to know where keyframes are: transport and program streams have
/// no list of them, and what libav keeps of them are packets of any kind.
bool mustSearchKeyframes(const AVFormatContext& context);

/// Finds the keyframe nearest to a time in such a file. Reads a little to both sides of it, then
/// further; never more than up to the distance of the keyframe that it found, and nothing is
/// decoded.
class KeyframeSearch
{
public:
    /// Times are time stamps of the reader's stream; the file begins at `start`.
    KeyframeSearch(FrameReader& reader, std::int64_t start, std::int64_t wanted);

    /// The byte of the file where the keyframe can be read from. Nothing when there is none nearby
    /// or the time is over.
    std::optional<std::int64_t> nearest();

private:
    bool moveBefore(std::int64_t reach);
    void scan(std::int64_t reach);
    void consider(std::int64_t time, std::int64_t byte);

    FrameReader& m_reader;
    const std::int64_t m_start;
    const std::int64_t m_wanted;
    bool m_isAtStart = false;           ///< the scan begins with the file
    std::int64_t m_begin = 0;           ///< time at which the scan began
    std::optional<std::int64_t> m_byte; ///< of the nearest one so far
    std::int64_t m_distance = 0;        ///< of that from the wanted time
    int m_packetsLeft;
};

} // namespace engine
