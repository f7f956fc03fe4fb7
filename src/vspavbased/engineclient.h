// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "process/jobs.h"

#include <memory>
#include <mutex>
#include <string>
#include <utility>

namespace engine {

/// What the boundary's objects ask of the engine, and what may have been asked ahead for them.
/// Callable from any thread.
class EngineClient
{
public:
    static EngineClient& instance();

    void beginImport();

    /// Null when the item cannot be opened.
    ItemRecordPtr describe(const Item& item);
    /// Null when there is no Blu-ray disc.
    DiscRecordPtr readDisc(const std::string& path);
    /// Null when there is no answer.
    std::shared_ptr<FramesJob> frames(const ItemRecordPtr& record, const FrameWish& wish);

    /// The size of pictures that will be wanted of frames; 0 while nobody knows.
    void setPictureSize(std::uint32_t width, std::uint32_t height);
    std::pair<std::uint32_t, std::uint32_t> pictureSize() const;

private:
    EngineClient() = default;

    mutable std::mutex m_mutex;
    std::pair<std::uint32_t, std::uint32_t> m_pictureSize;
};

} // namespace engine
