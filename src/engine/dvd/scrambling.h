// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "bytes/byteview.h"

namespace engine {

/// Whether the sector holds a packet of sound or picture that says it is scrambled. Of a scrambled
/// title's sectors many are in the clear.
bool isScrambledSector(const ByteView& sector);

/// Whether a few samples of a title set's video hold scrambled sectors.
bool isScrambled(const ByteSource& video);

} // namespace engine
