// SPDX-License-Identifier: GPL-2.0-or-later
#include "media/streamtimes.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <iterator>

namespace engine {

namespace {

/// Up to this a rate is believed. Above it most are units of time stamps (1000, 15360, 90000 a
/// second) that a demuxer took for pictures.
constexpr double fastestUsual = 120.0;

/// What cameras for slow motion record at most. 1000 is none of theirs, but the unit of Matroska.
constexpr double fastest = 960.0;

const AVRational standardRates[] = {
    {24000, 1001}, {24, 1},        {25, 1},  {30000, 1001}, {30, 1},  {48, 1},
    {50, 1},       {60000, 1001},  {60, 1},  {100, 1},      {120, 1}, {120000, 1001},
    {240, 1},      {240000, 1001}, {300, 1}, {480, 1},      {960, 1}};

Ratio toRatio(AVRational value)
{
    return value.num > 0 && value.den > 0 ? Ratio{value.num, value.den} : Ratio{};
}

double perSecond(const Ratio& rate)
{
    return static_cast<double>(rate.numerator) / rate.denominator;
}

/// The average rate; where the file is too short or too strange for one, libav's best guess.
Ratio claimedRate(AVFormatContext& context, AVStream& stream)
{
    const Ratio average = toRatio(stream.avg_frame_rate);
    return average.isKnown() ? average : toRatio(av_guess_frame_rate(&context, &stream, nullptr));
}

/// The rate of `count` steps in `span` units of `base`: a standard one where the times, which are
/// whole units, allow it.
Ratio rateOf(std::int64_t count, std::int64_t span, AVRational base)
{
    const double seconds = static_cast<double>(span) * av_q2d(base);
    const auto error = [&](AVRational rate) {
        return std::abs(static_cast<double>(count) / av_q2d(rate) - seconds);
    };
    const AVRational nearest =
        *std::min_element(std::begin(standardRates), std::end(standardRates),
                          [&](AVRational a, AVRational b) { return error(a) < error(b); });
    if (error(nearest) <= av_q2d(base))
        return toRatio(nearest);
    return toRatio(av_d2q(static_cast<double>(count) / seconds, INT_MAX));
}

std::optional<double> inSeconds(std::int64_t duration, AVRational base)
{
    if (duration == AV_NOPTS_VALUE || duration <= 0 || base.num <= 0 || base.den <= 0)
        return std::nullopt;
    return static_cast<double>(duration) * av_q2d(base);
}

/// MP4's word for an unknown duration, which libav takes for a number.
bool isSaidToBeUnknown(const AVStream& stream)
{
    return stream.duration == UINT32_MAX;
}

/// From the first sample that a demuxer has listed to the end of the last.
std::optional<double> listedDuration(AVStream& stream)
{
    const int count = avformat_index_get_entries_count(&stream);
    const AVIndexEntry* first = count > 1 ? avformat_index_get_entry(&stream, 0) : nullptr;
    const AVIndexEntry* last = first ? avformat_index_get_entry(&stream, count - 1) : nullptr;
    if (!last)
        return std::nullopt;
    const auto steps = inSeconds(av_sat_sub64(last->timestamp, first->timestamp), stream.time_base);
    return steps ? std::optional<double>(*steps * count / (count - 1)) : std::nullopt;
}

std::optional<double> ownDuration(AVStream& stream)
{
    return isSaidToBeUnknown(stream) ? listedDuration(stream)
                                     : inSeconds(stream.duration, stream.time_base);
}

} // namespace

std::optional<double> durationOf(const AVFormatContext& context, AVStream& stream)
{
    const auto own = ownDuration(stream);
    return own ? own : inSeconds(durationOf(context), AV_TIME_BASE_Q);
}

std::int64_t durationOf(const AVFormatContext& context)
{
    const auto end = context.streams + context.nb_streams;
    const bool isUnknown = std::any_of(
        context.streams, end, [](const AVStream* stream) { return isSaidToBeUnknown(*stream); });
    if (!isUnknown)
        return context.duration == AV_NOPTS_VALUE ? 0 : std::max<std::int64_t>(context.duration, 0);
    double longest = 0.0;
    for (auto stream = context.streams; stream != end; ++stream)
        longest = std::max(longest, ownDuration(**stream).value_or(0.0));
    return static_cast<std::int64_t>(std::min(longest, 1e9) * AV_TIME_BASE);
}

Ratio FrameRates::of(AVStream& stream)
{
    constexpr double tolerance = 0.05;
    const Ratio claimed = claimedRate(m_context, stream);
    if (!claimed.isKnown() || perSecond(claimed) <= fastestUsual)
        return claimed;
    const Ratio measured = measure(stream);
    if (!measured.isKnown() || perSecond(measured) > fastest)
        return {};
    const bool isRight = perSecond(claimed) <= fastest &&
                         std::abs(perSecond(claimed) / perSecond(measured) - 1.0) <= tolerance;
    return isRight ? claimed : measured;
}

/// The rate of the times that packets have; unknown when there are not two.
Ratio FrameRates::measure(const AVStream& stream)
{
    if (!m_hasRead)
        readTimes();
    std::vector<std::int64_t>& times = m_times[stream.index];
    std::sort(times.begin(), times.end());
    times.erase(std::unique(times.begin(), times.end()), times.end());
    if (times.size() < 2 || stream.time_base.num <= 0 || stream.time_base.den <= 0)
        return {};
    return rateOf(static_cast<std::int64_t>(times.size()) - 1,
                  av_sat_sub64(times.back(), times.front()), stream.time_base);
}

/// Of the packets that come next; the first are those that libav has kept.
void FrameRates::readTimes()
{
    constexpr int mostPackets = 300;
    m_hasRead = true;
    const PacketPtr packet(av_packet_alloc());
    for (int i = 0; packet && i < mostPackets && av_read_frame(&m_context, packet.get()) >= 0;
         ++i) {
        const std::int64_t time = packet->pts == AV_NOPTS_VALUE ? packet->dts : packet->pts;
        if (time != AV_NOPTS_VALUE)
            m_times[packet->stream_index].push_back(time);
        av_packet_unref(packet.get());
    }
}

} // namespace engine
