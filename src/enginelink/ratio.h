// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <cstdint>

namespace engine {

/// A positive fraction, or unknown.
struct Ratio
{
    int numerator = 0;
    int denominator = 0;

    bool isKnown() const { return numerator > 0 && denominator > 0; }
};

/// Frame rates and aspect ratios, which the boundary packs into one number; 0 is unknown.
inline Ratio unpackFrameRate(std::uint64_t packed)
{
    return {static_cast<int>(packed >> 32), static_cast<int>(packed & 0xFFFFFFFF)};
}
inline Ratio unpackAspect(std::uint32_t packed)
{
    return {static_cast<int>(packed >> 16), static_cast<int>(packed & 0xFFFF)};
}

} // namespace engine
