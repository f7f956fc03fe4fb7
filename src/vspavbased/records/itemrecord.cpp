// SPDX-License-Identifier: LGPL-2.1-or-later
#include "records/itemrecord.h"

#include <algorithm>

namespace engine {

namespace {

template <typename List, typename Check>
bool all(const List& list, Check check)
{
    return std::all_of(list->begin(), list->end(), check);
}

bool isSensible(const wire::DvdTitle& title)
{
    using Info = AVBased::DVDTitleInfo;
    return engine::isSensible(title.duration()) &&
           all(title.chapter_starts(), [](double start) { return engine::isSensible(start); }) &&
           title.subpictures()->size() <= Info::MaxSubpictures &&
           title.audio()->size() <= Info::MaxAudioTracks &&
           all(title.subpictures(),
               [](const wire::Subpicture* stream) {
                   return engine::isSensible(*stream->name());
               }) &&
           all(title.audio(), [](const wire::AudioTrack* track) {
               return engine::isSensible(*track->codec()) &&
                      engine::isSensible(*track->language()) && engine::isSensible(*track->kind());
           });
}

bool isSensible(const wire::Item& item)
{
    return engine::isSensible(*item.kind()) && engine::isSensible(*item.kind_name()) &&
           all(item.movies(),
               [](const wire::Movie* movie) { return engine::isSensible(*movie); }) &&
           (!item.dvd() || all(item.dvd()->title_sets(), [](const wire::DvdTitleSet* set) {
               return all(set->titles(),
                          [](const wire::DvdTitle* title) { return isSensible(*title); });
           }));
}

AVBased::DVDTitleInfo recordOf(const wire::DvdTitle& title)
{
    AVBased::DVDTitleInfo record{};
    record.duration = title.duration();
    record.chapterCount = title.chapter_starts()->size();
    record.chapterStarts = title.chapter_starts()->data();
    for (const wire::Subpicture* stream : *title.subpictures())
        record.subpictures[record.subpictureCount++] = {stream->name()->c_str(),
                                                        stream->stream_id()};
    for (const wire::AudioTrack* track : *title.audio()) {
        record.audio[record.audioCount++] = {track->codec()->c_str(), track->language()->c_str(),
                                             track->kind()->c_str(),  track->stream_id(),
                                             track->channels(),       track->sample_rate(),
                                             track->code_extension()};
    }
    return record;
}

} // namespace

std::shared_ptr<const ItemRecord> ItemRecord::make(const Item& item, wire::Letter letter)
{
    const auto* described = letter.as<wire::Described>();
    if (!described || !described->item() || !isSensible(*described->item()))
        return nullptr;
    return std::shared_ptr<const ItemRecord>(new ItemRecord(item, std::move(letter)));
}

ItemRecord::ItemRecord(const Item& item, wire::Letter letter)
    : m_item(item)
    , m_letter(std::move(letter))
    , m_descriptor({told().kind()->c_str(), told().kind_name()->c_str()})
{
    for (const wire::Movie* movie : *told().movies())
        m_movies.emplace_back(*movie);
    if (isDvd())
        makeTitleSets();
}

void ItemRecord::makeTitleSets()
{
    for (const wire::DvdTitleSet* set : *told().dvd()->title_sets()) {
        std::vector<AVBased::DVDTitleInfo>& titles = m_titles.emplace_back();
        for (const wire::DvdTitle* title : *set->titles())
            titles.push_back(recordOf(*title));
        AVBased::DVDTitleSetInfo record{};
        record.id = set->id();
        record.titleCount = static_cast<std::uint32_t>(titles.size());
        record.titles = titles.data();
        m_titleSets.push_back(record);
    }
}

const AVBased::AVMovieInfo* ItemRecord::movie(std::uint32_t index) const
{
    return index < m_movies.size() ? m_movies[index].get() : nullptr;
}

const wire::Movie* ItemRecord::movieWithId(std::int32_t id) const
{
    for (const wire::Movie* movie : *told().movies()) {
        if (movie->id() == id)
            return movie;
    }
    return nullptr;
}

const AVBased::DVDTitleSetInfo* ItemRecord::titleSet(std::uint32_t index) const
{
    return index < m_titleSets.size() ? &m_titleSets[index] : nullptr;
}

} // namespace engine
