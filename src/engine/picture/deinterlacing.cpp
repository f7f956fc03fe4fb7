// SPDX-License-Identifier: GPL-2.0-or-later
#include "picture/deinterlacing.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace engine {

namespace {

/// The distance between neighbouring samples of a plane, in samples, and how wide one is.
struct PlaneLayout
{
    int step = 0; ///< 0 for no plane
    int sampleBytes = 1;
};

using FrameLayout = std::array<PlaneLayout, AV_NUM_DATA_POINTERS>;

/// False for formats whose samples are no plain numbers in rows of the same distance.
bool findLayout(const AVPixFmtDescriptor& format, FrameLayout& layout)
{
    constexpr std::uint64_t other = AV_PIX_FMT_FLAG_BE | AV_PIX_FMT_FLAG_PAL |
                                    AV_PIX_FMT_FLAG_BITSTREAM | AV_PIX_FMT_FLAG_HWACCEL |
                                    AV_PIX_FMT_FLAG_BAYER | AV_PIX_FMT_FLAG_FLOAT;
    if (format.flags & other)
        return false;
    for (int i = 0; i < format.nb_components; ++i) {
        const AVComponentDescriptor& component = format.comp[i];
        const int sampleBytes = component.depth > 8 ? 2 : 1;
        PlaneLayout& plane = layout[static_cast<std::size_t>(component.plane)];
        const PlaneLayout found{component.step / sampleBytes, sampleBytes};
        const bool fits =
            plane.step == 0 || (plane.step == found.step && plane.sampleBytes == sampleBytes);
        if (!fits || found.step == 0 || component.depth > 16 ||
            component.shift + component.depth > 8 * sampleBytes)
            return false;
        plane = found;
    }
    return true;
}

/// Makes a line from those above and below it and from what stands there, which is of the other
/// field: it stays where it lies between the two, so that what does not move keeps its sharpness.
/// Elsewhere the line goes on along the edge that runs through it.
template <typename Sample>
void makeLine(const Sample* above, const Sample* there, const Sample* below, Sample* out, int count,
              int step)
{
    const auto make = [&](int x, int reach) {
        const int a = above[x];
        const int b = below[x];
        const int c = there[x];
        const int leftA = above[x - reach];
        const int leftB = below[x - reach];
        const int rightA = above[x + reach];
        const int rightB = below[x + reach];
        const int straight = std::abs(a - b);
        const int falling = std::abs(leftA - rightB);
        const int rising = std::abs(rightA - leftB);
        int sum = a + b;
        sum = falling < straight ? leftA + rightB : sum;
        sum = rising < std::min(straight, falling) ? rightA + leftB : sum;
        const int low = std::min(a, b);
        const int high = std::max(a, b);
        const int made = std::clamp((sum + 1) >> 1, low, high);
        out[x] = static_cast<Sample>(c >= low && c <= high ? c : made);
    };
    const int edge = std::min(step, count);
    for (int x = 0; x < edge; ++x)
        make(x, 0);
    for (int x = edge; x < count - edge; ++x)
        make(x, step);
    for (int x = std::max(edge, count - edge); x < count; ++x)
        make(x, 0);
}

/// `bytes` and `rows` are those of the plane.
void makePlane(const AVFrame& from, AVFrame& to, int plane, const PlaneLayout& layout, int bytes,
               int rows)
{
    const auto line = [plane](const AVFrame& frame, int y) {
        return frame.data[plane] + static_cast<std::ptrdiff_t>(frame.linesize[plane]) * y;
    };
    for (int y = 0; y < rows; ++y) {
        std::uint8_t* out = line(to, y);
        if (y % 2 == 0) {
            std::memcpy(out, line(from, y), static_cast<std::size_t>(bytes));
            continue;
        }
        const std::uint8_t* above = line(from, y - 1);
        const std::uint8_t* below = y + 1 < rows ? line(from, y + 1) : above;
        if (layout.sampleBytes == 1)
            makeLine(above, line(from, y), below, out, bytes, layout.step);
        else
            makeLine(reinterpret_cast<const std::uint16_t*>(above),
                     reinterpret_cast<const std::uint16_t*>(line(from, y)),
                     reinterpret_cast<const std::uint16_t*>(below),
                     reinterpret_cast<std::uint16_t*>(out), bytes / 2, layout.step);
    }
}

/// The even lines as a frame of their own. Those of the colours belong to those of the brightness
/// whatever the height, as those of the lower field do not.
FramePtr upperField(const AVFrame& frame)
{
    FramePtr field(av_frame_clone(&frame));
    if (!field)
        throw std::bad_alloc();
    field->height = (frame.height + 1) / 2;
    for (int& lineSize : field->linesize)
        lineSize *= 2;
    return field;
}

FramePtr withLinesMadeAnew(const AVFrame& frame, const AVPixFmtDescriptor& format,
                           const FrameLayout& layout)
{
    FramePtr made = makeFrame(frame.format, frame.width, frame.height);
    for (int plane = 0; plane < AV_NUM_DATA_POINTERS; ++plane) {
        const PlaneLayout& planeLayout = layout[static_cast<std::size_t>(plane)];
        if (planeLayout.step == 0)
            continue;
        const bool isColour = plane == 1 || plane == 2;
        const int bytes =
            av_image_get_linesize(static_cast<AVPixelFormat>(frame.format), frame.width, plane);
        const int rows =
            isColour ? AV_CEIL_RSHIFT(frame.height, format.log2_chroma_h) : frame.height;
        makePlane(frame, *made, plane, planeLayout, bytes, rows);
    }
    return made;
}

} // namespace

FramePtr deinterlaced(const AVFrame& frame, int height)
{
    const AVPixFmtDescriptor* format =
        av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
    FrameLayout layout;
    if (height <= (frame.height + 1) / 2 || !format || !findLayout(*format, layout))
        return upperField(frame);
    return withLinesMadeAnew(frame, *format, layout);
}

} // namespace engine
