// SPDX-License-Identifier: LGPL-2.1-or-later
#include "records/scrutiny.h"

#include "vspavbased/movierecords.h"

#include <cmath>

namespace engine {

namespace {

/// Far more than the engine lets through.
constexpr flatbuffers::uoffset_t longestText = 1024 * 1024;

constexpr double longestSeconds = 1e12;

/// In pixels; what is larger, libav does not open.
constexpr int longestSide = 1 << 24;

} // namespace

bool Scrutiny::passes(const flatbuffers::String& text)
{
    return text.size() <= longestText && hasRoom(text.size(), 1);
}

bool Scrutiny::passes(double seconds) const
{
    return std::isfinite(seconds) && std::abs(seconds) <= longestSeconds;
}

bool Scrutiny::passes(const flatbuffers::Vector<double>& seconds)
{
    return isAligned(seconds) && hasRoom(seconds.size(), sizeof(double)) &&
           std::all_of(seconds.begin(), seconds.end(),
                       [this](double number) { return passes(number); });
}

bool Scrutiny::passes(const wire::Stream& stream)
{
    return passes(*stream.name()) && passes(*stream.codec()) && passes(*stream.language()) &&
           stream.fourcc()->size() == sizeof(AVBased::AVStreamInfo::fourcc) && stream.kind() >= 0 &&
           stream.kind() <= AVBased::StreamKindSubtitle && stream.width() >= 0 &&
           stream.width() <= longestSide && stream.height() >= 0 &&
           stream.height() <= longestSide && stream.sample_rate() >= 0 && stream.channels() >= 0 &&
           stream.bit_rate() >= 0 && passes(stream.duration());
}

bool Scrutiny::passes(const wire::Movie& movie)
{
    return passes(*movie.name()) && passes(*movie.format()) &&
           passes<AVBased::AVStreamInfo>(
               *movie.streams(), [this](const wire::Stream& stream) { return passes(stream); }) &&
           passes(*movie.tags());
}

bool Scrutiny::passes(const flatbuffers::Vector<flatbuffers::Offset<wire::Tag>>& tags)
{
    return passes<AVBased::AVMetaItem>(
        tags, [this](const wire::Tag& tag) { return passes(*tag.key()) && passes(*tag.value()); });
}

bool Scrutiny::hasRoom(std::size_t count, std::size_t recordSize)
{
    if (count > m_left / recordSize)
        return false;
    m_left -= count * recordSize;
    return true;
}

} // namespace engine
