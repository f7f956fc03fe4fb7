// SPDX-License-Identifier: GPL-2.0-or-later
//
// The error list and its binary report.
#include "cimportmodel.h"
#include "importrun.h"

#include <QtCore/QBuffer>
#include <QtCore/QtEndian>
#include <QtTest/QtTest>

using namespace Vesk;

namespace {

/// The parts of report blocks, read byte by byte as their format says.
class ReportReader
{
public:
    explicit ReportReader(const QByteArray& bytes)
        : m_bytes(bytes)
    {}

    quint32 number() { return qFromLittleEndian<quint32>(take(4).constData()); }
    QByteArray take(quint32 size)
    {
        m_position += int(size);
        return m_bytes.mid(m_position - int(size), int(size));
    }
    QString text()
    {
        const QByteArray utf16 = take(number());
        return QString::fromUtf16(reinterpret_cast<const ushort*>(utf16.constData()),
                                  utf16.size() / 2);
    }
    int position() const { return m_position; }

private:
    QByteArray m_bytes;
    int m_position = 0;
};

} // namespace

class ModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writesEachErrorOnce()
    {
        CImportModel model;
        QBuffer device;
        QVERIFY(device.open(QIODevice::ReadWrite));
        QVERIFY(!model.saveReport(&device));
        QCOMPARE(device.size(), 0);
        model.importErrorProc(CImportModel::ErrorUnKnownSource, "/a");
        model.importErrorProc(CImportModel::ErrorUnSupportSource, u8"/\u00e9");
        const QDate today = QDate::currentDate();
        QVERIFY(model.saveReport(&device));
        QCOMPARE(device.pos(), 12);
        QVERIFY(!model.saveReport(&device));
        const int firstSize = int(device.size());
        device.seek(firstSize);
        model.importErrorProc(CImportModel::ErrorUnKnownSource, QString());
        QVERIFY(model.saveReport(&device));

        ReportReader report(device.data());
        QCOMPARE(report.take(4), QByteArray("IMPM"));
        QCOMPARE(report.number(), 0U);
        QCOMPARE(int(report.number()), firstSize - 12);
        QVERIFY(qAbs(qint64(report.number()) - today.toJulianDay()) <= 1);
        QVERIFY(report.number() < 24 * 3600 * 1000);
        QCOMPARE(report.take(1), QByteArray("\xff"));
        QCOMPARE(report.number(), 0U);
        QCOMPARE(report.text(), QString("/a"));
        QCOMPARE(report.number(), 1U);
        QCOMPARE(report.text(), QString(u8"/\u00e9"));
        QCOMPARE(report.position(), firstSize);

        QCOMPARE(report.take(4), QByteArray("IMPM"));
        QCOMPARE(report.number(), 0U);
        QCOMPARE(int(report.number()), int(device.size()) - firstSize - 12);
        report.take(9);
        QCOMPARE(report.number(), 0U);
        QCOMPARE(report.number(), 0xFFFFFFFFU);
        QCOMPARE(report.position(), int(device.size()));
    }

    void samplesFailedFiles()
    {
        const ImportFolder folder;
        const auto expectSample = [&folder](const QString& name, const QByteArray& sample) {
            CImportModel model;
            model.importErrorProc(CImportModel::ErrorImportFalsed, folder.path(name));
            QBuffer device;
            QVERIFY(device.open(QIODevice::WriteOnly) && model.saveReport(&device));
            ReportReader report(device.data());
            report.take(21);
            QCOMPARE(report.number(), 2U);
            QCOMPARE(report.text(), folder.path(name));
            const quint32 size = report.number();
            QCOMPARE(size, sample.isNull() ? 0xFFFFFFFFU : quint32(sample.size()));
            QCOMPARE(report.take(sample.isNull() ? 0 : size), sample);
            QCOMPARE(report.position(), int(device.size()));
        };
        folder.file("folder/small", "abc");
        folder.file("large", QByteArray(2 * 1024 * 1024, 'l'));
        folder.file("empty", QByteArray());
        expectSample("folder/small", "abc");
        expectSample("large", QByteArray(512 * 1024, 'l'));
        expectSample("empty", QByteArray());
        expectSample("folder", "0");
        expectSample("missing", "0");
    }
};

QTEST_GUILESS_MAIN(ModelTest)
#include "tst_model.moc"
