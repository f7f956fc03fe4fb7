// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "libav.h"
#include "picture/orientation.h"
#include "vspavbased/iavsource.h"

namespace AVBased {

/// A decoded frame and what is needed to show it as it is meant to be seen.
class IAVFrame
{
public:
    engine::FramePtr picture;
    engine::Orientation orientation;
    AVRational pixelAspect{1, 1}; ///< width to height of a pixel; positive
};

} // namespace AVBased
