// SPDX-License-Identifier: GPL-2.0-or-later
#include "timeline/streamreader.h"

#include "bluray/streamfile.h"
#include "disc/discfiles.h"
#include "enginelink/log.h"
#include "media/streamdescription.h"

#include <algorithm>

namespace engine {

namespace {

/// The map's times are this much before those of the pictures, at most.
constexpr std::int64_t entrySlack = blurayTicksPerSecond * 6 / 1000;

/// A picture further from where the map has it is proof that the map is wrong.
constexpr std::int64_t entryTolerance = blurayTicksPerSecond / 4;

/// Bytes in which libav finds out how to decode the pictures. Sound and subtitles, which may begin
/// later, are not wanted.
constexpr std::int64_t enoughForVideo = std::int64_t{1024} * 1024;

std::optional<VideoTrack> findTrack(AVFormatContext& context, std::int32_t videoStream)
{
    const bool hasPids = isTransportStream(context);
    for (VideoTrack& track : videoTracks(context)) {
        if ((hasPids ? track.demuxerId : track.streamIndex) == videoStream)
            return std::move(track);
    }
    return std::nullopt;
}

/// One clock from the stream's first time stamp on, for files about which the disc says nothing.
ClipInformation clipOf(const AVStream& stream)
{
    const std::int64_t start =
        stream.start_time == AV_NOPTS_VALUE
            ? 0
            : av_rescale_q(stream.start_time, stream.time_base, blurayTickBase);
    ClipInformation clip;
    clip.sequences = {
        {0, static_cast<std::uint32_t>(std::clamp<std::int64_t>(start, 0, UINT32_MAX - 1)),
         UINT32_MAX}};
    return clip;
}

} // namespace

std::unique_ptr<StreamReader> StreamReader::open(const std::string& path, std::int32_t videoStream,
                                                 const PictureBudget& budget)
{
    const auto location = DiscFiles::split(path);
    const auto files = location ? DiscFiles::open(location->disc) : nullptr;
    auto demuxer = files ? openStreamFile(*files, location->file) : nullptr;
    if (demuxer) {
        demuxer->context()->probesize = enoughForVideo;
        demuxer->allow(budget.limit());
    }
    if (!demuxer || !demuxer->findStreamInfo()) {
        log(path + ": no stream file");
        return nullptr;
    }
    const auto track = findTrack(*demuxer->context(), videoStream);
    auto reader = track ? FrameReader::open(std::move(demuxer), *track) : nullptr;
    if (!reader) {
        log(path + ": no such video stream");
        return nullptr;
    }
    auto clip = findClipInformation(*files, location->file);
    if (!clip)
        clip = clipOf(reader->stream());
    return std::unique_ptr<StreamReader>(
        new StreamReader(std::move(reader), track->orientation, std::move(*clip), budget));
}

StreamReader::StreamReader(std::unique_ptr<FrameReader> reader, const Orientation& orientation,
                           ClipInformation clip, const PictureBudget& budget)
    : m_reader(std::move(reader))
    , m_orientation(orientation)
    , m_clip(std::move(clip))
    , m_budget(budget)
{
    for (const EntryPoint& point : m_clip.entryPoints) {
        // libav finds the picture for sure when it starts reading behind the packet's header.
        const std::int64_t byte =
            std::int64_t{point.packet} * streamPacketSize + streamPacketHeader;
        m_entries.push_back({m_clip.positionOf(point.time, sequenceAtByte(byte)), byte});
    }
}

bool StreamReader::seek(std::int64_t position)
{
    m_reader->demuxer().allow(m_budget.limit());
    if (!m_entries.empty()) {
        const Search search = searchFromEntries(position);
        if (search != Search::failed)
            return search == Search::found;
        m_entries.clear();
    }
    return searchByTimeStamps(position);
}

FramePtr StreamReader::next()
{
    if (m_ready.empty()) {
        m_reader->demuxer().allow(m_budget.limit());
        return m_reader->next();
    }
    FramePtr frame = std::move(m_ready.front());
    m_ready.pop_front();
    return frame;
}

AVBased::IAVFrame StreamReader::shownAs(FramePtr frame) const
{
    AVFormatContext& context = *m_reader->demuxer().context();
    const AVRational pixel = pixelAspectOf(context, m_reader->stream(), frame.get());
    return {std::move(frame), m_orientation, pixel};
}

std::optional<std::int64_t> StreamReader::positionOf(const AVFrame& frame) const
{
    if (frame.best_effort_timestamp == AV_NOPTS_VALUE)
        return std::nullopt;
    const std::size_t sequence = sequenceAtByte(packetPositionOf(frame));
    const std::int64_t time =
        av_rescale_q(frame.best_effort_timestamp, m_reader->stream().time_base, blurayTickBase);
    return m_clip.offsetOf(sequence) + av_sat_sub64(time, m_clip.sequences[sequence].start);
}

/// From the entry before the position, or further back where its first picture is shown later.
StreamReader::Search StreamReader::searchFromEntries(std::int64_t position)
{
    const std::int64_t size = avio_size(m_reader->demuxer().context()->pb);
    std::size_t index = entryBefore(position);
    for (std::size_t step = 1;; step *= 2) {
        const Entry& entry = m_entries[index];
        if (entry.byte >= size)
            return Search::missing;
        const auto first = moveToByte(entry.byte) ? readUpTo(position) : std::nullopt;
        if (!first || std::abs(*first - entry.position) > entryTolerance)
            return Search::failed;
        if (*first <= position)
            return Search::found;
        if (index == 0) // nothing is shown before the first picture, at the start of the file
            return *first <= entryTolerance ? Search::found : Search::failed;
        index -= std::min(index, step);
    }
}

std::size_t StreamReader::entryBefore(std::int64_t position) const
{
    std::size_t index = 0;
    for (std::size_t i = 1; i < m_entries.size(); ++i) {
        if (m_entries[i].position + entrySlack <= position)
            index = i;
    }
    return index;
}

/// From a second before the position, from two, from four, at last from the start of the file.
bool StreamReader::searchByTimeStamps(std::int64_t position)
{
    for (std::int64_t back = 0;; back = std::max(back * 2, blurayTicksPerSecond)) {
        const bool fromStart = back >= position;
        const bool moved =
            fromStart ? moveToByte(0) || moveToTimeStamp(0) : moveToTimeStamp(position - back);
        const auto first = moved ? readUpTo(position) : std::nullopt;
        if (first && (*first <= position || fromStart))
            return true;
        if (fromStart || m_reader->demuxer().isExhausted())
            return false;
    }
}

bool StreamReader::moveToByte(std::int64_t byte)
{
    return av_seek_frame(m_reader->demuxer().context(), -1, byte, AVSEEK_FLAG_BYTE) >= 0;
}

/// Only the first sequence can be reached by time stamps: the others' are not in order with them.
bool StreamReader::moveToTimeStamp(std::int64_t position)
{
    const AVStream& stream = m_reader->stream();
    const std::int64_t time =
        av_rescale_q(m_clip.sequences.front().start + position, blurayTickBase, stream.time_base);
    return av_seek_frame(m_reader->demuxer().context(), stream.index, time, AVSEEK_FLAG_BACKWARD) >=
           0;
}

/// Decodes until the frame that is shown at `position` is known, and makes it the next one. The
/// position of the first frame met, at which the frame is found when it is not later; nothing when
/// there is none or the time is over.
std::optional<std::int64_t> StreamReader::readUpTo(std::int64_t position)
{
    m_ready.clear();
    m_reader->restart(true);
    FramePtr shown = m_reader->next();
    const auto first = shown ? positionOf(*shown) : std::nullopt;
    FramePtr following = first && *first <= position ? m_reader->next() : nullptr;
    while (following && !isBehind(*following, position)) {
        shown = std::move(following);
        following = m_reader->next();
    }
    if (!first || m_reader->demuxer().gaveUp())
        return std::nullopt;
    if (*first <= position && !isShownAt(*shown, position))
        return std::nullopt;
    m_ready.push_back(std::move(shown));
    if (following)
        m_ready.push_back(std::move(following));
    return first;
}

bool StreamReader::isBehind(const AVFrame& frame, std::int64_t position) const
{
    const auto shownAt = positionOf(frame);
    return shownAt && *shownAt > position;
}

/// Whether the last frame found up to a position is what is shown there, and none is missing in
/// between because the file is damaged.
bool StreamReader::isShownAt(const AVFrame& frame, std::int64_t position) const
{
    constexpr std::int64_t longestUnmapped = blurayTicksPerSecond;
    const std::int64_t shownAt = positionOf(frame).value_or(position);
    if (m_entries.empty())
        return position - shownAt <= longestUnmapped;
    return m_entries[entryBefore(position)].position <= shownAt + entryTolerance;
}

/// The sequence in which a byte of the file lies; the first when that is unknown.
std::size_t StreamReader::sequenceAtByte(std::int64_t byte) const
{
    std::size_t sequence = 0;
    for (std::size_t i = 1; i < m_clip.sequences.size(); ++i) {
        if (byte >= std::int64_t{m_clip.sequences[i].firstPacket} * streamPacketSize)
            sequence = i;
    }
    return sequence;
}

} // namespace engine
