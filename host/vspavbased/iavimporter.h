// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspavbased/movierecords.h"

namespace AVBased {

class IAVSource;

/// What kind of importer an importer is.
struct AVImporterDescriptor
{
    const char* kind; ///< "media", "dvd" or "timeline"
    const char* name; ///< display name of the importer
};

AVBASED_ASSERT_OFFSET(AVImporterDescriptor, name, 4);

/// An opened item: one movie or several. Holds no file and no demuxer while idle.
class IAVImporter
{
public:
    /// Never null. Owned by the importer.
    virtual const AVImporterDescriptor* descriptor() = 0;

    /// The extension of that name ("IMovieInfoExt", "IDVDInfo", "ISimpleEditTimeLine"), or null.
    /// It is part of the importer and is not released. Cast the result to the interface.
    virtual void* queryExtension(const char* name) = 0;

    virtual void reserved2() {}
    virtual void reserved3() {}

    /// The number of movies: 1 for a media file, one a title for a DVD.
    virtual std::uint32_t movieCount() = 0;

    /// The movie at `index`, counted from 0; null when there is none.
    virtual const AVMovieInfo* movieInfo(std::uint32_t index) = 0;

    virtual void reserved6() {}

    /// A source of the movie's frames. Only the video stream is decoded; a negative audio stream id
    /// means none. Owned by the caller, to be released before the importer. Null when the movie or
    /// the stream does not exist or cannot be opened.
    virtual IAVSource* openSource(std::int32_t movieId, std::int32_t videoStreamId,
                                  std::int32_t audioStreamId) = 0;

    virtual void reserved8() {}

    /// Always called right before release().
    virtual void close() = 0;

    /// Ends the importer.
    virtual void release() = 0;

protected:
    ~IAVImporter() {}
};

} // namespace AVBased
