// SPDX-License-Identifier: GPL-2.0-or-later
#include "picture/orientation.h"

#include <cstdlib>

namespace engine {

/// The matrix maps a point (x, y) of the frame to (a x + c y, b x + d y).
Orientation Orientation::fromDisplayMatrix(const std::int32_t* matrix)
{
    if (!matrix)
        return {};
    const std::int64_t a = matrix[0];
    const std::int64_t b = matrix[1];
    const std::int64_t c = matrix[3];
    const std::int64_t d = matrix[4];
    if (std::llabs(a) >= std::llabs(b))
        return {false, a < 0, d < 0};
    return {true, c < 0, b < 0};
}

} // namespace engine
