// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspavbased/vspavbasedglobal.h"

namespace AVBased {

/// One subtitle stream of a DVD title.
struct DVDSubpictureInfo
{
    const char* name;       ///< language code of two letters, or empty; ASCII
    std::uint32_t streamId; ///< the id that the title's movie gives the stream
};

AVBASED_ASSERT_OFFSET(DVDSubpictureInfo, name, 0);
AVBASED_ASSERT_OFFSET(DVDSubpictureInfo, streamId, 4);
AVBASED_ASSERT_SIZE(DVDSubpictureInfo, 8);

/// One audio track of a DVD title.
struct DVDAudioInfo
{
    const char* codec;           ///< as in "ac3", "dts", "mp2", "pcm_dvd", or empty; ASCII
    const char* language;        ///< code of two letters, or empty; ASCII
    const char* kind;            ///< "normal", "impaired", "commentary", "commentary2" or empty
    std::uint32_t streamId;      ///< the id that the title's movie gives the stream
    std::uint32_t channels;      ///< 0 when unknown
    std::uint32_t sampleRate;    ///< hertz
    std::uint32_t codeExtension; ///< the disc's own code for `kind`, 0 for none
};

AVBASED_ASSERT_OFFSET(DVDAudioInfo, codec, 0);
AVBASED_ASSERT_OFFSET(DVDAudioInfo, language, 4);
AVBASED_ASSERT_OFFSET(DVDAudioInfo, kind, 8);
AVBASED_ASSERT_OFFSET(DVDAudioInfo, streamId, 12);
AVBASED_ASSERT_OFFSET(DVDAudioInfo, codeExtension, 24);
AVBASED_ASSERT_SIZE(DVDAudioInfo, 28);

/// One title of a DVD.
struct DVDTitleInfo
{
    enum
    {
        MaxSubpictures = 32,
        MaxAudioTracks = 8
    };

    std::uint32_t reserved0[2];
    double duration;             ///< seconds
    std::uint32_t chapterCount;  ///< number of `chapterStarts`
    const double* chapterStarts; ///< `chapterCount` times in seconds
    std::uint32_t reserved24[2];
    std::uint32_t subpictureCount;                 ///< at most MaxSubpictures
    DVDSubpictureInfo subpictures[MaxSubpictures]; ///< in the disc's order
    std::uint32_t audioCount;                      ///< at most MaxAudioTracks
    DVDAudioInfo audio[MaxAudioTracks];            ///< in the disc's order
    std::uint32_t reserved520[4];
};

AVBASED_ASSERT_OFFSET(DVDTitleInfo, duration, 8);
AVBASED_ASSERT_OFFSET(DVDTitleInfo, chapterCount, 16);
AVBASED_ASSERT_OFFSET(DVDTitleInfo, chapterStarts, 20);
AVBASED_ASSERT_OFFSET(DVDTitleInfo, subpictureCount, 32);
AVBASED_ASSERT_OFFSET(DVDTitleInfo, subpictures, 36);
AVBASED_ASSERT_OFFSET(DVDTitleInfo, audioCount, 292);
AVBASED_ASSERT_OFFSET(DVDTitleInfo, audio, 296);
AVBASED_ASSERT_SIZE(DVDTitleInfo, 536);

/// A group of titles that share their files.
struct DVDTitleSetInfo
{
    enum
    {
        UnusableId = -1
    };

    std::int32_t id; ///< number of the set, or UnusableId
    std::uint32_t reserved4[129];
    std::uint32_t titleCount;   ///< number of `titles`
    const DVDTitleInfo* titles; ///< `titleCount` records
};

AVBASED_ASSERT_OFFSET(DVDTitleSetInfo, id, 0);
AVBASED_ASSERT_OFFSET(DVDTitleSetInfo, titleCount, 520);
AVBASED_ASSERT_OFFSET(DVDTitleSetInfo, titles, 524);
AVBASED_ASSERT_SIZE(DVDTitleSetInfo, 528);

} // namespace AVBased
