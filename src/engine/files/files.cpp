// SPDX-License-Identifier: GPL-2.0-or-later
#include "files/files.h"

#include "enginelink/log.h"
#include "refusal.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>

namespace fs = std::filesystem;

namespace engine {

namespace {

class FileSystem final : public Files
{
public:
    FileKind kindOf(const std::string& path) override
    {
        std::error_code error;
        switch (fs::status(path, error).type()) {
        case fs::file_type::regular:
            return FileKind::file;
        case fs::file_type::directory:
            return FileKind::folder;
        case fs::file_type::not_found:
        case fs::file_type::none:
            return FileKind::none;
        default:
            return FileKind::other;
        }
    }

    /// Looked at before it is opened, since opening a device may do something, and afterwards,
    /// since another file may have taken its place.
    wire::Descriptor open(const std::string& path) override
    {
        struct stat status;
        if (stat(path.c_str(), &status) != 0)
            return {};
        if (S_ISREG(status.st_mode)) {
            wire::Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
            if (!file || (fstat(file.get(), &status) == 0 && S_ISREG(status.st_mode)))
                return file;
        }
        errno = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
        return {};
    }

    std::vector<FolderEntry> list(const std::string& folder, std::size_t most) override
    {
        std::vector<FolderEntry> found;
        std::error_code error;
        fs::directory_iterator entry(folder, error);
        for (; !error && entry != fs::directory_iterator() && found.size() < most;
             entry.increment(error)) {
            std::error_code statusError;
            const bool isFolder = entry->is_directory(statusError);
            if (isFolder || entry->is_regular_file(statusError))
                found.push_back({entry->path().filename().string(), isFolder});
        }
        noteFileError(error.value());
        if (error)
            log(folder + ": " + error.message());
        return found;
    }
};

Files*& current()
{
    static FileSystem fileSystem;
    static Files* files = &fileSystem;
    return files;
}

} // namespace

Files& files()
{
    return *current();
}

void useFiles(Files& others)
{
    current() = &others;
}

} // namespace engine
