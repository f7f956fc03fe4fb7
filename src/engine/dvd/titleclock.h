// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "bytes/byteview.h"
#include "dvd/titlelayout.h"

#include <memory>
#include <optional>
#include <vector>

namespace engine {

/// Time stamp of the first picture shown of the VOBU that begins with this sector, in ticks of a
/// clock that starts anywhere. Nothing when the sector is no navigation packet.
std::optional<std::uint32_t> parseVobuStart(const ByteView& sector);

/// Leads from times in a title to where their pictures lie, and back. The time stamps in a title
/// may start over with any cell, so each counts from the cell's first, which stands for the time at
/// which the cell begins.
class TitleClock
{
public:
    /// `title` holds the title's sectors in the order of playing.
    TitleClock(std::shared_ptr<const TitleLayout> layout, ByteSourcePtr title);

    /// Index of the VOBU that is shown at `time`. Nothing where the files end before, or what they
    /// hold is none. Requires that there is a VOBU.
    std::optional<std::size_t> vobuAt(Ticks time);

    /// When a picture is shown that begins in `titleSector` and bears the stamp `stamp`. Nothing
    /// when the disc does not tell.
    std::optional<Ticks> timeOf(std::uint64_t titleSector, std::int64_t stamp);

private:
    std::optional<std::uint32_t> readStamp(std::size_t vobu);
    std::optional<std::uint32_t> firstStampOf(std::size_t cell);
    std::optional<Ticks> timeInCell(std::size_t cell, std::uint32_t stamp);

    struct KnownStamp
    {
        bool isRead = false;
        std::optional<std::uint32_t> stamp;
    };

    std::shared_ptr<const TitleLayout> m_layout;
    ByteSourcePtr m_title;
    std::vector<KnownStamp> m_firstStamps; ///< of the cells
};

} // namespace engine
