// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "engine_generated.h"
#include "vspavbased/movierecords.h"

#include <vector>

namespace engine {

/// A movie of a message as the boundary's record. Its texts are the message's, which lives longer.
class MovieRecord
{
public:
    explicit MovieRecord(const wire::Movie& movie);

    const AVBased::AVMovieInfo* get() const { return &m_record; }

    MovieRecord(const MovieRecord&) = delete;
    MovieRecord& operator=(const MovieRecord&) = delete;

private:
    std::vector<AVBased::AVStreamInfo> m_streams;
    std::vector<AVBased::AVMetaItem> m_tags;
    AVBased::AVMovieInfo m_record;
};

} // namespace engine
