// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "libav.h"

#include <cstdint>

namespace engine {

/// Whether the colours of `frame` are out of an ordinary screen's reach: high dynamic range, or the
/// wide gamut of BT.2020.
bool needsColourConversion(const AVFrame& frame);

/// Brings row `y` of `planes`, 16-bit ones of green, blue and red that swscale made from `frame`,
/// to 0xFFRRGGBB of an sRGB screen. Highlights are rolled off rather than cut.
void convertColours(const AVFrame& frame, const AVFrame& planes, int y, std::uint32_t* argb);

} // namespace engine
