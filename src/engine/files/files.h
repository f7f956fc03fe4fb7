// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "enginelink/descriptor.h"

#include <cstddef>
#include <string>
#include <vector>

namespace engine {

enum class FileKind
{
    none, ///< nothing is there, or nothing that may be seen
    file, ///< a regular file
    folder,
    other ///< a device, a pipe: what might block or never end
};

struct FolderEntry
{
    std::string name;
    bool isFolder; ///< else it is a regular file
};

/// The way to the file system: the engine opens, lists and looks at nothing by another. Paths are
/// absolute, and links are followed as far as whoever answers lets them be.
class Files
{
public:
    virtual ~Files() = default;

    virtual FileKind kindOf(const std::string& path) = 0;

    /// The regular file at `path`, for reading at given places. None, with the reason in errno, for
    /// anything else.
    virtual wire::Descriptor open(const std::string& path) = 0;

    /// Regular files and folders in `folder`, at most `most`, in any order. What could not be read
    /// is missing, and the log says so.
    virtual std::vector<FolderEntry> list(const std::string& folder, std::size_t most) = 0;
};

/// The files of this process: the file system itself until useFiles() names others.
Files& files();

/// `others` live as long as the process. Not while the engine is at work.
void useFiles(Files& others);

} // namespace engine
