// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>

namespace engine {

/// How a decoded frame is turned to be seen upright: in quarter turns, and mirrored or not. First
/// rows and columns are exchanged, then the result is reversed.
struct Orientation
{
    bool transpose = false;
    bool reverseX = false;
    bool reverseY = false;

    /// From a stream's display matrix of nine numbers, or null. Angles between quarter turns become
    /// the nearest one.
    static Orientation fromDisplayMatrix(const std::int32_t* matrix);
};

} // namespace engine
