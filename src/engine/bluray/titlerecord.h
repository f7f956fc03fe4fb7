// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "bluray/bluraydisc.h"
#include "enginelink/bdlist.h"
#include "vspavbased/bdrecords.h"

#include <cstddef>
#include <forward_list>
#include <vector>

namespace engine {

/// A title as the boundary's records, with all that they point to.
///
/// The module takes the stream file of a chapter's clip j from the title's clip j. So the entry of
/// a chapter that ends in clip m has the clips 0 to m, whichever it begins in. Those that it plays,
/// in full or in part, have the times that it plays. Those before have the title's own times: that
/// way the module finds the clip that the title has made already, whereas an empty range would
/// become one more clip of that file, which plays nothing and yet displaces the title's where one
/// of those that begin at the same time is chosen for a picture.
class TitleRecord
{
public:
    /// `fileNames` are the names of the disc's stream files as the module knows them; they live
    /// longer than this. Chapters may have `clipBudget` clips in all, of which those made are taken
    /// away; the chapters that it is not enough for have no clips.
    TitleRecord(const DiscTitle& title, const std::vector<const char*>& fileNames,
                std::size_t& clipBudget);

    const AVBased::BDPlayInfo* title() const { return &m_title; }
    const std::vector<AVBased::BDPlayInfo>& chapters() const { return m_chapters; }

    TitleRecord(const TitleRecord&) = delete;
    TitleRecord& operator=(const TitleRecord&) = delete;

private:
    AVBased::BDPlayInfo chapterRecord(const DiscTitle& title, std::int64_t start, std::int64_t end,
                                      std::size_t& clipBudget);
    std::size_t clipAt(std::int64_t titleTime) const;
    const double* replaced(const std::vector<double>& times, std::size_t count, std::size_t index,
                           double value);

    std::vector<std::int64_t> m_starts; ///< of each clip in the title, in ticks
    std::vector<double> m_inTimes;
    std::vector<double> m_outTimes;
    BdList m_clips;
    AVBased::BDPlayInfo m_title;
    std::vector<AVBased::BDPlayInfo> m_chapters;
    std::forward_list<std::vector<double>> m_chapterTimes; ///< those that are not the title's
};

} // namespace engine
