// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <mutex>

namespace Vesk {

/// Lets an object's signals out from another thread until the object's destruction begins.
///
/// close() returns once no emission is on its way any more, so that no receiver hears of an object
/// that is going. Emissions may nest.
class SignalGate
{
public:
    SignalGate()
        : m_open(true)
    {}

    /// Runs `emission` while the gate is kept open; false, without running it, when it is closed.
    template <typename Emission>
    bool pass(Emission emission)
    {
        std::lock_guard<std::recursive_mutex> lock(m_mutex);
        if (m_open)
            emission();
        return m_open;
    }

    bool isOpen()
    {
        std::lock_guard<std::recursive_mutex> lock(m_mutex);
        return m_open;
    }

    void close()
    {
        std::lock_guard<std::recursive_mutex> lock(m_mutex);
        m_open = false;
    }

private:
    SignalGate(const SignalGate&);
    SignalGate& operator=(const SignalGate&);

    std::recursive_mutex m_mutex;
    bool m_open;
};

} // namespace Vesk
