// SPDX-License-Identifier: GPL-2.0-or-later
#include "disc/udftree.h"

#include "bytes/joinedbytes.h"
#include "disc/sector.h"
#include "disc/udfdescriptor.h"

namespace engine {

namespace {

/// Far more than the most interleaved files of a disc need.
constexpr int mostExtensions = 2000;

/// Where a file entry says how its contents are allocated; two widths of addresses, or right here.
enum class Allocation
{
    narrow = 0,
    wide = 1,
    inside = 3
};

ByteSourcePtr findPartition(const UdfPartitions& partitions, std::size_t index)
{
    return index < partitions.size() ? partitions[index] : nullptr;
}

/// Puts the extents of one node together.
class ExtentReader
{
public:
    ExtentReader(const UdfPartitions& partitions, std::uint16_t home, bool isWide,
                 std::uint64_t size)
        : m_partitions(partitions)
        , m_home(home)
        , m_isWide(isWide)
        , m_size(size)
        , m_content(std::make_shared<JoinedBytes>())
    {}

    /// Null when some of the descriptors lead nowhere.
    ByteSourcePtr read(ByteView descriptors);

private:
    struct Extent
    {
        int kind;
        std::uint64_t size;
        UdfPlace place;
    };

    Extent parse(const ByteView& descriptor) const;
    bool append(const Extent& extent);

    const UdfPartitions& m_partitions;
    std::uint16_t m_home; ///< the partition of addresses that name none
    bool m_isWide;
    std::uint64_t m_size; ///< of the contents; the last extent is longer
    std::shared_ptr<JoinedBytes> m_content;
};

/// Kinds of extents: one with contents, two without, which read as zeros, and one with further
/// descriptors.
constexpr int recorded = 0;
constexpr int extension = 3;

ByteSourcePtr ExtentReader::read(ByteView descriptors)
{
    const std::size_t width = m_isWide ? 16 : 8;
    Bytes block; // what `descriptors` looks at
    std::size_t offset = 0;
    int extensions = 0;
    while (m_content->size() < m_size && descriptors.holds(offset, width)) {
        const Extent extent = parse(descriptors.from(offset));
        if (extent.size == 0)
            break;
        offset += width;
        if (extent.kind != extension) {
            if (!append(extent))
                return nullptr;
            continue;
        }
        const ByteSourcePtr partition = findPartition(m_partitions, extent.place.partition);
        if (!partition || ++extensions > mostExtensions)
            return nullptr;
        block = readUdfBlock(*partition, extent.place.block);
        const ByteView view(block);
        if (udfTagOf(view) != UdfTag::allocationExtent)
            return nullptr;
        descriptors = view.part(24, view.le32(20));
        offset = 0;
    }
    return m_content;
}

ExtentReader::Extent ExtentReader::parse(const ByteView& descriptor) const
{
    const std::uint32_t kindAndSize = descriptor.le32(0);
    return {static_cast<int>(kindAndSize >> 30),
            kindAndSize & 0x3FFFFFFF,
            {m_isWide ? descriptor.le16(8) : m_home, descriptor.le32(4)}};
}

bool ExtentReader::append(const Extent& extent)
{
    const ByteSourcePtr partition = findPartition(m_partitions, extent.place.partition);
    if (extent.kind == recorded && !partition)
        return false;
    m_content->append(extent.kind == recorded ? partition : nullptr,
                      std::uint64_t{extent.place.block} * sectorSize,
                      std::min(extent.size, m_size - m_content->size()));
    return true;
}

/// A folder's line about one of its files, with its length.
struct Line
{
    std::string name;
    VolumeEntry entry;
    std::size_t size;
};

/// Nothing when no line begins `bytes`. Without a name for those that are to be passed over.
std::optional<Line> parseLine(const ByteView& bytes)
{
    constexpr int folderFlag = 2;
    constexpr int deletedFlag = 4;
    constexpr int parentFlag = 8;
    constexpr std::size_t fixedSize = 38;
    if (udfTagOf(bytes) != UdfTag::fileIdentifier)
        return std::nullopt;
    const int flags = bytes.u8(18);
    const std::size_t nameSize = bytes.u8(19);
    const std::size_t extraSize = bytes.le16(36);
    Line line;
    line.entry.place = UdfPlace{bytes.le16(28), bytes.le32(24)}.number();
    line.entry.isFolder = flags & folderFlag;
    line.size = (fixedSize + extraSize + nameSize + 3) / 4 * 4;
    if (!(flags & (deletedFlag | parentFlag)))
        line.name = decodeUdfText(bytes.part(fixedSize + extraSize, nameSize));
    return line;
}

} // namespace

std::optional<UdfNode> readUdfNode(const UdfPartitions& partitions, const UdfPlace& place)
{
    const ByteSourcePtr partition = findPartition(partitions, place.partition);
    if (!partition)
        return std::nullopt;
    const Bytes block = readUdfBlock(*partition, place.block);
    const ByteView entry(block);
    const UdfTag tag = udfTagOf(entry);
    if (tag != UdfTag::fileEntry && tag != UdfTag::extendedFileEntry)
        return std::nullopt;

    const std::uint64_t size = entry.le64(56);
    const std::size_t lengths = tag == UdfTag::fileEntry ? 168 : 208;
    const std::size_t begin = lengths + 8 + entry.le32(lengths); // behind the extended attributes
    const ByteView descriptors = entry.part(begin, entry.le32(lengths + 4));
    const auto allocation = static_cast<Allocation>(entry.u8(34) & 7);
    UdfNode node{entry.u8(27), nullptr};
    if (allocation == Allocation::inside) {
        const auto content = std::make_shared<JoinedBytes>();
        content->append(partition, std::uint64_t{place.block} * sectorSize + begin,
                        std::min<std::uint64_t>(size, descriptors.size()));
        node.content = content;
    } else if (allocation == Allocation::narrow || allocation == Allocation::wide) {
        const bool isWide = allocation == Allocation::wide;
        node.content = ExtentReader(partitions, place.partition, isWide, size).read(descriptors);
    }
    return node.content ? std::optional(node) : std::nullopt;
}

VolumeFolder parseUdfFolder(const ByteSource& content, std::size_t most)
{
    VolumeFolder folder;
    const Bytes bytes = readBeginning(content, largestFolder);
    ByteView rest(bytes);
    while (folder.size() < most) {
        const auto line = parseLine(rest);
        if (!line)
            break;
        if (isFileName(line->name))
            folder.emplace(line->name, line->entry);
        rest = rest.from(line->size);
    }
    return folder;
}

} // namespace engine
