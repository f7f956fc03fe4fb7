// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "ahead/pictureplan.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

namespace engine {

/// In which order pictures will probably be asked for: item after item as they were described in
/// this import, and within each as planned.
class PictureOrder
{
public:
    struct Picture
    {
        ItemRecordPtr item;
        PlannedPicture planned;
    };

    /// Items and discs in the order in which they are described.
    void add(const ItemRecordPtr& item);
    void add(const DiscRecordPtr& disc);
    void remove(const ItemRecord& item);

    /// Goes to the place of that picture. False when it is not planned, or the item is not known.
    bool goTo(const ItemRecord& item, std::int32_t movie, std::int32_t stream, std::int32_t seekMs);

    /// The first picture planned of that movie.
    std::optional<PlannedPicture> firstOf(const ItemRecord& item, std::int32_t movie,
                                          std::int32_t stream);

    /// The next picture behind those that were given since goTo() and before; none at the end.
    std::optional<Picture> next();

private:
    struct Entry
    {
        std::weak_ptr<const ItemRecord> item;
        std::weak_ptr<const DiscRecord> disc; ///< of a disc, and of the timeline of its files
        bool isPlanned = false;
        std::vector<PlannedPicture> plan;
    };

    /// Of a picture: an entry and one of its plan.
    struct Place
    {
        std::size_t entry = 0;
        std::size_t picture = 0;

        bool operator<(const Place& other) const
        {
            return entry != other.entry ? entry < other.entry : picture < other.picture;
        }
    };

    Entry* entryOf(const ItemRecord& item);
    const std::vector<PlannedPicture>& planOf(Entry& entry);
    bool adoptTimeline(const ItemRecordPtr& item);

    std::vector<Entry> m_entries;
    std::unordered_map<const ItemRecord*, std::size_t> m_places; ///< in m_entries
    Place m_asked;                                               ///< of the picture asked for last
    Place m_given;                                               ///< behind the one given last
};

} // namespace engine
