// SPDX-License-Identifier: GPL-2.0-or-later
//
// What the module relies on in the host's libraries.
#include "vspbased/cbasicutils.h"
#include "vspbased/cvesklist.h"
#include "vsputils/cveskexception.h"
#include "vsputils/cvesklog.h"

#include <QtCore/QPointer>
#include <QtTest/QtTest>

using namespace Vesk;

class HostLayerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textsForPeople_data();
    void textsForPeople();
    void separators();
    void listsOwnTheirItemsUnlessToldOtherwise();
    void exceptionsReachTheLog();
};

void HostLayerTest::textsForPeople_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    const auto size = [](quint64 bytes) { return CBasicUtils::fileSizeToString(bytes); };
    QTest::newRow("nothing") << size(0) << "0 B";
    QTest::newRow("bytes") << size(1000) << "1000 B";
    QTest::newRow("kilobytes") << size(1536) << "1.5 KB";
    QTest::newRow("gigabytes") << size(1503238553) << "1.4 GB";
    QTest::newRow("rounds into the next unit") << size(1024 * 1024 - 1) << "1 MB";
    QTest::newRow("largest") << size(~quint64(0)) << "16 EB";

    const auto rate = [](quint64 n, quint64 d) {
        return CBasicUtils::framerateToString(n << 32 | d);
    };
    QTest::newRow("film") << rate(24000, 1001) << "23.976 fps";
    QTest::newRow("PAL") << rate(25, 1) << "25 fps";
    QTest::newRow("NTSC") << rate(30000, 1001) << "29.97 fps";
    QTest::newRow("ten") << rate(10, 1) << "10 fps";
    QTest::newRow("unknown rate") << rate(0, 1) << QString();
    QTest::newRow("no denominator") << rate(25, 0) << QString();

    const auto ratio = [](unsigned w, unsigned h) {
        return CBasicUtils::aspectRatioToString(w << 16 | h);
    };
    QTest::newRow("wide") << ratio(16, 9) << "16:9";
    QTest::newRow("nearly wide") << ratio(427, 240) << "16:9";
    QTest::newRow("classic") << ratio(4, 3) << "4:3";
    QTest::newRow("cinema") << ratio(12, 5) << "2.40:1";
    QTest::newRow("upright") << ratio(9, 16) << "9:16";
    QTest::newRow("unknown shape") << ratio(0, 9) << QString();
}

void HostLayerTest::textsForPeople()
{
    QFETCH(QString, text);
    QTEST(text, "expected");
}

void HostLayerTest::separators()
{
    QCOMPARE(CBasicUtils::includePathSeparator("/a", true), QString("/a/"));
    QCOMPARE(CBasicUtils::includePathSeparator("/a//", true), QString("/a/"));
    QCOMPARE(CBasicUtils::includePathSeparator("/", true), QString("/"));
    QCOMPARE(CBasicUtils::includePathSeparator(QString(), true), QString());
    QCOMPARE(CBasicUtils::excludePathSeparator("/a/", true), QString("/a"));
    QCOMPARE(CBasicUtils::excludePathSeparator("/", true), QString("/"));
}

void HostLayerTest::listsOwnTheirItemsUnlessToldOtherwise()
{
    for (const bool owner : {true, false}) {
        QPointer<QObject> item(new QObject);
        {
            CVeskList list(nullptr);
            list.setOwner(owner);
            list.append(item);
            QCOMPARE(list.count(), 1);
            QCOMPARE(list.item(0), item.data());
            QVERIFY(!list.item(1) && !list.item(-1));
        }
        QCOMPARE(item.isNull(), owner);
        delete item;
    }
}

void HostLayerTest::exceptionsReachTheLog()
{
    QStringList log;
    CVeskLog::setReceiver(
        [](const CVeskException& record, void* context) {
            static_cast<QStringList*>(context)->append(QStringLiteral("%1 %2 %3 %4")
                                                           .arg(QString::number(record.code()),
                                                                record.message(), record.file(),
                                                                QString::number(record.line())));
        },
        &log);
    CVeskException exception(7, "text", "file", 9);
    CVeskException(exception).flush();
    CVeskLog::setReceiver(nullptr, nullptr);
    QCOMPARE(log, QStringList("7 text file 9"));
}

QTEST_GUILESS_MAIN(HostLayerTest)
#include "tst_hostlayer.moc"
