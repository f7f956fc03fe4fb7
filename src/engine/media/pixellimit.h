// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "libav.h"

#include <cstdint>
#include <vector>

namespace engine {

/// How many pixels a picture of a codec may have to be decoded: a file that claims more gets no
/// picture, and no memory.
std::int64_t mostPixels(AVCodecID codec);

/// The limits for the decoders with which libav looks into a file's streams, as options for
/// avformat_find_stream_info(). The streams share what one may take alone.
class ProbeLimits
{
public:
    explicit ProbeLimits(const AVFormatContext& context);
    ~ProbeLimits();

    /// An element for each stream.
    AVDictionary** options() { return m_options.data(); }

    /// Gives back to the streams that were over the limit the size that the file's header says.
    void restoreSizes(AVFormatContext& context) const;

    ProbeLimits(const ProbeLimits&) = delete;
    ProbeLimits& operator=(const ProbeLimits&) = delete;

private:
    struct Size
    {
        int width;
        int height;
    };

    std::vector<AVDictionary*> m_options;
    std::vector<Size> m_sizes;
};

} // namespace engine
