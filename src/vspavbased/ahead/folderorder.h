// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <cstddef>
#include <list>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace engine {

/// Guesses which file of a folder will be asked for next: those who walk through folders take the
/// entries as the file system gives them, people who pick files have them sorted, and both take the
/// kinds that were taken so far.
class FolderOrder
{
public:
    /// What will probably follow, at most `most` paths, now that `path` is asked for. Nothing as
    /// long as what was asked for in its folder is in no order.
    std::vector<std::string> following(const std::string& path, std::size_t most);

    /// Whether `path` may still follow in its folder.
    bool isAhead(const std::string& path) const;

private:
    /// The names of a folder in one order, and how well what is asked for keeps to it.
    struct Sequence
    {
        std::vector<std::string> names;
        std::unordered_map<std::string, std::size_t> places;
        std::size_t asked = 0; ///< place behind the file asked for last
        std::size_t hits = 0;  ///< files in a row of which each was the next
    };

    struct Folder
    {
        std::string path; ///< with a separator behind it
        Sequence listed;
        Sequence sorted;

        const Sequence& likelier() const { return sorted.hits > listed.hits ? sorted : listed; }
    };

    Folder& folderOf(const std::string& path);
    void advance(Sequence& sequence, const std::string& name) const;
    bool isOfKind(const std::string& name) const;

    std::list<Folder> m_folders;      ///< those used last, the last one in front
    std::set<std::string> m_suffixes; ///< of the files asked for, in upper case
};

} // namespace engine
