// SPDX-License-Identifier: GPL-2.0-or-later
#include "bluray/titlerecord.h"

#include "bluray/clipinformation.h"

#include <algorithm>

namespace engine {

namespace {

double inSeconds(std::int64_t ticks)
{
    return static_cast<double>(ticks) / static_cast<double>(blurayTicksPerSecond);
}

std::vector<const char*> clipNames(const DiscTitle& title,
                                   const std::vector<const char*>& fileNames)
{
    std::vector<const char*> names;
    for (const DiscClip& clip : title.clips)
        names.push_back(fileNames[clip.file]);
    return names;
}

} // namespace

TitleRecord::TitleRecord(const DiscTitle& title, const std::vector<const char*>& fileNames,
                         std::size_t& clipBudget)
    : m_clips(clipNames(title, fileNames))
    , m_title()
{
    std::int64_t start = 0;
    for (const DiscClip& clip : title.clips) {
        m_starts.push_back(start);
        m_inTimes.push_back(inSeconds(clip.in));
        m_outTimes.push_back(inSeconds(clip.out));
        start += clip.out - clip.in;
    }
    m_title.clipCount = m_clips.count();
    m_title.clips = &m_clips;
    m_title.inTimes = m_inTimes.data();
    m_title.outTimes = m_outTimes.data();
    m_title.duration = inSeconds(start);

    for (std::size_t i = 0; i < title.chapters.size(); ++i) {
        const std::int64_t end = i + 1 < title.chapters.size() ? title.chapters[i + 1] : start;
        m_chapters.push_back(chapterRecord(title, title.chapters[i], end, clipBudget));
    }
}

AVBased::BDPlayInfo TitleRecord::chapterRecord(const DiscTitle& title, std::int64_t start,
                                               std::int64_t end, std::size_t& clipBudget)
{
    AVBased::BDPlayInfo record{};
    record.timeStamp = inSeconds(start);
    record.duration = inSeconds(end - start);
    record.inTimes = m_inTimes.data();
    record.outTimes = m_outTimes.data();
    const std::size_t first = clipAt(start);
    const std::size_t last = clipAt(std::max(start, end - 1));
    if (last >= clipBudget)
        return record;
    clipBudget -= last + 1;
    record.clipCount = static_cast<std::uint32_t>(last + 1);
    if (start == end) // a mark at the end, where nothing is left to play
        return record;
    const DiscClip& lastClip = title.clips[last];
    const std::int64_t in = title.clips[first].in + start - m_starts[first];
    const std::int64_t out = lastClip.in + end - m_starts[last];
    if (in != title.clips[first].in)
        record.inTimes = replaced(m_inTimes, last + 1, first, inSeconds(in));
    if (out != lastClip.out)
        record.outTimes = replaced(m_outTimes, last + 1, last, inSeconds(out));
    return record;
}

/// The clip that plays at `titleTime`; the last at the title's end.
std::size_t TitleRecord::clipAt(std::int64_t titleTime) const
{
    const auto behind = std::upper_bound(m_starts.begin(), m_starts.end(), titleTime);
    return static_cast<std::size_t>(behind - m_starts.begin()) - 1;
}

/// The first `count` of `times`, with another value at `index`.
const double* TitleRecord::replaced(const std::vector<double>& times, std::size_t count,
                                    std::size_t index, double value)
{
    m_chapterTimes.emplace_front(times.begin(), times.begin() + static_cast<std::ptrdiff_t>(count));
    m_chapterTimes.front()[index] = value;
    return m_chapterTimes.front().data();
}

} // namespace engine
