// SPDX-License-Identifier: GPL-2.0-or-later
#include "dvd/dvdsource.h"

#include "bytes/joinedbytes.h"
#include "disc/sector.h"
#include "enginelink/log.h"

#include <algorithm>
#include <utility>

namespace engine {

namespace {

/// Pictures that may be passed over on the way to the wanted one. It is hardly ever further away
/// than two VOBUs, of about half a second each.
constexpr int mostPicturesPassed = 500;

/// Longer than any picture of moving video is shown.
constexpr std::int64_t shortestStillMs = 250;

VideoTrack makeTrack()
{
    VideoTrack track;
    track.demuxerId = videoStreamId;
    track.parameters.reset(avcodec_parameters_alloc());
    if (track.parameters) {
        track.parameters->codec_type = AVMEDIA_TYPE_VIDEO;
        // The demuxer does not tell the two kinds of MPEG video apart, and the decoder knows both.
        track.parameters->codec_id = AV_CODEC_ID_MPEG2VIDEO;
    }
    return track;
}

/// What the title plays, as one stream of bytes.
ByteSourcePtr joinPieces(const TitleLayout& layout, const ByteSourcePtr& video)
{
    const auto bytes = std::make_shared<JoinedBytes>();
    for (const TitleLayout::Piece& piece : layout.pieces())
        bytes->append(video, piece.sector * sectorSize, piece.count * sectorSize);
    return bytes;
}

} // namespace

AVBased::IAVSource* DvdSource::open(const TitleSet& set, const Title& title,
                                    const ByteSourcePtr& video, const std::string& name,
                                    std::shared_ptr<PictureBudget> budget)
{
    auto layout = std::make_shared<const TitleLayout>(set, title, video->size() / sectorSize);
    if (layout->vobus().empty()) {
        log(name + ": the files hold nothing of the title");
        return nullptr;
    }
    ByteSourcePtr bytes = joinPieces(*layout, video);
    auto demuxer = Demuxer::openBytes(bytes, name, av_find_input_format("mpeg"));
    if (demuxer)
        demuxer->allow(budget->limit());
    auto reader = FrameReader::open(std::move(demuxer), makeTrack());
    if (!reader) {
        log(name + ": no video");
        return nullptr;
    }
    return new DvdSource(std::move(layout), std::move(bytes), std::move(reader), set.video,
                         std::move(budget));
}

DvdSource::DvdSource(std::shared_ptr<const TitleLayout> layout, ByteSourcePtr titleBytes,
                     std::unique_ptr<FrameReader> reader, const VideoAttributes& video,
                     std::shared_ptr<PictureBudget> budget)
    : m_layout(layout)
    , m_clock(std::move(layout), std::move(titleBytes))
    , m_reader(std::move(reader))
    , m_video(video)
    , m_budget(std::move(budget))
{}

void DvdSource::seek(std::int32_t positionMs)
{
    m_reader->demuxer().allow(m_budget->limit());
    m_wantedMs = std::max(positionMs, 0);
    m_isSeeking = true;
    m_ahead = {};
    forgetFrame();
}

bool DvdSource::readNext()
{
    if (m_budget->isUsedUp())
        return false;
    PictureBudget::Work work(*m_budget);
    if (!findNext())
        return false;
    work.succeeded();
    return true;
}

bool DvdSource::findNext()
{
    if (std::exchange(m_isSeeking, false))
        return show(findWanted());
    return repeatStill() || show(std::exchange(m_ahead, {}));
}

/// A picture that stands still is given again and again, as often as it would be shown, until it is
/// the next one's turn.
bool DvdSource::repeatStill()
{
    if (!m_ahead.picture)
        m_ahead = next();
    const std::int64_t shownMs = std::max(m_frameMs, m_wantedMs);
    if (!m_frame.picture || m_frameMs < 0 || m_ahead.timeMs - shownMs < shortestStillMs)
        return false;
    m_frameMs = shownMs + pictureDuration() / ticksPerMillisecond;
    return true;
}

DvdSource::TimedPicture DvdSource::next()
{
    TimedPicture next;
    next.picture = m_reader->next();
    if (!next.picture)
        return next;
    m_lastTime = timeOf(*next.picture);
    if (m_lastTime)
        next.timeMs = std::max<Ticks>(*m_lastTime, 0) / ticksPerMillisecond;
    return next;
}

/// A picture without a stamp, as the last one before the end may be, follows the one before it.
std::optional<Ticks> DvdSource::timeOf(const AVFrame& picture)
{
    const std::int64_t stamp =
        picture.pts != AV_NOPTS_VALUE ? picture.pts : picture.best_effort_timestamp;
    const std::int64_t position = packetPositionOf(picture);
    if (stamp != AV_NOPTS_VALUE && position >= 0)
        return m_clock.timeOf(static_cast<std::uint64_t>(position) / sectorSize, stamp);
    if (!m_lastTime)
        return std::nullopt;
    return *m_lastTime + pictureDuration();
}

Ticks DvdSource::pictureDuration() const
{
    return m_video.isNtsc ? ticksPerNtscPicture : ticksPerPalPicture;
}

/// The last picture that is shown by the wanted time. The first pictures shown of a VOBU may need
/// the one before it, and a picture that stands still may have begun long before: when there is
/// none, the search begins again, earlier and earlier.
DvdSource::TimedPicture DvdSource::findWanted()
{
    const auto shown = m_clock.vobuAt(m_wantedMs * ticksPerMillisecond);
    if (!shown)
        return {};
    std::size_t vobu = *shown;
    for (std::size_t step = 1;; step *= 2) {
        TimedPicture found = goTo(vobu) ? decodeUpToWanted() : TimedPicture();
        if (found.picture)
            return found;
        if (vobu == 0 || m_reader->demuxer().isExhausted())
            return std::move(m_ahead);
        m_ahead = {};
        vobu -= std::min(vobu, step);
    }
}

/// The last picture shown by the wanted time of those that follow here; the one behind it, if one
/// comes, is kept.
DvdSource::TimedPicture DvdSource::decodeUpToWanted()
{
    TimedPicture found;
    for (int i = 0; i < mostPicturesPassed; ++i) {
        TimedPicture picture = next();
        if (!picture.picture)
            break;
        if (picture.timeMs > m_wantedMs) {
            m_ahead = std::move(picture);
            break;
        }
        found = std::move(picture);
        if (found.timeMs < 0)
            break;
    }
    return found;
}

bool DvdSource::goTo(std::size_t vobu)
{
    const std::uint64_t offset = m_layout->vobus()[vobu].titleSector * sectorSize;
    const int result = av_seek_frame(m_reader->demuxer().context(), -1,
                                     static_cast<std::int64_t>(offset), AVSEEK_FLAG_BYTE);
    if (result < 0)
        log("seeking in a title: " + errorText(result));
    m_reader->restart(true);
    m_lastTime.reset();
    return result >= 0;
}

/// The disc's tables say which shape the picture has; the video stream may say otherwise. False
/// when there is no picture.
bool DvdSource::show(TimedPicture picture)
{
    if (!picture.picture)
        return false;
    m_frame.pixelAspect = {m_video.displayAspect.numerator * picture.picture->height,
                           m_video.displayAspect.denominator * picture.picture->width};
    m_frame.picture = std::move(picture.picture);
    m_frameMs = picture.timeMs;
    return true;
}

} // namespace engine
