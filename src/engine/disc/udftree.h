// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "disc/volume.h"

#include <optional>
#include <vector>

namespace engine {

/// A block of one of the volume's partitions, which are called by their places in its list.
struct UdfPlace
{
    std::uint16_t partition = 0;
    std::uint32_t block = 0;

    /// As the entries of a volume have it.
    std::uint64_t number() const { return std::uint64_t{partition} << 32 | block; }
    static UdfPlace of(const VolumeEntry& entry)
    {
        return {static_cast<std::uint16_t>(entry.place >> 32),
                static_cast<std::uint32_t>(entry.place)};
    }
};

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
VolumeFolder parseUdfFolder(const ByteSource& content, std::size_t most);

} // namespace engine
