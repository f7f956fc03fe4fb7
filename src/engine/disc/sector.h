// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

namespace engine {

constexpr int sectorSize = 2048; ///< bytes; discs are addressed and read in sectors

} // namespace engine
