// SPDX-License-Identifier: GPL-2.0-or-later
#include "udfimage.h"

#include <cstring>
#include <fstream>

namespace engine {

namespace {

constexpr int sectorSize = 2048;
constexpr int firstDescriptor = 16; ///< sectors, where the volume descriptors begin
constexpr int descriptorCount = 16;
constexpr int anchorSector = 256;

bool readSector(std::ifstream& file, int sector, char (&bytes)[sectorSize])
{
    return file.seekg(std::streamoff{sector} * sectorSize) && file.read(bytes, sectorSize);
}

} // namespace

bool isUdfImage(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    char bytes[sectorSize];
    for (int i = 0; i < descriptorCount && readSector(file, firstDescriptor + i, bytes); ++i) {
        if (std::memcmp(bytes + 1, "NSR02", 5) == 0 || std::memcmp(bytes + 1, "NSR03", 5) == 0)
            return true;
    }
    return false;
}

/// Its tag is 2, little-endian.
bool hasUdfAnchor(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    char bytes[sectorSize];
    return readSector(file, anchorSector, bytes) && bytes[0] == 2 && bytes[1] == 0;
}

} // namespace engine
