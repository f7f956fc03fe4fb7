// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace engine {

/// Bytes that libav gets to see in the place of those that are in the file.
struct Cover
{
    std::uint64_t offset;
    std::string bytes; ///< at most longestCover
};
constexpr std::uint64_t longestCover = 9;

/// What files of one format claim to hold, and whether that can be.
class Claims
{
public:
    virtual ~Claims() = default;

    /// Of the part of the file whose name lies at `offset`: what makes libav pass over what it must
    /// not see. Nothing when that does not matter yet.
    virtual std::optional<std::vector<Cover>> cover(std::uint64_t offset) = 0;
};

} // namespace engine
