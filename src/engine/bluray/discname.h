// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "disc/discfiles.h"

#include <string>

namespace engine {

/// The name of a disc as its library metadata tells it: in English, else in any language. UTF-8;
/// empty when there is none.
std::string nameFromMetadata(const DiscFiles& files);

} // namespace engine
