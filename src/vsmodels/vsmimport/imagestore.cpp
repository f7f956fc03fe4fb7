// SPDX-License-Identifier: LGPL-2.1-or-later
#include "imagestore.h"

#include "replacingfile.h"

#include <QtCore/QBuffer>
#include <QtCore/QByteArray>
#include <QtCore/QCryptographicHash>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QMutex>
#include <QtCore/QMutexLocker>
#include <QtCore/QSet>
#include <QtGui/QImage>

namespace Vesk {

namespace {

const int writerDefaultQuality = -1;

/// Bytes that file systems take for a name.
const int longestName = 255;
const int suffixLength = 4; // ".jpg"
const int codeDigits = 16;

int encodedSize(const QString& text)
{
    return QFile::encodeName(text).size();
}

bool isUnsafe(QChar c)
{
    return c == QLatin1Char('/') || c == QLatin1Char('\\') || c.category() == QChar::Other_Control;
}

QString withoutUnsafe(const QString& text)
{
    QString part = text;
    bool leading = true;
    for (int i = 0; i < part.length(); ++i) {
        const QChar c = part.at(i);
        leading = leading && c == QLatin1Char('.');
        if (leading || isUnsafe(c))
            part[i] = QLatin1Char('_');
    }
    return part;
}

/// `text` as a part of a name that has `room` bytes for it.
QString namePart(const QString& text, int room)
{
    // No character takes less than a byte.
    QString part = withoutUnsafe(text.left(room + 1));
    if (encodedSize(part) <= room)
        return part;
    const QByteArray code = QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha1);
    const QString end = QLatin1Char('~') + QString::fromLatin1(code.toHex().left(codeDigits));
    while (encodedSize(part) > room - end.size())
        part.chop(1);
    if (!part.isEmpty() && part.at(part.length() - 1).isHighSurrogate())
        part.chop(1);
    return part + end;
}

/// True at the first call for `folder` in this process.
bool isNewFolder(const QString& folder)
{
    static QMutex mutex;
    static QSet<QString> known;
    QMutexLocker lock(&mutex);
    const int count = known.count();
    known.insert(folder);
    return known.count() != count;
}

} // namespace

QString imageFolderName(const QString& text)
{
    return namePart(text, longestName);
}

QString imageFileName(const QString& before, const QString& text, const QString& after)
{
    const int room = longestName - suffixLength - encodedSize(before) - encodedSize(after);
    return before + namePart(text, room) + after;
}

QString imageUrlOf(const QString& path)
{
    const bool bringsItsSlash = path.startsWith(QLatin1Char('/'));
    return QLatin1String(bringsItsSlash ? "file://" : "file:///") + path;
}

bool isWholeImageFile(const QString& path)
{
    const QByteArray startMark("\xff\xd8");
    const QByteArray endMark("\xff\xd9");
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return false;
    const qint64 end = file.size() - endMark.size();
    return end >= startMark.size() && file.read(startMark.size()) == startMark && file.seek(end) &&
           file.read(endMark.size()) == endMark;
}

bool writeImageFile(const QImage& image, const QString& path)
{
    QBuffer buffer;
    if (!buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, "JPG", writerDefaultQuality))
        return false;
    const QString folder = QFileInfo(path).absolutePath();
    if (isNewFolder(folder))
        ReplacingFile::removeLeftovers(folder);
    ReplacingFile file(folder);
    return file.write(buffer.data()) && file.moveTo(path);
}

} // namespace Vesk
