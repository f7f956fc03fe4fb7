// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "enginelink/ascii.h"

#include <cstdint>
#include <string>

namespace engine {

/// Texts from files and discs, in the encodings of the boundary. What is no valid UTF-8 is taken
/// for Latin-1. Letters that the target lacks are written with those that it has, where that is
/// usual ("Москва" becomes "Moskva"), and the rest becomes "?".

std::string toUtf8(const std::string& text);
std::string toUtf8(const std::u16string& text);
std::string toLatin1(const std::string& text);
std::string toAscii(const std::string& text);

/// Writes the texts of one item in Latin-1. To find letters for others takes some microseconds
/// each, so it is done for as many as people write, and the rest becomes "?".
class Latin1Writer
{
public:
    std::string write(const std::string& text);

private:
    std::int32_t m_letters = 32 * 1024; ///< that may still be replaced
};

/// The beginning of `text`, at most `most` bytes, with no letter torn apart.
std::string cutUtf8(const std::string& text, std::size_t most);

/// `path` without the separators at its end; that of the root folder stays.
std::string withoutTrailingSeparators(std::string path);

} // namespace engine
