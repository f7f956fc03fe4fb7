// SPDX-License-Identifier: LGPL-2.1-or-later
#include "records/movierecord.h"

#include <cstring>

namespace engine {

namespace {

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

} // namespace

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
