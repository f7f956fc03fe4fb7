// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "dvd/dvddisc.h"
#include "moviefacts.h"
#include "vspavbased/dvdrecords.h"

#include <deque>
#include <vector>

namespace engine {

/// The title's movie: its streams as the disc's tables list them, the video first.
MovieFacts describeTitleMovie(const VideoAttributes& video, const Title& title);

/// A title set as the boundary's record, with all that it points to.
class TitleSetRecord
{
public:
    explicit TitleSetRecord(const DvdTitleSet& set);

    const AVBased::DVDTitleSetInfo* get() const { return &m_record; }

    TitleSetRecord(const TitleSetRecord&) = delete;
    TitleSetRecord& operator=(const TitleSetRecord&) = delete;

private:
    void addTitle(const Title& title);

    std::deque<std::string> m_languages;
    std::deque<std::vector<double>> m_chapterStarts;
    std::vector<AVBased::DVDTitleInfo> m_titles;
    AVBased::DVDTitleSetInfo m_record;
};

} // namespace engine
