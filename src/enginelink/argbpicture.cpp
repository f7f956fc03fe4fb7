// SPDX-License-Identifier: LGPL-2.1-or-later
#include "enginelink/argbpicture.h"

namespace engine {

std::int32_t ArgbPicture::pixelFormat()
{
    return AVBased::PixelFormatArgb32;
}

void ArgbPicture::dimensions(std::int32_t* width, std::int32_t* height)
{
    *width = m_width;
    *height = m_height;
}

bool ArgbPicture::isTopDown()
{
    return true;
}

void* ArgbPicture::plane(std::int32_t index, std::int32_t* stride, std::int32_t* rows,
                         std::int32_t* bytes)
{
    if (index != 0)
        return nullptr;
    *stride = m_width * 4;
    *rows = m_height;
    *bytes = m_width * m_height * 4;
    return m_pixels.data();
}

} // namespace engine
