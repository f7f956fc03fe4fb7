// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <optional>
#include <string>

namespace engine {

/// Where a DVD lies and what of it is wanted.
struct DvdLocation
{
    enum class Kind
    {
        folder, ///< `path` is the folder that holds the IFO and VOB files
        image   ///< `path` is a file that may hold the disc's UDF file system
    };

    Kind kind = Kind::folder;
    std::string path;
    std::string name;            ///< of the folder or the image, for a disc that has none itself
    std::optional<int> titleSet; ///< the only set that is wanted; all of them without
};

/// Looks what `path` is: a folder that holds VIDEO_TS, a VIDEO_TS folder, an IFO file or a disc
/// image, the first three with or without a separator behind the name, in any case of letters.
/// Nothing when it is none of them. What the files hold is not looked at.
///
/// A file without a separator is only taken for an image if its suffix says so, so that ordinary
/// media files cost nothing here.
std::optional<DvdLocation> locateDvd(const std::string& path);

} // namespace engine
