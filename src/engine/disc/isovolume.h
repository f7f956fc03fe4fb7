// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "bytes/byteview.h"
#include "disc/volume.h"

#include <optional>

namespace engine {

/// The ISO 9660 file system of a disc image, with the names of its primary descriptor: DVDs have no
/// others, and Blu-ray discs always have UDF.
class IsoVolume final : public Volume
{
public:
    /// Null when the image holds no such file system.
    static std::unique_ptr<IsoVolume> open(ByteSourcePtr image);

    VolumeFolder readFolder(const VolumeEntry& entry, std::size_t most) const override;
    ByteSourcePtr open(const VolumeEntry& entry) const override;

private:
    struct Record;

    IsoVolume(ByteSourcePtr image, const std::string& name, const VolumeEntry& root);

    std::optional<Record> recordAt(std::uint64_t place) const;
    ByteSourcePtr contentAt(std::uint64_t place) const;

    ByteSourcePtr m_image;
};

} // namespace engine
