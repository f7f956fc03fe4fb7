// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "media/framereader.h"
#include "media/framesource.h"

#include <functional>
#include <memory>

namespace engine {

/// Frames of a media file. Seeking goes to a keyframe near the position and does not decode
/// forward: a snapshot costs the same however far keyframes lie apart.
class MediaSource final : public FrameSource
{
public:
    /// Where in time the file lies, in units of AV_TIME_BASE.
    struct Span
    {
        std::int64_t start = 0;
        std::int64_t duration = 0; ///< 0 for unknown
    };

    /// Opens the file's track, each time anew. Null when that cannot be done.
    using Opener = std::function<std::unique_ptr<FrameReader>()>;

    /// Null when the track cannot be opened.
    static MediaSource* open(const Opener& opener, const VideoTrack& track, const Span& span);

    void seek(std::int32_t positionMs) override;

private:
    MediaSource(const Opener& opener, std::unique_ptr<FrameReader> reader, const VideoTrack& track,
                const Span& span);

    bool readNext() override;
    void goTo(std::int64_t timestamp);
    bool goToSearchedKeyframe(std::int64_t timestamp);
    bool goToKeyframeNear(std::int64_t timestamp);
    bool startOver();
    bool goFurtherBack();
    std::int64_t timestampOf(std::int64_t positionUs) const;
    std::int64_t positionMsOf(const AVFrame& picture) const;

    Opener m_opener;
    std::unique_ptr<FrameReader> m_reader;
    Span m_span;
    std::int64_t m_positionUs = 0; ///< where the last seek went
    std::int64_t m_backOffUs = 0;  ///< how far before it the search for a frame has begun
    bool m_atStart = false;        ///< there is nothing before where the search has begun
};

} // namespace engine
