// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>

namespace engine {

/// Gives up, for good, all that decoding does not need: the network, other programs, making and
/// opening files, signalling and tracing others, memory and descriptors without end. What is open
/// stays so. Which protections are now in force, as a sum of wire::Protection.
///
/// To be called while the process has one thread.
std::uint32_t enterSandbox();

} // namespace engine
