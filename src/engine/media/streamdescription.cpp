// SPDX-License-Identifier: GPL-2.0-or-later
#include "media/streamdescription.h"

#include "media/streamtimes.h"
#include "text.h"

#include <algorithm>
#include <climits>
#include <cstring>

namespace engine {

namespace {

constexpr std::size_t mostTags = 1000;

/// Takes texts out of a file: far more than people write into one, but there are tags that hold
/// whole pictures.
class TextReader
{
public:
    std::string read(const char* text)
    {
        constexpr std::size_t longest = std::size_t{64} * 1024;
        const std::size_t most = std::min(longest, m_left);
        std::string read = cutUtf8(std::string(text, strnlen(text, most + 1)), most);
        m_left -= read.size();
        return read;
    }

    std::string readTag(const AVDictionary* metadata, const char* key)
    {
        const AVDictionaryEntry* entry = av_dict_get(metadata, key, nullptr, 0);
        return entry ? read(entry->value) : std::string();
    }

    /// Empty where the file has control characters for "unspecified", as QuickTime's have.
    std::string readLanguage(const AVDictionary* metadata)
    {
        std::string language = readTag(metadata, "language");
        return std::any_of(language.begin(), language.end(), isControl) ? std::string() : language;
    }

private:
    std::size_t m_left = std::size_t{1024} * 1024;
};

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

Orientation orientationOf(const AVStream& stream)
{
    return Orientation::fromDisplayMatrix(reinterpret_cast<const std::int32_t*>(
        sideDataOf(stream, AV_PKT_DATA_DISPLAYMATRIX, 9 * sizeof(std::int32_t))));
}

/// Of the picture as it is seen, turned as the file says.
Ratio displayAspectOf(AVFormatContext& context, AVStream& stream)
{
    const AVRational pixel = pixelAspectOf(context, stream);
    Ratio aspect;
    av_reduce(&aspect.numerator, &aspect.denominator,
              static_cast<std::int64_t>(stream.codecpar->width) * pixel.num,
              static_cast<std::int64_t>(stream.codecpar->height) * pixel.den, largestInAspect);
    if (orientationOf(stream).transpose)
        std::swap(aspect.numerator, aspect.denominator);
    return aspect;
}

void describePicture(AVFormatContext& context, AVStream& stream, StreamFacts& facts)
{
    facts.fourcc = fourccOf(stream.codecpar->codec_id, stream.codecpar->codec_tag);
    facts.width = std::max(stream.codecpar->width, 0);
    facts.height = std::max(stream.codecpar->height, 0);
    facts.displayAspect = displayAspectOf(context, stream);
}

void describeSound(const AVCodecParameters& parameters, StreamFacts& facts)
{
    facts.sampleRate = std::max(parameters.sample_rate, 0);
    facts.channels = std::max(parameters.ch_layout.nb_channels, 0);
    if (parameters.ch_layout.order == AV_CHANNEL_ORDER_NATIVE)
        facts.channelLayout = parameters.ch_layout.u.mask;
}

StreamFacts describeStream(AVFormatContext& context, AVStream& stream, TextReader& texts,
                           FrameRates& rates)
{
    StreamFacts facts;
    facts.name = texts.readTag(stream.metadata, "title");
    facts.kind = kindOf(stream);
    facts.id = stream.index;
    if (const AVCodecDescriptor* codec = avcodec_descriptor_get(stream.codecpar->codec_id))
        facts.codec = codec->name;
    facts.language = texts.readLanguage(stream.metadata);
    facts.duration = durationOf(context, stream);
    facts.bitRate =
        static_cast<int>(std::clamp<std::int64_t>(stream.codecpar->bit_rate, 0, INT_MAX));
    if (facts.kind == AVBased::StreamKindVideo) {
        describePicture(context, stream, facts);
        facts.frameRate = rates.of(stream);
    } else if (facts.kind == AVBased::StreamKindAudio) {
        describeSound(*stream.codecpar, facts);
    }
    return facts;
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

MovieFacts describeMovie(AVFormatContext& context)
{
    MovieFacts facts;
    facts.format = context.iformat->name;
    TextReader texts;
    FrameRates rates(context);
    for (unsigned i = 0; i < context.nb_streams; ++i)
        facts.streams.push_back(describeStream(context, *context.streams[i], texts, rates));
    const AVDictionaryEntry* tag = nullptr;
    while (facts.tags.size() < mostTags &&
           (tag = av_dict_get(tagsOf(context), "", tag, AV_DICT_IGNORE_SUFFIX)))
        facts.tags.emplace_back(texts.read(tag->key), texts.read(tag->value));
    facts.name = texts.readTag(tagsOf(context), "title");
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
        track.orientation = orientationOf(stream);
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
