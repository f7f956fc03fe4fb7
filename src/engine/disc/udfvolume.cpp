// SPDX-License-Identifier: GPL-2.0-or-later
#include "disc/udfvolume.h"

#include "bytes/joinedbytes.h"
#include "disc/sector.h"
#include "disc/udfdescriptor.h"
#include "enginelink/log.h"

#include <algorithm>

namespace engine {

namespace {

/// Sectors that describe the volume, which are far fewer than any image would have to have.
constexpr std::uint32_t mostDescriptors = 64;

/// What the volume's descriptors say.
struct VolumeDescription
{
    std::string name;
    std::map<int, ByteSourcePtr> partitions; ///< by their numbers
    Bytes logicalVolume;                     ///< empty when there is none that can be read

    bool isComplete() const { return !partitions.empty() && !logicalVolume.empty(); }
};

/// The place from which all others are found. It has a copy at the end of the volume.
Bytes findAnchor(const ByteSource& image)
{
    const std::uint64_t sectors = image.size() / sectorSize;
    for (const std::uint64_t sector : {std::uint64_t{256}, sectors - 1, sectors - 257}) {
        Bytes bytes = sector < sectors ? readUdfBlock(image, sector) : Bytes();
        if (udfTagOf(bytes) == UdfTag::anchor)
            return bytes;
    }
    return {};
}

ByteSourcePtr stretchOf(const ByteSourcePtr& source, std::uint64_t block, std::uint64_t count)
{
    const auto stretch = std::make_shared<JoinedBytes>();
    stretch->append(source, block * sectorSize, count * sectorSize);
    return stretch;
}

/// A text in a field of fixed width, whose last byte is the text's length.
std::string parseName(const ByteView& field)
{
    return decodeUdfText(field.part(0, field.u8(field.size() - 1)));
}

/// `extent` is where the descriptors lie: a length in bytes and a sector.
VolumeDescription readVolumeDescription(const ByteSourcePtr& image, const ByteView& extent)
{
    VolumeDescription volume;
    const std::uint32_t count = std::min(extent.le32(0) / sectorSize, mostDescriptors);
    for (std::uint32_t i = 0; i < count; ++i) {
        Bytes bytes = readUdfBlock(*image, std::uint64_t{extent.le32(4)} + i);
        const ByteView view(bytes);
        switch (udfTagOf(view)) {
        case UdfTag::primaryVolume:
            volume.name = parseName(view.part(24, 32));
            break;
        case UdfTag::partition:
            volume.partitions[view.le16(22)] = stretchOf(image, view.le32(188), view.le32(192));
            break;
        case UdfTag::logicalVolume:
            if (view.le32(212) == sectorSize)
                volume.logicalVolume = std::move(bytes);
            break;
        case UdfTag::terminator:
            return volume;
        default:
            break;
        }
    }
    return volume;
}

/// The metadata partition that `map` describes: it is what the metadata file in `partition` holds,
/// or the mirror of that file.
ByteSourcePtr openMetadata(const ByteSourcePtr& partition, const ByteView& map)
{
    for (const std::uint32_t block : {map.le32(40), map.le32(44)}) {
        if (const auto file = readUdfNode({partition}, {0, block}))
            return file->content;
    }
    return nullptr;
}

ByteSourcePtr openPartition(const VolumeDescription& volume, const ByteView& map)
{
    constexpr std::size_t plainSize = 6;
    constexpr std::size_t typedSize = 64;
    constexpr int plain = 1;
    const bool isPlain = map.u8(0) == plain && map.size() == plainSize;
    const bool isMetadata =
        map.size() == typedSize && map.from(5).beginsWith("*UDF Metadata Partition");
    const auto partition = volume.partitions.find(map.le16(isPlain ? 4 : 38));
    if (partition == volume.partitions.end())
        return nullptr;
    if (isMetadata)
        return openMetadata(partition->second, map);
    return isPlain ? partition->second : nullptr;
}

UdfPartitions openPartitions(const VolumeDescription& volume)
{
    UdfPartitions partitions;
    const ByteView logicalVolume(volume.logicalVolume);
    const std::uint32_t count = logicalVolume.le32(268);
    ByteView maps = logicalVolume.part(440, logicalVolume.le32(264));
    while (partitions.size() < count && maps.u8(1) > 0) {
        partitions.push_back(openPartition(volume, maps.part(0, maps.u8(1))));
        maps = maps.from(maps.u8(1));
    }
    return partitions;
}

/// The root folder, as the description of the file set names it.
std::optional<VolumeEntry> findRoot(const VolumeDescription& volume,
                                    const UdfPartitions& partitions)
{
    const ByteView logicalVolume(volume.logicalVolume);
    const std::size_t partition = logicalVolume.le16(256);
    if (partition >= partitions.size() || !partitions[partition])
        return std::nullopt;
    const Bytes bytes = readUdfBlock(*partitions[partition], logicalVolume.le32(252));
    const ByteView fileSet(bytes);
    if (udfTagOf(fileSet) != UdfTag::fileSet)
        return std::nullopt;
    return VolumeEntry{UdfPlace{fileSet.le16(408), fileSet.le32(404)}.number(), true};
}

} // namespace

std::unique_ptr<UdfVolume> UdfVolume::open(ByteSourcePtr image, const std::string& path)
{
    const Bytes anchorBytes = findAnchor(*image);
    const ByteView anchor(anchorBytes);
    if (anchorBytes.empty())
        return nullptr;
    VolumeDescription volume = readVolumeDescription(image, anchor.part(16, 8));
    if (!volume.isComplete())
        volume = readVolumeDescription(image, anchor.part(24, 8));
    UdfPartitions partitions = openPartitions(volume);
    if (const auto root = findRoot(volume, partitions))
        return std::unique_ptr<UdfVolume>(new UdfVolume(volume.name, std::move(partitions), *root));
    log(path + ": a disc image that is damaged, or of a kind that is not read");
    return nullptr;
}

UdfVolume::UdfVolume(const std::string& name, UdfPartitions partitions, const VolumeEntry& root)
    : Volume(name, root)
    , m_partitions(std::move(partitions))
{}

VolumeFolder UdfVolume::readFolder(const VolumeEntry& entry, std::size_t most) const
{
    const auto node = readUdfNode(m_partitions, UdfPlace::of(entry));
    return node && node->isFolder() ? parseUdfFolder(*node->content, most) : VolumeFolder();
}

ByteSourcePtr UdfVolume::open(const VolumeEntry& entry) const
{
    const auto node = readUdfNode(m_partitions, UdfPlace::of(entry));
    return node && node->isFile() ? node->content : nullptr;
}

} // namespace engine
