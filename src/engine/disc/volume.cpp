// SPDX-License-Identifier: GPL-2.0-or-later
#include "disc/volume.h"

#include <string_view>

namespace engine {

bool isFileName(const std::string& name)
{
    constexpr std::string_view forbidden("/\0", 2);
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of(forbidden) == std::string::npos;
}

} // namespace engine
