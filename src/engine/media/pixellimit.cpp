// SPDX-License-Identifier: GPL-2.0-or-later
#include "media/pixellimit.h"

#include <algorithm>

namespace engine {

namespace {

constexpr std::int64_t megapixel = std::int64_t{1024} * 1024;

/// 8192 x 6144, half as much again as 8K, in codecs whose decoders take about 5 bytes for each.
constexpr std::int64_t mostOfLean = 48 * megapixel;

/// 4096 x 3112, a scanned film's, with the borders that some decoders add. They take about 12.
constexpr std::int64_t mostOfOthers = 14 * megapixel;

/// 3840 x 2160, where they take 18 and more.
constexpr std::int64_t mostOfHungry = 8 * megapixel;

bool isVideo(const AVStream* stream)
{
    return stream->codecpar->codec_type == AVMEDIA_TYPE_VIDEO;
}

} // namespace

std::int64_t mostPixels(AVCodecID codec)
{
    switch (codec) {
    case AV_CODEC_ID_AV1:
    case AV_CODEC_ID_CFHD:
    case AV_CODEC_ID_DIRAC: // compares five times its pixels with the limit
    case AV_CODEC_ID_DNXHD:
    case AV_CODEC_ID_FFV1:
    case AV_CODEC_ID_FFVHUFF:
    case AV_CODEC_ID_H264:
    case AV_CODEC_ID_HAP:
    case AV_CODEC_ID_HEVC:
    case AV_CODEC_ID_HUFFYUV:
    case AV_CODEC_ID_MAGICYUV:
    case AV_CODEC_ID_MJPEG:
    case AV_CODEC_ID_MPEG2VIDEO:
    case AV_CODEC_ID_MPEG4:
    case AV_CODEC_ID_PNG:
    case AV_CODEC_ID_PRORES:
    case AV_CODEC_ID_QTRLE:
    case AV_CODEC_ID_RAWVIDEO:
    case AV_CODEC_ID_THEORA:
    case AV_CODEC_ID_UTVIDEO:
    case AV_CODEC_ID_V210:
    case AV_CODEC_ID_VP8:
    case AV_CODEC_ID_VP9:
        return mostOfLean;
    case AV_CODEC_ID_EXR:
    case AV_CODEC_ID_SNOW:
    case AV_CODEC_ID_ZMBV:
        return mostOfHungry;
    default:
        return mostOfOthers;
    }
}

ProbeLimits::ProbeLimits(const AVFormatContext& context)
    : m_options(context.nb_streams)
{
    const auto end = context.streams + context.nb_streams;
    const std::int64_t sharers =
        std::max<std::int64_t>(std::count_if(context.streams, end, isVideo), 1);
    for (unsigned i = 0; i < context.nb_streams; ++i) {
        const AVCodecParameters& parameters = *context.streams[i]->codecpar;
        m_sizes.push_back({parameters.width, parameters.height});
        if (isVideo(context.streams[i]))
            av_dict_set_int(&m_options[i], "max_pixels", mostPixels(parameters.codec_id) / sharers,
                            0);
    }
}

ProbeLimits::~ProbeLimits()
{
    for (AVDictionary*& options : m_options)
        av_dict_free(&options);
}

void ProbeLimits::restoreSizes(AVFormatContext& context) const
{
    for (std::size_t i = 0; i < m_sizes.size() && i < context.nb_streams; ++i) {
        AVCodecParameters& parameters = *context.streams[i]->codecpar;
        if (!isVideo(context.streams[i]) || parameters.width > 0 || parameters.height > 0)
            continue;
        parameters.width = m_sizes[i].width;
        parameters.height = m_sizes[i].height;
    }
}

} // namespace engine
