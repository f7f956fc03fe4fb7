// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspavbased/enginecontrol.h"

#include <string>

namespace engine {

/// What the file system has against opening the item; RefusedOther when it has nothing. `path` is
/// absolute; a separator may stand behind it.
AVBased::Refusal stateOfItem(const std::string& path);

} // namespace engine
