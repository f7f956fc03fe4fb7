// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "bytes/bytesource.h"

#include <map>
#include <string>

namespace engine {

/// A file or folder of a volume.
struct VolumeEntry
{
    std::uint64_t place = 0; ///< of its description, in the volume's own way of counting
    bool isFolder = false;
};

using VolumeFolder = std::map<std::string, VolumeEntry>; ///< by name, UTF-8

/// The bytes of the largest folder that is read whole: one of some two hundred thousand files.
constexpr std::size_t largestFolder = std::size_t{16} * 1024 * 1024;

/// Whether a file in a path can be called so.
bool isFileName(const std::string& name);

/// The file system of a disc image. Nothing in the image is trusted: what leads nowhere is not
/// there.
class Volume
{
public:
    virtual ~Volume() = default;

    /// UTF-8; empty when it has none.
    const std::string& name() const { return m_name; }

    const VolumeEntry& root() const { return m_root; }

    /// Empty for what is no folder; at most `most` of what lies in it.
    virtual VolumeFolder readFolder(const VolumeEntry& entry, std::size_t most) const = 0;

    /// Null for what is no file. What it gives outlives the volume.
    virtual ByteSourcePtr open(const VolumeEntry& entry) const = 0;

protected:
    Volume(const std::string& name, const VolumeEntry& root)
        : m_name(name)
        , m_root(root)
    {}

private:
    std::string m_name;
    VolumeEntry m_root;
};

} // namespace engine
