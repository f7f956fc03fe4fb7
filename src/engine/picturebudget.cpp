// SPDX-License-Identifier: GPL-2.0-or-later
#include "picturebudget.h"

#include "deadline.h"
#include "enginelink/log.h"

#include <algorithm>

namespace engine {

using std::chrono::steady_clock;

PictureBudget::Work::Work(PictureBudget& budget)
    : m_budget(budget)
    , m_begin(steady_clock::now())
{}

PictureBudget::Work::~Work()
{
    const bool wasUsedUp = m_budget.isUsedUp();
    const steady_clock::duration spent = steady_clock::now() - m_begin;
    m_budget.m_left -= spent;
    if (m_isInVain)
        m_budget.m_leftInVain -= spent;
    if (!wasUsedUp && m_budget.isUsedUp())
        log("the pictures of a disc take too long, it gets no more");
}

std::chrono::milliseconds PictureBudget::limit() const
{
    const auto left = std::min<steady_clock::duration>({pictureLimit, m_left, m_leftInVain});
    return std::max(std::chrono::duration_cast<std::chrono::milliseconds>(left),
                    std::chrono::milliseconds(0));
}

} // namespace engine
