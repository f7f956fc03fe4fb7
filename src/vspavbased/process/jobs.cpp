// SPDX-License-Identifier: LGPL-2.1-or-later
#include "process/jobs.h"

#include "enginelink/ascii.h"
#include "policy.h"
#include "records/scrutiny.h"
#include "refusals.h"

#include <cstring>

namespace engine {

namespace {

constexpr std::size_t kilobyte = 1024;

/// The record keeps what was sent. Tags and covers of honest files take a few kilobytes.
constexpr std::size_t largestDescription = 32 * kilobyte * kilobyte;
constexpr std::size_t largestRead = 64 * kilobyte;

/// Whether what is given that way may be a DVD: folders have a separator at their end. A wrong
/// guess costs a moment.
bool looksLikeDvd(const std::string& path)
{
    if (path.empty() || path.back() == '/')
        return !path.empty();
    const std::string upper = toUpper(path);
    return endsWith(upper, ".ISO") || endsWith(upper, ".IFO");
}

} // namespace

DescribeJob::DescribeJob(Item item, By by)
    : Job(std::move(item))
    , m_needsDecoding(by == By::engine || !looksLikeDvd(this->item().path))
{}

std::size_t DescribeJob::largestAnswer() const
{
    return largestDescription;
}

std::chrono::milliseconds DescribeJob::limit() const
{
    return policy().describe;
}

wire::Channel::Result DescribeJob::send(wire::Channel& channel, wire::Clock::time_point deadline,
                                        int file) const
{
    flatbuffers::FlatBufferBuilder builder;
    const auto request = wire::CreateDescribe(builder, builder.CreateString(item().path),
                                              item().timeline != nullptr);
    return channel.send(builder, request, deadline, file);
}

bool DescribeJob::accept(wire::Letter& letter, const void* /*canvas*/)
{
    const auto* described = letter.as<wire::Described>();
    m_isForEngine = described && described->is_for_others();
    if (described && !described->item())
        setRefusal(refusalOfEngine(described->refusal()));
    if (!described || !described->item())
        return described != nullptr;
    m_record = ItemRecord::make(item(), std::move(letter));
    return m_record != nullptr;
}

std::size_t ReadDiscJob::largestAnswer() const
{
    return wire::largestMessage;
}

std::chrono::milliseconds ReadDiscJob::limit() const
{
    return policy().readDisc;
}

wire::Channel::Result ReadDiscJob::send(wire::Channel& channel, wire::Clock::time_point deadline,
                                        int file) const
{
    flatbuffers::FlatBufferBuilder builder;
    const auto request = wire::CreateReadDisc(builder, builder.CreateString(item().path));
    return channel.send(builder, request, deadline, file);
}

bool ReadDiscJob::accept(wire::Letter& letter, const void* /*canvas*/)
{
    const auto* read = letter.as<wire::DiscRead>();
    if (read && !read->disc())
        setRefusal(refusalOfEngine(read->refusal()));
    if (!read || !read->disc())
        return read != nullptr;
    m_record = DiscRecord::make(item().path, std::move(letter));
    return m_record != nullptr;
}

std::size_t FramesJob::largestAnswer() const
{
    return largestRead;
}

std::chrono::milliseconds FramesJob::limit() const
{
    return policy().takePicture;
}

std::size_t FramesJob::canvasSize() const
{
    return std::size_t{m_wish.width} * m_wish.height * sizeof(std::uint32_t);
}

wire::Channel::Result FramesJob::send(wire::Channel& channel, wire::Clock::time_point deadline,
                                      int file) const
{
    flatbuffers::FlatBufferBuilder builder;
    flatbuffers::Offset<flatbuffers::Vector<std::uint8_t>> reopening = 0;
    if (const auto* kept = m_record->told().reopening())
        reopening = builder.CreateVector(kept->data(), kept->size());
    const auto request = wire::CreateTakePicture(
        builder, builder.CreateString(item().path), item().timeline != nullptr, reopening,
        m_wish.movie, m_wish.stream, m_wish.seekMs.has_value(), m_wish.seekMs.value_or(0),
        m_wish.firstRead, m_wish.reads, m_wish.width, m_wish.height);
    return channel.send(builder, request, deadline, file);
}

bool FramesJob::accept(wire::Letter& letter, const void* canvas)
{
    const auto* taken = letter.as<wire::PictureTaken>();
    const bool hasReads = taken && taken->reads();
    if (!taken ||
        (hasReads && (!isAligned(*taken->reads()) || taken->reads()->size() > m_wish.reads)) ||
        (taken->has_picture() && canvasSize() == 0))
        return false;
    m_isOpened = taken->opened();
    for (std::uint32_t i = 0; hasReads && i < taken->reads()->size(); ++i)
        m_reads.push_back(*taken->reads()->Get(i));
    if (taken->has_picture()) {
        m_pixels.resize(canvasSize() / sizeof(std::uint32_t));
        std::memcpy(m_pixels.data(), canvas, canvasSize());
    }
    return true;
}

} // namespace engine
