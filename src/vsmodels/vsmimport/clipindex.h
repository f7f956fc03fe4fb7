// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <QtCore/QList>

#include <map>
#include <utility>

namespace Vesk {

class CBDFileClip;

/// Finds clips by their time range without walking the whole list: discs made to confuse players
/// hold tens of thousands of playlist entries over a handful of files.
///
/// Two times count as equal as in qFuzzyCompare().
class ClipIndex
{
public:
    ClipIndex();

    /// The first clip of `clips` with that range, or null. Clips that joined the list since the
    /// last call are indexed first.
    CBDFileClip* find(const QList<CBDFileClip*>& clips, double timeStart, double timeEnd);

    /// To be called when a clip's times have changed.
    void clear();

private:
    typedef std::pair<double, double> Range;
    typedef std::map<Range, int> Positions; ///< first place in the list of each exact range

    int search(double timeStart, double timeEnd) const;
    void update(const QList<CBDFileClip*>& clips);
    int firstWithStart(double start, double timeEnd) const;

    Positions m_positions;
    int m_indexed;
};

} // namespace Vesk
