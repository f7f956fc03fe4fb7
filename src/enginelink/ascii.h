// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <string>

namespace engine {

// Of ASCII alone, whatever the locale.
inline bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}
inline bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
inline bool isControl(char c)
{
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

/// `text` with its letters in upper case, for names that are compared without regard to it.
inline std::string toUpper(std::string text)
{
    for (char& c : text) {
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    }
    return text;
}

inline bool endsWith(const std::string& text, const std::string& ending)
{
    return text.size() >= ending.size() &&
           text.compare(text.size() - ending.size(), ending.size(), ending) == 0;
}

} // namespace engine
