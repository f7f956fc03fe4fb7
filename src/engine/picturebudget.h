// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <chrono>

namespace engine {

/// The time that all pictures of one disc may take together. Discs have thousands of places of
/// which a picture is wanted; one on which each takes as long as a picture may must end
/// nevertheless. Used on one thread at a time.
class PictureBudget
{
public:
    /// One piece of work on a picture, as long as it lives. It counts as done in vain unless
    /// succeeded() is called.
    class Work
    {
    public:
        explicit Work(PictureBudget& budget);
        ~Work();

        void succeeded() { m_isInVain = false; }

        Work(const Work&) = delete;
        Work& operator=(const Work&) = delete;

    private:
        PictureBudget& m_budget;
        std::chrono::steady_clock::time_point m_begin;
        bool m_isInVain = true;
    };

    /// What the next piece of work may take; 0 when the budget is used up.
    std::chrono::milliseconds limit() const;
    bool isUsedUp() const { return limit().count() == 0; }

private:
    // Generous for slow drives, where there are pictures.
    std::chrono::steady_clock::duration m_left{std::chrono::minutes(5)};
    std::chrono::steady_clock::duration m_leftInVain{std::chrono::seconds(6)};
};

} // namespace engine
