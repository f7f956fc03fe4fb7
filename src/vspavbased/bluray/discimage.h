// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "libudfread.h"
#include "media/bytesource.h"

#include <memory>
#include <string>
#include <vector>

namespace engine {

/// A disc image with a UDF file system, held open. Paths inside it have no separator in front.
class DiscImage
{
public:
    /// Null when there is no regular file at `path`, or no UDF file system in it.
    static std::shared_ptr<DiscImage> open(const std::string& path);

    /// The name of the volume, UTF-8; empty when it has none.
    std::string volumeName() const;

    bool hasFolder(const std::string& folder) const;

    /// Names of the files in `folder`, at most `limit`, in the order of the image.
    std::vector<std::string> fileNames(const std::string& folder, std::size_t limit) const;

    /// Null when there is no such file.
    UdfFilePtr openFile(const std::string& path) const;

    DiscImage(const DiscImage&) = delete;
    DiscImage& operator=(const DiscImage&) = delete;

private:
    explicit DiscImage(UdfPtr udf)
        : m_udf(std::move(udf))
    {}

    UdfPtr m_udf;
};

/// One file of an image, which it keeps open.
class ImageFile final : public ByteSource
{
public:
    /// Null when there is no such file.
    static std::unique_ptr<ImageFile> open(std::shared_ptr<DiscImage> image,
                                           const std::string& path);

    int read(std::uint8_t* buffer, int size) override;
    bool seek(std::int64_t offset) override;
    std::int64_t position() const override;
    std::int64_t size() const override { return m_size; }

private:
    ImageFile(std::shared_ptr<DiscImage> image, UdfFilePtr file, std::int64_t size);

    std::shared_ptr<DiscImage> m_image; ///< the file reads through it, so it goes last
    UdfFilePtr m_file;
    std::int64_t m_size;
};

} // namespace engine
