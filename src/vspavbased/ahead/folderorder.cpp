// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ahead/folderorder.h"

#include "enginelink/ascii.h"

#include <dirent.h>

#include <algorithm>
#include <memory>

namespace engine {

namespace {

/// As deep as trees of films are.
constexpr std::size_t mostFolders = 16;

/// Names to look through for the next files.
constexpr std::size_t mostLookedAt = 1000;

struct CloseFolder
{
    void operator()(DIR* folder) const { closedir(folder); }
};

/// As the file system gives them, without folders and hidden ones.
std::vector<std::string> namesIn(const std::string& folder)
{
    std::vector<std::string> names;
    const std::unique_ptr<DIR, CloseFolder> listed(opendir(folder.c_str()));
    while (const dirent* entry = listed ? readdir(listed.get()) : nullptr) {
        if (entry->d_name[0] != '.' && entry->d_type != DT_DIR)
            names.emplace_back(entry->d_name);
    }
    return names;
}

std::string suffixOf(const std::string& name)
{
    return toUpper(name.substr(std::min(name.rfind('.'), name.size())));
}

/// Of discs nobody asks in this way.
bool isOfDisc(const std::string& suffix)
{
    return suffix == ".ISO" || suffix == ".IFO";
}

} // namespace

std::vector<std::string> FolderOrder::following(const std::string& path, std::size_t most)
{
    const std::size_t end = path.rfind('/');
    const std::string name = path.substr(end + 1);
    const std::string suffix = suffixOf(name);
    if (end == std::string::npos || isOfDisc(suffix))
        return {};
    m_suffixes.insert(suffix);
    Folder& folder = folderOf(path.substr(0, end + 1));
    const auto place = folder.places.find(name);
    if (place == folder.places.end())
        return {};
    // The first one of a folder tells nothing yet.
    folder.isInOrder = folder.asked > 0 && place->second >= folder.asked;
    folder.asked = place->second + 1;
    std::vector<std::string> paths;
    const std::size_t farthest = std::min(folder.names.size(), folder.asked + mostLookedAt);
    for (std::size_t i = folder.asked; folder.isInOrder && i < farthest && paths.size() < most;
         ++i) {
        if (m_suffixes.count(suffixOf(folder.names[i])) > 0)
            paths.push_back(folder.path + folder.names[i]);
    }
    return paths;
}

bool FolderOrder::isAhead(const std::string& path) const
{
    const std::string folder = path.substr(0, path.rfind('/') + 1);
    const std::string name = path.substr(folder.size());
    return std::any_of(m_folders.begin(), m_folders.end(), [&](const Folder& known) {
        const auto place = known.path == folder ? known.places.find(name) : known.places.end();
        return place != known.places.end() && known.isInOrder && place->second >= known.asked;
    });
}

FolderOrder::Folder& FolderOrder::folderOf(const std::string& path)
{
    const auto known = std::find_if(m_folders.begin(), m_folders.end(),
                                    [&path](const Folder& folder) { return folder.path == path; });
    if (known != m_folders.end()) {
        std::rotate(m_folders.begin(), known, known + 1);
        return m_folders.front();
    }
    if (m_folders.size() == mostFolders)
        m_folders.pop_back();
    Folder& folder = m_folders.emplace_front();
    folder.path = path;
    folder.names = namesIn(path);
    for (std::size_t i = 0; i < folder.names.size(); ++i)
        folder.places.emplace(folder.names[i], i);
    return folder;
}

void FolderOrder::clear()
{
    m_folders.clear();
    m_suffixes.clear();
}

} // namespace engine
