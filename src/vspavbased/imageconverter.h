// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspavbased/iavpicture.h"
#include "vspavbased/iimageconverter.h"

#include <cstdint>
#include <vector>

namespace engine {

/// Pictures of one size in 32 bits a pixel, top row first, which engine processes make of frames.
class ImageConverter final : public AVBased::IImageConverter, private AVBased::IAVPicture
{
public:
    /// Owned by the caller; null for other formats than PixelFormatArgb32 and for sizes that no
    /// picture has.
    static ImageConverter* create(unsigned pixelFormat, unsigned width, unsigned height);

    AVBased::IAVPicture* convert(AVBased::IAVFrame* frame) override;
    void release() override;

private:
    ImageConverter(std::uint32_t width, std::uint32_t height);
    ~ImageConverter() = default;

    std::int32_t pixelFormat() override;
    void dimensions(std::int32_t* width, std::int32_t* height) override;
    bool isTopDown() override;
    void* plane(std::int32_t index, std::int32_t* stride, std::int32_t* rows,
                std::int32_t* bytes) override;

    const std::uint32_t m_width;
    const std::uint32_t m_height;
    std::vector<std::uint32_t> m_pixels;
};

} // namespace engine
