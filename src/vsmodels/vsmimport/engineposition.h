// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <limits>

namespace Vesk {

/// A time in milliseconds as the engine takes it: truncated toward zero to 32 bits. What these
/// cannot say becomes the nearest that they can, and not a number becomes 0.
inline int enginePosition(double milliseconds)
{
    if (milliseconds >= std::numeric_limits<int>::max())
        return std::numeric_limits<int>::max();
    if (milliseconds <= std::numeric_limits<int>::min())
        return std::numeric_limits<int>::min();
    return milliseconds == milliseconds ? static_cast<int>(milliseconds) : 0;
}

} // namespace Vesk
