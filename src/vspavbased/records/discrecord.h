// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "enginelink/bdlist.h"
#include "enginelink/channel.h"
#include "records/movierecord.h"
#include "vspavbased/bdrecords.h"

#include <deque>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace engine {

/// A described Blu-ray disc as the boundary's records, with the message that they point into. Never
/// changes, so it is shared between threads.
class DiscRecord
{
public:
    /// Null when no engine can have said that.
    static std::shared_ptr<const DiscRecord> make(const std::string& path, wire::Letter letter);

    const wire::Disc& told() const { return *m_letter.as<wire::DiscRead>()->disc(); }

    const AVBased::BDDiscInfo* disc() const { return &m_disc; }
    const std::vector<const char*>& titleNames() const { return m_titleNames; }
    const std::vector<const char*>& fileNames() const { return m_fileNames; }
    /// Null where the disc has none of that name.
    const AVBased::BDPlayInfo* title(const char* name) const;
    const std::vector<AVBased::BDPlayInfo>* chapters(const char* title) const;
    const AVBased::AVMovieInfo* file(const char* name) const;

    DiscRecord(const DiscRecord&) = delete;
    DiscRecord& operator=(const DiscRecord&) = delete;

private:
    struct Title
    {
        std::unique_ptr<BdList> clips;
        AVBased::BDPlayInfo record;
        std::vector<AVBased::BDPlayInfo> chapters;
    };

    explicit DiscRecord(wire::Letter letter);

    Title makeTitle(const wire::Title& title) const;
    const double* times(std::uint32_t index) const;
    const Title* findTitle(const char* name) const;

    wire::Letter m_letter;
    AVBased::BDDiscInfo m_disc;
    std::vector<const char*> m_fileNames;
    std::vector<const char*> m_titleNames;
    std::unordered_map<std::string, std::unique_ptr<MovieRecord>> m_files; ///< null: nothing known
    std::unordered_map<std::string, Title> m_titles;
};

using DiscRecordPtr = std::shared_ptr<const DiscRecord>;

} // namespace engine
