// SPDX-License-Identifier: GPL-2.0-or-later
#include "reportreader.h"

#include <QtCore/QBuffer>
#include <QtCore/QDataStream>
#include <QtCore/QFile>

namespace {

const qint32 magic = 0x4D504D49; // "IMPM"
const int failedImport = 2;

void setUp(QDataStream& stream)
{
    stream.setByteOrder(QDataStream::LittleEndian);
    stream.setVersion(QDataStream::Qt_4_8);
}

bool readBlock(const QByteArray& bytes, QList<ReportedError>& errors)
{
    QDataStream stream(bytes);
    setUp(stream);
    QDateTime time;
    stream >> time;
    while (stream.status() == QDataStream::Ok && !stream.atEnd()) {
        ReportedError entry;
        qint32 type = 0;
        stream >> type >> entry.path;
        if (type == failedImport)
            stream >> entry.sample;
        entry.type = type;
        entry.time = time;
        if (stream.status() == QDataStream::Ok)
            errors.append(entry);
    }
    return stream.status() == QDataStream::Ok;
}

} // namespace

bool readReport(const QString& fileName, QList<ReportedError>& errors, QString& error)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        error = QStringLiteral("%1: %2").arg(fileName, file.errorString());
        return false;
    }
    QDataStream stream(&file);
    setUp(stream);
    do {
        qint32 blockMagic = 0;
        qint32 zero = 0;
        quint32 length = 0;
        stream >> blockMagic >> zero >> length;
        if (stream.status() != QDataStream::Ok || blockMagic != magic) {
            error = QStringLiteral("%1: not an import error report").arg(fileName);
            return false;
        }
        const QByteArray block = file.read(qMin<qint64>(length, file.bytesAvailable()));
        const bool isReadable = readBlock(block, errors);
        if (!isReadable || block.size() != qint64(length)) {
            error = QStringLiteral("%1: the report is cut short").arg(fileName);
            return false;
        }
    } while (!stream.atEnd());
    return true;
}
