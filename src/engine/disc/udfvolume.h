// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "disc/udftree.h"

#include <memory>

namespace engine {

/// The UDF file system of a disc image, as DVDs (revision 1.02) and Blu-ray discs (2.50 and 2.60)
/// have it: in plain partitions, and in metadata partitions with their mirrors. Not read are the
/// virtual and sparable partitions of discs that were recorded packet by packet, which hold
/// neither.
class UdfVolume final : public Volume
{
public:
    /// Null when the image holds no such file system; the reason is in the log if it holds a
    /// damaged one. `path` is what the log calls it.
    static std::unique_ptr<UdfVolume> open(ByteSourcePtr image, const std::string& path);

    VolumeFolder readFolder(const VolumeEntry& entry, std::size_t most) const override;
    ByteSourcePtr open(const VolumeEntry& entry) const override;

private:
    UdfVolume(const std::string& name, UdfPartitions partitions, const VolumeEntry& root);

    UdfPartitions m_partitions;
};

} // namespace engine
