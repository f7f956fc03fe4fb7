// SPDX-License-Identifier: LGPL-2.1-or-later
#include "imageconverter.h"

#include "engineclient.h"
#include "enginelink/picturesize.h"
#include "framesource.h"

namespace engine {

ImageConverter* ImageConverter::create(unsigned pixelFormat, unsigned width, unsigned height)
{
    if (pixelFormat != AVBased::PixelFormatArgb32 || !isPictureSize(width, height))
        return nullptr;
    EngineClient::instance().setPictureSize(width, height);
    return new ImageConverter(width, height);
}

ImageConverter::ImageConverter(std::uint32_t width, std::uint32_t height)
    : m_width(width)
    , m_height(height)
{}

AVBased::IAVPicture* ImageConverter::convert(AVBased::IAVFrame* frame)
{
    if (!frame)
        return nullptr;
    m_pixels = frame->source->picture(m_width, m_height);
    return m_pixels.empty() ? nullptr : this;
}

void ImageConverter::release()
{
    delete this;
}

std::int32_t ImageConverter::pixelFormat()
{
    return AVBased::PixelFormatArgb32;
}

void ImageConverter::dimensions(std::int32_t* width, std::int32_t* height)
{
    *width = static_cast<std::int32_t>(m_width);
    *height = static_cast<std::int32_t>(m_height);
}

bool ImageConverter::isTopDown()
{
    return true;
}

void* ImageConverter::plane(std::int32_t index, std::int32_t* stride, std::int32_t* rows,
                            std::int32_t* bytes)
{
    if (index != 0)
        return nullptr;
    *stride = static_cast<std::int32_t>(m_width * 4);
    *rows = static_cast<std::int32_t>(m_height);
    *bytes = *stride * *rows;
    return m_pixels.data();
}

} // namespace engine
