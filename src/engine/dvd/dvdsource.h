// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "dvd/titleclock.h"
#include "media/framereader.h"
#include "media/framesource.h"
#include "picturebudget.h"

#include <memory>

namespace engine {

/// Frames of one title of a DVD, as they would be shown. Seeking goes to the very frame that is
/// shown at the position.
class DvdSource final : public FrameSource
{
public:
    /// `video` is that of the title set. Null, with the reason in the log, when the title has none
    /// that can be decoded. `name` is what the log calls it, `budget` that of the disc.
    static AVBased::IAVSource* open(const TitleSet& set, const Title& title,
                                    const ByteSourcePtr& video, const std::string& name,
                                    std::shared_ptr<PictureBudget> budget);

    void seek(std::int32_t positionMs) override;

private:
    DvdSource(std::shared_ptr<const TitleLayout> layout, ByteSourcePtr titleBytes,
              std::unique_ptr<FrameReader> reader, const VideoAttributes& video,
              std::shared_ptr<PictureBudget> budget);

    /// A decoded picture, and when it is shown; -1 when the disc does not tell.
    struct TimedPicture
    {
        FramePtr picture;
        std::int64_t timeMs = -1;
    };

    bool readNext() override;
    bool findNext();
    TimedPicture next();
    std::optional<Ticks> timeOf(const AVFrame& picture);
    TimedPicture findWanted();
    TimedPicture decodeUpToWanted();
    bool goTo(std::size_t vobu);
    bool repeatStill();
    bool show(TimedPicture picture);
    Ticks pictureDuration() const;

    std::shared_ptr<const TitleLayout> m_layout;
    TitleClock m_clock;
    std::unique_ptr<FrameReader> m_reader;
    VideoAttributes m_video;
    std::shared_ptr<PictureBudget> m_budget;
    std::int64_t m_wantedMs = 0;     ///< where the last seek went
    bool m_isSeeking = true;         ///< the picture there is yet to be found
    TimedPicture m_ahead;            ///< read to know how long the one before is shown
    std::optional<Ticks> m_lastTime; ///< of the picture decoded last
};

} // namespace engine
