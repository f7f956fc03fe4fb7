// SPDX-License-Identifier: GPL-2.0-or-later
#include "libav.h"

#include <cstring>
#include <new>

namespace engine {

FramePtr makeFrame(int pixelFormat, int width, int height)
{
    FramePtr frame(av_frame_alloc());
    if (!frame)
        throw std::bad_alloc();
    frame->format = pixelFormat;
    frame->width = width;
    frame->height = height;
    if (av_frame_get_buffer(frame.get(), 0) < 0)
        throw std::bad_alloc();
    return frame;
}

std::string errorText(int code)
{
    char text[AV_ERROR_MAX_STRING_SIZE] = "";
    av_strerror(code, text, sizeof(text));
    return text;
}

#if LIBAV_COPIES_OPAQUE

void tracePositions(AVCodecContext& decoder)
{
    decoder.flags |= AV_CODEC_FLAG_COPY_OPAQUE;
}

void notePosition(AVPacket& packet)
{
    av_buffer_unref(&packet.opaque_ref);
    packet.opaque_ref = av_buffer_alloc(sizeof(packet.pos));
    if (!packet.opaque_ref)
        throw std::bad_alloc();
    std::memcpy(packet.opaque_ref->data, &packet.pos, sizeof(packet.pos));
}

std::int64_t packetPositionOf(const AVFrame& frame)
{
    std::int64_t position = -1;
    if (frame.opaque_ref)
        std::memcpy(&position, frame.opaque_ref->data, sizeof(position));
    return position;
}

#else

void tracePositions(AVCodecContext& /*decoder*/) {}

void notePosition(AVPacket& /*packet*/) {}

std::int64_t packetPositionOf(const AVFrame& frame)
{
    return frame.pkt_pos;
}

#endif

const std::uint8_t* sideDataOf(const AVStream& stream, AVPacketSideDataType type, std::size_t size)
{
#if LIBAV_CODES_SIDE_DATA
    const AVPacketSideData* found = av_packet_side_data_get(
        stream.codecpar->coded_side_data, stream.codecpar->nb_coded_side_data, type);
    return found && found->size >= size ? found->data : nullptr;
#else
    std::size_t found = 0;
    const std::uint8_t* data = av_stream_get_side_data(&stream, type, &found);
    return found >= size ? data : nullptr;
#endif
}

bool isInterlaced(const AVFrame& frame)
{
#if LIBAV_HAS_FRAME_FLAGS
    return frame.flags & AV_FRAME_FLAG_INTERLACED;
#else
    return frame.interlaced_frame;
#endif
}

void setInterlaced(AVFrame& frame)
{
#if LIBAV_HAS_FRAME_FLAGS
    frame.flags |= AV_FRAME_FLAG_INTERLACED;
#else
    frame.interlaced_frame = 1;
#endif
}

} // namespace engine
