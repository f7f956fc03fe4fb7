// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "process/jobs.h"
#include "vspavbased/iavsource.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace engine {
class FrameSource;
}

namespace AVBased {

/// A frame is known by its place: the source, and how many reads it is behind the last seek.
class IAVFrame
{
public:
    engine::FrameSource* source = nullptr;
    std::uint32_t read = 0;
};

} // namespace AVBased

namespace engine {

/// Frames of one movie, which an engine process decodes. Whoever reads them wants several and a
/// picture of the last, so they are asked for together; what was asked for too much is dropped.
class FrameSource final : public AVBased::IAVSource
{
public:
    /// Null when the movie cannot be opened.
    static FrameSource* open(const ItemRecordPtr& record, std::int32_t movie, std::int32_t stream);

    void seek(std::int32_t positionMs) override;
    bool readFrame(std::int64_t* positionMs, AVBased::IAVFrame** frame, std::int32_t* flags,
                   std::int32_t mode) override;
    void release() override;

    /// The frame of the last read as a picture; empty when there is none.
    std::vector<std::uint32_t> picture(std::uint32_t width, std::uint32_t height);

private:
    FrameSource(const ItemRecordPtr& record, std::int32_t movie, std::int32_t stream)
        : m_record(record)
        , m_movie(movie)
        , m_stream(stream)
    {}
    ~FrameSource() = default;

    FrameWish wishFrom(std::uint32_t firstRead, std::uint32_t reads) const;
    bool fetch();

    ItemRecordPtr m_record;
    std::int32_t m_movie;
    std::int32_t m_stream;
    std::optional<std::int32_t> m_seekMs;
    std::uint32_t m_reads = 0;          ///< since the seek
    std::shared_ptr<FramesJob> m_batch; ///< reads that have been asked for
    AVBased::IAVFrame m_frame;
};

} // namespace engine
