// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <cstdint>
#include <string>

namespace engine {

/// A sum of wire::Protection for people, by name and separated by commas; what is missing stands
/// behind "; refused by this system: ".
std::string protectionsInWords(std::uint32_t protections);

} // namespace engine
