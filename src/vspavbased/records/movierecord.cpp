// SPDX-License-Identifier: LGPL-2.1-or-later
#include "records/movierecord.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace engine {

namespace {

/// Far more than the engine lets through.
constexpr flatbuffers::uoffset_t longestText = 1024 * 1024;

constexpr double longestSeconds = 1e12;

AVBased::AVStreamInfo recordOf(const wire::Stream& stream)
{
    AVBased::AVStreamInfo record{};
    record.name = stream.name()->c_str();
    record.kind = stream.kind();
    record.id = stream.id();
    record.codecName = stream.codec()->c_str();
    std::memcpy(record.fourcc, stream.fourcc()->c_str(), sizeof(record.fourcc));
    record.language = stream.language()->c_str();
    record.width = stream.width();
    record.height = stream.height();
    record.frameRate = stream.frame_rate();
    record.aspectRatio = stream.aspect_ratio();
    record.sampleRate = stream.sample_rate();
    record.channels = stream.channels();
    record.channelLayout = stream.channel_layout();
    record.bitRate = stream.bit_rate();
    record.duration = stream.duration();
    return record;
}

bool isSensible(const wire::Stream& stream)
{
    return engine::isSensible(*stream.name()) && engine::isSensible(*stream.codec()) &&
           engine::isSensible(*stream.language()) &&
           stream.fourcc()->size() == sizeof(AVBased::AVStreamInfo::fourcc) &&
           stream.width() >= 0 && stream.height() >= 0 && stream.sample_rate() >= 0 &&
           stream.channels() >= 0 && stream.bit_rate() >= 0 &&
           engine::isSensible(stream.duration());
}

} // namespace

bool isSensible(const flatbuffers::String& text)
{
    return text.size() <= longestText;
}

bool isSensible(double seconds)
{
    return std::isfinite(seconds) && std::abs(seconds) <= longestSeconds;
}

bool isSensible(const wire::Movie& movie)
{
    return isSensible(*movie.name()) && isSensible(*movie.format()) &&
           std::all_of(movie.streams()->begin(), movie.streams()->end(),
                       [](const wire::Stream* stream) { return isSensible(*stream); }) &&
           std::all_of(movie.tags()->begin(), movie.tags()->end(), [](const wire::Tag* tag) {
               return isSensible(*tag->key()) && isSensible(*tag->value());
           });
}

MovieRecord::MovieRecord(const wire::Movie& movie)
    : m_record()
{
    m_streams.reserve(movie.streams()->size());
    for (const wire::Stream* stream : *movie.streams())
        m_streams.push_back(recordOf(*stream));
    m_tags.reserve(movie.tags()->size());
    for (const wire::Tag* tag : *movie.tags())
        m_tags.push_back({tag->key()->c_str(), tag->value()->c_str()});
    m_record.name = movie.name()->c_str();
    m_record.id = movie.id();
    m_record.streamCount = static_cast<std::uint32_t>(m_streams.size());
    m_record.streams = m_streams.data();
    m_record.metaCount = static_cast<std::uint32_t>(m_tags.size());
    m_record.meta = m_tags.data();
    m_record.format = movie.format()->c_str();
}

} // namespace engine
