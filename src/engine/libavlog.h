// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

namespace engine {

/// Joins libav's log, which is one for the whole process, to the engine's. Done once, however often
/// it is called.
void joinLibavLog();

} // namespace engine
