// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "disc/discfiles.h"
#include "dvd/dvdlocation.h"

#include <map>
#include <memory>
#include <optional>
#include <string>

namespace engine {

/// The files of a DVD's VIDEO_TS folder, which lies on a disk or in a disc image. What is opened
/// outlives it.
class VideoTs
{
public:
    /// Null when the image has no such folder.
    static std::unique_ptr<VideoTs> open(const DvdLocation& location);

    /// The file called `name`, as DiscFiles reads it. The name is in upper case; on the disc it may
    /// be in any. Nothing when there is none.
    std::optional<Bytes> read(const std::string& name) const;

    /// The VOB files that hold the video of a title set, as the one file that they were cut from,
    /// in whole sectors. Null when the first of them is missing; those behind a missing one do not
    /// count.
    ByteSourcePtr openVideo(int titleSet) const;

    /// The name that the disc gives itself, empty when it has none.
    std::string volumeName() const { return m_files->volumeName(); }

private:
    VideoTs(std::unique_ptr<DiscFiles> files, const std::string& folder);

    std::unique_ptr<DiscFiles> m_files;
    std::map<std::string, std::string> m_paths; ///< of the files, by their names in upper case
};

} // namespace engine
