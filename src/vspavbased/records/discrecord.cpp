// SPDX-License-Identifier: LGPL-2.1-or-later
#include "records/discrecord.h"

#include "records/scrutiny.h"

#include <algorithm>
#include <set>
#include <string>
#include <string_view>

namespace engine {

namespace {

/// Files and titles have numbers of five digits; two kinds of files may share one.
constexpr flatbuffers::uoffset_t mostNames = 200000;
constexpr flatbuffers::uoffset_t longestName = 8192;

/// Of all chapters together: each may become a picture.
constexpr std::uint64_t mostChapterClips = 1000000;

/// Looks a disc's numbers through: each index in it exists, and no time is nonsense.
class DiscCheck
{
public:
    /// `path` is where the disc lies.
    DiscCheck(const wire::Disc& disc, const std::string& path)
        : m_disc(disc)
        , m_folder(path.substr(0, path.find_last_not_of('/') + 1) + '/')
    {}

    bool passes()
    {
        return m_scrutiny.passes(*m_disc.name()) && m_disc.files()->size() <= mostNames &&
               m_disc.titles()->size() <= mostNames &&
               m_scrutiny.passes<MovieRecord>(
                   *m_disc.files(),
                   [this](const wire::StreamFile& file) { return passes(file); }) &&
               m_scrutiny.passes<wire::ClipTimes>(*m_disc.times(),
                                                  [this](const wire::ClipTimes& times) {
                                                      return m_scrutiny.passes(*times.seconds());
                                                  }) &&
               m_scrutiny.passes<AVBased::BDPlayInfo>(
                   *m_disc.titles(), [this](const wire::Title& title) { return passes(title); }) &&
               namesDiffer(*m_disc.files()) && namesDiffer(*m_disc.titles());
    }

private:
    /// They are looked up by name: one that came twice would be given out for another.
    template <typename Part>
    static bool namesDiffer(const flatbuffers::Vector<flatbuffers::Offset<Part>>& parts)
    {
        std::set<std::string_view> names; // no hashes, which could be made to be the same
        return std::all_of(parts.begin(), parts.end(), [&names](const Part* part) {
            return part->name()->size() <= longestName &&
                   names.insert(part->name()->c_str()).second;
        });
    }

    bool passes(const wire::StreamFile& file)
    {
        return isOfDisc(file.name()->str()) && m_scrutiny.passes(*file.name()) &&
               (!file.movie() || m_scrutiny.passes(*file.movie()));
    }

    /// Files are named by paths, and what a disc names will be opened.
    bool isOfDisc(const std::string& file) const
    {
        return file.size() <= longestName && file.compare(0, m_folder.size(), m_folder) == 0 &&
               (file + '/').find("/../") == std::string::npos;
    }

    /// Whether there are times of `clips` clips at `index`.
    bool hasTimes(std::uint32_t index, std::uint32_t clips) const
    {
        return index < m_disc.times()->size() &&
               clips <= m_disc.times()->Get(index)->seconds()->size();
    }

    bool passes(const wire::Title& title)
    {
        const std::uint32_t clips = title.clip_files()->size();
        return m_scrutiny.passes(*title.name()) && m_scrutiny.passes(title.duration()) &&
               m_scrutiny.passes(title.time_stamp()) && hasTimes(title.in_times(), clips) &&
               hasTimes(title.out_times(), clips) && m_scrutiny.hasRoom(clips, 2 * sizeof(void*)) &&
               std::all_of(title.clip_files()->begin(), title.clip_files()->end(),
                           [this](std::uint32_t file) { return file < m_disc.files()->size(); }) &&
               m_scrutiny.passes<AVBased::BDPlayInfo>(
                   *title.chapters(),
                   [this](const wire::Chapter& chapter) { return passes(chapter); });
    }

    bool passes(const wire::Chapter& chapter)
    {
        m_chapterClips += chapter.clips();
        return m_chapterClips <= mostChapterClips &&
               m_scrutiny.hasRoom(chapter.clips(), 2 * sizeof(double)) &&
               m_scrutiny.passes(chapter.duration()) && m_scrutiny.passes(chapter.time_stamp()) &&
               hasTimes(chapter.in_times(), chapter.clips()) &&
               hasTimes(chapter.out_times(), chapter.clips());
    }

    const wire::Disc& m_disc;
    const std::string m_folder; ///< with a separator behind it
    std::uint64_t m_chapterClips = 0;
    Scrutiny m_scrutiny;
};

} // namespace

std::shared_ptr<const DiscRecord> DiscRecord::make(const std::string& path, wire::Letter letter)
{
    const auto* read = letter.as<wire::DiscRead>();
    if (!read || !read->disc() || !DiscCheck(*read->disc(), path).passes())
        return nullptr;
    return std::shared_ptr<const DiscRecord>(new DiscRecord(std::move(letter)));
}

DiscRecord::DiscRecord(wire::Letter letter)
    : m_letter(std::move(letter))
    , m_disc()
{
    m_disc.name = told().name()->c_str();
    m_disc.scrambled = told().is_scrambled() ? 1 : 0;
    for (const wire::StreamFile* file : *told().files()) {
        m_fileNames.push_back(file->name()->c_str());
        m_files.emplace(file->name()->c_str(),
                        file->movie() ? std::make_unique<MovieRecord>(*file->movie()) : nullptr);
    }
    for (const wire::Title* title : *told().titles()) {
        m_titleNames.push_back(title->name()->c_str());
        m_titles.emplace(title->name()->c_str(), makeTitle(*title));
    }
}

DiscRecord::Title DiscRecord::makeTitle(const wire::Title& title) const
{
    std::vector<const char*> clips;
    for (const std::uint32_t file : *title.clip_files())
        clips.push_back(m_fileNames[file]);
    Title made{};
    made.clips = std::make_unique<BdList>(clips);
    made.record.clipCount = title.clip_files()->size();
    made.record.clips = made.clips.get();
    made.record.inTimes = times(title.in_times());
    made.record.outTimes = times(title.out_times());
    made.record.timeStamp = title.time_stamp();
    made.record.duration = title.duration();
    for (const wire::Chapter* chapter : *title.chapters()) {
        AVBased::BDPlayInfo record{};
        record.clipCount = chapter->clips();
        record.inTimes = times(chapter->in_times());
        record.outTimes = times(chapter->out_times());
        record.timeStamp = chapter->time_stamp();
        record.duration = chapter->duration();
        made.chapters.push_back(record);
    }
    return made;
}

const double* DiscRecord::times(std::uint32_t index) const
{
    return told().times()->Get(index)->seconds()->data();
}

const DiscRecord::Title* DiscRecord::findTitle(const char* name) const
{
    const auto found = name ? m_titles.find(name) : m_titles.end();
    return found == m_titles.end() ? nullptr : &found->second;
}

const AVBased::BDPlayInfo* DiscRecord::title(const char* name) const
{
    const Title* found = findTitle(name);
    return found ? &found->record : nullptr;
}

const std::vector<AVBased::BDPlayInfo>* DiscRecord::chapters(const char* title) const
{
    const Title* found = findTitle(title);
    return found ? &found->chapters : nullptr;
}

const AVBased::AVMovieInfo* DiscRecord::file(const char* name) const
{
    const auto found = name ? m_files.find(name) : m_files.end();
    return found == m_files.end() || !found->second ? nullptr : found->second->get();
}

} // namespace engine
