// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "enginelink/ratio.h"
#include "vspavbased/movierecords.h"

#include <forward_list>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace engine {

/// The largest number of an aspect ratio at the boundary.
constexpr int largestInAspect = 0xFFFF;

/// Frame rates and aspect ratios as the boundary packs them; 0 for those that do not fit.
std::uint64_t packFrameRate(const Ratio& rate);
std::uint32_t packAspect(const Ratio& aspect);

/// What is known about one stream; texts in UTF-8.
struct StreamFacts
{
    std::string name;
    int kind = 0; ///< an AVBased::StreamKind, 0 for unknown
    int id = -1;
    std::string codec;
    std::string fourcc = "    "; ///< four printable characters
    std::string language;
    int width = 0;
    int height = 0;
    Ratio frameRate;
    Ratio displayAspect;
    int sampleRate = 0;
    int channels = 0;
    std::uint64_t channelLayout = 0;
    int bitRate = 0;
    std::optional<double> duration; ///< seconds
};

/// What is known about one movie; texts in UTF-8.
struct MovieFacts
{
    std::string name;
    int id = 0;
    std::string format;
    std::vector<StreamFacts> streams;
    std::vector<std::pair<std::string, std::string>> tags;
};

/// The same as the boundary's record, with all that it points to.
class MovieRecord
{
public:
    explicit MovieRecord(const MovieFacts& facts);

    const AVBased::AVMovieInfo* get() const { return &m_record; }

    MovieRecord(const MovieRecord&) = delete;
    MovieRecord& operator=(const MovieRecord&) = delete;

private:
    const char* keep(std::string text);

    std::forward_list<std::string> m_texts;
    std::vector<AVBased::AVStreamInfo> m_streams;
    std::vector<AVBased::AVMetaItem> m_tags;
    AVBased::AVMovieInfo m_record;
};

} // namespace engine
