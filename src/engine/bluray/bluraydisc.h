// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "moviefacts.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace engine {

/// A stream file of a disc.
struct DiscStreamFile
{
    std::string name; ///< without folder, as in "00001.m2ts"
    MovieFacts movie;
};

/// A part of a stream file that a title plays. Times in ticks of 1/45000 s from the start of the
/// file, inside it; never empty.
struct DiscClip
{
    std::size_t file; ///< index into BlurayDisc::files
    std::int64_t in;
    std::int64_t out;
};

/// A playlist that plays something.
struct DiscTitle
{
    std::string name; ///< of the playlist file
    std::vector<DiscClip> clips;
    std::vector<std::int64_t> chapters; ///< where they begin in the title, in ticks, ascending

    /// Length of all clips, in ticks.
    std::int64_t duration() const;
};

/// What a Blu-ray disc says about itself, with all that cannot be left out. All indexes in it
/// exist.
struct BlurayDisc
{
    std::string name; ///< UTF-8
    bool isProtected = false;
    std::string streamFolder;          ///< what stands before a stream file's name in its path
    std::vector<DiscStreamFile> files; ///< sorted by name
    std::vector<DiscTitle> titles;     ///< sorted by name
};

/// Reads the disc at `path`, a folder or an image. Null when there is none. Damaged parts of a disc
/// are left out and named in the log. No file stays open.
///
/// Playlists and clip information are taken apart here rather than by libbluray: that crashes on
/// about one damaged disc in ten, and the XML parser behind it writes to standard error.
std::unique_ptr<BlurayDisc> readBlurayDisc(const std::string& path);

} // namespace engine
