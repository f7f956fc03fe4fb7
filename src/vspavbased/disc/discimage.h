// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "disc/discfiles.h"
#include "disc/udfvolume.h"

#include <map>

namespace engine {

/// A disc in an image of its UDF file system. Folders that have been read are kept.
class DiscImage final : public DiscFiles
{
public:
    /// Null when there is no regular file at `path`, or no UDF file system in it.
    static std::unique_ptr<DiscImage> open(const std::string& path);

    std::string volumeName() const override { return m_volume->name(); }
    bool hasFolder(const std::string& path) const override;
    ByteSourcePtr openFile(const std::string& path) const override;

protected:
    std::vector<Entry> entries(const std::string& folder) const override;

private:
    DiscImage(const std::string& path, std::unique_ptr<UdfVolume> volume);

    std::optional<UdfEntry> find(const std::string& path) const;
    const UdfFolder& read(const UdfEntry& folder) const;

    std::unique_ptr<UdfVolume> m_volume;
    mutable std::map<UdfPlace, UdfFolder> m_folders; ///< by the places of their descriptions
};

} // namespace engine
