// SPDX-License-Identifier: GPL-2.0-or-later
#include "media/matroskaclaims.h"

#include "bytes/byteview.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace engine {

namespace {

/// Of elements, as they stand in the file.
constexpr std::uint32_t attachedFile = 0x61A7;
constexpr std::uint32_t tag = 0x7373;
constexpr std::uint32_t simpleTag = 0x67C8;
constexpr std::uint32_t edition = 0x45B9;
constexpr std::uint32_t chapter = 0xB6;
constexpr std::uint32_t chapterDisplay = 0x80;
constexpr std::uint32_t track = 0xAE;
const std::uint32_t counted[] = {attachedFile, tag,   simpleTag,     edition,
                                 chapter,      track, chapterDisplay};
const std::uint32_t nested[] = {tag, simpleTag, edition, chapter};

template <size_t N>
bool isOneOf(std::uint32_t id, const std::uint32_t (&ids)[N])
{
    return std::find(std::begin(ids), std::end(ids), id) != std::end(ids);
}

/// The header of an element without meaning, for one whose own header takes `header` bytes. Where
/// that is longer, its end becomes content.
std::string voidHeader(std::uint64_t header, std::uint64_t content)
{
    const std::uint64_t length = std::min<std::uint64_t>(header - 1, 8); // of the size
    const std::uint64_t size = content + header - 1 - length;
    std::string bytes = "\xEC";
    for (std::uint64_t i = length; i > 0; --i)
        bytes += static_cast<char>((size | 1ULL << 7 * length) >> 8 * (i - 1));
    return bytes;
}

/// Reads a file forward in steps.
class Cursor
{
public:
    Cursor(const ByteSource& file, std::uint64_t offset)
        : m_file(file)
        , m_offset(offset)
    {}

    std::uint64_t offset() const { return m_offset; }
    void skip(std::uint64_t count) { m_offset += std::min(count, m_file.size()); }

    /// A number whose first byte says by its leading zeros how many follow; with the bit behind
    /// those when `withMark`. Nothing when the file ends, or it is longer than `longest`.
    std::optional<std::uint64_t> number(int longest, bool withMark)
    {
        const int first = byte();
        int length = 1;
        for (int mask = 0x80; mask != 0 && !(first & mask); mask >>= 1)
            ++length;
        if (first < 0 || length > longest)
            return std::nullopt;
        std::uint64_t value =
            static_cast<std::uint64_t>(withMark ? first : first & (0xFF >> length));
        for (int i = 1; i < length; ++i) {
            const int next = byte();
            if (next < 0)
                return std::nullopt;
            value = value << 8 | static_cast<std::uint64_t>(next);
        }
        return value;
    }

private:
    /// -1 at the end.
    int byte()
    {
        if (m_offset < m_start || m_offset - m_start >= m_window.size()) {
            m_start = m_offset;
            m_window.resize(4096);
            m_window.resize(m_file.read(m_start, m_window.data(), m_window.size()));
        }
        const auto at = static_cast<std::size_t>(m_offset - m_start);
        if (at >= m_window.size())
            return -1;
        ++m_offset;
        return m_window[at];
    }

    const ByteSource& m_file;
    std::uint64_t m_offset;
    std::uint64_t m_start = 0;
    Bytes m_window;
};

} // namespace

std::optional<std::vector<Cover>> MatroskaClaims::cover(std::uint64_t offset)
{
    if (!isTooMuch(offset))
        return std::vector<Cover>();
    Cursor cursor(m_file, offset);
    static_cast<void>(cursor.number(4, true));
    const auto size = cursor.number(8, false);
    const std::uint64_t rest = m_file.size() - cursor.offset();
    return std::vector<Cover>{
        {offset, voidHeader(cursor.offset() - offset, std::min(size.value_or(rest), rest))}};
}

bool MatroskaClaims::isTooMuch(std::uint64_t offset)
{
    constexpr int mostParts = 5000;
    constexpr int mostElements = 20 * mostParts;
    Cursor cursor(m_file, offset);
    static_cast<void>(cursor.number(4, true));
    const auto size = cursor.number(8, false);
    if (!size)
        return false;
    // Seek tables hold the identifiers, too. What follows there is read as an element, in vain.
    const std::uint64_t end = std::min(cursor.offset() + *size, m_file.size());
    int parts = m_parts;
    for (int elements = 0; cursor.offset() < end; ++elements) {
        const auto id = cursor.number(4, true);
        const auto length = id ? cursor.number(8, false) : std::nullopt;
        if (!length)
            break;
        const auto name = static_cast<std::uint32_t>(*id);
        parts += isOneOf(name, counted) ? 1 : 0;
        if (parts > mostParts || elements > mostElements)
            return true;
        if (!isOneOf(name, nested))
            cursor.skip(*length);
    }
    m_parts = parts;
    return false;
}

} // namespace engine
