// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "media/demuxer.h"
#include "media/streamdescription.h"
#include "media/videodecoder.h"

#include <memory>

namespace engine {

/// Reads the frames of one video stream of an open demuxer. The effort for one frame is bounded, in
/// packets and by the demuxer's deadline.
class FrameReader
{
public:
    /// Finds the track's stream and opens its decoder; streams that some containers announce late
    /// are waited for. Null when there is none.
    static std::unique_ptr<FrameReader> open(std::unique_ptr<Demuxer> demuxer,
                                             const VideoTrack& track);

    /// The next frame in the order of showing; null at the end, or when none comes.
    FramePtr next();

    /// The stream's next packet, for those who look for a place to decode from; null at the end, or
    /// when the time is over. Valid until the next call of anything here.
    const AVPacket* nextPacket();

    /// To be called when the demuxer was moved: packets before the next keyframe are passed over,
    /// unless `fromKeyframe` is false.
    void restart(bool fromKeyframe);

    Demuxer& demuxer() { return *m_demuxer; }
    AVStream& stream() { return *m_stream; }

private:
    FrameReader(std::unique_ptr<Demuxer> demuxer, AVStream* stream,
                std::unique_ptr<VideoDecoder> decoder);

    void sendNextPacket();
    void completePosition();

    std::unique_ptr<Demuxer> m_demuxer;
    AVStream* m_stream; ///< of m_demuxer
    std::unique_ptr<VideoDecoder> m_decoder;
    PacketPtr m_packet;
    bool m_awaitsKeyframe = true;
    bool m_drained = false;
    std::int64_t m_lastPosition = -1; ///< of a packet of the stream, in bytes
};

} // namespace engine
