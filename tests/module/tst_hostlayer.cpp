// SPDX-License-Identifier: GPL-2.0-or-later
//
// What the module relies on in the host's libraries.
#include "vspbased/cbasicutils.h"
#include "vspbased/cvesklist.h"

#include <QtCore/QPointer>
#include <QtTest/QtTest>

using namespace Vesk;

class HostLayerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textsForPeople()
    {
        const auto size = [](quint64 bytes) { return CBasicUtils::fileSizeToString(bytes); };
        QCOMPARE(size(0), QString("0 B"));
        QCOMPARE(size(1000), QString("1000 B"));
        QCOMPARE(size(1536), QString("1.5 KB"));
        QCOMPARE(size(1503238553), QString("1.4 GB"));
        QCOMPARE(size(1024 * 1024 - 1), QString("1 MB")); // rounds into the next unit
        QCOMPARE(size(~quint64(0)), QString("16 EB"));

        const auto rate = [](quint64 n, quint64 d) {
            return CBasicUtils::framerateToString(n << 32 | d);
        };
        QCOMPARE(rate(24000, 1001), QString("23.976 fps"));
        QCOMPARE(rate(30000, 1001), QString("29.97 fps"));
        QCOMPARE(rate(10, 1), QString("10 fps"));
        QCOMPARE(rate(0, 1), QString());
        QCOMPARE(rate(25, 0), QString());

        const auto ratio = [](unsigned w, unsigned h) {
            return CBasicUtils::aspectRatioToString(w << 16 | h);
        };
        QCOMPARE(ratio(16, 9), QString("16:9"));
        QCOMPARE(ratio(427, 240), QString("16:9")); // nearly
        QCOMPARE(ratio(4, 3), QString("4:3"));
        QCOMPARE(ratio(12, 5), QString("2.40:1"));
        QCOMPARE(ratio(9, 16), QString("9:16"));
        QCOMPARE(ratio(0, 9), QString());
    }

    void separators()
    {
        QCOMPARE(CBasicUtils::includePathSeparator("/a", true), QString("/a/"));
        QCOMPARE(CBasicUtils::includePathSeparator("/a//", true), QString("/a/"));
        QCOMPARE(CBasicUtils::includePathSeparator("/", true), QString("/"));
        QCOMPARE(CBasicUtils::includePathSeparator(QString(), true), QString());
        QCOMPARE(CBasicUtils::excludePathSeparator("/a/", true), QString("/a"));
        QCOMPARE(CBasicUtils::excludePathSeparator("/", true), QString("/"));
    }

    void listsOwnTheirItemsUnlessToldOtherwise()
    {
        for (const bool owner : {true, false}) {
            const QPointer<QObject> item(new QObject);
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
};

QTEST_GUILESS_MAIN(HostLayerTest)
#include "tst_hostlayer.moc"
