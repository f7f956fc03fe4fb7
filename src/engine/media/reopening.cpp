// SPDX-License-Identifier: GPL-2.0-or-later
#include "media/reopening.h"

#include "media/reopening_generated.h"

#include <cstring>

using flatbuffers::FlatBufferBuilder;
using flatbuffers::Offset;

namespace engine {

namespace {

Offset<stored::Track> write(FlatBufferBuilder& builder, const VideoTrack& track)
{
    const AVCodecParameters& from = *track.parameters;
    const auto extradata =
        builder.CreateVector(from.extradata, static_cast<std::size_t>(from.extradata_size));
    const stored::Ratio codedAspect(from.sample_aspect_ratio.num, from.sample_aspect_ratio.den);
    const stored::Ratio pixelAspect(track.pixelAspect.num, track.pixelAspect.den);
    stored::TrackBuilder to(builder);
    to.add_stream_index(track.streamIndex);
    to.add_demuxer_id(track.demuxerId);
    to.add_codec(from.codec_id);
    to.add_tag(from.codec_tag);
    to.add_extradata(extradata);
    to.add_format(from.format);
    to.add_bit_rate(from.bit_rate);
    to.add_bits_per_coded_sample(from.bits_per_coded_sample);
    to.add_bits_per_raw_sample(from.bits_per_raw_sample);
    to.add_profile(from.profile);
    to.add_level(from.level);
    to.add_width(from.width);
    to.add_height(from.height);
    to.add_coded_aspect(&codedAspect);
    to.add_field_order(from.field_order);
    to.add_color_range(from.color_range);
    to.add_color_primaries(from.color_primaries);
    to.add_color_transfer(from.color_trc);
    to.add_color_space(from.color_space);
    to.add_chroma_location(from.chroma_location);
    to.add_video_delay(from.video_delay);
    to.add_pixel_aspect(&pixelAspect);
    to.add_transpose(track.orientation.transpose);
    to.add_reverse_x(track.orientation.reverseX);
    to.add_reverse_y(track.orientation.reverseY);
    return to.Finish();
}

/// With the zeros behind it that decoders read.
bool copyExtradata(const flatbuffers::Vector<std::uint8_t>& from, AVCodecParameters& to)
{
    to.extradata =
        static_cast<std::uint8_t*>(av_mallocz(from.size() + AV_INPUT_BUFFER_PADDING_SIZE));
    if (!to.extradata)
        return false;
    std::memcpy(to.extradata, from.data(), from.size());
    to.extradata_size = static_cast<int>(from.size());
    return true;
}

AVRational rational(const stored::Ratio* ratio)
{
    return ratio ? AVRational{ratio->numerator(), ratio->denominator()} : AVRational{0, 1};
}

std::optional<VideoTrack> read(const stored::Track& from)
{
    VideoTrack track;
    track.streamIndex = from.stream_index();
    track.demuxerId = from.demuxer_id();
    track.pixelAspect = rational(from.pixel_aspect());
    track.orientation = {from.transpose(), from.reverse_x(), from.reverse_y()};
    track.parameters.reset(avcodec_parameters_alloc());
    if (!track.parameters)
        return std::nullopt;
    AVCodecParameters& to = *track.parameters;
    to.codec_type = AVMEDIA_TYPE_VIDEO;
    to.codec_id = static_cast<AVCodecID>(from.codec());
    to.codec_tag = from.tag();
    to.format = from.format();
    to.bit_rate = from.bit_rate();
    to.bits_per_coded_sample = from.bits_per_coded_sample();
    to.bits_per_raw_sample = from.bits_per_raw_sample();
    to.profile = from.profile();
    to.level = from.level();
    to.width = from.width();
    to.height = from.height();
    to.sample_aspect_ratio = rational(from.coded_aspect());
    to.field_order = static_cast<AVFieldOrder>(from.field_order());
    to.color_range = static_cast<AVColorRange>(from.color_range());
    to.color_primaries = static_cast<AVColorPrimaries>(from.color_primaries());
    to.color_trc = static_cast<AVColorTransferCharacteristic>(from.color_transfer());
    to.color_space = static_cast<AVColorSpace>(from.color_space());
    to.chroma_location = static_cast<AVChromaLocation>(from.chroma_location());
    to.video_delay = from.video_delay();
    if (from.extradata() && from.extradata()->size() > 0 && !copyExtradata(*from.extradata(), to))
        return std::nullopt;
    return track;
}

} // namespace

Bytes Reopening::toBytes() const
{
    FlatBufferBuilder builder;
    std::vector<Offset<stored::Track>> written;
    for (const VideoTrack& track : *tracks) {
        if (track.parameters)
            written.push_back(write(builder, track));
    }
    builder.Finish(stored::CreateMedia(builder, builder.CreateString(format->name), span.start,
                                       span.duration, builder.CreateVector(written)));
    return Bytes(builder.GetBufferPointer(), builder.GetBufferPointer() + builder.GetSize());
}

std::optional<Reopening> Reopening::fromBytes(const std::uint8_t* bytes, std::size_t size)
{
    const Bytes aligned(bytes, bytes + size);
    flatbuffers::Verifier verifier(aligned.data(), aligned.size());
    if (!stored::VerifyMediaBuffer(verifier))
        return std::nullopt;
    const stored::Media& media = *stored::GetMedia(aligned.data());
    Reopening reopening;
    reopening.format = av_find_input_format(media.format()->c_str());
    reopening.span = {media.start(), media.duration()};
    auto tracks = std::make_shared<std::vector<VideoTrack>>();
    for (const auto* stored : *media.tracks()) {
        if (auto track = read(*stored))
            tracks->push_back(std::move(*track));
    }
    reopening.tracks = std::move(tracks);
    if (!reopening.format)
        return std::nullopt;
    return reopening;
}

} // namespace engine
