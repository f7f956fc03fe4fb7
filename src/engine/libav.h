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

} // namespace engine
