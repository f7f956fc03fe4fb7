// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspavbased/vspavbasedglobal.h"

namespace AVBased {

/// Values of AVStreamInfo::kind. Any other value is an unknown kind.
enum StreamKind
{
    StreamKindVideo = 1,
    StreamKindAudio = 2,
    StreamKindSubtitle = 3
};

/// One elementary stream. Texts are Latin-1, never null. 0 stands for unknown in every number.
struct AVStreamInfo
{
    const char* name;      ///< the stream's title
    std::int32_t kind;     ///< a StreamKind
    std::int32_t id;       ///< key for IAVImporter::openSource()
    const char* codecName; ///< short lower-case name, as in "h264"
    char fourcc[4];        ///< printable, not zero-terminated
    const char*
        language; ///< mostly a code of two or three letters; as it is written in the file, or empty
    std::int32_t width;        ///< pixels, before rotation and pixel aspect
    std::int32_t height;       ///< pixels
    std::uint64_t frameRate;   ///< numerator in the high 32 bits, denominator in the low
    std::uint32_t aspectRatio; ///< display ratio, numerator in the high 16 bits
    std::int32_t sampleRate;   ///< hertz
    std::int32_t channels;     ///< of audio
    std::uint32_t reserved52;
    std::uint64_t channelLayout; ///< a bit a loudspeaker, front left lowest
    std::int32_t bitRate;        ///< bits a second
    std::uint32_t reserved68;
    double duration; ///< seconds
};

AVBASED_ASSERT_OFFSET(AVStreamInfo, name, 0);
AVBASED_ASSERT_OFFSET(AVStreamInfo, kind, 4);
AVBASED_ASSERT_OFFSET(AVStreamInfo, id, 8);
AVBASED_ASSERT_OFFSET(AVStreamInfo, codecName, 12);
AVBASED_ASSERT_OFFSET(AVStreamInfo, fourcc, 16);
AVBASED_ASSERT_OFFSET(AVStreamInfo, language, 20);
AVBASED_ASSERT_OFFSET(AVStreamInfo, width, 24);
AVBASED_ASSERT_OFFSET(AVStreamInfo, height, 28);
AVBASED_ASSERT_OFFSET(AVStreamInfo, frameRate, 32);
AVBASED_ASSERT_OFFSET(AVStreamInfo, aspectRatio, 40);
AVBASED_ASSERT_OFFSET(AVStreamInfo, sampleRate, 44);
AVBASED_ASSERT_OFFSET(AVStreamInfo, channels, 48);
AVBASED_ASSERT_OFFSET(AVStreamInfo, channelLayout, 56);
AVBASED_ASSERT_OFFSET(AVStreamInfo, bitRate, 64);
AVBASED_ASSERT_OFFSET(AVStreamInfo, duration, 72);
AVBASED_ASSERT_SIZE(AVStreamInfo, 80);

/// One tag of a movie. Texts are Latin-1, never null.
struct AVMetaItem
{
    const char* key;   ///< what the tag is about: "title"
    const char* value; ///< what it says
};

AVBASED_ASSERT_OFFSET(AVMetaItem, key, 0);
AVBASED_ASSERT_OFFSET(AVMetaItem, value, 4);
AVBASED_ASSERT_SIZE(AVMetaItem, 8);

/// One movie of an importer, or one stream file of a Blu-ray disc.
struct AVMovieInfo
{
    const char* name;            ///< UTF-8; empty when the movie has none
    std::int32_t id;             ///< key for openSource() and IDVDInfo::isMainTitle()
    std::uint32_t streamCount;   ///< number of `streams`
    const AVStreamInfo* streams; ///< `streamCount` records
    std::uint32_t metaCount;     ///< number of `meta`
    const AVMetaItem* meta;      ///< `metaCount` records, in the file's order
    const char* format;          ///< short name of the container, Latin-1
};

AVBASED_ASSERT_OFFSET(AVMovieInfo, name, 0);
AVBASED_ASSERT_OFFSET(AVMovieInfo, id, 4);
AVBASED_ASSERT_OFFSET(AVMovieInfo, streamCount, 8);
AVBASED_ASSERT_OFFSET(AVMovieInfo, streams, 12);
AVBASED_ASSERT_OFFSET(AVMovieInfo, metaCount, 16);
AVBASED_ASSERT_OFFSET(AVMovieInfo, meta, 20);
AVBASED_ASSERT_OFFSET(AVMovieInfo, format, 24);
AVBASED_ASSERT_SIZE(AVMovieInfo, 28);

} // namespace AVBased
