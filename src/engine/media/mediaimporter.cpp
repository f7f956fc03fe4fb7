// SPDX-License-Identifier: GPL-2.0-or-later
#include "media/mediaimporter.h"

#include "media/demuxer.h"
#include "media/framereader.h"
#include "media/mp4index.h"
#include "media/mp4protection.h"
#include "media/protection.h"
#include "media/streamtimes.h"
#include "refusal.h"

#include <algorithm>
#include <cstring>

namespace engine {

namespace {

bool hasParameters(const AVStream& stream)
{
    const AVCodecParameters& parameters = *stream.codecpar;
    switch (parameters.codec_type) {
    case AVMEDIA_TYPE_VIDEO:
        return parameters.width > 0 && parameters.height > 0;
    case AVMEDIA_TYPE_AUDIO:
        return parameters.sample_rate > 0 && parameters.ch_layout.nb_channels > 0;
    default:
        return false;
    }
}

/// Any file has something in it that looks like the format of its suffix. Where libav was hardly
/// sure of the format, it is believed when it also found out how to play a stream.
bool isMedia(const AVFormatContext& context)
{
    if (context.nb_streams == 0)
        return false;
    if (context.probe_score > AVPROBE_SCORE_RETRY)
        return true;
    for (unsigned i = 0; i < context.nb_streams; ++i) {
        if (hasParameters(*context.streams[i]))
            return true;
    }
    return false;
}

MediaSource::Span spanOf(const AVFormatContext& context)
{
    MediaSource::Span span;
    if (context.start_time != AV_NOPTS_VALUE)
        span.start = context.start_time;
    span.duration = durationOf(context);
    return span;
}

} // namespace

Opening MediaImporter::open(const std::string& path)
{
    Deadline deadline(describeLimit);
    auto demuxer = Demuxer::openFile(path);
    if (!demuxer) {
        if (mp4DeclaresProtection(path, deadline))
            noteRefusal(AVBased::RefusedProtected);
        else if (mp4LacksIndex(path, deadline))
            noteRefusal(AVBased::RefusedNoIndex);
        return Opening::notMine();
    }
    if (!demuxer->findStreamInfo() || !isMedia(*demuxer->context())) {
        noteRefusal(demuxer->refusal());
        return Opening::notMine();
    }
    return Opening::opened(new MediaImporter(path, *demuxer->context(), deadline));
}

MediaImporter::MediaImporter(const std::string& path, AVFormatContext& context, Deadline& deadline)
    : m_path(path)
    , m_movie(describeMovie(context))
    , m_reopening({context.iformat, spanOf(context),
                   std::make_shared<std::vector<VideoTrack>>(videoTracks(context))})
    , m_isProtected(isProtected(context, path, deadline))
{}

MediaImporter::MediaImporter(const std::string& path, Reopening reopening)
    : m_path(path)
    , m_movie(MovieFacts())
    , m_reopening(std::move(reopening))
    , m_isProtected(false)
{}

MediaImporter* MediaImporter::reopen(const std::string& path, const Reopening& reopening)
{
    return new MediaImporter(path, reopening);
}

const AVBased::AVImporterDescriptor* MediaImporter::descriptor()
{
    static const AVBased::AVImporterDescriptor descriptor = {"media", "Media file"};
    return &descriptor;
}

void* MediaImporter::queryExtension(const char* name)
{
    if (name && std::strcmp(name, "IMovieInfoExt") == 0)
        return static_cast<AVBased::IMovieInfoExt*>(this);
    return nullptr;
}

std::uint32_t MediaImporter::movieCount()
{
    return 1;
}

const AVBased::AVMovieInfo* MediaImporter::movieInfo(std::uint32_t index)
{
    return index == 0 ? m_movie.get() : nullptr;
}

AVBased::IAVSource* MediaImporter::openSource(std::int32_t movieId, std::int32_t videoStreamId,
                                              std::int32_t /*audioStreamId*/)
{
    if (movieId != 0)
        return nullptr;
    for (const VideoTrack& track : *m_reopening.tracks) {
        if (track.streamIndex != videoStreamId)
            continue;
        const std::shared_ptr<const VideoTrack> shared(m_reopening.tracks, &track);
        return MediaSource::open(
            [path = m_path, format = m_reopening.format, shared] {
                return FrameReader::open(Demuxer::openFile(path, format), *shared);
            },
            track, m_reopening.span);
    }
    return nullptr;
}

/// Nothing is open while the importer waits.
void MediaImporter::close() {}

void MediaImporter::release()
{
    delete this;
}

const char* MediaImporter::value(const char* key)
{
    if (!key || std::strcmp(key, "is_drm_encryption") != 0)
        return nullptr;
    return m_isProtected ? "1" : "0";
}

} // namespace engine
