// SPDX-License-Identifier: GPL-2.0-or-later
#include "listfile.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>

#include <algorithm>

namespace {

/// A list of a hundred thousand paths has some ten.
const qint64 largestList = Q_INT64_C(256) * 1024 * 1024;

} // namespace

bool ListFile::write(const QString& fileName, const QStringList& paths, QString& error)
{
    const bool hasLines = std::any_of(paths.begin(), paths.end(), [](const QString& path) {
        return path.contains(QLatin1Char('\n'));
    });
    QSaveFile file(fileName);
    bool isWritten = file.open(QIODevice::WriteOnly);
    for (const QString& path : paths) {
        const QByteArray line = QFile::encodeName(path) + (hasLines ? '\0' : '\n');
        isWritten = isWritten && file.write(line) == line.size();
    }
    isWritten = isWritten && file.commit();
    if (!isWritten)
        error = file.errorString();
    return isWritten;
}

bool ListFile::read(const QString& fileName, QStringList& paths, QString& error)
{
    QFile file(fileName);
    const QFileInfo info(fileName);
    if (info.exists() && !info.isFile()) { // a pipe may never end
        error = tr("it is no list of paths");
        return false;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        error = file.errorString();
        return false;
    }
    if (file.size() > largestList) {
        error = tr("it is no list of paths");
        return false;
    }
    const QByteArray text = file.readAll();
    const QDir folder = info.absoluteDir();
    for (const QByteArray& line : text.split(text.contains('\0') ? '\0' : '\n')) {
        if (!line.isEmpty())
            paths.append(QDir::cleanPath(folder.absoluteFilePath(QFile::decodeName(line))));
    }
    return true;
}
