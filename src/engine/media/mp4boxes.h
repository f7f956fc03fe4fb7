// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "bytes/bytesource.h"

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

namespace engine {

/// A box of an MP4 or QuickTime file, by where it lies in it.
struct Mp4Box
{
    std::string type;
    std::uint64_t begin;
    std::uint64_t contents; ///< of what is inside
    std::uint64_t end;

    bool isOneOf(std::initializer_list<std::string_view> types) const;
};

/// The box at `offset`, which ends at `limit` if it says that it ends behind; nothing when there is
/// none.
std::optional<Mp4Box> readMp4Box(const ByteSource& file, std::uint64_t offset, std::uint64_t limit);

} // namespace engine
