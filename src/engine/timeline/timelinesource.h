// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "enginelink/timeline/timeline.h"
#include "media/framesource.h"
#include "picturebudget.h"
#include "timeline/streamreader.h"

#include <cstdint>
#include <memory>
#include <set>
#include <vector>

namespace engine {

/// The frames of a timeline. Only the file that is being read is open.
///
/// A source whose file is missing, encrypted or not what it should be keeps its place: seeking into
/// it finds no frames, reading on from an earlier source goes past it.
class TimelineSource final : public FrameSource
{
public:
    explicit TimelineSource(std::shared_ptr<const Timeline> timeline);

    /// Goes to the frame that is shown at the position.
    ///
    /// Pictures of clips are taken a few frames behind the position, which in a still or at the end
    /// of a file would be a picture of something else. So the first frames after a seek come from
    /// the source at that position alone: its last frame stands in for those that it lacks.
    void seek(std::int32_t positionMs) override;

private:
    bool readNext() override;
    bool readOn();
    bool readFromItem();
    bool goToItem(std::size_t index, std::int64_t positionMs);

    std::shared_ptr<const Timeline> m_timeline;
    std::vector<std::int64_t> m_starts; ///< of each item, and the end of the last; milliseconds
    std::size_t m_following = 0;        ///< the item behind the one that is being read
    PictureBudget m_budget;
    std::unique_ptr<StreamReader> m_reader; ///< of the one that is being read; null when it is over
    std::set<std::size_t> m_unusable;       ///< items that have been tried in vain
    int m_framesToStay = 0; ///< how many more frames come from this item before reading goes on
};

} // namespace engine
