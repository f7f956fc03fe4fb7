// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "libav.h"

namespace engine {

/// What `frame`, an interlaced one, shows in one moment, for a picture of `height` lines. The
/// frame's upper field is enough for small pictures and shares its pixels; for others the lines
/// between are made anew where the two fields disagree.
FramePtr deinterlaced(const AVFrame& frame, int height);

} // namespace engine
