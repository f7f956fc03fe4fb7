// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "libav.h"

#include <memory>

namespace engine {

/// Decodes the packets of one video stream.
class VideoDecoder
{
public:
    /// Null, with the reason in the log, when libav has no decoder for the stream or it does not
    /// open. `timeBase` is that of the packets.
    static std::unique_ptr<VideoDecoder> open(const AVCodecParameters& parameters,
                                              AVRational timeBase);

    /// Takes a packet, or with null the news that there are no more. Damaged packets are passed
    /// over; throws when there is no memory for a picture.
    void send(const AVPacket* packet);

    /// The next frame that is ready, or null. Throws like send().
    FramePtr receive();

    /// Forgets everything, for a new position.
    void flush();

private:
    explicit VideoDecoder(CodecContextPtr context);

    static int getBuffer(AVCodecContext* context, AVFrame* frame, int flags);
    void demandMemory(int result) const;

    CodecContextPtr m_context;
    bool m_lacksMemory = false; ///< decoders take that for damage
};

} // namespace engine
