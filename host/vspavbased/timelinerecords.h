// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspavbased/vspavbasedglobal.h"

namespace AVBased {

/// One source of a timeline. The whole record is zeroed before the named fields are set.
struct SourceRecord
{
    /// UTF-8, "path?movieid=M&vstreamid=V&astreamid=A&subtitleid=S" with -2 for no stream; the last
    /// "?movieid=" ends the path. Valid until selectItem() for this source has returned.
    const char* url;
    std::uint32_t reserved4[4];
    std::int32_t inPointMs;  ///< start of the part that is played, milliseconds
    std::int32_t outPointMs; ///< its end
    std::uint32_t reserved28[10];
};

AVBASED_ASSERT_OFFSET(SourceRecord, url, 0);
AVBASED_ASSERT_OFFSET(SourceRecord, inPointMs, 20);
AVBASED_ASSERT_OFFSET(SourceRecord, outPointMs, 24);
AVBASED_ASSERT_SIZE(SourceRecord, 68);

/// Duration and format of the source inserted last. Packed values as in AVStreamInfo.
struct alignas(8) FormatRecord
{
    std::int32_t durationMs; ///< of the source
    std::int32_t width;      ///< pixels
    std::int32_t height;     ///< pixels
    std::uint32_t padding12;
    std::uint64_t frameRate;   ///< packed
    std::int32_t sampleRate;   ///< hertz
    std::int32_t channels;     ///< of audio
    std::uint32_t aspectRatio; ///< packed
    std::uint32_t padding36;
};

// The same with wider pointers: the record holds none.
static_assert(offsetof(FormatRecord, durationMs) == 0 && offsetof(FormatRecord, width) == 4 &&
                  offsetof(FormatRecord, height) == 8 && offsetof(FormatRecord, frameRate) == 16 &&
                  offsetof(FormatRecord, sampleRate) == 24 &&
                  offsetof(FormatRecord, channels) == 28 &&
                  offsetof(FormatRecord, aspectRatio) == 32 && sizeof(FormatRecord) == 40,
              "FormatRecord is laid out wrongly");

} // namespace AVBased
