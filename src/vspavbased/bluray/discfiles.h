// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "bluray/bytereader.h"
#include "media/demuxer.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace engine {

/// A file on a disc.
struct DiscPath
{
    std::string disc; ///< a folder or an image
    std::string file; ///< relative to it
};

/// The files of a disc, which lie in a folder or inside an image. Paths are relative to the disc's
/// root ("BDMV/index.bdmv"). Only regular files count. An image stays open as long as this lives.
class DiscFiles
{
public:
    virtual ~DiscFiles() = default;

    /// The files of the disc at `path`, which is a folder or an image file; null when it is
    /// neither.
    static std::unique_ptr<DiscFiles> open(const std::string& path);

    /// Splits the path of a stream file into that of its disc and one on the disc. A file inside an
    /// image has the image's path before its own, as if the image were a folder. Nothing when there
    /// is no such file, or no such image.
    static std::optional<DiscPath> split(const std::string& path);

    /// The name of an image's volume; folders have none.
    virtual std::string volumeName() const = 0;

    virtual bool hasFolder(const std::string& folder) const = 0;
    virtual bool hasFile(const std::string& path) const = 0;

    /// Names of the files in `folder` that end in `suffix` (lower-case letters, any case will do),
    /// sorted and without hidden ones. A folder with more files than any disc can have is cut
    /// short.
    std::vector<std::string> fileNames(const std::string& folder, const std::string& suffix) const;

    /// The whole of a small file; nothing when there is none or it is too large to be one.
    virtual std::optional<Bytes> read(const std::string& path) const = 0;

    /// A demuxer of a file; null, with the reason in the log, when there is none.
    virtual std::unique_ptr<Demuxer> demux(const std::string& path) const = 0;

protected:
    /// Files of a disc have numbers of five digits; other kinds lie in the same folder.
    static constexpr std::size_t mostFiles = 200000;

    /// Far above what playlists and clip information of the longest films have.
    static constexpr std::int64_t largestSmallFile = 8 * 1024 * 1024;

    virtual std::vector<std::string> allFileNames(const std::string& folder) const = 0;
};

} // namespace engine
