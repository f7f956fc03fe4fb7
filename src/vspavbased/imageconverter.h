// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "enginelink/argbpicture.h"
#include "vspavbased/iimageconverter.h"

namespace engine {

/// Pictures of one size in 32 bits a pixel, top row first, which engine processes make of frames.
class ImageConverter final : public AVBased::IImageConverter
{
public:
    /// Owned by the caller; null for other formats than PixelFormatArgb32 and for sizes that no
    /// picture has.
    static ImageConverter* create(unsigned pixelFormat, unsigned width, unsigned height);

    AVBased::IAVPicture* convert(AVBased::IAVFrame* frame) override;
    void release() override;

private:
    ImageConverter(int width, int height);
    ~ImageConverter() = default;

    ArgbPicture m_picture;
};

} // namespace engine
