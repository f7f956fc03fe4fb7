// SPDX-License-Identifier: GPL-2.0-or-later
#include "media/videodecoder.h"

#include "log.h"

namespace engine {

namespace {

/// Twice the pixels of an 8K picture: a file that claims more gets no picture, and no memory.
constexpr std::int64_t mostPixels = 64LL * 1024 * 1024;

} // namespace

std::unique_ptr<VideoDecoder> VideoDecoder::open(const AVCodecParameters& parameters,
                                                 AVRational timeBase)
{
    const AVCodec* codec = avcodec_find_decoder(parameters.codec_id);
    if (!codec) {
        log(std::string("no decoder for ") + avcodec_get_name(parameters.codec_id));
        return nullptr;
    }
    CodecContextPtr context(avcodec_alloc_context3(codec));
    if (!context || avcodec_parameters_to_context(context.get(), &parameters) < 0)
        return nullptr;
    context->pkt_timebase = timeBase;
    context->max_pixels = mostPixels;
    // A few frames a file: threads would cost more than they give.
    context->thread_count = 1;
    const int result = avcodec_open2(context.get(), codec, nullptr);
    if (result < 0) {
        log(std::string(codec->name) + ": " + errorText(result));
        return nullptr;
    }
    return std::unique_ptr<VideoDecoder>(new VideoDecoder(std::move(context)));
}

void VideoDecoder::send(const AVPacket* packet)
{
    avcodec_send_packet(m_context.get(), packet);
}

FramePtr VideoDecoder::receive()
{
    FramePtr frame(av_frame_alloc());
    if (frame && avcodec_receive_frame(m_context.get(), frame.get()) < 0)
        frame.reset();
    return frame;
}

void VideoDecoder::flush()
{
    avcodec_flush_buffers(m_context.get());
}

} // namespace engine
