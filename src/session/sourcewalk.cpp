// SPDX-License-Identifier: GPL-2.0-or-later
#include "sourcewalk.h"

#include <QtCore/QFile>

#include <cerrno>
#include <dirent.h>
#include <memory>
#include <sys/stat.h>

namespace {

struct CloseFolder
{
    void operator()(DIR* folder) const { closedir(folder); }
};

bool exists(const QByteArray& path)
{
    struct stat status = {};
    return ::stat(path.constData(), &status) == 0;
}

bool isDisc(const QByteArray& folder)
{
    return exists(folder + "/VIDEO_TS") || exists(folder + "/BDMV") || exists(folder + "/BDAV");
}

QByteArray below(const QByteArray& folder, const QByteArray& name)
{
    return folder.endsWith('/') ? folder + name : folder + '/' + name;
}

/// As far as the import sees it.
bool isEmpty(const QByteArray& path)
{
    const std::unique_ptr<DIR, CloseFolder> folder(opendir(path.constData()));
    while (const dirent* entry = folder ? readdir(folder.get()) : nullptr) {
        if (entry->d_name[0] != '.')
            return false;
    }
    return true;
}

} // namespace

SourceWalk::SourceWalk(const QStringList& sources, std::function<bool()> isStopped)
    : m_sources(sources)
    , m_isStopped(std::move(isStopped))
{}

bool SourceWalk::next(QByteArray& path)
{
    const auto goesOn = [this] { return !m_isStopped || !m_isStopped(); };
    while (goesOn()) {
        while (!m_folders.empty() && goesOn()) {
            Folder& folder = m_folders.back();
            if (folder.done == folder.names.size()) {
                m_folders.pop_back();
                continue;
            }
            path = below(folder.path, folder.names[folder.done++]);
            if (isItem(path))
                return true;
        }
        if (m_done == m_sources.size() || !goesOn())
            return false;
        m_walked.clear();
        path = QFile::encodeName(m_sources.at(m_done++));
        if (isItem(path))
            return true;
    }
    return false;
}

bool SourceWalk::isItem(const QByteArray& path)
{
    struct stat status = {};
    if (::stat(path.constData(), &status) != 0)
        return false;
    if (!S_ISDIR(status.st_mode))
        return S_ISREG(status.st_mode);
    if (QFile::encodeName(QFile::decodeName(path)) != path)
        return !isEmpty(path); // the import cannot look into it
    // A link may lead back into its own tree.
    if (!m_walked.emplace(status.st_dev, status.st_ino).second)
        return false;
    if (isDisc(path))
        return true;
    enter(path);
    return false;
}

/// The names are taken as a whole, so that the depth of the tree costs no open files.
void SourceWalk::enter(const QByteArray& path)
{
    Folder entered;
    entered.path = path;
    const std::unique_ptr<DIR, CloseFolder> folder(opendir(path.constData()));
    if (!folder && errno != ENOENT)
        m_unreadable.append(QFile::decodeName(path));
    while (const dirent* entry = folder ? readdir(folder.get()) : nullptr) {
        if (entry->d_name[0] != '.') // the import passes over what is hidden
            entered.names.emplace_back(entry->d_name);
    }
    m_folders.push_back(std::move(entered));
}
