// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "enginelink/timeline/timeline.h"
#include "vspavbased/iavimporter.h"
#include "vspavbased/isimpleedittimeline.h"

#include <cstddef>

namespace engine {

/// The "SimpleEditImporter": an edit timeline that is built source by source and written to a file.
/// It plays nothing itself; the importer of that file does.
///
/// The file belongs to whoever named it until an importer of this process has opened it. When that
/// importer is released the file is removed, since the module puts it in the temporary folder and
/// leaves it there (see WrittenTimelines).
class TimelineEditor final : public AVBased::IAVImporter, private AVBased::ISimpleEditTimeLine
{
public:
    const AVBased::AVImporterDescriptor* descriptor() override;
    void* queryExtension(const char* name) override;
    std::uint32_t movieCount() override;
    const AVBased::AVMovieInfo* movieInfo(std::uint32_t index) override;
    AVBased::IAVSource* openSource(std::int32_t movieId, std::int32_t videoStreamId,
                                   std::int32_t audioStreamId) override;
    void close() override;
    void release() override;

private:
    ~TimelineEditor() = default;

    void saveToFile(const char* utf8Path) override;
    std::int32_t applyFormat(const AVBased::FormatRecord* format) override;
    void insertSource(std::int32_t position, const AVBased::SourceRecord* source) override;
    void reset() override;
    void selectItem(std::int32_t index) override;

    Timeline m_timeline;
    std::size_t m_inserted = 0; ///< the item inserted last; behind the last one if there is none
};

} // namespace engine
