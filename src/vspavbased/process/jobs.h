// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The kinds of requests.
#pragma once

#include "process/job.h"
#include "records/discrecord.h"
#include "records/itemrecord.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <tuple>
#include <vector>

namespace engine {

/// What a media file, a DVD or a timeline holds.
class DescribeJob final : public Job
{
public:
    enum class By
    {
        anyProgram, ///< whichever seems to suit the item
        engine
    };

    explicit DescribeJob(Item item, By by = By::anyProgram);

    /// Null when it cannot be opened.
    const ItemRecordPtr& record() const { return m_record; }
    /// The program that has answered does not describe such items: the engine has to be asked.
    bool isForEngine() const { return m_isForEngine; }

    bool needsDecoding() const override { return m_needsDecoding; }
    std::chrono::milliseconds limit() const override;
    std::size_t largestAnswer() const override;
    wire::Channel::Result send(wire::Channel& channel, wire::Clock::time_point deadline,
                               int file) const override;
    bool accept(wire::Letter& letter, const void* canvas) override;

private:
    bool m_needsDecoding;
    bool m_isForEngine = false;
    ItemRecordPtr m_record;
};

/// What a Blu-ray disc holds.
class ReadDiscJob final : public Job
{
public:
    using Job::Job;

    /// Null when there is none.
    const DiscRecordPtr& record() const { return m_record; }

    std::chrono::milliseconds limit() const override;
    std::size_t largestAnswer() const override;
    wire::Channel::Result send(wire::Channel& channel, wire::Clock::time_point deadline,
                               int file) const override;
    bool accept(wire::Letter& letter, const void* canvas) override;

private:
    DiscRecordPtr m_record;
};

/// Which frames are wanted of which movie, and whether a picture of the last.
struct FrameWish
{
    std::int32_t movie = 0;
    std::int32_t stream = 0;
    std::optional<std::int32_t> seekMs; ///< without: from where the movie begins
    std::uint32_t firstRead = 0;        ///< reads since then that came before
    std::uint32_t reads = 0;            ///< 0: only opening
    std::uint32_t width = 0;            ///< of the picture; 0: none
    std::uint32_t height = 0;

    bool operator==(const FrameWish& other) const { return values() == other.values(); }

private:
    std::tuple<std::int32_t, std::int32_t, std::optional<std::int32_t>, std::uint32_t,
               std::uint32_t, std::uint32_t, std::uint32_t>
    values() const
    {
        return {movie, stream, seekMs, firstRead, reads, width, height};
    }
};

/// Frames of a described item.
class FramesJob final : public Job
{
public:
    FramesJob(const ItemRecordPtr& record, const FrameWish& wish)
        : Job(record->item())
        , m_record(record)
        , m_wish(wish)
    {}

    const ItemRecord& record() const { return *m_record; }
    const FrameWish& wish() const { return m_wish; }
    bool isOpened() const { return m_isOpened; }
    const std::vector<wire::Read>& reads() const { return m_reads; }
    /// Width by height numbers, top row first; empty when there is no picture.
    std::vector<std::uint32_t>& pixels() { return m_pixels; }

    std::chrono::milliseconds limit() const override;
    std::size_t largestAnswer() const override;
    std::size_t canvasSize() const override;
    wire::Channel::Result send(wire::Channel& channel, wire::Clock::time_point deadline,
                               int file) const override;
    bool accept(wire::Letter& letter, const void* canvas) override;

private:
    ItemRecordPtr m_record;
    FrameWish m_wish;
    bool m_isOpened = false;
    std::vector<wire::Read> m_reads;
    std::vector<std::uint32_t> m_pixels;
};

} // namespace engine
