// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "bytes/byteview.h"

#include <cstdint>
#include <optional>
#include <string>

namespace engine {

/// Time in units of 1/90000 s, in which a picture of either video standard lasts a whole number.
using Ticks = std::int64_t;
constexpr Ticks ticksPerSecond = 90000;
constexpr Ticks ticksPerMillisecond = 90;
constexpr Ticks ticksPerPalPicture = 3600;
constexpr Ticks ticksPerNtscPicture = 3003;

inline double inSeconds(Ticks time)
{
    return static_cast<double>(time) / ticksPerSecond;
}

/// Collects what is wrong with one IFO file, so that its copy can be preferred if it is better.
class IfoFindings
{
public:
    explicit IfoFindings(const std::string& file)
        : m_file(file)
    {}

    void add(const std::string& finding);
    int count() const { return m_count; }

private:
    std::string m_file;
    int m_count = 0;
};

/// How a table of an IFO file is laid out; bytes. Its header ends with the offset of the table's
/// last byte and begins, where there is room, with a number of entries.
struct TableFormat
{
    const char* name;
    std::size_t pointer; ///< where the IFO file says in which of its sectors the table begins
    std::size_t headerSize;
    std::size_t entrySize;
    bool hasCount; ///< the header's number is that of the entries; else they fill the table
};

/// A table that was found. Entries that it has no room for are not counted, whatever it says.
struct IfoTable
{
    ByteView bytes; ///< from the header to the end that it gives
    ByteView rest;  ///< from the header to the end of the file
    std::size_t entryCount = 0;
};

/// Nothing, and a finding, when the file does not hold the table.
std::optional<IfoTable> findTable(const ByteView& ifo, const TableFormat& format,
                                  IfoFindings& findings);

/// A playing time, which the disc gives as a count of hours, minutes, seconds and pictures.
/// Pictures of NTSC are counted 30 a second, though they last 1001/30000 s. Nothing when it is no
/// time.
std::optional<Ticks> parseTime(const ByteView& bytes, bool isNtsc);

/// Two letters; empty when there are none.
std::string parseLanguage(std::uint16_t code);

} // namespace engine
