// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

namespace engine {

constexpr unsigned largestSide = 16384;

/// Whether pictures can be so many pixels wide and high.
constexpr bool isPictureSize(unsigned width, unsigned height)
{
    return width > 0 && height > 0 && width <= largestSide && height <= largestSide;
}

} // namespace engine
