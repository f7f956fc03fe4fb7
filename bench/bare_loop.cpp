// SPDX-License-Identifier: GPL-2.0-or-later
//
// bare_loop probe|snap FILE…
// Does with libav alone, and with nothing around it, what an import does with each file: open it
// and find out about its streams; for "snap" also seek to a hundredth of it, decode four frames of
// its first video stream and scale the last to 320x180.
extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/imgutils.h>
#include <libswscale/swscale.h>
}

#include <cstdint>
#include <cstdio>
#include <cstring>

namespace {

constexpr int width = 320;
constexpr int height = 180;
constexpr int framesToDecode = 4;

bool decode(AVFormatContext* format, AVCodecContext* codec, int stream, AVFrame* frame)
{
    AVPacket* packet = av_packet_alloc();
    AVFrame* next = av_frame_alloc();
    int decoded = 0;
    bool atEnd = false;
    while (decoded < framesToDecode) {
        const int result = avcodec_receive_frame(codec, next);
        if (result == 0) {
            av_frame_unref(frame);
            av_frame_move_ref(frame, next);
            ++decoded;
            continue;
        }
        if (result != AVERROR(EAGAIN) || atEnd)
            break;
        while ((atEnd = av_read_frame(format, packet) < 0) == false &&
               packet->stream_index != stream)
            av_packet_unref(packet);
        avcodec_send_packet(codec, atEnd ? nullptr : packet);
        av_packet_unref(packet);
    }
    av_frame_free(&next);
    av_packet_free(&packet);
    return decoded > 0;
}

void scale(const AVFrame* frame)
{
    SwsContext* scaler =
        sws_getContext(frame->width, frame->height, static_cast<AVPixelFormat>(frame->format),
                       width, height, AV_PIX_FMT_RGB32, SWS_BILINEAR, nullptr, nullptr, nullptr);
    if (!scaler)
        return;
    std::uint8_t* planes[4];
    int strides[4];
    if (av_image_alloc(planes, strides, width, height, AV_PIX_FMT_RGB32, 64) >= 0) {
        sws_scale(scaler, frame->data, frame->linesize, 0, frame->height, planes, strides);
        av_free(planes[0]);
    }
    sws_freeContext(scaler);
}

bool snap(AVFormatContext* format)
{
    const AVCodec* decoder = nullptr;
    const int stream = av_find_best_stream(format, AVMEDIA_TYPE_VIDEO, -1, -1, &decoder, 0);
    if (stream < 0 || !decoder ||
        (format->streams[stream]->disposition & AV_DISPOSITION_ATTACHED_PIC))
        return false;
    for (unsigned i = 0; i < format->nb_streams; ++i)
        format->streams[i]->discard = int(i) == stream ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
    AVCodecContext* codec = avcodec_alloc_context3(decoder);
    avcodec_parameters_to_context(codec, format->streams[stream]->codecpar);
    codec->thread_count = 1;
    bool decoded = false;
    if (avcodec_open2(codec, decoder, nullptr) == 0) {
        if (format->duration > 0) {
            const std::int64_t start =
                format->start_time == AV_NOPTS_VALUE ? 0 : format->start_time;
            av_seek_frame(format, -1, start + format->duration / 100, AVSEEK_FLAG_BACKWARD);
        }
        AVFrame* frame = av_frame_alloc();
        decoded = decode(format, codec, stream, frame);
        if (decoded)
            scale(frame);
        av_frame_free(&frame);
    }
    avcodec_free_context(&codec);
    return decoded;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2)
        return 2;
    av_log_set_level(AV_LOG_QUIET);
    const bool withPictures = std::strcmp(argv[1], "snap") == 0;
    int opened = 0;
    int pictures = 0;
    for (int i = 2; i < argc; ++i) {
        AVFormatContext* format = nullptr;
        if (avformat_open_input(&format, argv[i], nullptr, nullptr) < 0)
            continue;
        if (avformat_find_stream_info(format, nullptr) >= 0)
            ++opened;
        if (withPictures && snap(format))
            ++pictures;
        avformat_close_input(&format);
    }
    std::printf("%d opened, %d pictures\n", opened, pictures);
    return 0;
}
