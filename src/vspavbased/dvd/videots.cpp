// SPDX-License-Identifier: GPL-2.0-or-later
//
// Images are read with libudfread and folders as they are, both without libdvdread: what that makes
// of damaged tables and directories reaches beyond its own memory.
#include "dvd/videots.h"

#include "libudfread.h"
#include "log.h"
#include "text.h"
#include "udfimage.h"

#include <filesystem>
#include <fstream>

namespace engine {

namespace {

namespace fs = std::filesystem;

/// More than any disc has; folders with more are walked no further.
constexpr int mostEntries = 10000;

class FolderFile final : public DiscFile
{
public:
    explicit FolderFile(const fs::path& path)
    {
        m_stream.rdbuf()->pubsetbuf(nullptr, 0); // whole sectors are read anyway
        m_stream.open(path, std::ios::binary | std::ios::ate);
        m_size = m_stream ? static_cast<std::uint64_t>(m_stream.tellg()) : 0;
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
        for (int i = 0; !error && entry != fs::directory_iterator() && i < mostEntries; ++i) {
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

class ImageFile final : public DiscFile
{
public:
    ImageFile(std::shared_ptr<udfread> volume, UdfFilePtr file)
        : m_volume(std::move(volume))
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
    std::shared_ptr<udfread> m_volume; ///< outlives its file
    UdfFilePtr m_file;
};

class ImageVideoTs final : public VideoTs
{
public:
    static std::unique_ptr<VideoTs> open(const std::string& path)
    {
        UdfVolumePtr volume(udfread_init());
        if (!volume || !hasUdfAnchor(path) || udfread_open(volume.get(), path.c_str()) < 0) {
            log(path + ": the image's UDF file system cannot be read");
            return nullptr;
        }
        const std::string folder = findFolder(*volume);
        const UdfDirectoryPtr directory(udfread_opendir(volume.get(), folder.c_str()));
        if (folder.empty() || !directory) {
            log(path + ": the image holds no DVD");
            return nullptr;
        }
        return std::unique_ptr<VideoTs>(new ImageVideoTs(std::move(volume), folder, *directory));
    }

    std::string volumeName() const override
    {
        const char* name = udfread_get_volume_id(m_volume.get());
        return name ? name : "";
    }

private:
    ImageVideoTs(UdfVolumePtr volume, const std::string& folder, UDFDIR& directory)
        : m_volume(std::move(volume))
        , m_folder(folder)
    {
        udfread_dirent entry;
        for (int i = 0; i < mostEntries && udfread_readdir(&directory, &entry); ++i)
            addEntry(entry.d_name);
    }

    /// Path of the image's VIDEO_TS folder, empty when it has none.
    static std::string findFolder(udfread& volume)
    {
        const UdfDirectoryPtr root(udfread_opendir(&volume, "/"));
        udfread_dirent entry;
        for (int i = 0; root && i < mostEntries && udfread_readdir(root.get(), &entry); ++i) {
            if (entry.d_type == UDF_DT_DIR && toUpper(entry.d_name) == "VIDEO_TS")
                return std::string("/") + entry.d_name;
        }
        return {};
    }

    std::unique_ptr<DiscFile> openEntry(const std::string& name) override
    {
        UdfFilePtr file(udfread_file_open(m_volume.get(), (m_folder + "/" + name).c_str()));
        if (!file)
            return nullptr;
        return std::make_unique<ImageFile>(m_volume, std::move(file));
    }

    std::shared_ptr<udfread> m_volume;
    std::string m_folder;
};

} // namespace

std::unique_ptr<VideoTs> VideoTs::open(const DvdLocation& location)
{
    if (location.kind == DvdLocation::Kind::image)
        return ImageVideoTs::open(location.path);
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
