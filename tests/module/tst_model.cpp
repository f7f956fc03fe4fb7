// SPDX-License-Identifier: GPL-2.0-or-later
//
// The error list and its binary report.
#include "cimportmodel.h"
#include "importrun.h"

#include <QtCore/QBuffer>
#include <QtCore/QtEndian>

using namespace Vesk;

namespace {

QByteArray number(quint32 value)
{
    QByteArray bytes(4, 0);
    qToLittleEndian(value, bytes.data());
    return bytes;
}

/// A length and bytes as reports have them.
QByteArray counted(const QByteArray& bytes)
{
    return bytes.isNull() ? number(0xFFFFFFFF) : number(quint32(bytes.size())) + bytes;
}

QByteArray counted(const QString& text)
{
    return counted(QByteArray(reinterpret_cast<const char*>(text.utf16()), 2 * text.size()));
}

/// The time at which a block was written: 12 bytes from its start.
QByteArray timeIn(const QByteArray& block)
{
    return block.mid(12, 8);
}

/// A whole block, byte by byte as the format says.
QByteArray blockOf(const QByteArray& time, const QByteArray& records)
{
    return "IMPM" + number(0) + counted(time + '\xff' + records);
}

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
        const QByteArray first = device.data();
        device.seek(first.size());
        model.importErrorProc(CImportModel::ErrorUnKnownSource, QString());
        QVERIFY(model.saveReport(&device));
        const QByteArray second = device.data().mid(first.size());

        const auto* time = reinterpret_cast<const uchar*>(first.constData() + 12);
        QVERIFY(qAbs(qFromLittleEndian<quint32>(time) - today.toJulianDay()) <= 1);
        QVERIFY(qFromLittleEndian<quint32>(time + 4) < 24 * 3600 * 1000);
        QCOMPARE(first, blockOf(timeIn(first), number(0) + counted(QString("/a")) + number(1) +
                                                   counted(QString(u8"/\u00e9"))));
        QCOMPARE(second, blockOf(timeIn(second), number(0) + counted(QByteArray())));
    }

    void samplesFailedFiles()
    {
        const ImportFolder folder;
        const auto expectSample = [&folder](const QString& name, const QByteArray& sample) {
            CImportModel model;
            model.importErrorProc(CImportModel::ErrorImportFalsed, folder.path(name));
            QBuffer device;
            QVERIFY(device.open(QIODevice::WriteOnly) && model.saveReport(&device));
            QCOMPARE(device.data(),
                     blockOf(timeIn(device.data()),
                             number(2) + counted(folder.path(name)) + counted(sample)));
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
