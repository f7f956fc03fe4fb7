// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "ahead/folderorder.h"
#include "ahead/pictureorder.h"
#include "process/jobs.h"

#include <cstdint>
#include <deque>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

namespace engine {

template <typename T>
class OfProcess;

/// What the boundary's objects ask of the engine. What they will probably ask for next is asked for
/// ahead, when there are processes to do it: then it is there when they come.
///
/// Ahead are the files that follow in a folder, and the pictures that follow in the import. What
/// was guessed wrongly is dropped; whoever then passes over what is there already is followed at a
/// greater distance. Callable from any thread.
class EngineClient
{
public:
    static EngineClient& instance();

    void beginImport();

    /// Forgets all that is planned.
    void end();

    /// Null when the item cannot be opened; the host has been told why.
    ItemRecordPtr describe(const Item& item);
    /// Null when there is no Blu-ray disc; the same.
    DiscRecordPtr readDisc(const std::string& path);
    /// Has the engine close what it has open of the item, which may still be asked about.
    void close(const ItemRecord& item);
    /// Nobody will ask for frames of the item any more.
    void forget(const ItemRecord& item);

    /// Whether frames of the movie can be read.
    bool open(const ItemRecordPtr& item, std::int32_t movie, std::int32_t stream);
    /// Null when there is no answer.
    std::shared_ptr<FramesJob> frames(const ItemRecordPtr& item, const FrameWish& wish);

    /// The size of pictures that will be wanted of frames; 0 while nobody knows.
    void setPictureSize(std::uint32_t width, std::uint32_t height);
    std::pair<std::uint32_t, std::uint32_t> pictureSize() const;

private:
    using Lock = std::unique_lock<std::mutex>;
    using DescribeJobPtr = std::shared_ptr<DescribeJob>;
    using FramesJobPtr = std::shared_ptr<FramesJob>;

    friend class OfProcess<EngineClient>;

    EngineClient() = default;

    DescribeJobPtr takeDescription(const Item& item);
    std::list<DescribeJobPtr>::iterator findDescription(const std::string& path);
    void describeAheadFrom(const std::string& path);
    FramesJobPtr takeFrames(const ItemRecordPtr& item, const FrameWish& wish);
    FrameWish wishFor(const PlannedPicture& planned) const;
    void readAheadFrom(const ItemRecord& item, const FrameWish& wish);
    void dropFrames(const ItemRecord& item);

    mutable std::mutex m_mutex;
    std::pair<std::uint32_t, std::uint32_t> m_pictureSize;
    FolderOrder m_folders;
    PictureOrder m_pictures;
    std::list<DescribeJobPtr> m_descriptions; ///< ahead
    std::list<FramesJobPtr> m_frames;         ///< ahead
    std::size_t m_distance = SIZE_MAX;        ///< how far ahead, at most
};

} // namespace engine
