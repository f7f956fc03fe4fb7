// SPDX-License-Identifier: GPL-2.0-or-later
//
// Images are read with libudfread and folders as they are, both without libdvdread: what that makes
// of damaged tables and directories reaches beyond its own memory.
#include "dvd/videots.h"

#include "bluray/discimage.h"
#include "log.h"
#include "text.h"

#include <filesystem>
#include <fstream>

namespace engine {

namespace {

namespace fs = std::filesystem;

/// More than any disc has; folders with more are walked no further.
constexpr std::size_t mostEntries = 10000;

class FolderFile final : public DiscFile
{
public:
    explicit FolderFile(const fs::path& path)
    {
        m_stream.rdbuf()->pubsetbuf(nullptr, 0); // whole sectors are read anyway
        m_stream.open(path, std::ios::binary | std::ios::ate);
        const std::streamoff end = m_stream.tellg(); // negative when it is not open
        m_size = end > 0 ? static_cast<std::uint64_t>(end) : 0;
    }

    std::uint64_t size() const override { return m_size; }

    std::size_t read(std::uint64_t offset, std::uint8_t* buffer, std::size_t size) override
    {
        if (offset >= m_size)
            return 0;
        m_stream.clear();
        m_stream.seekg(static_cast<std::streamoff>(offset));
        m_stream.read(reinterpret_cast<char*>(buffer), static_cast<std::streamsize>(size));
        return static_cast<std::size_t>(m_stream.gcount());
    }

private:
    std::ifstream m_stream;
    std::uint64_t m_size = 0;
};

class FolderVideoTs final : public VideoTs
{
public:
    explicit FolderVideoTs(const fs::path& folder)
        : m_folder(folder)
    {
        std::error_code error;
        fs::directory_iterator entry(folder, error);
        for (std::size_t i = 0; !error && entry != fs::directory_iterator() && i < mostEntries;
             ++i) {
            addEntry(entry->path().filename().string());
            entry.increment(error);
        }
        if (error)
            log(folder.string() + ": " + error.message());
    }

    std::string volumeName() const override { return {}; }

private:
    std::unique_ptr<DiscFile> openEntry(const std::string& name) override
    {
        std::error_code error;
        if (!fs::is_regular_file(m_folder / name, error))
            return nullptr;
        return std::make_unique<FolderFile>(m_folder / name);
    }

    fs::path m_folder;
};

class FileOfImage final : public DiscFile
{
public:
    FileOfImage(std::shared_ptr<DiscImage> image, UdfFilePtr file)
        : m_image(std::move(image))
        , m_file(std::move(file))
    {}

    std::uint64_t size() const override
    {
        const std::int64_t size = udfread_file_size(m_file.get());
        return size > 0 ? static_cast<std::uint64_t>(size) : 0;
    }

    std::size_t read(std::uint64_t offset, std::uint8_t* buffer, std::size_t size) override
    {
        if (offset >= this->size() ||
            udfread_file_seek(m_file.get(), static_cast<std::int64_t>(offset), UDF_SEEK_SET) < 0)
            return 0;
        const ssize_t count = udfread_file_read(m_file.get(), buffer, size);
        return count > 0 ? static_cast<std::size_t>(count) : 0;
    }

private:
    std::shared_ptr<DiscImage> m_image; ///< the file reads through it, so it goes last
    UdfFilePtr m_file;
};

class ImageVideoTs final : public VideoTs
{
public:
    ImageVideoTs(std::shared_ptr<DiscImage> image, const std::string& folder)
        : m_image(std::move(image))
        , m_folder(folder)
    {
        for (const std::string& name : m_image->fileNames(m_folder, mostEntries))
            addEntry(name);
    }

    std::string volumeName() const override { return m_image->volumeName(); }

private:
    std::unique_ptr<DiscFile> openEntry(const std::string& name) override
    {
        UdfFilePtr file = m_image->openFile(m_folder + '/' + name);
        return file ? std::make_unique<FileOfImage>(m_image, std::move(file)) : nullptr;
    }

    std::shared_ptr<DiscImage> m_image;
    std::string m_folder;
};

std::unique_ptr<VideoTs> openImage(const std::string& path)
{
    const std::shared_ptr<DiscImage> image = DiscImage::open(path);
    for (const char* folder : {"VIDEO_TS", "video_ts"}) {
        if (image && image->hasFolder(folder))
            return std::make_unique<ImageVideoTs>(image, folder);
    }
    return nullptr;
}

} // namespace

std::unique_ptr<VideoTs> VideoTs::open(const DvdLocation& location)
{
    if (location.kind == DvdLocation::Kind::image)
        return openImage(location.path);
    return std::make_unique<FolderVideoTs>(location.path);
}

std::unique_ptr<DiscFile> VideoTs::openFile(const std::string& name)
{
    const auto entry = m_entries.find(name);
    return entry == m_entries.end() ? nullptr : openEntry(entry->second);
}

void VideoTs::addEntry(const std::string& name)
{
    const std::string key = toUpper(name);
    if (key.size() == 12 && (key.compare(0, 9, "VIDEO_TS.") == 0 || key.compare(0, 4, "VTS_") == 0))
        m_entries.emplace(key, name);
}

} // namespace engine
