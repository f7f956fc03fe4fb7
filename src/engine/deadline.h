// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <chrono>

namespace engine {

/// The time that one piece of work may take. Work asks expired(); once it has answered true, the
/// work counts as given up until restart().
class Deadline
{
public:
    explicit Deadline(std::chrono::milliseconds limit) { restart(limit); }

    void restart(std::chrono::milliseconds limit)
    {
        m_end = std::chrono::steady_clock::now() + limit;
        m_givenUp = false;
    }

    bool expired()
    {
        m_givenUp = m_givenUp || std::chrono::steady_clock::now() >= m_end;
        return m_givenUp;
    }

    void giveUp() { m_givenUp = true; }

    /// Whether expired() has answered true, or the work was given up for another reason.
    bool givenUp() const { return m_givenUp; }

private:
    std::chrono::steady_clock::time_point m_end;
    bool m_givenUp = false;
};

/// Opening an item and describing its streams. Generous, for slow drives; it only has to end.
constexpr std::chrono::milliseconds describeLimit{15000};

/// Seeking to a position and decoding the frames for one picture.
constexpr std::chrono::milliseconds pictureLimit{10000};

} // namespace engine
