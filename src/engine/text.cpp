// SPDX-License-Identifier: GPL-2.0-or-later
#include "text.h"

#include <unicode/translit.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <memory>
#include <mutex>

namespace engine {

namespace {

bool fitsInto(const icu::UnicodeString& text, char16_t largest)
{
    const char16_t* begin = text.getBuffer();
    return std::all_of(begin, begin + text.length(),
                       [largest](char16_t c) { return c <= largest; });
}

/// A transliterator to letters up to `largest`, made when it is first needed: that takes longer
/// than a whole import of a small file.
class Transliterator
{
public:
    Transliterator(const char* id, char16_t largest)
        : m_id(id)
        , m_largest(largest)
    {}

    /// Piece by piece, as the time that a piece takes grows with the square of its length, and what
    /// needs none is passed over. `letters` is how many letters may be in the pieces, and what is
    /// left of that.
    void apply(icu::UnicodeString& text, std::int32_t& letters)
    {
        constexpr int32_t pieceLength = 500;
        icu::UnicodeString done;
        for (int32_t begin = 0; begin < text.length();) {
            const int32_t end = endOfPiece(text, std::min(begin + pieceLength, text.length()));
            icu::UnicodeString piece = text.tempSubStringBetween(begin, end);
            if (!fitsInto(piece, m_largest) && letters > 0) {
                letters -= piece.length();
                transliterate(piece);
            }
            done.append(piece);
            begin = end;
        }
        text = done;
    }

private:
    void transliterate(icu::UnicodeString& piece)
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        if (!m_tried) {
            m_tried = true;
            UErrorCode status = U_ZERO_ERROR;
            m_icu.reset(icu::Transliterator::createInstance(icu::UnicodeString(m_id),
                                                            UTRANS_FORWARD, status));
        }
        if (m_icu)
            m_icu->transliterate(piece);
    }

    /// `end`, or behind a blank before it, so that no word is torn apart.
    static int32_t endOfPiece(const icu::UnicodeString& text, int32_t end)
    {
        constexpr int32_t longestWord = 50;
        if (end == text.length())
            return end;
        const int32_t blank = text.lastIndexOf(u' ', end - longestWord, longestWord);
        return blank >= 0 ? blank + 1 : text.getChar32Start(end);
    }

    const char* m_id;
    char16_t m_largest;
    std::mutex m_mutex;
    bool m_tried = false;
    std::unique_ptr<icu::Transliterator> m_icu;
};

bool isAscii(const std::string& text)
{
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

icu::UnicodeString decode(const std::string& text)
{
    const int length = static_cast<int>(text.size());
    icu::UnicodeString decoded = icu::UnicodeString::fromUTF8(icu::StringPiece(text));
    if (decoded.indexOf(static_cast<UChar>(0xFFFD)) >= 0)
        decoded = icu::UnicodeString(text.c_str(), length, "ISO-8859-1");
    return decoded;
}

/// `text` in single bytes of at most `largest`.
std::string encode(const icu::UnicodeString& text, UChar32 largest)
{
    std::string bytes;
    for (int32_t i = 0; i < text.length(); i = text.moveIndex32(i, 1)) {
        const UChar32 c = text.char32At(i);
        bytes.push_back(c <= largest ? static_cast<char>(c) : '?');
    }
    return bytes;
}

} // namespace

std::string toUtf8(const std::string& text)
{
    if (isAscii(text))
        return text;
    std::string utf8;
    decode(text).toUTF8String(utf8);
    return utf8;
}

std::string toUtf8(const std::u16string& text)
{
    std::string utf8;
    icu::UnicodeString(text.data(), static_cast<int>(text.size())).toUTF8String(utf8);
    return utf8;
}

std::string toLatin1(const std::string& text)
{
    return Latin1Writer().write(text);
}

std::string Latin1Writer::write(const std::string& text)
{
    static Transliterator transliterator("NFC; [^\\u0000-\\u00FF] Any-Latin; NFC; "
                                         "[^\\u0000-\\u00FF] Latin-ASCII",
                                         0xFF);
    if (isAscii(text))
        return text;
    icu::UnicodeString decoded = decode(text);
    transliterator.apply(decoded, m_letters);
    return encode(decoded, 0xFF);
}

std::string toAscii(const std::string& text)
{
    static Transliterator transliterator("Any-Latin; Latin-ASCII", 0x7F);
    if (isAscii(text))
        return text;
    icu::UnicodeString decoded = decode(text);
    std::int32_t letters = decoded.length();
    transliterator.apply(decoded, letters);
    return encode(decoded, 0x7F);
}

std::string cutUtf8(const std::string& text, std::size_t most)
{
    std::size_t size = std::min(text.size(), most);
    while (size < text.size() && size > 0 && (text[size] & 0xC0) == 0x80)
        --size;
    return text.substr(0, size);
}

std::string withoutTrailingSeparators(std::string path)
{
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

} // namespace engine
