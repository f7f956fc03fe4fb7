// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <cstddef>
#include <deque>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace engine {

/// Guesses which file of a folder will be asked for next: those who walk through folders take the
/// entries as the file system gives them, and of those the kinds that they have taken so far.
class FolderOrder
{
public:
    /// What will probably follow, at most `most` paths, now that `path` is asked for. Nothing as
    /// long as what was asked for in its folder is in no such order.
    std::vector<std::string> following(const std::string& path, std::size_t most);

    /// Whether `path` may still follow in its folder.
    bool isAhead(const std::string& path) const;

    void clear();

private:
    struct Folder
    {
        std::string path; ///< with a separator behind it
        std::vector<std::string> names;
        std::unordered_map<std::string, std::size_t> places;
        std::size_t asked = 0; ///< place behind the file asked for last
        bool isInOrder = false;
    };

    Folder& folderOf(const std::string& path);

    std::deque<Folder> m_folders;     ///< those used last, the last one in front
    std::set<std::string> m_suffixes; ///< of the files asked for, in upper case
};

} // namespace engine
