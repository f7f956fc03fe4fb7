// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <atomic>
#include <mutex>
#include <type_traits>

namespace engine {

/// A function of the host's that is told things, with its context as the last argument, and the
/// lock under which it is called. Callable from any thread.
template <typename Function>
class Receiver
{
public:
    bool isSet() const { return m_function.load() != nullptr; }

    /// When it returns, the former function is not running and is never called again.
    void set(Function function, void* context)
    {
        static_assert(std::is_trivially_destructible_v<Receiver>,
                      "libraries speak while the process ends");
        std::lock_guard<std::mutex> lock(m_mutex);
        m_function = function;
        m_context = context;
    }

    template <typename... Arguments>
    void tell(Arguments... arguments)
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        if (const Function function = m_function)
            function(arguments..., m_context);
    }

private:
    std::mutex m_mutex;
    std::atomic<Function> m_function{nullptr};
    void* m_context = nullptr;
};

} // namespace engine
