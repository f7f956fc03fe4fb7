// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "dvd/discfile.h"
#include "dvd/dvdlocation.h"

#include <map>
#include <memory>
#include <string>

namespace engine {

/// The files of a DVD's VIDEO_TS folder, which lies on a disk or in a disc image. Of the folder's
/// entries only those with the names of DVD files are seen, and only regular files are opened. Each
/// context that reads has its own, and the files that it opens outlive it.
class VideoTs
{
public:
    /// Null when the image has no such folder.
    static std::unique_ptr<VideoTs> open(const DvdLocation& location);

    virtual ~VideoTs() = default;

    /// The file called `name`, which is in upper case; on the disc it may be in any. Null when
    /// there is none.
    std::unique_ptr<DiscFile> openFile(const std::string& name);

    /// The name that the disc gives itself, empty when it has none.
    virtual std::string volumeName() const = 0;

protected:
    /// Remembers that the folder has an entry called `name`.
    void addEntry(const std::string& name);

private:
    /// `name` as the folder spells it.
    virtual std::unique_ptr<DiscFile> openEntry(const std::string& name) = 0;

    std::map<std::string, std::string> m_entries; ///< names by their upper case
};

} // namespace engine
