// SPDX-License-Identifier: GPL-2.0-or-later
//
// The error list and its binary report.
#include "cimportmodel.h"
#include "importrun.h"

#include <QtCore/QBuffer>
#include <QtCore/QFile>
#include <QtCore/QtEndian>
#include <QtTest/QtTest>

using namespace Vesk;

namespace {

const int largestSample = 512 * 1024;

/// The parts of a report block, read byte by byte as its format says.
class BlockReader
{
public:
    explicit BlockReader(const QByteArray& bytes, int position = 0)
        : m_bytes(bytes)
        , m_position(position)
    {}

    quint32 number()
    {
        m_position += 4;
        return qFromLittleEndian<quint32>(m_bytes.constData() + m_position - 4);
    }
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
    bool atEnd() const { return m_position == m_bytes.size(); }

private:
    QByteArray m_bytes;
    int m_position;
};

} // namespace

class ModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reportsNothingWithoutErrors();
    void writesEachErrorOnce();
    void samplesFailedFiles_data();
    void samplesFailedFiles();
    void errorsMayComeFromTheMetaObject();
};

void ModelTest::reportsNothingWithoutErrors()
{
    CImportModel model;
    QBuffer device;
    QVERIFY(device.open(QIODevice::WriteOnly));
    QVERIFY(!model.saveReport(&device));
    QCOMPARE(device.size(), 0);
}

void ModelTest::writesEachErrorOnce()
{
    CImportModel model;
    QBuffer device;
    QVERIFY(device.open(QIODevice::ReadWrite));
    model.importErrorProc(CImportModel::ErrorUnKnownSource, "/a");
    model.importErrorProc(CImportModel::ErrorUnSupportSource, QStringLiteral("/\u00e9"));
    const QDate today = QDate::currentDate();
    QVERIFY(model.saveReport(&device));
    QCOMPARE(device.pos(), 12);
    QVERIFY(!model.saveReport(&device));
    const int firstBlock = int(device.size());
    device.seek(firstBlock);
    model.importErrorProc(CImportModel::ErrorUnKnownSource, QString());
    QVERIFY(model.saveReport(&device));

    BlockReader first(device.data());
    QCOMPARE(first.take(4), QByteArray("IMPM"));
    QCOMPARE(first.number(), 0U);
    QCOMPARE(int(first.number()), firstBlock - 12);
    QVERIFY(qAbs(qint64(first.number()) - today.toJulianDay()) <= 1);
    QVERIFY(first.number() < 24 * 3600 * 1000);
    QCOMPARE(first.take(1), QByteArray("\xff"));
    QCOMPARE(first.number(), 0U);
    QCOMPARE(first.text(), QString("/a"));
    QCOMPARE(first.number(), 1U);
    QCOMPARE(first.text(), QStringLiteral("/\u00e9"));

    BlockReader second(device.data(), firstBlock);
    QCOMPARE(second.take(4), QByteArray("IMPM"));
    QCOMPARE(second.number(), 0U);
    QCOMPARE(int(second.number()), int(device.size()) - firstBlock - 12);
    second.take(9);
    QCOMPARE(second.number(), 0U);
    QCOMPARE(second.number(), 0xFFFFFFFFU);
    QVERIFY(second.atEnd());
}

void ModelTest::samplesFailedFiles_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("sample");

    QTest::newRow("small") << "small" << QByteArray("abc");
    QTest::newRow("large") << "large" << QByteArray(largestSample, 'l');
    QTest::newRow("empty") << "empty" << QByteArray();
    QTest::newRow("folder") << "folder" << QByteArray("0");
    QTest::newRow("missing") << "missing" << QByteArray("0");
}

void ModelTest::samplesFailedFiles()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, sample);
    const ImportFolder folder;
    folder.file("small", "abc");
    folder.file("large", QByteArray(2 * 1024 * 1024, 'l'));
    folder.file("empty", QByteArray());
    folder.folder("folder");

    CImportModel model;
    model.importErrorProc(CImportModel::ErrorImportFalsed, folder.path(name));
    QBuffer device;
    QVERIFY(device.open(QIODevice::WriteOnly));
    QVERIFY(model.saveReport(&device));
    BlockReader block(device.data(), 21);
    QCOMPARE(block.number(), 2U);
    QCOMPARE(block.text(), folder.path(name));
    if (sample.isEmpty())
        QCOMPARE(block.number(), 0xFFFFFFFFU);
    else
        QCOMPARE(block.take(block.number()), sample);
    QVERIFY(block.atEnd());
}

void ModelTest::errorsMayComeFromTheMetaObject()
{
    qRegisterMetaType<CImportModel::ErrorType>("CImportModel::ErrorType");
    CImportModel model;
    QSignalSpy errors(&model, SIGNAL(importError(int, QString)));
    QVERIFY(QMetaObject::invokeMethod(
        &model, "importErrorProc", Q_ARG(CImportModel::ErrorType, CImportModel::ErrorImportFalsed),
        Q_ARG(QString, "/a")));
    QCOMPARE(errors.count(), 1);
    QCOMPARE(errors.first(), QVariantList({2, "/a"}));
    const std::unique_ptr<QObject> made(
        CImportModel::staticMetaObject.newInstance(Q_ARG(QObject*, &model)));
    QVERIFY(made && made->parent() == &model);
}

QTEST_GUILESS_MAIN(ModelTest)
#include "tst_model.moc"
