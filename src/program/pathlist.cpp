// SPDX-License-Identifier: GPL-2.0-or-later
#include "pathlist.h"

#include <QtCore/QFile>

#include <cstdio>

bool readPathList(const QString& fileName, char end, QList<QByteArray>& paths, QString& error)
{
    QFile file(fileName);
    const bool isOpen = fileName == QLatin1String("-") ? file.open(stdin, QIODevice::ReadOnly)
                                                       : file.open(QIODevice::ReadOnly);
    const QByteArray text = isOpen ? file.readAll() : QByteArray();
    if (!isOpen || file.error() != QFile::NoError) {
        error = QStringLiteral("%1: %2").arg(fileName, file.errorString());
        return false;
    }
    for (int start = 0; start < text.size();) {
        int stop = text.indexOf(end, start);
        if (stop < 0)
            stop = text.size();
        if (stop > start)
            paths.append(text.mid(start, stop - start));
        start = stop + 1;
    }
    return true;
}
