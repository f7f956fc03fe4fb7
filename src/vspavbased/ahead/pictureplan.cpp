// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ahead/pictureplan.h"

#include <algorithm>
#include <limits>
#include <map>

namespace engine {

namespace {

/// Shorter titles and chapters are not shown.
constexpr double shortestSeconds = 2.0;

std::int32_t milliseconds(double seconds)
{
    constexpr double most = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::clamp(seconds * 1000.0, 0.0, most));
}

double durationOf(const AVBased::AVMovieInfo& movie)
{
    double longest = 0.0;
    for (std::uint32_t i = 0; i < movie.streamCount; ++i)
        longest = std::max(longest, movie.streams[i].duration);
    return longest;
}

const AVBased::AVStreamInfo* videoOf(const AVBased::AVMovieInfo& movie)
{
    for (std::uint32_t i = 0; i < movie.streamCount; ++i) {
        if (movie.streams[i].kind == AVBased::StreamKindVideo)
            return &movie.streams[i];
    }
    return nullptr;
}

void planTitle(const AVBased::DVDTitleInfo& title, const AVBased::AVMovieInfo& movie,
               std::vector<PlannedPicture>& plan)
{
    const AVBased::AVStreamInfo* video = videoOf(movie);
    if (title.duration < shortestSeconds || !video || title.chapterCount == 0)
        return;
    double start = title.chapterStarts[0];
    const double titleEnd = start + title.duration;
    for (std::uint32_t i = 0; i < title.chapterCount; ++i) {
        const bool isLast = i + 1 == title.chapterCount;
        const double end = isLast ? titleEnd : title.chapterStarts[i + 1];
        if (!(end - start < shortestSeconds))
            plan.push_back({movie.id, video->id, milliseconds(start + (end - start) * 0.5)});
        start = end;
    }
}

std::vector<PlannedPicture> planDvd(const ItemRecord& item)
{
    std::vector<PlannedPicture> plan;
    std::uint32_t index = 0; // of the movie: titles of unusable sets count, too
    for (std::uint32_t i = 0; i < item.titleSetCount(); ++i) {
        const AVBased::DVDTitleSetInfo& set = *item.titleSet(i);
        const bool isUsable = set.id != AVBased::DVDTitleSetInfo::UnusableId;
        for (std::uint32_t j = 0; j < set.titleCount; ++j, ++index) {
            const AVBased::AVMovieInfo* movie = item.movie(index);
            if (isUsable && movie)
                planTitle(set.titles[j], *movie, plan);
        }
    }
    return plan;
}

/// Where the clips of one stream file begin, and how long the last of those lasts.
using Clips = std::map<double, double>;

void addClips(const DiscRecord& disc, const wire::Title& title, std::vector<Clips>& clips)
{
    const AVBased::BDPlayInfo& record = *disc.title(title.name()->c_str());
    const auto add = [&](const AVBased::BDPlayInfo& played, std::uint32_t index) {
        const double start = played.inTimes[index];
        clips[title.clip_files()->Get(index)][start] = played.outTimes[index] - start;
    };
    for (std::uint32_t i = 0; i < record.clipCount; ++i)
        add(record, i);
    for (const AVBased::BDPlayInfo& chapter : *disc.chapters(title.name()->c_str())) {
        for (std::uint32_t i = 0; i < std::min(chapter.clipCount, record.clipCount); ++i)
            add(chapter, i);
    }
}

} // namespace

std::vector<PlannedPicture> planPictures(const ItemRecord& item)
{
    if (item.isDvd())
        return planDvd(item);
    const AVBased::AVMovieInfo* movie = item.movie(0);
    const AVBased::AVStreamInfo* video = movie ? videoOf(*movie) : nullptr;
    if (!video)
        return {};
    return {
        {movie->id, video->id,
         static_cast<std::int32_t>(std::min(durationOf(*movie) * 1000.0 / 100.0, 2147483647.0))}};
}

std::vector<PlannedPicture> planPictures(const DiscRecord& disc)
{
    std::vector<Clips> clips(disc.fileNames().size());
    for (const wire::Title* title : *disc.told().titles())
        addClips(disc, *title, clips);
    std::vector<PlannedPicture> plan;
    double offset = 0.0; // of the file on the timeline, seconds
    for (std::size_t i = 0; i < clips.size(); ++i) {
        for (const auto& [start, length] : clips[i])
            plan.push_back({0, 0, milliseconds(offset + start + length * 0.1)});
        const AVBased::AVMovieInfo* movie = disc.file(disc.fileNames()[i]);
        if (!clips[i].empty() && movie)
            offset += durationOf(*movie);
    }
    return plan;
}

} // namespace engine
