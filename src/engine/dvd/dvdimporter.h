// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "dvd/titlerecords.h"
#include "dvd/videomanager.h"
#include "dvd/videots.h"
#include "opening.h"
#include "picturebudget.h"
#include "vspavbased/iavimporter.h"
#include "vspavbased/idvdinfo.h"

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace engine {

/// A DVD: its movies are the titles of all title sets in order, and their ids count them from 0.
/// Between description and sources nothing of the disc is kept open, and of its tables only the
/// records. The first source of a title set reads the set's tables anew, and they are kept until
/// that of another set or close().
class DvdImporter final : public AVBased::IAVImporter, private AVBased::IDVDInfo
{
public:
    /// Makes a source of a title; DvdSource::open() where there is a decoder.
    using SourceOpener = AVBased::IAVSource* (*)(const TitleSet& set, const Title& title,
                                                 const ByteSourcePtr& video,
                                                 const std::string& name,
                                                 std::shared_ptr<PictureBudget> budget);

    /// `openTitle` may be null: then the importer has no sources.
    static Opening open(const std::string& path, SourceOpener openTitle);

    const AVBased::AVImporterDescriptor* descriptor() override;
    void* queryExtension(const char* name) override;
    std::uint32_t movieCount() override;
    const AVBased::AVMovieInfo* movieInfo(std::uint32_t index) override;
    AVBased::IAVSource* openSource(std::int32_t movieId, std::int32_t videoStreamId,
                                   std::int32_t audioStreamId) override;
    void close() override;
    void release() override;

private:
    DvdImporter(const DvdLocation& location, const DvdDisc& disc, SourceOpener openTitle);
    ~DvdImporter() = default;

    std::uint32_t titleSetCount() override;
    const AVBased::DVDTitleSetInfo* titleSet(std::uint32_t index) override;
    bool isDiscScrambled(const char* utf8Path) override;
    bool isMainTitle(std::int32_t movieId) override;

    /// A title set of which pictures are taken.
    struct CurrentSet
    {
        int number;
        std::optional<TitleSet> tables; ///< nothing when they cannot be read any more
        bool isScrambled;
    };

    void addMovie(const DvdDisc& disc, const DvdTitleSet& set, const DvdTitle& title);
    const CurrentSet& makeCurrent(const VideoTs& files, int titleSet, const ByteSourcePtr& video);

    DvdLocation m_location;
    SourceOpener m_openTitle;
    std::deque<TitleSetRecord> m_titleSets;
    std::deque<MovieRecord> m_movies;
    std::vector<std::optional<TitleReference>> m_titles; ///< by movie; none for what has no picture
    std::optional<std::size_t> m_mainMovie;
    std::optional<CurrentSet> m_current;
    std::shared_ptr<PictureBudget> m_budget = std::make_shared<PictureBudget>();
};

} // namespace engine
