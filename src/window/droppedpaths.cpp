// SPDX-License-Identifier: GPL-2.0-or-later
#include "droppedpaths.h"

#include <QtCore/QDir>
#include <QtCore/QMimeData>
#include <QtCore/QUrl>

namespace {

/// Empty for what is no path.
QString pathOf(const QString& line)
{
    if (line.startsWith(QLatin1String("file:")))
        return QUrl(line).toLocalFile();
    if (line.startsWith(QLatin1String("~/")))
        return QDir::homePath() + line.mid(1);
    return line.startsWith(QLatin1Char('/')) ? line : QString();
}

} // namespace

QStringList droppedPaths(const QMimeData& data)
{
    QStringList paths;
    for (const QUrl& url : data.urls()) {
        if (url.isLocalFile())
            paths.append(QDir::cleanPath(url.toLocalFile()));
    }
    if (!paths.isEmpty())
        return paths;
    for (const QString& line : data.text().split(QLatin1Char('\n'))) {
        const QString path = pathOf(line.trimmed());
        if (!path.isEmpty())
            paths.append(QDir::cleanPath(path));
    }
    return paths;
}
