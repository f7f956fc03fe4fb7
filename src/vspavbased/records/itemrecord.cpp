// SPDX-License-Identifier: LGPL-2.1-or-later
#include "records/itemrecord.h"

#include "records/scrutiny.h"

#include <algorithm>

namespace engine {

namespace {

/// A DVD has 99 titles at most; who asks for one of them looks at all.
constexpr flatbuffers::uoffset_t mostMovies = 1000;

/// It goes back to an engine process as it came.
constexpr flatbuffers::uoffset_t largestReopening = 4 * 1024 * 1024;

/// Whether an engine can have said that.
class ItemCheck
{
public:
    bool passes(const wire::Item& item)
    {
        return m_scrutiny.passes(*item.kind()) && m_scrutiny.passes(*item.kind_name()) &&
               item.movies()->size() <= mostMovies &&
               m_scrutiny.passes<MovieRecord>(
                   *item.movies(),
                   [this](const wire::Movie& movie) { return m_scrutiny.passes(movie); }) &&
               (!item.facts() || m_scrutiny.passes(*item.facts())) &&
               (!item.reopening() || item.reopening()->size() <= largestReopening) &&
               (!item.dvd() || passes(*item.dvd()));
    }

private:
    using Info = AVBased::DVDTitleInfo;

    bool passes(const wire::Dvd& dvd)
    {
        return m_scrutiny.passes<AVBased::DVDTitleSetInfo>(
            *dvd.title_sets(), [this](const wire::DvdTitleSet& set) {
                return m_scrutiny.passes<Info>(
                    *set.titles(), [this](const wire::DvdTitle& title) { return passes(title); });
            });
    }

    bool passes(const wire::DvdTitle& title)
    {
        return m_scrutiny.passes(title.duration()) && m_scrutiny.passes(*title.chapter_starts()) &&
               title.subpictures()->size() <= Info::MaxSubpictures &&
               title.audio()->size() <= Info::MaxAudioTracks &&
               m_scrutiny.passes<AVBased::DVDSubpictureInfo>(
                   *title.subpictures(),
                   [this](const wire::Subpicture& stream) {
                       return m_scrutiny.passes(*stream.name());
                   }) &&
               m_scrutiny.passes<AVBased::DVDAudioInfo>(
                   *title.audio(), [this](const wire::AudioTrack& track) {
                       return m_scrutiny.passes(*track.codec()) &&
                              m_scrutiny.passes(*track.language()) &&
                              m_scrutiny.passes(*track.kind());
                   });
    }

    Scrutiny m_scrutiny;
};

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
    if (!described || !described->item() || !ItemCheck().passes(*described->item()))
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

bool ItemRecord::isProtected() const
{
    const auto* facts = told().facts();
    return facts && std::any_of(facts->begin(), facts->end(), [](const wire::Tag* fact) {
               return fact->key()->str() == "is_drm_encryption" && fact->value()->str() == "1";
           });
}

const AVBased::DVDTitleSetInfo* ItemRecord::titleSet(std::uint32_t index) const
{
    return index < m_titleSets.size() ? &m_titleSets[index] : nullptr;
}

} // namespace engine
