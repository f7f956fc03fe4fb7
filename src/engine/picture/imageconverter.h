// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "libav.h"
#include "picture/orientation.h"
#include "vspavbased/iavpicture.h"
#include "vspavbased/iimageconverter.h"

#include <cstdint>
#include <vector>

namespace engine {

/// Pictures of one size in 32 bits a pixel, top row first. The frame is turned upright, keeps its
/// shape, and stands on black; its colours are brought to those of an ordinary screen.
class ImageConverter final : public AVBased::IImageConverter, private AVBased::IAVPicture
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

    std::int32_t pixelFormat() override;
    void dimensions(std::int32_t* width, std::int32_t* height) override;
    bool isTopDown() override;
    void* plane(std::int32_t index, std::int32_t* stride, std::int32_t* rows,
                std::int32_t* bytes) override;

    bool scale(const AVFrame& picture, int width, int height);
    void preparePlanes(AVPixelFormat format, int width, int height);
    bool fillPlanes(const AVFrame& shown, int matrix, bool isFullRange);
    void place(int width, int height, const Orientation& orientation);

    const int m_width;
    const int m_height;
    SwsContextPtr m_scaler;
    FramePtr m_planes;                   ///< the frame in its final size, as swscale makes it
    std::vector<std::uint32_t> m_scaled; ///< the same in pixels, not yet upright
    std::vector<std::uint32_t> m_pixels; ///< the picture
};

} // namespace engine
