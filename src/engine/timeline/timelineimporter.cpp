// SPDX-License-Identifier: GPL-2.0-or-later
#include "timeline/timelineimporter.h"

#include "timeline/timelinefile.h"
#include "timeline/timelinesource.h"

namespace engine {

namespace {

/// Size, rate and shape are those of the first source that tells them.
MovieFacts describeTimeline(const Timeline& timeline)
{
    StreamFacts video;
    video.kind = AVBased::StreamKindVideo;
    video.id = 0;
    std::int64_t lengthMs = 0;
    for (const TimelineItem& item : timeline.items) {
        lengthMs += item.lengthMs();
        if (video.width > 0)
            continue;
        video.width = item.width;
        video.height = item.height;
        video.frameRate = item.frameRate;
        video.displayAspect = item.displayAspect;
    }
    video.duration = static_cast<double>(lengthMs) / 1000.0;
    MovieFacts movie;
    movie.format = "timeline";
    movie.streams.push_back(std::move(video));
    return movie;
}

} // namespace

Opening TimelineImporter::open(const std::string& path)
{
    if (auto timeline = readTimelineFile(path))
        return Opening::opened(new TimelineImporter(path, std::move(*timeline)));
    return Opening::refused();
}

TimelineImporter::TimelineImporter(const std::string& path, Timeline timeline)
    : m_path(path)
    , m_timeline(std::make_shared<const Timeline>(std::move(timeline)))
    , m_movie(describeTimeline(*m_timeline))
{}

const AVBased::AVImporterDescriptor* TimelineImporter::descriptor()
{
    static const AVBased::AVImporterDescriptor descriptor = {"timeline", "Timeline"};
    return &descriptor;
}

void* TimelineImporter::queryExtension(const char* /*name*/)
{
    return nullptr;
}

std::uint32_t TimelineImporter::movieCount()
{
    return 1;
}

const AVBased::AVMovieInfo* TimelineImporter::movieInfo(std::uint32_t index)
{
    return index == 0 ? m_movie.get() : nullptr;
}

AVBased::IAVSource* TimelineImporter::openSource(std::int32_t movieId, std::int32_t videoStreamId,
                                                 std::int32_t /*audioStreamId*/)
{
    return movieId == 0 && videoStreamId == 0 ? new TimelineSource(m_timeline) : nullptr;
}

void TimelineImporter::close() {}

void TimelineImporter::release()
{
    delete this;
}

} // namespace engine
