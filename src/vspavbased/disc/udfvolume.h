// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "disc/udftree.h"

#include <memory>

namespace engine {

/// The UDF file system of a disc image, as DVDs (revision 1.02) and Blu-ray discs (2.50 and 2.60)
/// have it: in plain partitions, and in metadata partitions with their mirrors. Not read are the
/// virtual and sparable partitions of discs that were recorded packet by packet, which hold
/// neither.
///
/// Nothing in the image is trusted: what leads nowhere is not there.
class UdfVolume
{
public:
    /// Null when the image holds no such file system; the reason is in the log if it holds a
    /// damaged one. `path` is what the log calls it.
    static std::unique_ptr<UdfVolume> open(ByteSourcePtr image, const std::string& path);

    /// UTF-8; empty when it has none.
    const std::string& name() const { return m_name; }

    const UdfEntry& root() const { return m_root; }

    /// Empty for what is no folder; at most `most` of what lies in it.
    UdfFolder readFolder(const UdfEntry& entry, std::size_t most) const;

    /// Null for what is no file. What it gives outlives the volume.
    ByteSourcePtr open(const UdfEntry& entry) const;

private:
    UdfVolume(const std::string& name, UdfPartitions partitions, const UdfEntry& root);

    std::string m_name;
    UdfPartitions m_partitions;
    UdfEntry m_root;
};

} // namespace engine
