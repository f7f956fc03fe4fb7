// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "bluray/clipinformation.h"
#include "disc/discfiles.h"
#include "moviefacts.h"

#include <optional>
#include <string>

namespace engine {

/// What is known about a stream file.
struct StreamFileDescription
{
    MovieFacts movie;
    std::vector<ClockSequence> sequences; ///< at least one
};

/// What the disc tells about the stream file at `path`, as in "BDMV/STREAM/00001.m2ts".
std::optional<ClipInformation> findClipInformation(const DiscFiles& files, const std::string& path);

/// From the disc's clip information, which tells all without a look into the stream file.
StreamFileDescription describeByClipInformation(const ClipInformation& clip);

/// From the stream file itself, of which libav reads a few megabytes at most. Nothing when it is
/// missing or encrypted.
std::optional<StreamFileDescription> describeByStream(const DiscFiles& files,
                                                      const std::string& path);

/// When nothing can be read, from the time stamps between which playlists play the file: one stream
/// of an unknown kind that is so long.
StreamFileDescription describeByTimes(std::uint32_t start, std::uint32_t end);

} // namespace engine
