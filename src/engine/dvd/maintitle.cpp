// SPDX-License-Identifier: GPL-2.0-or-later
#include "dvd/maintitle.h"

#include <algorithm>
#include <tuple>
#include <utility>
#include <vector>

namespace engine {

namespace {

/// A cell, and how often a title plays it.
struct Plays
{
    std::pair<int, int> cell; ///< its numbers
    Ticks duration = 0;       ///< of the cell
    int count = 1;
};

struct Candidate
{
    std::size_t place = 0;
    int titleSet = 0;
    std::vector<Plays> cells; ///< each once, by their numbers
    Ticks duration = 0;
    Ticks durationOnce = 0; ///< with each cell played only once

    /// What is longer comes first.
    auto rank() const { return std::make_tuple(-durationOnce, duration, place); }
};

Candidate makeCandidate(std::size_t place, int titleSet, const Title& title)
{
    Candidate candidate;
    candidate.place = place;
    candidate.titleSet = titleSet;
    candidate.duration = title.duration;
    std::vector<Plays> all;
    for (const Cell& cell : title.cells)
        all.push_back({{cell.vobId, cell.cellId}, cell.duration});
    std::stable_sort(all.begin(), all.end(),
                     [](const Plays& a, const Plays& b) { return a.cell < b.cell; });
    for (const Plays& each : all) {
        if (!candidate.cells.empty() && candidate.cells.back().cell == each.cell) {
            ++candidate.cells.back().count;
            continue;
        }
        candidate.cells.push_back(each);
        candidate.durationOnce += each.duration;
    }
    return candidate;
}

/// Whether the most of what `title` plays is `other`, several times over.
bool repeats(const Candidate& title, const Candidate& other)
{
    if (title.titleSet != other.titleSet)
        return false;
    Ticks repeated = 0;
    auto theirs = other.cells.begin();
    for (const Plays& plays : title.cells) {
        while (theirs != other.cells.end() && theirs->cell < plays.cell)
            ++theirs;
        const bool isCommon = theirs != other.cells.end() && theirs->cell == plays.cell;
        if (plays.count > 1 && isCommon)
            repeated += plays.count * plays.duration;
    }
    return repeated * 2 > title.duration;
}

} // namespace

std::optional<std::size_t> findMainTitle(const DvdDisc& disc)
{
    std::vector<Candidate> candidates;
    std::size_t place = 0;
    for (const DvdTitleSet& set : disc.titleSets) {
        for (const DvdTitle& title : set.titles) {
            if (title.facts.duration > 0)
                candidates.push_back(makeCandidate(place, set.number, title.facts));
            ++place;
        }
    }
    std::sort(candidates.begin(), candidates.end(),
              [](const Candidate& a, const Candidate& b) { return a.rank() < b.rank(); });
    for (const Candidate& title : candidates) {
        // It cannot give way to one that repeats it in turn, so one is always left.
        const bool givesWay =
            std::any_of(candidates.begin(), candidates.end(), [&title](const Candidate& other) {
                return &other != &title && repeats(title, other) && !repeats(other, title);
            });
        if (!givesWay)
            return title.place;
    }
    return candidates.empty() ? std::nullopt : std::optional(candidates.front().place);
}

} // namespace engine
