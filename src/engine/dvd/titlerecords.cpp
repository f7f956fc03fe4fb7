// SPDX-License-Identifier: GPL-2.0-or-later
#include "dvd/titlerecords.h"

namespace engine {

namespace {

using AVBased::DVDTitleInfo;
static_assert(mostAudioStreams == DVDTitleInfo::MaxAudioTracks);
static_assert(mostSubpictureStreams == DVDTitleInfo::MaxSubpictures);

StreamFacts describeVideo(const VideoAttributes& video)
{
    StreamFacts facts;
    facts.kind = AVBased::StreamKindVideo;
    facts.id = videoStreamId;
    facts.codec = video.isMpeg1 ? "mpeg1video" : "mpeg2video";
    facts.fourcc = video.isMpeg1 ? "mpg1" : "mpg2";
    facts.width = video.width;
    facts.height = video.height;
    facts.frameRate = video.frameRate();
    facts.displayAspect = video.displayAspect;
    return facts;
}

StreamFacts describeAudio(const AudioTrack& track)
{
    StreamFacts facts;
    facts.kind = AVBased::StreamKindAudio;
    facts.id = track.streamId;
    facts.codec = track.codec;
    facts.language = track.language;
    facts.sampleRate = track.sampleRate;
    facts.channels = track.channels;
    return facts;
}

StreamFacts describeSubpicture(const SubpictureTrack& track)
{
    StreamFacts facts;
    facts.kind = AVBased::StreamKindSubtitle;
    facts.id = track.streamId;
    facts.codec = "dvd_subtitle";
    facts.language = track.language;
    return facts;
}

} // namespace

MovieFacts describeTitleMovie(const VideoAttributes& video, const Title& title)
{
    MovieFacts facts;
    facts.format = "dvd";
    facts.streams.push_back(describeVideo(video));
    for (const AudioTrack& track : title.audio)
        facts.streams.push_back(describeAudio(track));
    for (const SubpictureTrack& track : title.subpictures)
        facts.streams.push_back(describeSubpicture(track));
    for (StreamFacts& stream : facts.streams)
        stream.duration = inSeconds(title.duration);
    return facts;
}

TitleSetRecord::TitleSetRecord(const DvdTitleSet& set)
    : m_record()
{
    for (const DvdTitle& title : set.titles)
        addTitle(title.facts);
    m_record.id = set.isUsable ? set.number : AVBased::DVDTitleSetInfo::UnusableId;
    m_record.titleCount = static_cast<std::uint32_t>(m_titles.size());
    m_record.titles = m_titles.data();
}

void TitleSetRecord::addTitle(const Title& title)
{
    const auto keep = [this](const std::string& language) {
        return m_languages.emplace_back(language).c_str();
    };
    DVDTitleInfo record{};
    record.duration = inSeconds(title.duration);
    std::vector<double>& starts = m_chapterStarts.emplace_back();
    for (const Ticks start : title.chapterStarts)
        starts.push_back(inSeconds(start));
    record.chapterCount = static_cast<std::uint32_t>(starts.size());
    record.chapterStarts = starts.data();
    for (const SubpictureTrack& track : title.subpictures) {
        AVBased::DVDSubpictureInfo& entry = record.subpictures[record.subpictureCount++];
        entry.name = keep(track.language);
        entry.streamId = static_cast<std::uint32_t>(track.streamId);
    }
    for (const AudioTrack& track : title.audio) {
        AVBased::DVDAudioInfo& entry = record.audio[record.audioCount++];
        entry.codec = track.codec;
        entry.language = keep(track.language);
        entry.kind = track.kind();
        entry.streamId = static_cast<std::uint32_t>(track.streamId);
        entry.channels = static_cast<std::uint32_t>(track.channels);
        entry.sampleRate = static_cast<std::uint32_t>(track.sampleRate);
        entry.codeExtension = static_cast<std::uint32_t>(track.codeExtension);
    }
    m_titles.push_back(record);
}

} // namespace engine
