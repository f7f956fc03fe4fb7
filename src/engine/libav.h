// SPDX-License-Identifier: GPL-2.0-or-later
//
// The one place that includes FFmpeg's headers, and the types that own its objects.
#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/avutil.h>
#include <libavutil/display.h>
#include <libavutil/imgutils.h>
#include <libavutil/intreadwrite.h>
#include <libavutil/mastering_display_metadata.h>
#include <libavutil/pixdesc.h>
#include <libswscale/swscale.h>
}

#include <cstdint>
#include <memory>
#include <string>

namespace engine {

/// Deletes with a function that takes the address of the pointer.
template <auto Free>
struct FreeByAddress
{
    template <typename T>
    void operator()(T* object) const
    {
        Free(&object);
    }
};

/// Deletes with a function that takes the pointer.
template <auto Free>
struct FreeByValue
{
    template <typename T>
    void operator()(T* object) const
    {
        Free(object);
    }
};

using FormatContextPtr = std::unique_ptr<AVFormatContext, FreeByAddress<avformat_close_input>>;
using CodecContextPtr = std::unique_ptr<AVCodecContext, FreeByAddress<avcodec_free_context>>;
using CodecParametersPtr =
    std::unique_ptr<AVCodecParameters, FreeByAddress<avcodec_parameters_free>>;
using PacketPtr = std::unique_ptr<AVPacket, FreeByAddress<av_packet_free>>;
using FramePtr = std::unique_ptr<AVFrame, FreeByAddress<av_frame_free>>;
using SwsContextPtr = std::unique_ptr<SwsContext, FreeByValue<sws_freeContext>>;

/// A frame with room for a picture. Throws when there is no memory for it.
FramePtr makeFrame(int pixelFormat, int width, int height);

/// What libav says about one of its error codes.
std::string errorText(int code);

// FFmpeg 5.1 to 7.1 do. Where they differ, the following hide it, and nothing else does.

#define LIBAV_COPIES_OPAQUE (LIBAVCODEC_VERSION_INT >= AV_VERSION_INT(60, 3, 100))    // 6.0
#define LIBAV_HAS_FRAME_FLAGS (LIBAVUTIL_VERSION_INT >= AV_VERSION_INT(58, 29, 100))  // 6.1
#define LIBAV_CODES_SIDE_DATA (LIBAVCODEC_VERSION_INT >= AV_VERSION_INT(60, 31, 102)) // 6.1

/// Has the decoder tell where frames come from; before it is opened.
void tracePositions(AVCodecContext& decoder);
/// Notes where the packet lies in its file, before it is sent to such a decoder.
void notePosition(AVPacket& packet);
/// Where the packet lies that the frame came from; -1 when nobody knows.
std::int64_t packetPositionOf(const AVFrame& frame);

/// What the container says beside a stream; null when it says nothing, or less than `size` bytes.
const std::uint8_t* sideDataOf(const AVStream& stream, AVPacketSideDataType type, std::size_t size);

/// Whether the decoder says that the frame's odd lines and its even ones show two moments.
bool isInterlaced(const AVFrame& frame);
void setInterlaced(AVFrame& frame);

} // namespace engine
