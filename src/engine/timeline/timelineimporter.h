// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "enginelink/timeline/timeline.h"
#include "moviefacts.h"
#include "opening.h"
#include "vspavbased/iavimporter.h"

#include <memory>
#include <string>

namespace engine {

/// A timeline file: one movie with one video stream, both called 0, which plays the file's sources
/// one after another. Only files that this process has written are opened: a timeline may name any
/// file. It is read as a whole then, and removed when the importer is released (see
/// TimelineEditor).
class TimelineImporter final : public AVBased::IAVImporter
{
public:
    static Opening open(const std::string& path);

    const AVBased::AVImporterDescriptor* descriptor() override;
    void* queryExtension(const char* name) override;
    std::uint32_t movieCount() override;
    const AVBased::AVMovieInfo* movieInfo(std::uint32_t index) override;
    AVBased::IAVSource* openSource(std::int32_t movieId, std::int32_t videoStreamId,
                                   std::int32_t audioStreamId) override;
    void close() override;
    void release() override;

private:
    TimelineImporter(const std::string& path, Timeline timeline);
    ~TimelineImporter() = default;

    std::string m_path;
    std::shared_ptr<const Timeline> m_timeline;
    MovieRecord m_movie;
};

} // namespace engine
