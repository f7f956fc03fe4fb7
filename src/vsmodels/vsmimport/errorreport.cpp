// SPDX-License-Identifier: LGPL-2.1-or-later
#include "errorreport.h"

#include "cimportmodel_p.h"

#include <QtCore/QByteArray>
#include <QtCore/QDataStream>
#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QtEndian>

namespace Vesk {

namespace {

const qint32 reportMagic = 0x4D504D49; // "IMPM"
/// Qt's code for local time of which it is not known whether it is summer time.
const qint8 localTime = -1;
const qint64 largestSample = Q_INT64_C(512) * 1024;

/// A data stream in the format of the report.
class ReportStream : public QDataStream
{
public:
    explicit ReportStream(QIODevice* device)
        : QDataStream(device)
    {
        setByteOrder(LittleEndian);
        setVersion(Qt_4_8);
    }
};

/// The first bytes of the file at `path`; null for an empty file, "0" when it cannot be read. Only
/// regular files are opened: a pipe would block.
QByteArray sampleOf(const QString& path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return QByteArray("0");
    const QByteArray sample = file.read(largestSample);
    return sample.isEmpty() ? QByteArray() : sample;
}

} // namespace

ErrorReportBlock::ErrorReportBlock(QIODevice* device)
    : m_device(device)
    , m_lengthPosition(0)
{
    ReportStream stream(device);
    stream << reportMagic << qint32(0);
    m_lengthPosition = device->pos();
    // Not as a QDateTime: on some systems Qt 4 writes for it whether it is summer time.
    const QDateTime now = QDateTime::currentDateTime();
    stream << quint32(0) << now.date() << now.time() << localTime;
}

void ErrorReportBlock::append(const ImportErrorRecord& record)
{
    ReportStream stream(m_device);
    stream << qint32(record.type) << record.url;
    if (record.type == CImportModel::ErrorImportFalsed)
        stream << sampleOf(record.url);
}

void ErrorReportBlock::finish()
{
    m_device->seek(m_lengthPosition);
    const quint32 length = quint32(m_device->size() - m_lengthPosition - qint64(sizeof(quint32)));
    const quint32 bytes = qToLittleEndian(length);
    m_device->write(reinterpret_cast<const char*>(&bytes), sizeof(bytes));
}

} // namespace Vesk
