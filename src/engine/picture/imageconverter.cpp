// SPDX-License-Identifier: GPL-2.0-or-later
#include "picture/imageconverter.h"

#include "enginelink/picturesize.h"
#include "picture/colourconversion.h"
#include "picture/deinterlacing.h"
#include "picture/frame.h"

#include <algorithm>
#include <cmath>

namespace engine {

namespace {

struct Size
{
    int width;
    int height;
};

/// The largest size of the frame's shape within `limit`, before it is turned upright.
Size fittedSize(const AVFrame& picture, AVRational pixelAspect, bool transpose, Size limit)
{
    if (transpose)
        std::swap(limit.width, limit.height);
    const double shownWidth = picture.width * av_q2d(pixelAspect);
    const double shownHeight = picture.height;
    const double factor = std::min(limit.width / shownWidth, limit.height / shownHeight);
    return {std::clamp(static_cast<int>(std::lround(shownWidth * factor)), 1, limit.width),
            std::clamp(static_cast<int>(std::lround(shownHeight * factor)), 1, limit.height)};
}

/// Files that do not say are told by their size: high definition came with BT.709.
int matrixOf(const AVFrame& picture)
{
    switch (picture.colorspace) {
    case AVCOL_SPC_BT709:
        return SWS_CS_ITU709;
    case AVCOL_SPC_FCC:
        return SWS_CS_FCC;
    case AVCOL_SPC_BT470BG:
    case AVCOL_SPC_SMPTE170M:
        return SWS_CS_ITU601;
    case AVCOL_SPC_SMPTE240M:
        return SWS_CS_SMPTE240M;
    case AVCOL_SPC_BT2020_NCL:
    case AVCOL_SPC_BT2020_CL:
        return SWS_CS_BT2020;
    default:
        return picture.width >= 1280 || picture.height > 576 ? SWS_CS_ITU709 : SWS_CS_ITU601;
    }
}

bool isFullRange(const AVFrame& picture)
{
    switch (picture.format) {
    case AV_PIX_FMT_YUVJ420P:
    case AV_PIX_FMT_YUVJ411P:
    case AV_PIX_FMT_YUVJ422P:
    case AV_PIX_FMT_YUVJ444P:
    case AV_PIX_FMT_YUVJ440P:
        return true;
    default:
        return picture.color_range == AVCOL_RANGE_JPEG;
    }
}

/// The same format without a range in its name, which swscale would complain about.
AVPixelFormat plainFormat(int format)
{
    switch (format) {
    case AV_PIX_FMT_YUVJ420P:
        return AV_PIX_FMT_YUV420P;
    case AV_PIX_FMT_YUVJ411P:
        return AV_PIX_FMT_YUV411P;
    case AV_PIX_FMT_YUVJ422P:
        return AV_PIX_FMT_YUV422P;
    case AV_PIX_FMT_YUVJ444P:
        return AV_PIX_FMT_YUV444P;
    case AV_PIX_FMT_YUVJ440P:
        return AV_PIX_FMT_YUV440P;
    default:
        return static_cast<AVPixelFormat>(format);
    }
}

bool hasAlpha(int format)
{
    const AVPixFmtDescriptor* descriptor = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(format));
    return descriptor && (descriptor->flags & (AV_PIX_FMT_FLAG_ALPHA | AV_PIX_FMT_FLAG_PAL));
}

const std::uint8_t* rowOf(const AVFrame& frame, int plane, int y)
{
    return frame.data[plane] + static_cast<std::ptrdiff_t>(frame.linesize[plane]) * y;
}

/// Row `y` of planes of green, blue and red.
void join(const AVFrame& planes, int y, std::uint32_t* argb)
{
    const int width = planes.width;
    const std::uint8_t* green = rowOf(planes, 0, y);
    const std::uint8_t* blue = rowOf(planes, 1, y);
    const std::uint8_t* red = rowOf(planes, 2, y);
    for (int x = 0; x < width; ++x)
        argb[x] =
            0xFF000000U | std::uint32_t{red[x]} << 16 | std::uint32_t{green[x]} << 8 | blue[x];
}

/// The same for planes with one of opacity: transparent pixels show the black behind them.
void joinOnBlack(const AVFrame& planes, int y, std::uint32_t* argb)
{
    const int width = planes.width;
    const std::uint8_t* green = rowOf(planes, 0, y);
    const std::uint8_t* blue = rowOf(planes, 1, y);
    const std::uint8_t* red = rowOf(planes, 2, y);
    const std::uint8_t* alpha = rowOf(planes, 3, y);
    const auto blend = [alpha](std::uint32_t c, int x) { return (c * alpha[x] + 127) / 255; };
    for (int x = 0; x < width; ++x)
        argb[x] =
            0xFF000000U | blend(red[x], x) << 16 | blend(green[x], x) << 8 | blend(blue[x], x);
}

} // namespace

ImageConverter* ImageConverter::create(unsigned pixelFormat, unsigned width, unsigned height)
{
    if (pixelFormat != AVBased::PixelFormatArgb32 || !isPictureSize(width, height))
        return nullptr;
    return new ImageConverter(static_cast<int>(width), static_cast<int>(height));
}

ImageConverter::ImageConverter(int width, int height)
    : m_picture(width, height)
{}

void ImageConverter::release()
{
    delete this;
}

AVBased::IAVPicture* ImageConverter::convert(AVBased::IAVFrame* frame)
{
    if (!frame || !frame->picture || frame->picture->width <= 0 || frame->picture->height <= 0)
        return nullptr;
    const Size size = fittedSize(*frame->picture, frame->pixelAspect, frame->orientation.transpose,
                                 {m_picture.width(), m_picture.height()});
    if (!scale(*frame->picture, size.width, size.height))
        return nullptr;
    place(size.width, size.height, frame->orientation);
    return &m_picture;
}

/// Makes m_scaled of the frame, `width` x `height` pixels of 0xFFRRGGBB.
bool ImageConverter::scale(const AVFrame& picture, int width, int height)
{
    const bool hasTwoMoments = isInterlaced(picture);
    const FramePtr moment = hasTwoMoments ? deinterlaced(picture, height) : nullptr;
    const bool wide = needsColourConversion(picture);
    const bool blend = !wide && hasAlpha(picture.format);
    const AVPixelFormat opaque = wide ? AV_PIX_FMT_GBRP16 : AV_PIX_FMT_GBRP;
    preparePlanes(blend ? AV_PIX_FMT_GBRAP : opaque, width, height);
    if (!fillPlanes(moment ? *moment : picture, matrixOf(picture), isFullRange(picture)))
        return false;

    m_scaled.resize(static_cast<std::size_t>(width) * height);
    for (int y = 0; y < height; ++y) {
        std::uint32_t* out = m_scaled.data() + static_cast<std::ptrdiff_t>(width) * y;
        if (wide)
            convertColours(picture, *m_planes, y, out);
        else if (blend)
            joinOnBlack(*m_planes, y, out);
        else
            join(*m_planes, y, out);
    }
    return true;
}

void ImageConverter::preparePlanes(AVPixelFormat format, int width, int height)
{
    if (!m_planes || m_planes->format != format || m_planes->width != width ||
        m_planes->height != height)
        m_planes = makeFrame(format, width, height);
}

/// Scales `shown` into m_planes, of whatever matrix and range it is. For planes swscale works out
/// the colour of each pixel by itself; in packed ones two share one, by tables that turn grey into
/// magenta. Where nothing is scaled some releases have a shortcut that gives the last columns of
/// widths like 180 the colours of others; rounding accurately, they do not take it.
bool ImageConverter::fillPlanes(const AVFrame& shown, int matrix, bool isFullRange)
{
    const AVPixelFormat from = plainFormat(shown.format);
    if (!sws_isSupportedInput(from))
        return false;
    const bool isScaled = shown.width != m_planes->width || shown.height != m_planes->height;
    m_scaler.reset(sws_getCachedContext(
        m_scaler.release(), shown.width, shown.height, from, m_planes->width, m_planes->height,
        static_cast<AVPixelFormat>(m_planes->format),
        isScaled ? SWS_BILINEAR : SWS_BILINEAR | SWS_ACCURATE_RND, nullptr, nullptr, nullptr));
    if (!m_scaler)
        return false;
    constexpr int neutral = 1 << 16;
    const int* screen = sws_getCoefficients(SWS_CS_DEFAULT);
    sws_setColorspaceDetails(m_scaler.get(), sws_getCoefficients(matrix), isFullRange ? 1 : 0,
                             screen, 1, 0, neutral, neutral);
    return sws_scale(m_scaler.get(), shown.data, shown.linesize, 0, shown.height, m_planes->data,
                     m_planes->linesize) == m_planes->height;
}

/// Turns m_scaled upright into the middle of the picture, on black.
void ImageConverter::place(int width, int height, const Orientation& orientation)
{
    const int fullWidth = m_picture.width();
    std::vector<std::uint32_t>& pixels = m_picture.pixels();
    pixels.assign(static_cast<std::size_t>(fullWidth) * m_picture.height(), 0xFF000000U);
    const int outWidth = orientation.transpose ? height : width;
    const int outHeight = orientation.transpose ? width : height;
    const int left = (fullWidth - outWidth) / 2;
    const int top = (m_picture.height() - outHeight) / 2;
    for (int y = 0; y < outHeight; ++y) {
        std::uint32_t* row =
            pixels.data() + static_cast<std::ptrdiff_t>(fullWidth) * (top + y) + left;
        const int turnedY = orientation.reverseY ? outHeight - 1 - y : y;
        const std::uint32_t* from =
            m_scaled.data() +
            (orientation.transpose ? turnedY : static_cast<std::ptrdiff_t>(width) * turnedY);
        const int step = orientation.transpose ? width : 1;
        if (step == 1)
            std::copy_n(from, outWidth, row);
        else
            for (int x = 0; x < outWidth; ++x)
                row[x] = from[static_cast<std::ptrdiff_t>(step) * x];
        if (orientation.reverseX)
            std::reverse(row, row + outWidth);
    }
}

} // namespace engine
