// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "libav.h"

#include <cstddef>
#include <cstdint>

namespace engine {

/// Whether the colours of `frame` are out of an ordinary screen's reach: high dynamic range, or the
/// wide gamut of BT.2020.
bool needsColourConversion(const AVFrame& frame);

/// Brings `count` pixels of three 16-bit values and an unused one, as swscale made them from
/// `frame`, to 0xFFRRGGBB of an sRGB screen. Highlights are rolled off rather than cut.
void convertColours(const AVFrame& frame, const std::uint16_t* rgba, std::size_t count,
                    std::uint32_t* argb);

} // namespace engine
