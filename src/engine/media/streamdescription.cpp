// SPDX-License-Identifier: GPL-2.0-or-later
#include "media/streamdescription.h"

#include "text.h"

#include <algorithm>
#include <climits>
#include <cstring>

namespace engine {

namespace {

/// Far more than people write into a file; some have whole pictures in their tags.
constexpr std::size_t longestText = std::size_t{64} * 1024;
constexpr std::size_t mostTags = 1000;

std::string textOf(const char* text)
{
    return cutUtf8(text, longestText);
}

std::string tagValue(const AVDictionary* metadata, const char* key)
{
    const AVDictionaryEntry* entry = av_dict_get(metadata, key, nullptr, 0);
    return entry ? textOf(entry->value) : std::string();
}

int kindOf(const AVStream& stream)
{
    switch (stream.codecpar->codec_type) {
    case AVMEDIA_TYPE_VIDEO:
        return isMovingPicture(stream) ? AVBased::StreamKindVideo : 0;
    case AVMEDIA_TYPE_AUDIO:
        return AVBased::StreamKindAudio;
    case AVMEDIA_TYPE_SUBTITLE:
        return AVBased::StreamKindSubtitle;
    default:
        return 0;
    }
}

bool isPrintable(std::uint32_t tag)
{
    for (int shift = 0; shift < 32; shift += 8) {
        const std::uint32_t c = (tag >> shift) & 0xFF;
        if (c < 0x20 || c > 0x7E)
            return false;
    }
    return true;
}

Ratio toRatio(AVRational value)
{
    return value.num > 0 && value.den > 0 ? Ratio{value.num, value.den} : Ratio{};
}

/// The average rate; where the file is too short or too strange for one, libav's best guess.
Ratio frameRateOf(AVFormatContext& context, AVStream& stream)
{
    const Ratio average = toRatio(stream.avg_frame_rate);
    return average.isKnown() ? average : toRatio(av_guess_frame_rate(&context, &stream, nullptr));
}

Ratio displayAspectOf(AVFormatContext& context, AVStream& stream)
{
    const AVRational pixel = pixelAspectOf(context, stream);
    Ratio aspect;
    av_reduce(&aspect.numerator, &aspect.denominator,
              static_cast<std::int64_t>(stream.codecpar->width) * pixel.num,
              static_cast<std::int64_t>(stream.codecpar->height) * pixel.den, INT_MAX);
    return aspect;
}

std::optional<double> inSeconds(std::int64_t duration, AVRational base)
{
    if (duration == AV_NOPTS_VALUE || duration <= 0 || base.num <= 0 || base.den <= 0)
        return std::nullopt;
    return static_cast<double>(duration) * av_q2d(base);
}

/// The stream's own duration, else the file's, which libav derives from those of all streams.
std::optional<double> durationOf(const AVFormatContext& context, const AVStream& stream)
{
    const auto own = inSeconds(stream.duration, stream.time_base);
    return own ? own : inSeconds(context.duration, AV_TIME_BASE_Q);
}

void describePicture(AVFormatContext& context, AVStream& stream, StreamFacts& facts)
{
    facts.fourcc = fourccOf(stream.codecpar->codec_id, stream.codecpar->codec_tag);
    facts.width = std::max(stream.codecpar->width, 0);
    facts.height = std::max(stream.codecpar->height, 0);
    facts.frameRate = frameRateOf(context, stream);
    facts.displayAspect = displayAspectOf(context, stream);
}

void describeSound(const AVCodecParameters& parameters, StreamFacts& facts)
{
    facts.sampleRate = std::max(parameters.sample_rate, 0);
    facts.channels = std::max(parameters.ch_layout.nb_channels, 0);
    if (parameters.ch_layout.order == AV_CHANNEL_ORDER_NATIVE)
        facts.channelLayout = parameters.ch_layout.u.mask;
}

/// The file's tags. Ogg keeps them with its streams.
const AVDictionary* tagsOf(const AVFormatContext& context)
{
    if (std::strcmp(context.iformat->name, "ogg") != 0)
        return context.metadata;
    const auto end = context.streams + context.nb_streams;
    const auto tagged = std::find_if(context.streams, end, [](const AVStream* stream) {
        return av_dict_count(stream->metadata) > 0;
    });
    return tagged == end ? context.metadata : (*tagged)->metadata;
}

} // namespace

bool isMovingPicture(const AVStream& stream)
{
    return stream.codecpar->codec_type == AVMEDIA_TYPE_VIDEO &&
           !(stream.disposition & (AV_DISPOSITION_ATTACHED_PIC | AV_DISPOSITION_TIMED_THUMBNAILS));
}

bool isTransportStream(const AVFormatContext& context)
{
    return std::strcmp(context.iformat->name, "mpegts") == 0;
}

AVRational pixelAspectOf(AVFormatContext& context, AVStream& stream, AVFrame* frame)
{
    const AVRational aspect = av_guess_sample_aspect_ratio(&context, &stream, frame);
    return aspect.num > 0 && aspect.den > 0 ? aspect : AVRational{1, 1};
}

StreamFacts describeStream(AVFormatContext& context, AVStream& stream)
{
    StreamFacts facts;
    facts.name = tagValue(stream.metadata, "title");
    facts.kind = kindOf(stream);
    facts.id = stream.index;
    if (const AVCodecDescriptor* codec = avcodec_descriptor_get(stream.codecpar->codec_id))
        facts.codec = codec->name;
    facts.language = tagValue(stream.metadata, "language");
    facts.duration = durationOf(context, stream);
    facts.bitRate =
        static_cast<int>(std::clamp<std::int64_t>(stream.codecpar->bit_rate, 0, INT_MAX));
    if (facts.kind == AVBased::StreamKindVideo)
        describePicture(context, stream, facts);
    else if (facts.kind == AVBased::StreamKindAudio)
        describeSound(*stream.codecpar, facts);
    return facts;
}

MovieFacts describeMovie(AVFormatContext& context)
{
    MovieFacts facts;
    facts.format = context.iformat->name;
    for (unsigned i = 0; i < context.nb_streams; ++i)
        facts.streams.push_back(describeStream(context, *context.streams[i]));
    const AVDictionaryEntry* tag = nullptr;
    while (facts.tags.size() < mostTags &&
           (tag = av_dict_get(tagsOf(context), "", tag, AV_DICT_IGNORE_SUFFIX)))
        facts.tags.emplace_back(textOf(tag->key), textOf(tag->value));
    facts.name = tagValue(tagsOf(context), "title");
    return facts;
}

std::vector<VideoTrack> videoTracks(AVFormatContext& context)
{
    std::vector<VideoTrack> tracks;
    for (unsigned i = 0; i < context.nb_streams; ++i) {
        AVStream& stream = *context.streams[i];
        if (!isMovingPicture(stream))
            continue;
        VideoTrack track;
        track.streamIndex = stream.index;
        track.demuxerId = stream.id;
        track.parameters = copyParameters(*stream.codecpar);
        track.pixelAspect = pixelAspectOf(context, stream);
        track.orientation = Orientation::fromDisplayMatrix(reinterpret_cast<std::int32_t*>(
            av_stream_get_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, nullptr)));
        tracks.push_back(std::move(track));
    }
    return tracks;
}

std::string fourccOf(AVCodecID codec, std::uint32_t containerTag)
{
    std::uint32_t tag = containerTag;
    if (!isPrintable(tag)) {
        const AVCodecTag* const tables[] = {avformat_get_riff_video_tags(),
                                            avformat_get_mov_video_tags(), nullptr};
        tag = av_codec_get_tag(tables, codec);
    }
    std::string text(4, ' ');
    for (size_t i = 0; i < text.size() && isPrintable(tag); ++i)
        text[i] = static_cast<char>((tag >> (8 * i)) & 0xFF);
    return text;
}

CodecParametersPtr copyParameters(const AVCodecParameters& parameters)
{
    CodecParametersPtr copy(avcodec_parameters_alloc());
    if (copy && avcodec_parameters_copy(copy.get(), &parameters) < 0)
        copy.reset();
    return copy;
}

} // namespace engine
