// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "engine_generated.h"
#include "vspavbased/iavimporter.h"
#include "vspavbased/iavsource.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace engine {

/// Ends an object of the engine's.
struct Release
{
    template <typename T>
    void operator()(T* object) const
    {
        object->release();
    }
};

using ImporterPtr = std::unique_ptr<AVBased::IAVImporter, Release>;
using SourcePtr = std::unique_ptr<AVBased::IAVSource, Release>;

/// A movie whose frames are being read, and how far: requests for the next frames, or for a picture
/// of the last, go on from there.
class OpenMovie
{
public:
    /// Opens a movie of the importer, which it keeps. Null when it cannot be opened.
    static std::unique_ptr<OpenMovie> open(ImporterPtr importer, int movie, int stream);

    /// Opens another movie of the same importer in the place of this one.
    bool change(int movie, int stream);

    /// Not when a change has failed: then nothing is open.
    bool is(int movie, int stream) const
    {
        return m_source && movie == m_movie && stream == m_stream;
    }

    /// Makes `firstRead` the number of the next read after that seek, reading again what must be.
    void goTo(std::optional<std::int32_t> seekMs, std::uint32_t firstRead);

    /// Reads the next `count` frames, or fewer when there are no more.
    std::vector<wire::Read> read(std::uint32_t count);

    /// The frame of the last read; null when it gave none.
    AVBased::IAVFrame* frame() const { return m_frame; }

private:
    OpenMovie(ImporterPtr importer, SourcePtr source, int movie, int stream);

    wire::Read readOne();

    ImporterPtr m_importer; // outlives the source
    SourcePtr m_source;
    int m_movie;
    int m_stream;
    std::optional<std::int32_t> m_seekMs;
    std::uint32_t m_reads = 0; ///< since the seek
    AVBased::IAVFrame* m_frame = nullptr;
};

} // namespace engine
