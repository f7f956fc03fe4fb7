// SPDX-License-Identifier: GPL-2.0-or-later
#include "moviefacts.h"

#include "text.h"

#include <algorithm>
#include <cstring>

namespace engine {

std::uint64_t packFrameRate(const Ratio& rate)
{
    if (!rate.isKnown())
        return 0;
    return (static_cast<std::uint64_t>(rate.numerator) << 32) |
           static_cast<std::uint32_t>(rate.denominator);
}

std::uint32_t packAspect(const Ratio& aspect)
{
    if (!aspect.isKnown() || std::max(aspect.numerator, aspect.denominator) > largestInAspect)
        return 0;
    return (static_cast<std::uint32_t>(aspect.numerator) << 16) |
           static_cast<std::uint32_t>(aspect.denominator);
}

MovieRecord::MovieRecord(const MovieFacts& facts)
    : m_record()
{
    Latin1Writer latin1;
    for (const StreamFacts& stream : facts.streams) {
        AVBased::AVStreamInfo record{};
        record.name = keep(latin1.write(stream.name));
        record.kind = stream.kind;
        record.id = stream.id;
        record.codecName = keep(latin1.write(stream.codec));
        std::memcpy(record.fourcc, stream.fourcc.data(), sizeof(record.fourcc));
        record.language = keep(latin1.write(stream.language));
        record.width = stream.width;
        record.height = stream.height;
        record.frameRate = packFrameRate(stream.frameRate);
        record.aspectRatio = packAspect(stream.displayAspect);
        record.sampleRate = stream.sampleRate;
        record.channels = stream.channels;
        record.channelLayout = stream.channelLayout;
        record.bitRate = stream.bitRate;
        record.duration = stream.duration.value_or(0.0);
        m_streams.push_back(record);
    }
    for (const auto& [key, value] : facts.tags)
        m_tags.push_back({keep(latin1.write(key)), keep(latin1.write(value))});

    m_record.name = keep(toUtf8(facts.name));
    m_record.id = facts.id;
    m_record.streamCount = static_cast<std::uint32_t>(m_streams.size());
    m_record.streams = m_streams.data();
    m_record.metaCount = static_cast<std::uint32_t>(m_tags.size());
    m_record.meta = m_tags.data();
    m_record.format = keep(latin1.write(facts.format));
}

/// The text stays where it is as long as the record lives.
const char* MovieRecord::keep(std::string text)
{
    return m_texts.emplace_front(std::move(text)).c_str();
}

} // namespace engine
