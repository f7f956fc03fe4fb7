// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "libav.h"
#include "moviefacts.h"

#include <map>
#include <optional>
#include <vector>

namespace engine {

/// The length of a stream in seconds: its own, else the file's.
std::optional<double> durationOf(const AVFormatContext& context, AVStream& stream);

/// The length of the file in units of AV_TIME_BASE; 0 for unknown.
std::int64_t durationOf(const AVFormatContext& context);

/// The frame rates of an open file's streams. To check one that few films have it reads on in the
/// file.
class FrameRates
{
public:
    explicit FrameRates(AVFormatContext& context)
        : m_context(context)
    {}

    Ratio of(AVStream& stream);

private:
    Ratio measure(const AVStream& stream);
    void readTimes();

    AVFormatContext& m_context;
    bool m_hasRead = false;
    std::map<int, std::vector<std::int64_t>> m_times; ///< of packets, by the stream's index
};

} // namespace engine
