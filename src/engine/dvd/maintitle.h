// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "dvd/dvddisc.h"

#include <optional>

namespace engine {

/// Place of the title that a person would call the film, counted from 0 over the titles of all
/// sets: the one with the most to see, where what it plays again does not count; of equal ones the
/// one that repeats nothing, then the first. A title that for the most part plays another one's
/// cells several times, or plays nothing but another one's, gives way to that. Nothing when no
/// title plays anything.
std::optional<std::size_t> findMainTitle(const DvdDisc& disc);

} // namespace engine
