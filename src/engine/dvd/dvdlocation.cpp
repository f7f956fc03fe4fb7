// SPDX-License-Identifier: GPL-2.0-or-later
#include "dvd/dvdlocation.h"

#include "disc/discfolder.h"
#include "files/files.h"
#include "text.h"

#include <filesystem>

namespace engine {

namespace {

namespace fs = std::filesystem;

/// What a person would call the disc whose files lie in `videoTs`.
std::string discNameOf(const fs::path& videoTs)
{
    const bool isVideoTs = toUpper(videoTs.filename().string()) == "VIDEO_TS";
    return (isVideoTs ? videoTs.parent_path() : videoTs).filename().string();
}

std::optional<DvdLocation> locateFolder(const fs::path& folder)
{
    DvdLocation location;
    if (const auto videoTs = DiscFolder(folder.string()).findFolder("VIDEO_TS")) {
        location.path = (folder / *videoTs).string();
        location.name = folder.filename().string();
        return location;
    }
    if (toUpper(folder.filename().string()) != "VIDEO_TS")
        return std::nullopt;
    location.path = folder.string();
    location.name = discNameOf(folder);
    return location;
}

/// VTS_nn_0.IFO stands for its title set, every other IFO file for the disc.
DvdLocation locateIfo(const fs::path& file)
{
    DvdLocation location;
    location.path = file.parent_path().string();
    location.name = discNameOf(file.parent_path());
    const std::string name = toUpper(file.filename().string());
    if (name.size() == 12 && name.compare(0, 4, "VTS_") == 0 && isDigit(name[4]) &&
        isDigit(name[5]) && name.compare(6, 6, "_0.IFO") == 0)
        location.titleSet = (name[4] - '0') * 10 + (name[5] - '0');
    return location;
}

} // namespace

std::optional<DvdLocation> locateDvd(const std::string& path)
{
    const std::string bare = withoutTrailingSeparators(path);
    if (bare.empty())
        return std::nullopt;
    const bool hasSeparator = bare.size() < path.size();

    std::error_code error;
    fs::path item = fs::absolute(bare, error).lexically_normal();
    if (!item.has_filename()) // of "folder/."
        item = item.parent_path();
    const FileKind kind = files().kindOf(item);
    if (kind == FileKind::folder)
        return locateFolder(item);
    if (kind != FileKind::file)
        return std::nullopt;
    const std::string suffix = toUpper(item.extension().string());
    if (suffix == ".IFO")
        return locateIfo(item);
    if (hasSeparator || suffix == ".ISO") {
        DvdLocation location;
        location.kind = DvdLocation::Kind::image;
        location.path = item.string();
        location.name = item.stem().string();
        return location;
    }
    return std::nullopt;
}

} // namespace engine
