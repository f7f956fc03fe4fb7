// SPDX-License-Identifier: GPL-2.0-or-later
#include "nameorder.h"

#include "libraryrow.h"

#include <algorithm>

namespace {

const int unranked = -1;
const int removed = -2;

bool goesBefore(const LibraryRow* a, const LibraryRow* b)
{
    return a->compare(*b, NameColumn) < 0;
}

} // namespace

void NameOrder::add(std::vector<LibraryRow*> rows)
{
    for (LibraryRow* row : rows)
        row->nameRank = unranked;
    std::sort(rows.begin(), rows.end(), goesBefore);
    const auto middle = std::ptrdiff_t(m_rows.size());
    m_rows.insert(m_rows.end(), rows.begin(), rows.end());
    std::inplace_merge(m_rows.begin(), m_rows.begin() + middle, m_rows.end(), goesBefore);
    m_isRanked = false;
}

void NameOrder::remove(const std::vector<LibraryRow*>& rows)
{
    for (LibraryRow* row : rows)
        row->nameRank = removed;
    const auto isRemoved = [](const LibraryRow* row) { return row->nameRank == removed; };
    m_rows.erase(std::remove_if(m_rows.begin(), m_rows.end(), isRemoved), m_rows.end());
}

void NameOrder::rank()
{
    if (m_isRanked)
        return;
    std::vector<int> ranks;
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        const bool isSame = i > 0 && !goesBefore(m_rows[i - 1], m_rows[i]);
        ranks.push_back(isSame ? ranks.back() : int(i));
    }
    for (std::size_t i = 0; i < m_rows.size(); ++i)
        m_rows[i]->nameRank = ranks[i];
    m_isRanked = true;
}
