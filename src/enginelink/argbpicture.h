// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspavbased/iavpicture.h"

#include <cstdint>
#include <vector>

namespace engine {

/// A picture of 32 bits a pixel, 0xAARRGGBB, top row first.
class ArgbPicture : public AVBased::IAVPicture
{
public:
    ArgbPicture(int width, int height)
        : m_width(width)
        , m_height(height)
    {}

    int width() const { return m_width; }
    int height() const { return m_height; }
    /// Width by height of them, once there is a picture.
    std::vector<std::uint32_t>& pixels() { return m_pixels; }

    std::int32_t pixelFormat() override;
    void dimensions(std::int32_t* width, std::int32_t* height) override;
    bool isTopDown() override;
    void* plane(std::int32_t index, std::int32_t* stride, std::int32_t* rows,
                std::int32_t* bytes) override;

private:
    const int m_width;
    const int m_height;
    std::vector<std::uint32_t> m_pixels;
};

} // namespace engine
