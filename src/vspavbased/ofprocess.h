// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <sys/types.h>
#include <unistd.h>

#include <mutex>
#include <new>

namespace engine {

/// The object of its kind in this process, made when it is first used. When the process ends, or
/// this library is unloaded, its end() is called, which lets go of everything; but it is not
/// destroyed: a host may quit in the middle, and its threads still call.
///
/// A host may fork, too. The child has none of the threads and must leave what it inherits alone,
/// so it has another object.
template <typename T>
class OfProcess
{
public:
    ~OfProcess()
    {
        if (m_object && m_owner == getpid())
            m_object->end();
    }

    T& get()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!m_object)
            m_object = new (m_storage) T;
        else if (m_owner != getpid())
            m_object = new T;
        m_owner = getpid();
        return *m_object;
    }

private:
    std::mutex m_mutex;
    T* m_object = nullptr;
    pid_t m_owner = -1;
    alignas(T) unsigned char m_storage[sizeof(T)];
};

} // namespace engine
