// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "bytes/bytesource.h"

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
/// root ("BDMV/index.bdmv"; the root itself is empty). Only regular files count. An image stays
/// open as long as this or one of its files lives. Used on one thread at a time; the files that it
/// opens may go to others.
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

    /// The name of an image's volume, UTF-8; folders have none.
    virtual std::string volumeName() const = 0;

    virtual bool hasFolder(const std::string& path) const = 0;
    bool hasFile(const std::string& path) const { return openFile(path) != nullptr; }

    /// The folder in the root that is called `name`, in whatever case of letters.
    std::optional<std::string> findFolder(const std::string& name) const;

    /// Names of the files in `folder` that end in `suffix`, in whatever case of letters, sorted and
    /// without hidden ones. A folder with more files than any disc can have is cut short.
    std::vector<std::string> fileNames(const std::string& folder, const std::string& suffix) const;

    /// Null when there is no such file.
    virtual ByteSourcePtr openFile(const std::string& path) const = 0;

    /// A file, or its beginning if it is larger than `most` bytes. Nothing when there is none, or
    /// when more has been read of this disc than the tables of any have.
    std::optional<Bytes> read(const std::string& path, std::size_t most = largestTable) const;

    /// What the log calls the file at `path`.
    std::string nameOf(const std::string& path) const { return m_path + "/" + path; }

protected:
    /// Bytes; several times what the tables of the longest films have, each and all together.
    static constexpr std::size_t largestTable = std::size_t{16} * 1024 * 1024;
    static constexpr std::size_t mostTableBytes = std::size_t{256} * 1024 * 1024;

    struct Entry
    {
        std::string name;
        bool isFolder; ///< else it is a regular file
    };

    /// Files of a disc have numbers of five digits; other kinds lie in the same folder.
    static constexpr std::size_t mostEntries = 200000;

    /// `path` is what the log calls the disc.
    explicit DiscFiles(const std::string& path)
        : m_path(path)
    {}

    /// What lies in a folder, at most `mostEntries`, in any order. Empty when there is no folder.
    virtual std::vector<Entry> entries(const std::string& folder) const = 0;

private:
    std::string m_path;
    mutable std::size_t m_tableBytesLeft = mostTableBytes; ///< that may be read
};

} // namespace engine
