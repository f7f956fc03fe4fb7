// SPDX-License-Identifier: GPL-2.0-or-later
#include "media/framereader.h"

#include <new>

namespace engine {

namespace {

/// Packets of the stream that may be decoded for one frame, and packets of all streams that may be
/// read to find the stream at all. Ordinary files need a handful.
constexpr int mostPacketsForFrame = 1000;
constexpr int mostPacketsForStream = 5000;

/// Demuxers take the two for each other until they have seen more of the stream, and a decoder of
/// either knows both.
bool isMpegVideo(AVCodecID codec)
{
    return codec == AV_CODEC_ID_MPEG1VIDEO || codec == AV_CODEC_ID_MPEG2VIDEO;
}

bool isSameCodec(AVCodecID a, AVCodecID b)
{
    return a == b || (isMpegVideo(a) && isMpegVideo(b));
}

/// Where all streams stand in a header the place decides: what a demuxer takes the codec for may
/// change once it has seen more of the stream.
AVStream* findStream(const AVFormatContext& context, const VideoTrack& track)
{
    const bool hasHeader = !(context.ctx_flags & AVFMTCTX_NOHEADER);
    const auto fits = [&track, hasHeader](const AVStream& stream) {
        return stream.id == track.demuxerId && stream.codecpar->codec_type == AVMEDIA_TYPE_VIDEO &&
               (hasHeader || isSameCodec(stream.codecpar->codec_id, track.parameters->codec_id));
    };
    const auto wanted = static_cast<unsigned>(track.streamIndex);
    if (wanted < context.nb_streams && fits(*context.streams[wanted]))
        return context.streams[wanted];
    for (unsigned i = 0; i < context.nb_streams; ++i) {
        if (fits(*context.streams[i]))
            return context.streams[i];
    }
    return nullptr;
}

/// Reads on until the track's stream turns up: containers without a header announce streams with
/// their first packet.
AVStream* awaitStream(AVFormatContext& context, const VideoTrack& track)
{
    AVStream* stream = findStream(context, track);
    const PacketPtr packet(av_packet_alloc());
    for (int i = 0; packet && !stream && i < mostPacketsForStream; ++i) {
        if (av_read_frame(&context, packet.get()) < 0)
            break;
        av_packet_unref(packet.get());
        stream = findStream(context, track);
    }
    return stream;
}

} // namespace

FrameReader::FrameReader(std::unique_ptr<Demuxer> demuxer, AVStream* stream,
                         std::unique_ptr<VideoDecoder> decoder)
    : m_demuxer(std::move(demuxer))
    , m_stream(stream)
    , m_decoder(std::move(decoder))
    , m_packet(av_packet_alloc())
{
    AVFormatContext& context = *m_demuxer->context();
    for (unsigned i = 0; i < context.nb_streams; ++i) {
        if (context.streams[i] != m_stream)
            context.streams[i]->discard = AVDISCARD_ALL;
    }
}

std::unique_ptr<FrameReader> FrameReader::open(std::unique_ptr<Demuxer> demuxer,
                                               const VideoTrack& track)
{
    if (!demuxer || !track.parameters)
        return nullptr;
    AVStream* stream = awaitStream(*demuxer->context(), track);
    if (!stream)
        return nullptr;
    auto decoder = VideoDecoder::open(*track.parameters, stream->time_base);
    if (!decoder)
        return nullptr;
    return std::unique_ptr<FrameReader>(
        new FrameReader(std::move(demuxer), stream, std::move(decoder)));
}

FramePtr FrameReader::next()
{
    for (int i = 0; m_packet && i < mostPacketsForFrame; ++i) {
        if (FramePtr frame = m_decoder->receive())
            return frame;
        if (m_drained)
            break;
        sendNextPacket();
    }
    return nullptr;
}

const AVPacket* FrameReader::nextPacket()
{
    while (m_packet && !m_demuxer->isExhausted()) {
        av_packet_unref(m_packet.get());
        const int result = av_read_frame(m_demuxer->context(), m_packet.get());
        if (result == AVERROR(EAGAIN))
            continue;
        if (result == AVERROR(ENOMEM))
            throw std::bad_alloc();
        if (result < 0)
            break;
        if (m_packet->stream_index != m_stream->index)
            continue;
        completePosition();
        return m_packet.get();
    }
    return nullptr;
}

void FrameReader::restart(bool fromKeyframe)
{
    m_decoder->flush();
    m_awaitsKeyframe = fromKeyframe;
    m_drained = false;
    m_lastPosition = -1;
}

/// Gives the decoder the stream's next packet, or the news that there is none.
void FrameReader::sendNextPacket()
{
    const AVPacket* packet = nextPacket();
    while (packet && m_awaitsKeyframe && !(packet->flags & AV_PKT_FLAG_KEY))
        packet = nextPacket();
    m_awaitsKeyframe = m_awaitsKeyframe && !packet;
    m_drained = !packet;
    m_decoder->send(packet);
}

/// Pictures so small that they begin in the container's same packet as the one before have no
/// position of their own: they get that one's.
void FrameReader::completePosition()
{
    if (m_packet->pos < 0)
        m_packet->pos = m_lastPosition;
    m_lastPosition = m_packet->pos;
    notePosition(*m_packet);
}

} // namespace engine
