// SPDX-License-Identifier: GPL-2.0-or-later
#include "bluray/discfiles.h"

#include "bluray/discimage.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace engine {

namespace {

bool endsWith(const std::string& name, const std::string& suffix)
{
    const auto sameLetter = [](char inName, char inSuffix) {
        return (inName >= 'A' && inName <= 'Z' ? inName - 'A' + 'a' : inName) == inSuffix;
    };
    return name.size() >= suffix.size() &&
           std::equal(suffix.rbegin(), suffix.rend(), name.rbegin(),
                      [&](char s, char n) { return sameLetter(n, s); });
}

class FolderFiles final : public DiscFiles
{
public:
    explicit FolderFiles(const std::string& root)
        : m_root(root)
    {}

    std::string volumeName() const override { return {}; }

    bool hasFolder(const std::string& folder) const override
    {
        std::error_code error;
        return fs::is_directory(absolute(folder), error);
    }

    bool hasFile(const std::string& path) const override
    {
        std::error_code error;
        return fs::is_regular_file(absolute(path), error);
    }

    std::optional<Bytes> read(const std::string& path) const override
    {
        // Anything but a regular file might never end, or never begin.
        if (!hasFile(path))
            return std::nullopt;
        std::ifstream file(absolute(path), std::ios::binary | std::ios::ate);
        const std::int64_t size = file ? std::int64_t{file.tellg()} : -1;
        if (size < 0 || size > largestSmallFile)
            return std::nullopt;
        Bytes bytes(static_cast<std::size_t>(size));
        file.seekg(0);
        file.read(reinterpret_cast<char*>(bytes.data()), size);
        bytes.resize(static_cast<std::size_t>(file.gcount()));
        return bytes;
    }

    std::unique_ptr<Demuxer> demux(const std::string& path) const override
    {
        return Demuxer::openFile(absolute(path));
    }

protected:
    std::vector<std::string> allFileNames(const std::string& folder) const override
    {
        std::vector<std::string> names;
        std::error_code error;
        fs::directory_iterator entry(absolute(folder), error);
        for (; !error && entry != fs::directory_iterator() && names.size() < mostFiles;
             entry.increment(error)) {
            std::error_code statusError;
            if (entry->is_regular_file(statusError))
                names.push_back(entry->path().filename().string());
        }
        return names;
    }

private:
    std::string absolute(const std::string& path) const { return m_root + "/" + path; }

    std::string m_root;
};

class ImageFiles final : public DiscFiles
{
public:
    ImageFiles(const std::string& path, std::shared_ptr<DiscImage> image)
        : m_path(path)
        , m_image(std::move(image))
    {}

    std::string volumeName() const override { return m_image->volumeName(); }
    bool hasFolder(const std::string& folder) const override { return m_image->hasFolder(folder); }
    bool hasFile(const std::string& path) const override
    {
        return m_image->openFile(path) != nullptr;
    }

    std::optional<Bytes> read(const std::string& path) const override
    {
        const auto file = ImageFile::open(m_image, path);
        if (!file || file->size() > largestSmallFile)
            return std::nullopt;
        constexpr int step = 64 * 1024;
        Bytes bytes;
        for (;;) {
            const std::size_t done = bytes.size();
            bytes.resize(done + step);
            const int count = file->read(bytes.data() + done, step);
            bytes.resize(done + static_cast<std::size_t>(std::max(count, 0)));
            if (count <= 0)
                return bytes;
        }
    }

    std::unique_ptr<Demuxer> demux(const std::string& path) const override
    {
        auto file = ImageFile::open(m_image, path);
        return file ? Demuxer::openBytes(std::move(file), m_path + "/" + path) : nullptr;
    }

protected:
    std::vector<std::string> allFileNames(const std::string& folder) const override
    {
        return m_image->fileNames(folder, mostFiles);
    }

private:
    std::string m_path;
    std::shared_ptr<DiscImage> m_image;
};

} // namespace

std::unique_ptr<DiscFiles> DiscFiles::open(const std::string& path)
{
    std::error_code error;
    if (fs::is_directory(path, error))
        return std::make_unique<FolderFiles>(path);
    if (auto image = DiscImage::open(path))
        return std::make_unique<ImageFiles>(path, std::move(image));
    return nullptr;
}

std::optional<DiscPath> DiscFiles::split(const std::string& path)
{
    std::error_code error;
    fs::path found(path);
    while (found.has_relative_path() && !fs::exists(found, error))
        found = found.parent_path();
    if (!fs::is_regular_file(found, error))
        return std::nullopt;
    // A file that is there lies in the stream folder below the root folder of its disc.
    if (found == path)
        found = found.parent_path().parent_path().parent_path();
    return DiscPath{found.string(), fs::path(path).lexically_relative(found).string()};
}

std::vector<std::string> DiscFiles::fileNames(const std::string& folder,
                                              const std::string& suffix) const
{
    std::vector<std::string> names = allFileNames(folder);
    const auto isOther = [&](const std::string& name) {
        return name[0] == '.' || !endsWith(name, suffix);
    };
    names.erase(std::remove_if(names.begin(), names.end(), isOther), names.end());
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

} // namespace engine
