// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspavbased/vspavbasedglobal.h"

namespace AVBased {

class IBDList;

/// A Blu-ray disc as a whole.
struct BDDiscInfo
{
    const char* name;       ///< Latin-1; empty when the disc has none
    std::uint8_t scrambled; ///< non-zero: the streams are encrypted
};

AVBASED_ASSERT_OFFSET(BDDiscInfo, name, 0);
AVBASED_ASSERT_OFFSET(BDDiscInfo, scrambled, 4);

/// What a title plays, or one entry of a title's chapter array. Times in seconds; clip times count
/// from the start of the stream file.
///
/// Entry j of a chapter's times belongs to the title's clip j. A chapter that ends in clip m has
/// `clipCount` m + 1: the clips that it plays have the times that it plays, and those before it the
/// title's own. What a chapter plays is from `timeStamp` on for `duration`, whatever its clips.
struct BDPlayInfo
{
    std::uint32_t clipCount; ///< entries of `clips` and of both lists of times
    IBDList* clips;          ///< each item named after its stream file; null in chapter entries
    const double* inTimes;   ///< `clipCount` times
    const double* outTimes;  ///< `clipCount` times
    double timeStamp;        ///< chapter entries: start within the title
    double duration;         ///< of the title, or of the chapter
    std::uint32_t reserved32[2];
};

AVBASED_ASSERT_OFFSET(BDPlayInfo, clipCount, 0);
AVBASED_ASSERT_OFFSET(BDPlayInfo, clips, 4);
AVBASED_ASSERT_OFFSET(BDPlayInfo, inTimes, 8);
AVBASED_ASSERT_OFFSET(BDPlayInfo, outTimes, 12);
AVBASED_ASSERT_OFFSET(BDPlayInfo, timeStamp, 16);
AVBASED_ASSERT_OFFSET(BDPlayInfo, duration, 24);
AVBASED_ASSERT_SIZE(BDPlayInfo, 40);

} // namespace AVBased
