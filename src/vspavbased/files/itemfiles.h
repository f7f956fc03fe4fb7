// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "enginelink/descriptor.h"
#include "enginelink/timeline/timeline.h"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace engine {

/// What an engine process may open while it works on an item. This is the one rule:
///
///   a file        itself
///   a folder      the files beneath it
///   an IFO file   the tables and the video of DVDs that lie beside it
///   a timeline    itself, the files that it names, and what their discs tell about them; of a file
///                 inside an image, the image
///
/// Regular files only, for reading, and through no link that leads out of a folder. The item itself
/// may be a link: whoever named it meant what it leads to.
class ItemFiles
{
public:
    enum class Kind
    {
        none,
        file,
        folder,
        other
    };

    struct Entry
    {
        std::string name;
        bool isFolder;
    };

    /// `path` is absolute; a separator may stand behind it.
    static ItemFiles ofItem(const std::string& path);
    static ItemFiles ofTimeline(const std::string& path, const Timeline& timeline);

    /// The item, when it is a file. None, with the reason in errno, otherwise.
    wire::Descriptor openItem() const { return open(m_item); }

    Kind kindOf(const std::string& path) const;
    /// None, with the reason in errno, for what may not be opened, too.
    wire::Descriptor open(const std::string& path) const;
    /// Files and folders in a folder. 0, or the reason as a number of errno.
    int list(const std::string& folder, std::vector<Entry>& entries) const;

private:
    /// Where a path leads: from a folder that is held open, or from nowhere.
    struct Place
    {
        const wire::Descriptor* folder = nullptr; ///< null: `path` is an item's own, or not allowed
        std::string path;
        bool isAllowed = false;
    };

    Place placeOf(const std::string& path) const;
    Place placeOnDisc(const std::string& path) const;
    void allowFile(const std::string& path);
    void allowSourceOfTimeline(const std::string& path);

    std::string m_item;
    std::string m_folderPath; ///< of m_folder, without a separator behind it
    wire::Descriptor m_folder;
    bool m_onlyTables = false;     ///< of the folder, only what a DVD's tables need
    std::set<std::string> m_files; ///< that may be opened by their own paths
    /// Discs of which a timeline plays files, by their paths: what those files may be.
    struct Disc
    {
        std::shared_ptr<const wire::Descriptor> folder;
        std::set<std::string> files; ///< by their paths in it
    };
    std::map<std::string, Disc> m_discs;
    std::set<std::string> m_folders; ///< that may be seen to be folders
};

} // namespace engine
