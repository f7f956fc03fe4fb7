// SPDX-License-Identifier: GPL-2.0-or-later
#include "timeline/timelinesource.h"

#include <algorithm>

namespace engine {

namespace {

/// What a picture takes: its frame is the fourth behind the position.
constexpr int framesOfPicture = 4;

constexpr std::int64_t ticksPerMs = blurayTicksPerSecond / 1000;

} // namespace

TimelineSource::TimelineSource(std::shared_ptr<const Timeline> timeline)
    : m_timeline(std::move(timeline))
    , m_starts({0})
{
    for (const TimelineItem& item : m_timeline->items)
        m_starts.push_back(m_starts.back() + item.lengthMs());
}

void TimelineSource::seek(std::int32_t positionMs)
{
    const std::int64_t position = std::max(positionMs, 0);
    forgetFrame();
    m_framesToStay = framesOfPicture;
    const auto behind = std::upper_bound(m_starts.begin(), m_starts.end(), position);
    PictureBudget::Work work(m_budget);
    if (goToItem(static_cast<std::size_t>(behind - m_starts.begin()) - 1, position))
        work.succeeded();
}

bool TimelineSource::readNext()
{
    PictureBudget::Work work(m_budget);
    if (!readOn())
        return false;
    work.succeeded();
    return true;
}

bool TimelineSource::readOn()
{
    const bool mustStay = m_framesToStay > 0;
    if (readFromItem() || (mustStay && m_frame.picture)) {
        m_framesToStay -= mustStay ? 1 : 0;
        return true;
    }
    if (mustStay)
        return false;
    while (m_following < m_timeline->items.size()) {
        if (goToItem(m_following, m_starts[m_following]) && readFromItem())
            return true;
    }
    return false;
}

/// The item is over with its last frame, or with the first one at the end of the part that is
/// played.
bool TimelineSource::readFromItem()
{
    FramePtr picture = m_reader ? m_reader->next() : nullptr;
    if (!picture)
        return false;
    const std::size_t index = m_following - 1;
    const TimelineItem& item = m_timeline->items[index];
    const std::int64_t ticks = m_reader->positionOf(*picture).value_or(0);
    const std::int64_t inItemMs = std::max<std::int64_t>(ticks / ticksPerMs - item.inMs, 0);
    if (inItemMs >= item.lengthMs()) {
        m_reader.reset();
        return false;
    }
    m_frameMs = m_starts[index] + inItemMs;
    m_frame = m_reader->shownAs(std::move(picture));
    return true;
}

/// Makes the item the one that is being read, from that position of the timeline on. False when it
/// has no frames there.
bool TimelineSource::goToItem(std::size_t index, std::int64_t positionMs)
{
    const bool isOpen = m_reader && m_following == index + 1;
    if (!isOpen)
        m_reader.reset(); // first, so that no two files are open
    m_following = std::min(index + 1, m_timeline->items.size());
    if (index >= m_timeline->items.size() || m_unusable.count(index) > 0 || m_budget.isUsedUp())
        return false;
    const TimelineItem& item = m_timeline->items[index];
    if (item.lengthMs() == 0)
        return false;
    if (!isOpen)
        m_reader = StreamReader::open(item.path, item.videoStream, m_budget);
    const std::int64_t inFileMs = positionMs - m_starts[index] + item.inMs;
    if (m_reader && m_reader->seek(inFileMs * ticksPerMs))
        return true;
    // Disc after disc of clips that each take as long as a picture may would never end.
    if (!m_reader || m_reader->tookTooLong())
        m_unusable.insert(index);
    m_reader.reset();
    return false;
}

} // namespace engine
