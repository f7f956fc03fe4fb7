// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspavbased/dvdrecords.h"

namespace AVBased {

/// The structure of a DVD. The importer's movies are the titles of all title sets in order, those
/// of unusable sets included.
class IDVDInfo
{
public:
    /// The number of title sets.
    virtual std::uint32_t titleSetCount() = 0;

    /// The set at `index`, counted from 0; null when there is none.
    virtual const DVDTitleSetInfo* titleSet(std::uint32_t index) = 0;

    /// Whether the video of the disc at `utf8Path` is scrambled.
    virtual bool isDiscScrambled(const char* utf8Path) = 0;

    /// Whether the movie is the one that a person would call the film.
    virtual bool isMainTitle(std::int32_t movieId) = 0;

protected:
    ~IDVDInfo() {}
};

} // namespace AVBased
