// SPDX-License-Identifier: GPL-2.0-or-later
#include "disc/isovolume.h"

#include "bytes/joinedbytes.h"
#include "disc/sector.h"
#include "text.h"

namespace engine {

namespace {

/// Of four gigabytes each.
constexpr int mostExtents = 1000;

constexpr std::uint64_t descriptorsAt = std::uint64_t{16} * sectorSize;
constexpr std::uint64_t rootInDescriptor = 156;

/// "NAME.EXT;1" without its version, and "NAME." without its point.
std::string withoutVersion(const std::string& identifier)
{
    std::string name = identifier.substr(0, identifier.find(';'));
    if (!name.empty() && name.back() == '.')
        name.pop_back();
    return name;
}

std::string withoutPadding(const std::string& text)
{
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

} // namespace

/// One line of a folder: a file, a folder, or a stretch of a file that has several.
struct IsoVolume::Record
{
    explicit Record(const ByteView& bytes)
        : size(bytes.u8(0))
        , begin((std::uint64_t{bytes.le32(2)} + bytes.u8(1)) * sectorSize)
        , length(bytes.le32(10))
        , isFolder(bytes.u8(25) & 2)
        , hasMore(bytes.u8(25) & 0x80)
        , identifier(bytes.part(33, bytes.u8(32)).text())
    {}

    std::size_t size;
    std::uint64_t begin; ///< of the contents, in the image
    std::uint64_t length;
    bool isFolder;
    bool hasMore;
    std::string identifier;
};

std::unique_ptr<IsoVolume> IsoVolume::open(ByteSourcePtr image)
{
    constexpr int primary = 1;
    Bytes bytes(sectorSize);
    bytes.resize(image->read(descriptorsAt, bytes.data(), bytes.size()));
    const ByteView descriptor(bytes);
    if (descriptor.u8(0) != primary || !descriptor.from(1).beginsWith("CD001") ||
        descriptor.le16(128) != sectorSize)
        return nullptr;
    const std::string name = withoutPadding(toUtf8(descriptor.part(40, 32).text()));
    return std::unique_ptr<IsoVolume>(
        new IsoVolume(std::move(image), name, {descriptorsAt + rootInDescriptor, true}));
}

IsoVolume::IsoVolume(ByteSourcePtr image, const std::string& name, const VolumeEntry& root)
    : Volume(name, root)
    , m_image(std::move(image))
{}

VolumeFolder IsoVolume::readFolder(const VolumeEntry& entry, std::size_t most) const
{
    VolumeFolder folder;
    const auto self = recordAt(entry.place);
    if (!self || !self->isFolder)
        return folder;
    const Bytes bytes = readBeginning(*contentAt(entry.place), largestFolder);
    const ByteView content(bytes);
    for (std::size_t at = 0; at < content.size() && folder.size() < most;) {
        // Records do not cross the ends of sectors; what is left of one is zeros.
        const std::size_t sectorEnd = (at / sectorSize + 1) * sectorSize;
        const Record record(content.part(at, sectorEnd - at));
        const std::string name = toUtf8(withoutVersion(record.identifier));
        const bool isItselfOrParent = name.size() == 1 && name[0] <= 1;
        // Of several stretches the first stands for the file.
        if (isFileName(name) && !isItselfOrParent)
            folder.emplace(name, VolumeEntry{self->begin + at, record.isFolder});
        at = record.size > 0 ? at + record.size : sectorEnd;
    }
    return folder;
}

ByteSourcePtr IsoVolume::open(const VolumeEntry& entry) const
{
    const auto record = recordAt(entry.place);
    return record && !record->isFolder ? contentAt(entry.place) : nullptr;
}

std::optional<IsoVolume::Record> IsoVolume::recordAt(std::uint64_t place) const
{
    Bytes bytes(256);
    bytes.resize(m_image->read(place, bytes.data(), bytes.size()));
    const Record record{ByteView(bytes)};
    return record.size > 0 ? std::optional(record) : std::nullopt;
}

ByteSourcePtr IsoVolume::contentAt(std::uint64_t place) const
{
    const auto content = std::make_shared<JoinedBytes>();
    for (int i = 0; i < mostExtents; ++i) {
        const auto record = recordAt(place);
        if (!record)
            break;
        content->append(m_image, record->begin, record->length);
        if (!record->hasMore)
            break;
        place += record->size;
        if (!recordAt(place))
            place = (place / sectorSize + 1) * sectorSize;
    }
    return content;
}

} // namespace engine
