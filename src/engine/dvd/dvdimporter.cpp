// SPDX-License-Identifier: GPL-2.0-or-later
#include "dvd/dvdimporter.h"

#include "deadline.h"
#include "dvd/maintitle.h"
#include "dvd/scrambling.h"
#include "enginelink/log.h"
#include "files/files.h"
#include "refusal.h"
#include "text.h"

#include <cstring>

namespace engine {

Opening DvdImporter::open(const std::string& path, SourceOpener openTitle)
{
    const auto location = locateDvd(path);
    if (!location) {
        if (files().kindOf(path) == FileKind::folder)
            noteRefusal(AVBased::RefusedNoDisc);
        return Opening::notMine();
    }
    // Of an image without a DVD nobody else is asked: libav finds sound in any kind of bytes.
    const std::unique_ptr<VideoTs> videoTs = VideoTs::open(*location);
    const auto disc = videoTs ? readDvd(*videoTs, *location) : std::nullopt;
    if (!disc)
        noteRefusal(videoTs ? AVBased::RefusedDamaged : AVBased::RefusedNoDisc);
    return disc ? Opening::opened(new DvdImporter(*location, *disc, openTitle))
                : Opening::refused();
}

DvdImporter::DvdImporter(const DvdLocation& location, const DvdDisc& disc, SourceOpener openTitle)
    : m_location(location)
    , m_openTitle(openTitle)
    , m_mainMovie(findMainTitle(disc))
{
    for (const DvdTitleSet& set : disc.titleSets) {
        m_titleSets.emplace_back(set);
        for (const DvdTitle& title : set.titles)
            addMovie(disc, set, title);
    }
}

void DvdImporter::addMovie(const DvdDisc& disc, const DvdTitleSet& set, const DvdTitle& title)
{
    MovieFacts facts;
    if (set.isUsable)
        facts = describeTitleMovie(set.video, title.facts);
    facts.id = static_cast<int>(m_movies.size());
    // Whoever wants the disc's name takes that of its first movie and cuts off three characters.
    facts.name = toAscii(disc.name) + " _" + std::to_string(m_movies.size() + 1);
    m_movies.emplace_back(facts);
    m_titles.push_back(set.isUsable ? std::optional(TitleReference{set.number, title.number})
                                    : std::nullopt);
}

const AVBased::AVImporterDescriptor* DvdImporter::descriptor()
{
    static const AVBased::AVImporterDescriptor descriptor = {"dvd", "DVD"};
    return &descriptor;
}

void* DvdImporter::queryExtension(const char* name)
{
    if (name && std::strcmp(name, "IDVDInfo") == 0)
        return static_cast<AVBased::IDVDInfo*>(this);
    return nullptr;
}

std::uint32_t DvdImporter::movieCount()
{
    return static_cast<std::uint32_t>(m_movies.size());
}

const AVBased::AVMovieInfo* DvdImporter::movieInfo(std::uint32_t index)
{
    return index < m_movies.size() ? m_movies[index].get() : nullptr;
}

AVBased::IAVSource* DvdImporter::openSource(std::int32_t movieId, std::int32_t videoStreamId,
                                            std::int32_t /*audioStreamId*/)
{
    const auto index = static_cast<std::size_t>(movieId);
    if (movieId < 0 || index >= m_titles.size() || !m_titles[index] ||
        videoStreamId != engine::videoStreamId)
        return nullptr;
    if (!m_openTitle || m_budget->isUsedUp())
        return nullptr;
    PictureBudget::Work work(*m_budget);
    const TitleReference& reference = *m_titles[index];
    const std::string name = m_location.path + ", title set " + std::to_string(reference.titleSet);
    const std::unique_ptr<VideoTs> files = VideoTs::open(m_location);
    const ByteSourcePtr video = files ? files->openVideo(reference.titleSet) : nullptr;
    if (!video) {
        log(name + ": its video is missing");
        return nullptr;
    }
    const CurrentSet& set = makeCurrent(*files, reference.titleSet, video);
    const auto title = static_cast<std::size_t>(reference.number - 1);
    if (set.isScrambled || !set.tables || title >= set.tables->titles.size()) {
        log(name + (set.isScrambled ? ": scrambled" : ": its tables are not what they were"));
        return nullptr;
    }
    AVBased::IAVSource* source =
        m_openTitle(*set.tables, set.tables->titles[title], video, name, m_budget);
    if (source)
        work.succeeded();
    return source;
}

/// A set's tables may be large, and a set has up to 99 titles.
const DvdImporter::CurrentSet& DvdImporter::makeCurrent(const VideoTs& files, int titleSet,
                                                        const ByteSourcePtr& video)
{
    if (!m_current || m_current->number != titleSet)
        m_current = CurrentSet{titleSet, readTitleSet(files, titleSet), isScrambled(*video)};
    return *m_current;
}

/// Nothing is open while the importer waits.
void DvdImporter::close()
{
    m_current.reset();
}

void DvdImporter::release()
{
    delete this;
}

std::uint32_t DvdImporter::titleSetCount()
{
    return static_cast<std::uint32_t>(m_titleSets.size());
}

const AVBased::DVDTitleSetInfo* DvdImporter::titleSet(std::uint32_t index)
{
    return index < m_titleSets.size() ? m_titleSets[index].get() : nullptr;
}

bool DvdImporter::isDiscScrambled(const char* utf8Path)
{
    const auto location = locateDvd(utf8Path ? utf8Path : "");
    const std::unique_ptr<VideoTs> files = location ? VideoTs::open(*location) : nullptr;
    Deadline deadline(describeLimit);
    for (int i = 1; files && i <= mostTitleSets && !deadline.expired(); ++i) {
        const ByteSourcePtr video = files->openVideo(i);
        if (video && isScrambled(*video))
            return true;
    }
    return false;
}

bool DvdImporter::isMainTitle(std::int32_t movieId)
{
    return m_mainMovie && movieId >= 0 && static_cast<std::size_t>(movieId) == *m_mainMovie;
}

} // namespace engine
