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
    Folder& folder = folderOf(path.substr(0, end + 1));
    advance(folder.listed, name);
    advance(folder.sorted, name);
    m_suffixes.insert(suffix);
    const Sequence& sequence = folder.likelier();
    std::vector<std::string> paths;
    const std::size_t farthest =
        sequence.hits > 0 ? std::min(sequence.names.size(), sequence.asked + mostLookedAt) : 0;
    for (std::size_t i = sequence.asked; i < farthest && paths.size() < most; ++i) {
        if (isOfKind(sequence.names[i]))
            paths.push_back(folder.path + sequence.names[i]);
    }
    return paths;
}

/// The first one of a folder tells nothing yet, and kinds that were not asked for before may lie
/// between two that follow each other.
void FolderOrder::advance(Sequence& sequence, const std::string& name) const
{
    const auto found = sequence.places.find(name);
    if (found == sequence.places.end())
        return;
    const std::size_t place = found->second;
    const auto at = [&sequence](std::size_t i) {
        return sequence.names.begin() + static_cast<std::ptrdiff_t>(i);
    };
    const bool isNext =
        sequence.asked > 0 && place >= sequence.asked &&
        std::none_of(at(sequence.asked), at(std::min(place, sequence.asked + mostLookedAt)),
                     [this](const std::string& between) { return isOfKind(between); });
    sequence.hits = isNext ? sequence.hits + 1 : 0;
    sequence.asked = place + 1;
}

bool FolderOrder::isOfKind(const std::string& name) const
{
    return m_suffixes.count(suffixOf(name)) > 0;
}

bool FolderOrder::isAhead(const std::string& path) const
{
    const std::string folder = path.substr(0, path.rfind('/') + 1);
    const std::string name = path.substr(folder.size());
    return std::any_of(m_folders.begin(), m_folders.end(), [&](const Folder& known) {
        const Sequence& sequence = known.likelier();
        const auto place =
            known.path == folder ? sequence.places.find(name) : sequence.places.end();
        return place != sequence.places.end() && sequence.hits > 0 &&
               place->second >= sequence.asked;
    });
}

FolderOrder::Folder& FolderOrder::folderOf(const std::string& path)
{
    const auto known = std::find_if(m_folders.begin(), m_folders.end(),
                                    [&path](const Folder& folder) { return folder.path == path; });
    if (known != m_folders.end()) {
        m_folders.splice(m_folders.begin(), m_folders, known);
        return m_folders.front();
    }
    if (m_folders.size() == mostFolders)
        m_folders.pop_back();
    Folder& folder = m_folders.emplace_front();
    folder.path = path;
    folder.listed.names = namesIn(path);
    folder.sorted.names = folder.listed.names;
    std::sort(folder.sorted.names.begin(), folder.sorted.names.end());
    for (Sequence* sequence : {&folder.listed, &folder.sorted}) {
        for (std::size_t i = 0; i < sequence->names.size(); ++i)
            sequence->places.emplace(sequence->names[i], i);
    }
    return folder;
}

} // namespace engine
