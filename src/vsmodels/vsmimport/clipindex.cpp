// SPDX-License-Identifier: LGPL-2.1-or-later
#include "clipindex.h"

#include "cbdfileclip.h"

#include <cmath>
#include <limits>

namespace Vesk {

namespace {

const int notFound = std::numeric_limits<int>::max();

/// The lowest value that may be fuzzily equal to `value`; a little lower, since the comparison
/// itself decides.
double fuzzyLow(double value)
{
    return value - std::fabs(value) * 2e-12;
}

bool hasRange(const CBDFileClip* clip, double timeStart, double timeEnd)
{
    return qFuzzyCompare(clip->timeStart(), timeStart) && qFuzzyCompare(clip->timeEnd(), timeEnd);
}

} // namespace

ClipIndex::ClipIndex()
    : m_indexed(0)
{}

CBDFileClip* ClipIndex::find(const QList<CBDFileClip*>& clips, double timeStart, double timeEnd)
{
    // Not a number equals nothing, and it would upset the order of the map.
    if (std::isnan(timeStart) || std::isnan(timeEnd))
        return 0;
    update(clips);
    int first = search(timeStart, timeEnd);
    if (first != notFound && !hasRange(clips.at(first), timeStart, timeEnd)) {
        clear(); // clips have changed places
        update(clips);
        first = search(timeStart, timeEnd);
    }
    return first == notFound ? 0 : clips.at(first);
}

void ClipIndex::clear()
{
    m_positions.clear();
    m_indexed = 0;
}

int ClipIndex::search(double timeStart, double timeEnd) const
{
    int first = notFound;
    Positions::const_iterator it = m_positions.lower_bound(
        Range(fuzzyLow(timeStart), -std::numeric_limits<double>::infinity()));
    while (it != m_positions.end()) {
        const double start = it->first.first;
        if (qFuzzyCompare(start, timeStart))
            first = qMin(first, firstWithStart(start, timeEnd));
        else if (start > timeStart)
            break;
        it = m_positions.upper_bound(Range(start, std::numeric_limits<double>::infinity()));
    }
    return first;
}

/// The first place of a clip that starts exactly at `start` and ends at `timeEnd`.
int ClipIndex::firstWithStart(double start, double timeEnd) const
{
    int first = notFound;
    Positions::const_iterator it = m_positions.lower_bound(Range(start, fuzzyLow(timeEnd)));
    for (; it != m_positions.end() && it->first.first == start; ++it) {
        if (qFuzzyCompare(it->first.second, timeEnd))
            first = qMin(first, it->second);
        else if (it->first.second > timeEnd)
            break;
    }
    return first;
}

void ClipIndex::update(const QList<CBDFileClip*>& clips)
{
    if (m_indexed > clips.count())
        clear();
    for (; m_indexed < clips.count(); ++m_indexed) {
        const CBDFileClip* clip = clips.at(m_indexed);
        const Range range(clip->timeStart(), clip->timeEnd());
        if (!std::isnan(range.first) && !std::isnan(range.second))
            m_positions.insert(std::make_pair(range, m_indexed));
    }
}

} // namespace Vesk
