// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspavbased/enginecontrol.h"

#include <cstdint>
#include <string>

namespace engine {

/// The reason that an engine process has given; RefusedOther for a number that is none.
AVBased::Refusal refusalOfEngine(std::uint32_t told);

/// Tells the host why the item cannot be opened. `isInLog` when the log says so already.
void refuse(const std::string& path, AVBased::Refusal refusal, bool isInLog);

} // namespace engine
