// SPDX-License-Identifier: GPL-2.0-or-later
#include "shownpaths.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace {

/// Nobody gives that many folders by hand, and each path is compared with all.
const int mostSources = 1000;

QString withSeparator(const QString& path)
{
    return path.endsWith(QLatin1Char('/')) ? path : path + QLatin1Char('/');
}

} // namespace

ShownPaths::ShownPaths(const QStringList& sources)
{
    for (const QString& source : sources.mid(0, mostSources)) {
        m_sources.push_back(
            {withSeparator(QFileInfo(source).absoluteFilePath()), withSeparator(source)});
    }
    if (m_sources.size() == 1 && QFileInfo(sources.first()).isDir())
        m_sources.front().given.clear();
}

QString ShownPaths::shown(const QString& path) const
{
    for (const Source& source : m_sources) {
        if (path.startsWith(source.absolute))
            return source.given + path.mid(source.absolute.length());
        if (path + QLatin1Char('/') == source.absolute && !source.given.isEmpty())
            return source.given.chopped(1);
    }
    return path;
}
