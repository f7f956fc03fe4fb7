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
    return new ImageConverter(static_cast<int>(width), static_cast<int>(height));
}

ImageConverter::ImageConverter(int width, int height)
    : m_picture(width, height)
{}

AVBased::IAVPicture* ImageConverter::convert(AVBased::IAVFrame* frame)
{
    if (!frame)
        return nullptr;
    m_picture.pixels() = frame->source->picture(static_cast<std::uint32_t>(m_picture.width()),
                                                static_cast<std::uint32_t>(m_picture.height()));
    return m_picture.pixels().empty() ? nullptr : &m_picture;
}

void ImageConverter::release()
{
    delete this;
}

} // namespace engine
