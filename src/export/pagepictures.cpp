// SPDX-License-Identifier: GPL-2.0-or-later
#include "pagepictures.h"

#include <QtCore/QBuffer>
#include <QtCore/QCryptographicHash>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>
#include <QtGui/QImage>
#include <QtGui/QImageReader>

namespace {

/// Larger pictures are made smaller: the page shows none larger than this.
const QSize largest(640, 640);

const qint64 mostBytes = 256LL * 1024 * 1024;

QByteArray scaled(QImageReader& reader, const QSize& size)
{
    reader.setScaledSize(size);
    QByteArray data;
    QBuffer buffer(&data);
    const bool isWritten = buffer.open(QIODevice::WriteOnly) && reader.read().save(&buffer, "JPG");
    return isWritten ? data : QByteArray();
}

} // namespace

PagePictures::PagePictures(const QString& folder)
    : m_folder(folder)
{}

bool PagePictures::write(QIODevice& page, const QString& file, const QByteArray& attributes)
{
    const Jpeg picture = file.isEmpty() ? Jpeg() : read(file);
    if (picture.data.isEmpty())
        return false;
    page.write(m_folder.isEmpty() ? "<img src=\"data:image/jpeg;base64," + picture.data.toBase64()
                                  : "<img loading=\"lazy\" src=\"" + copy(picture.data));
    page.write("\" width=\"" + QByteArray::number(picture.size.width()) + "\" height=\"" +
               QByteArray::number(picture.size.height()) + "\" " + attributes + '>');
    return true;
}

PagePictures::Jpeg PagePictures::read(const QString& file)
{
    QFile source(file);
    if (!source.open(QIODevice::ReadOnly) || source.size() > mostBytes)
        return {};
    QByteArray data = source.readAll();
    QBuffer buffer(&data);
    QImageReader reader(&buffer, "JPG");
    const QSize size = reader.size();
    if (!size.isValid() || size.isEmpty())
        return {};
    if (size.width() <= largest.width() && size.height() <= largest.height())
        return {data, size};
    const QSize fitting = size.scaled(largest, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    return {scaled(reader, fitting), fitting};
}

/// The address of the copy, from the page.
QByteArray PagePictures::copy(const QByteArray& data)
{
    const QByteArray hash = QCryptographicHash::hash(data, QCryptographicHash::Sha256).toHex();
    const QByteArray name = hash.left(32) + ".jpg";
    const QString path = m_folder + QLatin1Char('/') + QString::fromLatin1(name);
    if (QFileInfo(path).size() != data.size()) {
        QSaveFile file(path);
        const bool isWritten =
            file.open(QIODevice::WriteOnly) && file.write(data) == data.size() && file.commit();
        if (!isWritten && m_error.isEmpty())
            m_error = QStringLiteral("%1: %2").arg(path, file.errorString());
    }
    const QString folder = QFileInfo(m_folder).fileName();
    return QFile::encodeName(folder).toPercentEncoding() + '/' + name;
}
