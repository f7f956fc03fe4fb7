// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QString>

#include <algorithm>
#include <random>

/// Empty when there is no such file.
inline QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Writes a file, and makes the folders that lead to it; its path.
inline QString writeFile(const QString& path, const QByteArray& content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("%s cannot be written", qPrintable(path));
    return path;
}

/// The files below a folder, hidden ones too, by their path in it.
inline QStringList filesBelow(const QString& folder)
{
    QStringList names;
    QDirIterator it(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext())
        names << QDir(folder).relativeFilePath(it.next());
    names.sort();
    return names;
}

/// Copies a folder with all files below it.
inline void copyFolder(const QString& from, const QString& to)
{
    for (const QString& name : filesBelow(from))
        writeFile(to + '/' + name, contentOf(from + '/' + name));
}

inline QByteArray randomBytes(int count, unsigned seed = 1)
{
    std::mt19937 random(seed);
    QByteArray bytes(count, 0);
    std::generate(bytes.begin(), bytes.end(), [&random] { return char(random()); });
    return bytes;
}
