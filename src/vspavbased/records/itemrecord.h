// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "enginelink/channel.h"
#include "process/job.h"
#include "records/movierecord.h"
#include "vspavbased/dvdrecords.h"
#include "vspavbased/iavimporter.h"

#include <deque>
#include <memory>
#include <vector>

namespace engine {

/// A described item as the boundary's records, with the message that they point into. Never
/// changes, so it is shared between threads.
class ItemRecord
{
public:
    /// Null when no engine can have said that.
    static std::shared_ptr<const ItemRecord> make(const Item& item, wire::Letter letter);

    const Item& item() const { return m_item; }
    const wire::Item& told() const { return *m_letter.as<wire::Described>()->item(); }

    const AVBased::AVImporterDescriptor* descriptor() const { return &m_descriptor; }
    std::uint32_t movieCount() const { return static_cast<std::uint32_t>(m_movies.size()); }
    /// Null when there is none.
    const AVBased::AVMovieInfo* movie(std::uint32_t index) const;
    /// The movie with that id; null when there is none.
    const wire::Movie* movieWithId(std::int32_t id) const;

    bool isDvd() const { return told().dvd() != nullptr; }
    /// Of a media file, whether its streams are encrypted.
    bool isProtected() const;
    std::uint32_t titleSetCount() const { return static_cast<std::uint32_t>(m_titleSets.size()); }
    const AVBased::DVDTitleSetInfo* titleSet(std::uint32_t index) const;

    ItemRecord(const ItemRecord&) = delete;
    ItemRecord& operator=(const ItemRecord&) = delete;

private:
    ItemRecord(const Item& item, wire::Letter letter);

    void makeTitleSets();

    Item m_item;
    wire::Letter m_letter;
    AVBased::AVImporterDescriptor m_descriptor;
    std::deque<MovieRecord> m_movies;
    std::deque<std::vector<AVBased::DVDTitleInfo>> m_titles; ///< of each set
    std::vector<AVBased::DVDTitleSetInfo> m_titleSets;
};

using ItemRecordPtr = std::shared_ptr<const ItemRecord>;

} // namespace engine
