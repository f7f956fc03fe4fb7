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
        QStringList sizes;
        const quint64 nearlyNext = 1024 * 1024 - 1; // rounds into the next unit
        for (const quint64 size : {quint64(0), quint64(1000), quint64(1536), quint64(1503238553),
                                   nearlyNext, ~quint64(0)})
            sizes << CBasicUtils::fileSizeToString(size);
        QCOMPARE(sizes.join(", "), QString("0 B, 1000 B, 1.5 KB, 1.4 GB, 1 MB, 16 EB"));

        using Ratio = std::pair<unsigned, unsigned>;
        QStringList rates;
        for (const auto& [n, d] : {Ratio(24000, 1001), {30000, 1001}, {10, 1}, {0, 1}, {25, 0}})
            rates << CBasicUtils::framerateToString(quint64(n) << 32 | d);
        QCOMPARE(rates.join(", "), QString("23.976 fps, 29.97 fps, 10 fps, , "));

        QStringList ratios;
        for (const auto& [w, h] : {Ratio(16, 9), {427, 240}, {4, 3}, {12, 5}, {9, 16}, {0, 9}})
            ratios << CBasicUtils::aspectRatioToString(w << 16 | h);
        QCOMPARE(ratios.join(", "), QString("16:9, 16:9, 4:3, 2.40:1, 9:16, "));
    }

    void separators()
    {
        QStringList paths;
        for (const char* path : {"/a", "/a//", "/", ""}) {
            paths << CBasicUtils::includePathSeparator(path, true)
                  << CBasicUtils::excludePathSeparator(path, true);
        }
        QCOMPARE(paths.join(' '), QString("/a/ /a /a/ /a / /  "));
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
