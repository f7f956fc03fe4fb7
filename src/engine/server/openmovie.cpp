// SPDX-License-Identifier: GPL-2.0-or-later
#include "server/openmovie.h"

namespace engine {

std::unique_ptr<OpenMovie> OpenMovie::open(ImporterPtr importer, int movie, int stream)
{
    SourcePtr source(importer->openSource(movie, stream, -1));
    if (!source)
        return nullptr;
    return std::unique_ptr<OpenMovie>(
        new OpenMovie(std::move(importer), std::move(source), movie, stream));
}

OpenMovie::OpenMovie(ImporterPtr importer, SourcePtr source, int movie, int stream)
    : m_importer(std::move(importer))
    , m_source(std::move(source))
    , m_movie(movie)
    , m_stream(stream)
{}

bool OpenMovie::change(int movie, int stream)
{
    m_source.reset(); // first, so that no two are open
    m_source.reset(m_importer->openSource(movie, stream, -1));
    m_movie = movie;
    m_stream = stream;
    m_seekMs.reset();
    m_reads = 0;
    m_frame = nullptr;
    return m_source != nullptr;
}

void OpenMovie::goTo(std::optional<std::int32_t> seekMs, std::uint32_t firstRead)
{
    if (seekMs == m_seekMs && m_reads == firstRead)
        return;
    if (seekMs != m_seekMs || m_reads > firstRead) {
        // What was sought in cannot be brought back to where it began.
        if (!seekMs && !change(m_movie, m_stream))
            return;
        if (seekMs)
            m_source->seek(*seekMs);
        m_seekMs = seekMs;
        m_reads = 0;
        m_frame = nullptr;
    }
    while (m_reads < firstRead && readOne().delivered()) {
    }
}

std::vector<wire::Read> OpenMovie::read(std::uint32_t count)
{
    std::vector<wire::Read> reads;
    while (m_source && reads.size() < count) {
        reads.push_back(readOne());
        if (!reads.back().delivered())
            break;
    }
    return reads;
}

wire::Read OpenMovie::readOne()
{
    std::int64_t positionMs = -1;
    std::int32_t flags = 0;
    m_frame = nullptr;
    const bool delivered = m_source->readFrame(&positionMs, &m_frame, &flags, 1);
    ++m_reads;
    return wire::Read(positionMs, delivered, m_frame != nullptr);
}

} // namespace engine
