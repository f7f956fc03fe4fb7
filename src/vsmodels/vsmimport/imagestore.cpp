// SPDX-License-Identifier: LGPL-2.1-or-later
#include "imagestore.h"

#include <QtCore/QAtomicInt>
#include <QtCore/QBuffer>
#include <QtCore/QByteArray>
#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtGui/QImage>

namespace Vesk {

namespace {

const int writerDefaultQuality = -1;

/// Bytes. File systems take 255 for a name, numbers and suffix included.
const int longestPart = 200;

bool isUnsafe(QChar c)
{
    return c == QLatin1Char('/') || c == QLatin1Char('\\') || c.category() == QChar::Other_Control;
}

/// A name beside `path` that no other picture uses, short whatever the picture is called. A plain
/// file rather than a QTemporaryFile: that one is readable by its owner alone.
QString temporaryName(const QString& path)
{
    static QAtomicInt counter;
    return QString::fromLatin1("%1/.vspimport-%2-%3.part")
        .arg(QFileInfo(path).absolutePath(), QString::number(QCoreApplication::applicationPid()),
             QString::number(counter.fetchAndAddOrdered(1)));
}

bool writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    return file.write(bytes) == bytes.size() && file.flush();
}

} // namespace

QString imageNamePart(const QString& text)
{
    QString part = text.left(longestPart);
    bool leading = true;
    for (int i = 0; i < part.length(); ++i) {
        const QChar c = part.at(i);
        leading = leading && c == QLatin1Char('.');
        if (leading || isUnsafe(c))
            part[i] = QLatin1Char('_');
    }
    while (QFile::encodeName(part).size() > longestPart)
        part.chop(1);
    if (!part.isEmpty() && part.at(part.length() - 1).isHighSurrogate())
        part.chop(1);
    return part;
}

QString imageUrlOf(const QString& path)
{
    QString escaped = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    escaped.replace(QLatin1Char('%'), QLatin1String("%25"));
    escaped.replace(QLatin1Char('#'), QLatin1String("%23"));
    escaped.replace(QLatin1Char('?'), QLatin1String("%3F"));
    if (escaped.startsWith(QLatin1Char('/')))
        escaped.remove(0, 1);
    return QLatin1String("file:///") + escaped;
}

bool writeImageFile(const QImage& image, const QString& path)
{
    QBuffer buffer;
    if (!buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, "JPG", writerDefaultQuality))
        return false;
    const QString temporary = temporaryName(path);
    bool written = writeFile(temporary, buffer.data());
    if (written) {
        QFile::remove(path);
        written = QFile::rename(temporary, path);
    }
    if (!written)
        QFile::remove(temporary);
    return written;
}

} // namespace Vesk
