// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "deadline.h"
#include "media/reopening.h"
#include "moviefacts.h"
#include "opening.h"
#include "vspavbased/iavimporter.h"
#include "vspavbased/imovieinfoext.h"

#include <memory>
#include <string>
#include <vector>

namespace engine {

/// A media file: one movie, whose id is 0 and whose stream ids are libav's stream indexes. Once the
/// description is made the file is closed; a source opens it anew.
class MediaImporter final : public AVBased::IAVImporter, private AVBased::IMovieInfoExt
{
public:
    static Opening open(const std::string& path);

    /// An importer of a file that was described before, for its sources alone: it knows nothing
    /// else of it. Owned by the caller.
    static MediaImporter* reopen(const std::string& path, const Reopening& reopening);

    const Reopening& reopening() const { return m_reopening; }

    const AVBased::AVImporterDescriptor* descriptor() override;
    void* queryExtension(const char* name) override;
    std::uint32_t movieCount() override;
    const AVBased::AVMovieInfo* movieInfo(std::uint32_t index) override;
    AVBased::IAVSource* openSource(std::int32_t movieId, std::int32_t videoStreamId,
                                   std::int32_t audioStreamId) override;
    void close() override;
    void release() override;

private:
    MediaImporter(const std::string& path, Reopening reopening);
    MediaImporter(const std::string& path, AVFormatContext& context, Deadline& deadline);
    ~MediaImporter() = default;

    const char* value(const char* key) override;

    std::string m_path;
    MovieRecord m_movie;
    Reopening m_reopening;
    bool m_isProtected;
};

} // namespace engine
