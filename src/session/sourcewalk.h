// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QStringList>

#include <functional>
#include <set>
#include <utility>
#include <vector>

/// The items that an import finds below its sources, one after another and in its order: files,
/// folders of discs, and folders whose names are no valid text. With them an import can be made in
/// parts, or shared between machines; what they are the import finds out itself.
class SourceWalk
{
public:
    /// It ends as soon as `isStopped` says so.
    explicit SourceWalk(const QStringList& sources, std::function<bool()> isStopped = {});

    /// The next item's path in the file system's bytes, its source as given and what is below it.
    /// False behind the last one, and once it is stopped.
    bool next(QByteArray& path);

    /// Folders so far that cannot be read.
    const QStringList& unreadable() const { return m_unreadable; }

private:
    struct Folder
    {
        QByteArray path;
        std::vector<QByteArray> names;
        std::size_t done = 0;
    };

    /// Whether `path` is an item; a folder that is none is gone into.
    bool isItem(const QByteArray& path);
    void enter(const QByteArray& path);

    const QStringList m_sources;
    const std::function<bool()> m_isStopped;
    int m_done = 0;
    std::vector<Folder> m_folders;
    std::set<std::pair<quint64, quint64>> m_walked; ///< devices and inodes, of the source at hand
    QStringList m_unreadable;
};
