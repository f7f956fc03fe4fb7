// SPDX-License-Identifier: GPL-2.0-or-later
#include "dvd/maintitle.h"

#include <algorithm>
#include <map>
#include <tuple>

namespace engine {

namespace {

/// How often a title plays each cell.
struct Plays
{
    Ticks duration = 0; ///< of the cell
    int count = 0;
};
using CellPlays = std::map<std::pair<int, int>, Plays>;

struct Candidate
{
    std::size_t place = 0;
    int titleSet = 0;
    CellPlays cells;
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
    for (const Cell& cell : title.cells) {
        Plays& plays = candidate.cells[{cell.vobId, cell.cellId}];
        if (plays.count++ == 0)
            candidate.durationOnce += cell.duration;
        plays.duration = cell.duration;
    }
    return candidate;
}

/// Whether the most of what `title` plays is `other`, several times over.
bool repeats(const Candidate& title, const Candidate& other)
{
    if (title.titleSet != other.titleSet)
        return false;
    Ticks repeated = 0;
    for (const auto& [cell, plays] : title.cells) {
        if (plays.count > 1 && other.cells.count(cell) > 0)
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
