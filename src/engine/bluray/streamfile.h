// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "bluray/clipinformation.h"
#include "disc/discfiles.h"
#include "libav.h"
#include "media/demuxer.h"
#include "moviefacts.h"

#include <memory>
#include <optional>
#include <string>

namespace engine {

/// The unit of times on the disc, as libav writes it.
constexpr AVRational blurayTickBase = {1, static_cast<int>(blurayTicksPerSecond)};

/// Stream files are made of packets of a transport stream, with four bytes before each that only
/// players need.
constexpr int streamPacketSize = 192;
constexpr int streamPacketHeader = 4;

/// The stream file at `path`, as in "BDMV/STREAM/00001.m2ts". Null, with the reason in the log,
/// when it cannot be opened.
std::unique_ptr<Demuxer> openStreamFile(const DiscFiles& files, const std::string& path);

/// What is known about a stream file.
struct StreamFileDescription
{
    MovieFacts movie;
    std::vector<ClockSequence> sequences; ///< at least one
};

/// What the disc tells about the stream file at `path`.
std::optional<ClipInformation> findClipInformation(const DiscFiles& files, const std::string& path);

/// From the disc's clip information, which tells all without a look into the stream file.
StreamFileDescription describeByClipInformation(const ClipInformation& clip);

/// From the stream file itself, of which libav reads a few megabytes at most. Nothing when it is
/// missing or encrypted.
std::optional<StreamFileDescription> describeByStream(const DiscFiles& files,
                                                      const std::string& path);

/// Whether it is left open how many channels some of the sound has, or its sample rate: clip
/// information has one code for all numbers of channels above two, and codes for few rates.
bool lacksSound(const MovieFacts& movie);

/// Fills in what clip information leaves open of the sound, its channels and its sample rate, from
/// the stream file, of which libav reads a few megabytes at most. Changes nothing when that is
/// missing or encrypted.
void completeSound(const DiscFiles& files, const std::string& path, MovieFacts& movie);

/// When nothing can be read, from the time stamps between which playlists play the file: one stream
/// of an unknown kind that is so long.
StreamFileDescription describeByTimes(std::uint32_t start, std::uint32_t end);

} // namespace engine
