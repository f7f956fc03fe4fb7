// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "dvd/programchain.h"
#include "moviefacts.h"

#include <string>
#include <vector>

namespace engine {

/// The number that libav's demuxer gives to the video of every title.
constexpr int videoStreamId = 0x1E0;

/// The video of all titles of a set.
struct VideoAttributes
{
    bool isMpeg1 = false;
    bool isNtsc = false;
    Ratio displayAspect;
    int width = 0;  ///< pixels
    int height = 0; ///< pixels

    Ratio frameRate() const { return isNtsc ? Ratio{30000, 1001} : Ratio{25, 1}; }
    bool isWide() const { return displayAspect.numerator == 16; }
};

/// An audio track that a title has. Stream ids are those that libav's demuxer gives.
struct AudioTrack
{
    const char* codec = ""; ///< libav's short name
    int streamId = 0;
    std::string language; ///< two letters, or empty
    int channels = 0;
    int sampleRate = 0;    ///< hertz
    int codeExtension = 0; ///< what the disc says of the track's content, 0 for nothing

    /// `codeExtension` as a word, empty for nothing.
    const char* kind() const;
};

/// A subtitle track that a title has.
struct SubpictureTrack
{
    int streamId = 0;
    std::string language; ///< two letters, or empty
};

// Taken from the IFO file of a title set; `chain` says which of the set's streams its title has.

VideoAttributes parseVideoAttributes(const ByteView& ifo);

std::vector<AudioTrack> parseAudioTracks(const ByteView& ifo, const ProgramChain& chain,
                                         IfoFindings& findings);

std::vector<SubpictureTrack> parseSubpictureTracks(const ByteView& ifo, const ProgramChain& chain,
                                                   bool isWide, IfoFindings& findings);

} // namespace engine
