// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "disc/discfiles.h"
#include "disc/volume.h"

#include <map>

namespace engine {

/// A disc in an image of its file system, UDF or ISO 9660. Folders that have been read are kept.
class DiscImage final : public DiscFiles
{
public:
    /// Null when there is no regular file at `path`, or neither file system in it.
    static std::unique_ptr<DiscImage> open(const std::string& path);

    std::string volumeName() const override { return m_volume->name(); }
    bool hasFolder(const std::string& path) const override;
    ByteSourcePtr openFile(const std::string& path) const override;

protected:
    std::vector<Entry> entries(const std::string& folder) const override;

private:
    DiscImage(const std::string& path, std::unique_ptr<Volume> volume);

    std::optional<VolumeEntry> find(const std::string& path) const;
    const VolumeFolder& read(const VolumeEntry& folder) const;

    std::unique_ptr<Volume> m_volume;
    mutable std::map<std::uint64_t, VolumeFolder>
        m_folders; ///< by the places of their descriptions
};

} // namespace engine
