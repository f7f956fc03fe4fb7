// SPDX-License-Identifier: GPL-2.0-or-later
#include "picture/colourconversion.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace engine {

namespace {

/// Light of the white of ordinary content within HDR material, candela a square metre: BT.2408.
constexpr double referenceWhite = 203.0;
/// What swscale makes of white in 16 bits: the byte, moved up.
constexpr float swscaleWhite = 255.0F * 256.0F;
/// Peak of material that does not say, and of the nominal HLG screen.
constexpr double nominalPeak = 1000.0;

/// SMPTE ST 2084: code value 0 … 1 to candela a square metre.
double pqToLight(double code)
{
    constexpr double m1 = 2610.0 / 16384.0;
    constexpr double m2 = 2523.0 / 4096.0 * 128.0;
    constexpr double c1 = 3424.0 / 4096.0;
    constexpr double c2 = 2413.0 / 4096.0 * 32.0;
    constexpr double c3 = 2392.0 / 4096.0 * 32.0;
    const double power = std::pow(code, 1.0 / m2);
    return 10000.0 * std::pow(std::max(power - c1, 0.0) / (c2 - c3 * power), 1.0 / m1);
}

/// ARIB STD-B67: code value 0 … 1 to light of the scene, 0 … 1.
double hlgToScene(double code)
{
    constexpr double a = 0.17883277;
    constexpr double b = 1.0 - 4.0 * a;
    const double c = 0.5 - a * std::log(4.0 * a);
    return code <= 0.5 ? code * code / 3.0 : (std::exp((code - c) / a) + b) / 12.0;
}

/// What `lightToSrgb` undoes: material that is not of high dynamic range is as bright on the screen
/// as its code values, like that which needs no conversion.
double srgbToLight(double code)
{
    return code <= 0.04045 ? code / 12.92 : std::pow((code + 0.055) / 1.055, 2.4);
}

double lightToSrgb(double light)
{
    return light <= 0.0031308 ? 12.92 * light : 1.055 * std::pow(light, 1.0 / 2.4) - 0.055;
}

/// A function of 0 … 1 by table: pow() for each pixel would cost more than decoding.
class Curve
{
public:
    template <typename Function>
    explicit Curve(Function function)
    {
        for (std::size_t i = 0; i < m_values.size(); ++i)
            m_values[i] = static_cast<float>(
                function(static_cast<double>(i) / static_cast<double>(m_values.size() - 1)));
    }

    float operator()(float x) const
    {
        const float position = std::clamp(x, 0.0F, 1.0F) * static_cast<float>(m_values.size() - 1);
        return m_values[static_cast<std::size_t>(std::lround(position))];
    }

private:
    std::array<float, 4096> m_values;
};

struct Colour
{
    float r;
    float g;
    float b;
};

float luminance(const Colour& c)
{
    return 0.2627F * c.r + 0.6780F * c.g + 0.0593F * c.b;
}

/// BT.2020 primaries to those of BT.709, which sRGB shares.
Colour toNarrowGamut(const Colour& c)
{
    return {1.660491F * c.r - 0.587641F * c.g - 0.072850F * c.b,
            -0.124550F * c.r + 1.132900F * c.g - 0.008349F * c.b,
            -0.018151F * c.r - 0.100579F * c.g + 1.118730F * c.b};
}

/// Keeps light up to `knee` as it is and rolls off what is above, so that `peak` becomes 1. The
/// curve and its slope are continuous.
class RollOff
{
public:
    explicit RollOff(double peak)
    {
        if (peak <= 1.0)
            return;
        m_a = -knee * knee * (peak - 1.0) / (knee * knee - 2.0 * knee + peak);
        m_b = (knee * knee - 2.0 * knee * peak + peak) / (peak - 1.0);
        m_scale = (m_b * m_b + 2.0 * m_b * knee + knee * knee) / (m_b - m_a);
        m_isActive = true;
    }

    float operator()(float light) const
    {
        if (!m_isActive || light <= knee)
            return light;
        return static_cast<float>(m_scale * (light + m_a) / (light + m_b));
    }

private:
    static constexpr double knee = 0.5;

    bool m_isActive = false;
    double m_a = 0.0;
    double m_b = 0.0;
    double m_scale = 1.0;
};

/// Brightest light of the material, candela a square metre: as it says, else the nominal peak.
double peakOf(const AVFrame& frame)
{
    if (const AVFrameSideData* data =
            av_frame_get_side_data(&frame, AV_FRAME_DATA_CONTENT_LIGHT_LEVEL)) {
        const auto* level = reinterpret_cast<const AVContentLightMetadata*>(data->data);
        if (level->MaxCLL > 0)
            return std::clamp<double>(level->MaxCLL, referenceWhite, 10000.0);
    }
    return nominalPeak;
}

const Curve& lightCurve(AVColorTransferCharacteristic transfer)
{
    static const Curve pq([](double x) { return pqToLight(x) / referenceWhite; });
    static const Curve hlg(hlgToScene);
    static const Curve srgb(srgbToLight);
    switch (transfer) {
    case AVCOL_TRC_SMPTE2084:
        return pq;
    case AVCOL_TRC_ARIB_STD_B67:
        return hlg;
    default:
        return srgb;
    }
}

/// The light that the nominal HLG screen makes of the scene's, in units of reference white.
Colour showHlg(const Colour& scene)
{
    constexpr float systemGamma = 1.2F;
    const float y = std::max(luminance(scene), 1e-6F);
    const float gain =
        std::pow(y, systemGamma - 1.0F) * static_cast<float>(nominalPeak / referenceWhite);
    return {scene.r * gain, scene.g * gain, scene.b * gain};
}

const std::uint16_t* rowOf(const AVFrame& planes, int plane, int y)
{
    return reinterpret_cast<const std::uint16_t*>(
        planes.data[plane] + static_cast<std::ptrdiff_t>(planes.linesize[plane]) * y);
}

std::uint32_t toByte(const Curve& encode, float light)
{
    return static_cast<std::uint32_t>(std::lround(encode(light) * 255.0F));
}

} // namespace

bool needsColourConversion(const AVFrame& frame)
{
    return frame.color_trc == AVCOL_TRC_SMPTE2084 || frame.color_trc == AVCOL_TRC_ARIB_STD_B67 ||
           frame.color_primaries == AVCOL_PRI_BT2020;
}

void convertColours(const AVFrame& frame, const AVFrame& planes, int y, std::uint32_t* argb)
{
    static const Curve encode(lightToSrgb);
    const Curve& decode = lightCurve(frame.color_trc);
    const bool isHlg = frame.color_trc == AVCOL_TRC_ARIB_STD_B67;
    const bool isPq = frame.color_trc == AVCOL_TRC_SMPTE2084;
    const bool isWide = frame.color_primaries == AVCOL_PRI_BT2020;
    const double peak = isPq ? peakOf(frame) : nominalPeak;
    const RollOff rollOff(isPq || isHlg ? peak / referenceWhite : 1.0);
    const std::uint16_t* green = rowOf(planes, 0, y);
    const std::uint16_t* blue = rowOf(planes, 1, y);
    const std::uint16_t* red = rowOf(planes, 2, y);

    for (int x = 0; x < planes.width; ++x) {
        Colour c = {decode(static_cast<float>(red[x]) / swscaleWhite),
                    decode(static_cast<float>(green[x]) / swscaleWhite),
                    decode(static_cast<float>(blue[x]) / swscaleWhite)};
        if (isHlg)
            c = showHlg(c);
        // The brightest component decides, so that bright colours keep their hue.
        const float brightest = std::max({c.r, c.g, c.b});
        const float gain = brightest > 0.0F ? rollOff(brightest) / brightest : 1.0F;
        c = {c.r * gain, c.g * gain, c.b * gain};
        if (isWide)
            c = toNarrowGamut(c);
        argb[x] = 0xFF000000U | toByte(encode, c.r) << 16 | toByte(encode, c.g) << 8 |
                  toByte(encode, c.b);
    }
}

} // namespace engine
