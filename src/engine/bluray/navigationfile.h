// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "disc/discfiles.h"

#include <optional>
#include <string>

namespace engine {

/// What `parser` makes of a file of the disc's navigation ("PLAYLIST/00001.mpls" below `root`,
/// "BDMV"), or where that is nothing, of the copy that discs keep of it.
template <typename T>
std::optional<T> parseNavigationFile(const DiscFiles& files, const std::string& root,
                                     const std::string& path,
                                     std::optional<T> (*parser)(const Bytes&))
{
    for (const char* folder : {"/", "/BACKUP/"}) {
        const auto bytes = files.read(std::string(root).append(folder).append(path));
        if (auto parsed = bytes ? parser(*bytes) : std::nullopt)
            return parsed;
    }
    return std::nullopt;
}

} // namespace engine
