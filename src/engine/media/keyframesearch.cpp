// SPDX-License-Identifier: GPL-2.0-or-later
#include "media/keyframesearch.h"

#include <algorithm>
#include <cstring>

namespace engine {

namespace {

/// How far to each side keyframes are looked for, at first and at most, in milliseconds. Most lie
/// half a second or a second apart.
constexpr std::int64_t firstReach = 500;
constexpr std::int64_t largestReach = 64 * firstReach;

/// Pictures that may be read over: the times of damaged streams lead nowhere.
constexpr int mostPackets = 4000;

/// Time stamps of hostile files are as far apart as numbers can be.
std::int64_t distance(std::int64_t a, std::int64_t b)
{
    return std::max(av_sat_sub64(a, b), av_sat_sub64(b, a));
}

std::int64_t known(std::int64_t stamp, std::int64_t other)
{
    return stamp != AV_NOPTS_VALUE ? stamp : other;
}

} // namespace

bool mustSearchKeyframes(const AVFormatContext& context)
{
    return std::strcmp(context.iformat->name, "mpegts") == 0 ||
           std::strcmp(context.iformat->name, "mpeg") == 0;
}

KeyframeSearch::KeyframeSearch(FrameReader& reader, std::int64_t start, std::int64_t wanted)
    : m_reader(reader)
    , m_start(start)
    , m_wanted(wanted)
    , m_packetsLeft(mostPackets)
{}

/// A keyframe is the nearest when the scan began as far before the wanted time as it lies from it.
std::optional<std::int64_t> KeyframeSearch::nearest()
{
    for (std::int64_t ms = firstReach; ms <= largestReach; ms *= 4) {
        const std::int64_t reach =
            av_rescale_q(ms, AVRational{1, 1000}, m_reader.stream().time_base);
        m_byte.reset();
        if (!moveBefore(reach))
            return std::nullopt;
        scan(reach);
        const bool isNearest =
            m_byte && (m_isAtStart || av_sat_sub64(m_wanted, m_distance) >= m_begin);
        if (isNearest || m_isAtStart || m_packetsLeft <= 0 || m_reader.demuxer().isExhausted())
            break;
    }
    return m_byte;
}

bool KeyframeSearch::moveBefore(std::int64_t reach)
{
    AVFormatContext* context = m_reader.demuxer().context();
    const std::int64_t from = av_sat_sub64(m_wanted, reach);
    m_isAtStart = from <= m_start ||
                  av_seek_frame(context, m_reader.stream().index, from, AVSEEK_FLAG_BACKWARD) < 0;
    return !m_isAtStart || av_seek_frame(context, -1, 0, AVSEEK_FLAG_BYTE) >= 0;
}

/// Until no nearer keyframe can follow, or up to `reach` behind the wanted time where none is
/// found.
void KeyframeSearch::scan(std::int64_t reach)
{
    // Elsewhere than at the start the first packet may be the rest of a picture, of which libav
    // does not know the kind.
    if (!m_isAtStart)
        m_reader.nextPacket();
    std::int64_t time = AV_NOPTS_VALUE;
    bool hasBegun = false;
    while (m_packetsLeft-- > 0) {
        const AVPacket* packet = m_reader.nextPacket();
        if (!packet)
            return;
        time = known(packet->dts, known(packet->pts, time));
        if (time == AV_NOPTS_VALUE)
            continue;
        if (!hasBegun)
            m_begin = time;
        hasBegun = true;
        if (time > av_sat_add64(m_wanted, m_byte ? m_distance : reach))
            return;
        if (packet->flags & AV_PKT_FLAG_KEY)
            consider(known(packet->pts, time), packet->pos);
    }
}

void KeyframeSearch::consider(std::int64_t time, std::int64_t byte)
{
    const std::int64_t far = distance(time, m_wanted);
    if (byte < 0 || (m_byte && far >= m_distance))
        return;
    m_byte = byte;
    m_distance = far;
}

} // namespace engine
