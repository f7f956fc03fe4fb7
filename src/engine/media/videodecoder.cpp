// SPDX-License-Identifier: GPL-2.0-or-later
#include "media/videodecoder.h"

#include "enginelink/log.h"
#include "media/pixellimit.h"

#include <cerrno>
#include <cstring>
#include <new>
#include <type_traits>

namespace engine {

namespace {

/// Decoders pass on whatever number a stream has in the place of one of these.
template <typename Enumeration>
void replaceUnknown(Enumeration& value, Enumeration end, Enumeration unspecified)
{
    std::underlying_type_t<Enumeration> number;
    std::memcpy(&number, &value, sizeof(number));
    if (number >= static_cast<decltype(number)>(end))
        value = unspecified;
}

void replaceUnknownColours(AVFrame& frame)
{
    replaceUnknown(frame.color_range, AVCOL_RANGE_NB, AVCOL_RANGE_UNSPECIFIED);
    replaceUnknown(frame.color_primaries, AVCOL_PRI_NB, AVCOL_PRI_UNSPECIFIED);
    replaceUnknown(frame.color_trc, AVCOL_TRC_NB, AVCOL_TRC_UNSPECIFIED);
    replaceUnknown(frame.colorspace, AVCOL_SPC_NB, AVCOL_SPC_UNSPECIFIED);
}

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
    context->max_pixels = mostPixels(parameters.codec_id);
    tracePositions(*context);
    // A few frames a file: threads would cost more than they give.
    context->thread_count = 1;
    const int result = avcodec_open2(context.get(), codec, nullptr);
    if (result < 0) {
        log(std::string(codec->name) + ": " + errorText(result));
        return nullptr;
    }
    return std::unique_ptr<VideoDecoder>(new VideoDecoder(std::move(context)));
}

VideoDecoder::VideoDecoder(CodecContextPtr context)
    : m_context(std::move(context))
{
    m_context->opaque = this;
    m_context->get_buffer2 = getBuffer;
}

int VideoDecoder::getBuffer(AVCodecContext* context, AVFrame* frame, int flags)
{
    const int result = avcodec_default_get_buffer2(context, frame, flags);
    if (result == AVERROR(ENOMEM))
        static_cast<VideoDecoder*>(context->opaque)->m_lacksMemory = true;
    return result;
}

void VideoDecoder::send(const AVPacket* packet)
{
    demandMemory(avcodec_send_packet(m_context.get(), packet));
}

FramePtr VideoDecoder::receive()
{
    FramePtr frame(av_frame_alloc());
    if (!frame)
        throw std::bad_alloc();
    const int result = avcodec_receive_frame(m_context.get(), frame.get());
    demandMemory(result);
    if (result < 0)
        return nullptr;
    replaceUnknownColours(*frame);
    return frame;
}

/// Damaged frames are passed over; what is lost for want of memory is not.
void VideoDecoder::demandMemory(int result) const
{
    if (result == AVERROR(ENOMEM) || m_lacksMemory)
        throw std::bad_alloc();
}

void VideoDecoder::flush()
{
    avcodec_flush_buffers(m_context.get());
}

} // namespace engine
