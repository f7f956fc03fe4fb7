// SPDX-License-Identifier: GPL-2.0-or-later
#include "media/mediasource.h"

#include "media/keyframesearch.h"

#include <algorithm>

namespace engine {

namespace {

const AVIndexEntry* keyframeEntry(AVStream& stream, std::int64_t timestamp, int flags)
{
    return avformat_index_get_entry_from_timestamp(&stream, timestamp, flags);
}

/// Time stamps of hostile files are as far apart as numbers can be.
std::int64_t distance(const AVIndexEntry& entry, std::int64_t timestamp)
{
    return std::max(av_sat_sub64(entry.timestamp, timestamp),
                    av_sat_sub64(timestamp, entry.timestamp));
}

} // namespace

MediaSource* MediaSource::open(const Opener& opener, const VideoTrack& track, const Span& span)
{
    auto reader = opener();
    return reader ? new MediaSource(opener, std::move(reader), track, span) : nullptr;
}

MediaSource::MediaSource(const Opener& opener, std::unique_ptr<FrameReader> reader,
                         const VideoTrack& track, const Span& span)
    : m_opener(opener)
    , m_reader(std::move(reader))
    , m_span(span)
{
    m_frame.orientation = track.orientation;
    m_frame.pixelAspect = track.pixelAspect;
}

void MediaSource::seek(std::int32_t positionMs)
{
    m_reader->demuxer().allow(pictureLimit);
    forgetFrame();
    m_positionUs = std::int64_t{std::max(positionMs, 0)} * 1000;
    if (m_span.duration > 0)
        m_positionUs = std::min(m_positionUs, m_span.duration);
    m_backOffUs = 0;
    m_atStart = m_positionUs == 0;
    goTo(timestampOf(m_positionUs));
}

bool MediaSource::readNext()
{
    FramePtr picture = m_reader->next();
    // Some files end, or have no keyframe, between the position and the end that they claim.
    while (!picture && !m_frame.picture && goFurtherBack())
        picture = m_reader->next();
    if (!picture)
        return false;
    m_frameMs = positionMsOf(*picture);
    m_frame.picture = std::move(picture);
    return true;
}

void MediaSource::goTo(std::int64_t timestamp)
{
    if (!goToSearchedKeyframe(timestamp) && !goToKeyframeNear(timestamp))
        startOver();
    m_reader->restart(true);
}

/// To the nearest keyframe of a container that does not know where they are. False when it does, or
/// there is none.
bool MediaSource::goToSearchedKeyframe(std::int64_t timestamp)
{
    AVFormatContext* context = m_reader->demuxer().context();
    if (!mustSearchKeyframes(*context))
        return false;
    const auto byte = KeyframeSearch(*m_reader, timestampOf(0), timestamp).nearest();
    return byte && av_seek_frame(context, -1, *byte, AVSEEK_FLAG_BYTE) >= 0;
}

/// To the keyframe before the timestamp, or to the one behind it when the container knows of one
/// that is nearer. What the container knows is complete only after a first seek.
bool MediaSource::goToKeyframeNear(std::int64_t timestamp)
{
    AVFormatContext* context = m_reader->demuxer().context();
    AVStream& stream = m_reader->stream();
    const bool foundBefore =
        av_seek_frame(context, stream.index, timestamp, AVSEEK_FLAG_BACKWARD) >= 0;
    const AVIndexEntry* before = keyframeEntry(stream, timestamp, AVSEEK_FLAG_BACKWARD);
    const AVIndexEntry* behind = keyframeEntry(stream, timestamp, 0);
    const bool behindIsNearer =
        behind && (!before || distance(*behind, timestamp) < distance(*before, timestamp));
    if (foundBefore && !(before && behindIsNearer))
        return true;
    return av_seek_frame(context, stream.index, behindIsNearer ? behind->timestamp : timestamp,
                         0) >= 0 ||
           foundBefore;
}

/// To where reading began. Not every demuxer finds back there, so a new one begins.
bool MediaSource::startOver()
{
    m_atStart = true;
    auto reader = m_opener();
    if (!reader)
        return false;
    m_reader = std::move(reader);
    m_reader->demuxer().allow(pictureLimit);
    return true;
}

/// After a search that found no frame: begins another one further back, at last at the start of the
/// file and with whatever is there. False when that has been tried, or the time is over.
bool MediaSource::goFurtherBack()
{
    constexpr std::int64_t firstStepUs = 1000000;
    if (m_reader->demuxer().isExhausted() || m_backOffUs < 0)
        return false;
    m_backOffUs = std::max(m_backOffUs * 2, firstStepUs);
    if (!m_atStart && m_backOffUs < m_positionUs) {
        goTo(timestampOf(m_positionUs - m_backOffUs));
        return true;
    }
    m_backOffUs = -1;
    const bool moved = startOver();
    m_reader->restart(false);
    return moved;
}

std::int64_t MediaSource::timestampOf(std::int64_t positionUs) const
{
    return av_rescale_q(av_sat_add64(m_span.start, positionUs), AV_TIME_BASE_Q,
                        m_reader->stream().time_base);
}

std::int64_t MediaSource::positionMsOf(const AVFrame& picture) const
{
    if (picture.best_effort_timestamp == AV_NOPTS_VALUE)
        return -1;
    const std::int64_t us =
        av_rescale_q(picture.best_effort_timestamp, m_reader->stream().time_base, AV_TIME_BASE_Q);
    return std::max<std::int64_t>(av_sat_sub64(us, m_span.start) / 1000, 0);
}

} // namespace engine
