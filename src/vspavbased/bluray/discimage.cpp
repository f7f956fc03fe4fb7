// SPDX-License-Identifier: GPL-2.0-or-later
#include "bluray/discimage.h"

#include "log.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <fstream>

namespace engine {

namespace {

constexpr int sectorSize = 2048;
using Sector = std::array<char, sectorSize>;

bool isRegularFile(const std::string& path)
{
    struct stat status;
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

bool readSector(std::ifstream& file, int number, Sector& sector)
{
    file.clear();
    file.seekg(std::streamoff{number} * sectorSize);
    return static_cast<bool>(file.read(sector.data(), sectorSize));
}

/// The descriptors at the start of a volume name the standards that it follows.
bool announcesUdf(std::ifstream& file)
{
    Sector sector;
    for (int number = 16; number < 32 && readSector(file, number, sector); ++number) {
        if (std::memcmp(&sector[1], "NSR02", 5) == 0 || std::memcmp(&sector[1], "NSR03", 5) == 0)
            return true;
    }
    return false;
}

/// The descriptor from which all others are found. A copy may lie at the image's end, but an image
/// without this one is cut short or no image.
bool hasAnchor(std::ifstream& file)
{
    constexpr char anchorTag[2] = {2, 0};
    Sector sector;
    return readSector(file, 256, sector) &&
           std::memcmp(sector.data(), anchorTag, sizeof(anchorTag)) == 0;
}

/// Says so cheaply, and silently, for whatever else people keep in image files.
bool looksLikeUdf(const std::string& path)
{
    if (!isRegularFile(path))
        return false;
    std::ifstream file(path, std::ios::binary);
    return file && announcesUdf(file) && hasAnchor(file);
}

} // namespace

std::shared_ptr<DiscImage> DiscImage::open(const std::string& path)
{
    if (!looksLikeUdf(path))
        return nullptr;
    UdfPtr udf(udfread_init());
    if (!udf || udfread_open(udf.get(), path.c_str()) < 0) {
        log(path + ": damaged disc image");
        return nullptr;
    }
    return std::shared_ptr<DiscImage>(new DiscImage(std::move(udf)));
}

std::string DiscImage::volumeName() const
{
    const char* name = udfread_get_volume_id(m_udf.get());
    return name ? name : "";
}

bool DiscImage::hasFolder(const std::string& folder) const
{
    return UdfFolderPtr(udfread_opendir(m_udf.get(), folder.c_str())) != nullptr;
}

std::vector<std::string> DiscImage::fileNames(const std::string& folder, std::size_t limit) const
{
    std::vector<std::string> names;
    const UdfFolderPtr entries(udfread_opendir(m_udf.get(), folder.c_str()));
    udfread_dirent entry;
    while (entries && names.size() < limit && udfread_readdir(entries.get(), &entry)) {
        // The image may have names that no folder could have, and that lead elsewhere.
        if (entry.d_type == UDF_DT_REG && !std::strchr(entry.d_name, '/'))
            names.push_back(entry.d_name);
    }
    return names;
}

UdfFilePtr DiscImage::openFile(const std::string& path) const
{
    return UdfFilePtr(udfread_file_open(m_udf.get(), path.c_str()));
}

std::unique_ptr<ImageFile> ImageFile::open(std::shared_ptr<DiscImage> image,
                                           const std::string& path)
{
    UdfFilePtr file = image->openFile(path);
    const std::int64_t size = file ? udfread_file_size(file.get()) : -1;
    if (size < 0)
        return nullptr;
    return std::unique_ptr<ImageFile>(new ImageFile(std::move(image), std::move(file), size));
}

ImageFile::ImageFile(std::shared_ptr<DiscImage> image, UdfFilePtr file, std::int64_t size)
    : m_image(std::move(image))
    , m_file(std::move(file))
    , m_size(size)
{}

int ImageFile::read(std::uint8_t* buffer, int size)
{
    const std::int64_t left = m_size - position();
    const std::int64_t count = std::min<std::int64_t>(size, left);
    if (count <= 0)
        return 0;
    return static_cast<int>(
        udfread_file_read(m_file.get(), buffer, static_cast<std::size_t>(count)));
}

bool ImageFile::seek(std::int64_t offset)
{
    return offset >= 0 && offset <= m_size &&
           udfread_file_seek(m_file.get(), offset, UDF_SEEK_SET) >= 0;
}

std::int64_t ImageFile::position() const
{
    return udfread_file_tell(m_file.get());
}

} // namespace engine
