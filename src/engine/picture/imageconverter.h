// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "enginelink/argbpicture.h"
#include "libav.h"
#include "picture/orientation.h"
#include "vspavbased/iimageconverter.h"

#include <cstdint>
#include <vector>

namespace engine {

/// Pictures of one size in 32 bits a pixel, top row first. The frame is turned upright, keeps its
/// shape, and stands on black; its colours are brought to those of an ordinary screen.
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

    bool scale(const AVFrame& picture, int width, int height);
    void preparePlanes(AVPixelFormat format, int width, int height);
    bool fillPlanes(const AVFrame& shown, int matrix, bool isFullRange);
    void place(int width, int height, const Orientation& orientation);

    ArgbPicture m_picture;
    SwsContextPtr m_scaler;
    FramePtr m_planes;                   ///< the frame in its final size, as swscale makes it
    std::vector<std::uint32_t> m_scaled; ///< the same in pixels, not yet upright
};

} // namespace engine
