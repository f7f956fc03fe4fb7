// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ahead/pictureorder.h"

#include <algorithm>

namespace engine {

namespace {

/// Items without pictures to pass over in one search: a library of music has nothing but these.
constexpr int mostPassedOver = 200;

} // namespace

void PictureOrder::add(const ItemRecordPtr& item)
{
    if (item->item().timeline && adoptTimeline(item))
        return;
    m_places[item.get()] = m_entries.size();
    m_entries.push_back({item, {}, false, {}});
}

void PictureOrder::add(const DiscRecordPtr& disc)
{
    m_entries.push_back({{}, disc, false, {}});
}

/// A disc's pictures are taken of a timeline of its files, which takes its place.
bool PictureOrder::adoptTimeline(const ItemRecordPtr& item)
{
    const Timeline& timeline = *item->item().timeline;
    for (std::size_t i = 0; i < m_entries.size() && !timeline.items.empty(); ++i) {
        const DiscRecordPtr disc = m_entries[i].disc.lock();
        if (!disc || !disc->file(timeline.items.front().path.c_str()))
            continue;
        m_entries[i].item = item;
        m_places[item.get()] = i;
        return true;
    }
    return false;
}

void PictureOrder::remove(const ItemRecord& item)
{
    const auto place = m_places.find(&item);
    if (place == m_places.end())
        return;
    Entry& entry = m_entries[place->second];
    entry.item.reset();
    entry.plan = {};
    entry.isPlanned = true;
    m_places.erase(place);
}

PictureOrder::Entry* PictureOrder::entryOf(const ItemRecord& item)
{
    const auto place = m_places.find(&item);
    return place == m_places.end() ? nullptr : &m_entries[place->second];
}

const std::vector<PlannedPicture>& PictureOrder::planOf(Entry& entry)
{
    const ItemRecordPtr item = entry.item.lock();
    if (!item || entry.isPlanned)
        return entry.plan;
    entry.isPlanned = true;
    if (!item->item().timeline)
        entry.plan = planPictures(*item);
    else if (const DiscRecordPtr disc = entry.disc.lock())
        entry.plan = planPictures(*disc);
    return entry.plan;
}

bool PictureOrder::goTo(const ItemRecord& item, std::int32_t movie, std::int32_t stream,
                        std::int32_t seekMs)
{
    Entry* entry = entryOf(item);
    if (!entry)
        return false;
    const auto& plan = planOf(*entry);
    const auto isIt = [=](const PlannedPicture& planned) {
        return planned.movie == movie && planned.stream == stream && planned.seekMs == seekMs;
    };
    // Mostly it is the one behind the last; some stand in a plan twice.
    const std::size_t index = m_places[&item];
    const std::size_t begin =
        index == m_asked.entry ? std::min(m_asked.picture, plan.size()) : std::size_t{0};
    auto found = std::find_if(plan.begin() + static_cast<std::ptrdiff_t>(begin), plan.end(), isIt);
    if (found == plan.end())
        found = std::find_if(plan.begin(), plan.end(), isIt);
    if (found == plan.end())
        return false;
    const Place place = {index, static_cast<std::size_t>(found - plan.begin())};
    // Whoever goes back begins anew.
    if (place < m_asked || m_given < place)
        m_given = {place.entry, place.picture + 1};
    m_asked = place;
    return true;
}

std::optional<PlannedPicture> PictureOrder::firstOf(const ItemRecord& item, std::int32_t movie,
                                                    std::int32_t stream)
{
    Entry* entry = entryOf(item);
    if (!entry)
        return std::nullopt;
    for (const PlannedPicture& planned : planOf(*entry)) {
        if (planned.movie == movie && planned.stream == stream)
            return planned;
    }
    return std::nullopt;
}

std::optional<PictureOrder::Picture> PictureOrder::next()
{
    for (int passed = 0; m_given.entry < m_entries.size() && passed < mostPassedOver; ++passed) {
        Entry& entry = m_entries[m_given.entry];
        const auto& plan = planOf(entry);
        const ItemRecordPtr item = entry.item.lock();
        if (item && m_given.picture < plan.size())
            return Picture{item, plan[m_given.picture++]};
        m_given = {m_given.entry + 1, 0};
    }
    return std::nullopt;
}

} // namespace engine
