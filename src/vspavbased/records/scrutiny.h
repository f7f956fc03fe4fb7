// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "engine_generated.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace engine {

/// Whether the numbers, of 8 bytes, lie where the machine reads such: that is not looked at when a
/// message is verified.
template <typename T>
bool isAligned(const flatbuffers::Vector<T>& numbers)
{
    return numbers.size() == 0 ||
           reinterpret_cast<std::uintptr_t>(numbers.Data()) % alignof(double) == 0;
}

/// Looks at the parts of one message: whether an engine can have said that. No number is less than
/// none, and no text without end.
///
/// Parts of a message may lie in the same place, so that little is sent and yet more told than can
/// ever be read. So it also adds up what the records of all parts take, and lets no more pass than
/// an honest message needs.
class Scrutiny
{
public:
    bool passes(const flatbuffers::String& text);
    bool passes(double seconds) const;
    bool passes(const flatbuffers::Vector<double>& seconds);
    bool passes(const wire::Movie& movie);
    bool passes(const flatbuffers::Vector<flatbuffers::Offset<wire::Tag>>& tags);

    /// Whether there is room for so many more records.
    bool hasRoom(std::size_t count, std::size_t recordSize);

    /// A list of parts that become a `Record` each.
    template <typename Record, typename Part, typename Check>
    bool passes(const flatbuffers::Vector<flatbuffers::Offset<Part>>& parts, Check check)
    {
        return hasRoom(parts.size(), sizeof(Record)) &&
               std::all_of(parts.begin(), parts.end(),
                           [&check](const Part* part) { return check(*part); });
    }

private:
    bool passes(const wire::Stream& stream);

    std::size_t m_left = std::size_t{512} * 1024 * 1024; ///< bytes
};

} // namespace engine
