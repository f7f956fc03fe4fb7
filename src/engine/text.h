// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "enginelink/ascii.h"

#include <string>

namespace engine {

/// Texts from files and discs, in the encodings of the boundary. What is no valid UTF-8 is taken
/// for Latin-1. Letters that the target lacks are written with those that it has, where that is
/// usual ("Москва" becomes "Moskva"), and the rest becomes "?".

std::string toUtf8(const std::string& text);
std::string toUtf8(const std::u16string& text);
std::string toLatin1(const std::string& text);
std::string toAscii(const std::string& text);

/// The beginning of `text`, at most `most` bytes, with no letter torn apart.
std::string cutUtf8(const std::string& text, std::size_t most);

bool endsWith(const std::string& text, const std::string& ending);

/// `path` without the separators at its end; that of the root folder stays.
std::string withoutTrailingSeparators(std::string path);

} // namespace engine
