// SPDX-License-Identifier: LGPL-2.1-or-later
#include "files/itemfiles.h"

#include "enginelink/ascii.h"
#include "files/beneath.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>

namespace engine {

namespace {

/// A disc has files with numbers of five digits; other kinds lie in the same folder.
constexpr std::size_t mostEntries = 200000;

struct CloseFolder
{
    void operator()(DIR* folder) const { closedir(folder); }
};

ItemFiles::Kind kindOfMode(mode_t mode)
{
    if (S_ISREG(mode))
        return ItemFiles::Kind::file;
    return S_ISDIR(mode) ? ItemFiles::Kind::folder : ItemFiles::Kind::other;
}

std::string withoutSeparators(std::string path)
{
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

/// What stands before the last separator; empty when nothing does.
std::string parentOf(const std::string& path)
{
    const std::size_t end = path.rfind('/');
    return end == std::string::npos || end == 0 ? std::string() : path.substr(0, end);
}

std::string nameOf(const std::string& path)
{
    return path.substr(path.rfind('/') + 1);
}

std::string suffixOf(const std::string& path)
{
    const std::string name = nameOf(path);
    return toUpper(name.substr(std::min(name.rfind('.'), name.size())));
}

bool isDots(const std::string& name)
{
    return name == "." || name == "..";
}

bool isDvdFile(const std::string& name)
{
    const std::string suffix = suffixOf(name);
    return name.find('/') == std::string::npos &&
           (suffix == ".IFO" || suffix == ".BUP" || suffix == ".VOB");
}

ItemFiles::Kind kindAt(const std::string& path)
{
    struct stat status;
    return stat(path.c_str(), &status) == 0 ? kindOfMode(status.st_mode) : ItemFiles::Kind::none;
}

/// Not a device, which opening might move, nor a pipe, which might block; looked at again when it
/// is open, since another file may have taken its place.
wire::Descriptor openRegular(const std::string& path)
{
    if (kindAt(path) != ItemFiles::Kind::file) {
        errno = errno == 0 ? EINVAL : errno;
        return {};
    }
    return onlyRegular(
        wire::Descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)));
}

} // namespace

ItemFiles ItemFiles::ofItem(const std::string& path)
{
    ItemFiles files;
    const std::string item = withoutSeparators(path);
    const Kind kind = kindAt(item);
    if (kind == Kind::folder)
        files.m_folderPath = item;
    else
        files.allowFile(item);
    if (kind == Kind::file && suffixOf(item) == ".IFO") {
        files.m_folderPath = parentOf(item);
        files.m_onlyTables = true;
    }
    if (!files.m_folderPath.empty())
        files.m_folder = openFolder(files.m_folderPath);
    files.m_item = item;
    return files;
}

ItemFiles ItemFiles::ofTimeline(const std::string& path, const Timeline& timeline)
{
    ItemFiles files;
    files.m_item = path;
    files.allowFile(path);
    for (const TimelineItem& item : timeline.items)
        files.allowSourceOfTimeline(item.path);
    return files;
}

void ItemFiles::allowFile(const std::string& path)
{
    m_files.insert(path);
}

/// A file, or one inside the image that stands before it in the path.
void ItemFiles::allowSourceOfTimeline(const std::string& path)
{
    std::string found = path;
    while (!found.empty() && kindAt(found) == Kind::none)
        found = parentOf(found);
    if (found.empty() || kindAt(found) != Kind::file)
        return;
    // disc/BDMV/STREAM/00001.m2ts is told about by files of its number beside the stream folder.
    const std::string root = parentOf(parentOf(path));
    const std::string disc = parentOf(root);
    if (found != path || toUpper(nameOf(root)) != "BDMV" || disc.empty()) {
        allowFile(found);
        if (found == path)
            m_folders.insert(disc);
        return;
    }
    Disc& known = m_discs[disc];
    if (!known.folder)
        known.folder = std::make_shared<const wire::Descriptor>(openFolder(disc));
    known.files.insert(path.substr(disc.size() + 1));
    const std::string name = nameOf(path);
    const std::string number = name.substr(0, name.rfind('.'));
    for (const char* folder : {"/CLIPINF/", "/BACKUP/CLIPINF/"}) {
        for (const char* suffix : {".clpi", ".cpi", ".CPI"})
            known.files.insert(nameOf(root) + folder + number + suffix);
    }
}

/// The disc itself may be seen to be a folder.
ItemFiles::Place ItemFiles::placeOnDisc(const std::string& path) const
{
    for (const auto& [root, disc] : m_discs) {
        if (path == root)
            return {disc.folder.get(), ".", true};
        if (path.compare(0, root.size(), root) == 0 && path[root.size()] == '/' &&
            disc.files.count(path.substr(root.size() + 1)) > 0)
            return {disc.folder.get(), path.substr(root.size() + 1), true};
    }
    return {};
}

ItemFiles::Place ItemFiles::placeOf(const std::string& path) const
{
    if (m_files.count(path) > 0)
        return {nullptr, path, true};
    if (!m_folder)
        return placeOnDisc(path);
    if (path == m_folderPath)
        return {&m_folder, ".", true};
    if (path.compare(0, m_folderPath.size(), m_folderPath) != 0 || path[m_folderPath.size()] != '/')
        return {};
    const std::size_t begin = path.find_first_not_of('/', m_folderPath.size());
    if (begin == std::string::npos)
        return {&m_folder, ".", true};
    const std::string relative = path.substr(begin);
    return {&m_folder, relative, !m_onlyTables || isDvdFile(relative)};
}

ItemFiles::Kind ItemFiles::kindOf(const std::string& path) const
{
    if (m_folders.count(path) > 0)
        return Kind::folder;
    const Place place = placeOf(path);
    if (!place.isAllowed)
        return Kind::none;
    if (!place.folder)
        return kindAt(place.path);
    const wire::Descriptor found = openBeneath(*place.folder, place.path, O_PATH);
    struct stat status;
    return found && fstat(found.get(), &status) == 0 ? kindOfMode(status.st_mode) : Kind::none;
}

wire::Descriptor ItemFiles::open(const std::string& path) const
{
    errno = EPERM; // by the rule above, not by the system
    const Place place = placeOf(path);
    if (!place.isAllowed)
        return {};
    errno = 0;
    if (!place.folder)
        return openRegular(place.path);
    if (kindOf(path) != Kind::file) {
        errno = errno == 0 ? EINVAL : errno;
        return {};
    }
    return onlyRegular(openBeneath(*place.folder, place.path, O_RDONLY | O_NONBLOCK | O_NOCTTY));
}

int ItemFiles::list(const std::string& folder, std::vector<Entry>& entries) const
{
    const Place place = placeOf(folder);
    if (!place.isAllowed || !place.folder)
        return EPERM;
    wire::Descriptor found = openBeneath(*place.folder, place.path, O_RDONLY | O_DIRECTORY);
    const std::unique_ptr<DIR, CloseFolder> listed(found ? fdopendir(found.get()) : nullptr);
    if (!listed)
        return errno;
    static_cast<void>(found.release());
    const std::string prefix = withoutSeparators(folder) + '/';
    errno = 0;
    while (const dirent* entry = readdir(listed.get())) {
        const std::string name = entry->d_name;
        if (isDots(name) || entries.size() >= mostEntries)
            continue;
        const Kind kind = kindOf(prefix + name);
        if (kind == Kind::file || kind == Kind::folder)
            entries.push_back({name, kind == Kind::folder});
        errno = 0;
    }
    return errno;
}

} // namespace engine
