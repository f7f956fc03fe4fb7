// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "media/bytesource.h"

#include <map>
#include <optional>
#include <string>
#include <tuple>

namespace engine {

/// A block of one of the volume's partitions, which are called by their places in its list.
struct UdfPlace
{
    std::uint16_t partition = 0;
    std::uint32_t block = 0;

    bool operator<(const UdfPlace& other) const
    {
        return std::tie(partition, block) < std::tie(other.partition, other.block);
    }
};

/// A file or folder, as the folder lists it that it lies in.
struct UdfEntry
{
    UdfPlace place; ///< of its description
    bool isFolder = false;
};

using UdfFolder = std::map<std::string, UdfEntry>; ///< by name, UTF-8

/// The contents of a volume's partitions. Null for those of a kind that is not read.
using UdfPartitions = std::vector<ByteSourcePtr>;

/// What a file entry describes.
struct UdfNode
{
    int kind; ///< as ECMA-167 numbers it
    ByteSourcePtr content;

    bool isFolder() const { return kind == 4; }

    /// Of bytes or, the same to whoever reads it, of sound and video.
    bool isFile() const { return kind == 0 || kind == 5 || kind == 249; }
};

/// The node whose description lies at `place`. Nothing when there is none, or its contents lie in
/// partitions that are not read.
std::optional<UdfNode> readUdfNode(const UdfPartitions& partitions, const UdfPlace& place);

/// What a folder with these contents lists, up to `most`. Names that a path cannot have are left
/// out.
UdfFolder parseUdfFolder(const ByteSource& content, std::size_t most);

} // namespace engine
