// SPDX-License-Identifier: GPL-2.0-or-later
//
// Media files through the engine's boundary.
#include "engineobjects.h"
#include "fixture.h"

#include <QtTest/QtTest>

using namespace AVBased;

class MediaTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void seeksToTheNearestKeyframe_data();
    void seeksToTheNearestKeyframe();
    void aMovieOfOneFrameHasAPicture();
};

void MediaTest::seeksToTheNearestKeyframe_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("position");
    QTest::addColumn<double>("keyframe");

    QTest::newRow("before") << "media/time-gop2s.mp4" << 4900 << 4.0;
    QTest::newRow("behind") << "media/time-gop2s.mp4" << 5100 << 6.0;
    QTest::newRow("matroska, behind") << "media/time-gop2s.mkv" << 5100 << 6.0;
    QTest::newRow("far behind the end") << "media/time-gop2s.mp4" << 500000 << 18.0;
}

void MediaTest::seeksToTheNearestKeyframe()
{
    QFETCH(QString, file);
    QFETCH(int, position);
    QFETCH(double, keyframe);

    const ImporterPtr importer = openItem(fixtureUtf8(file));
    QVERIFY(importer);
    const SourcePtr source(importer->openSource(0, 0, -1));
    QVERIFY(source);
    std::int64_t timeMs;
    IAVFrame* frame = frameAt(*source, position, 1, &timeMs);
    QVERIFY(frame);
    QCOMPARE(double(timeMs) / 1000.0, keyframe);
    QVERIFY(qAbs(secondOf(pictureOf(frame), 10.0) - keyframe) < 0.2);
}

void MediaTest::aMovieOfOneFrameHasAPicture()
{
    const ImporterPtr importer = openItem(fixtureUtf8("media/one-frame.mp4"));
    QVERIFY(importer);
    const SourcePtr source(importer->openSource(0, 0, -1));
    QVERIFY(source);
    QVERIFY(!pictureOf(frameAt(*source, 0)).isNull());
}

QTEST_GUILESS_MAIN(MediaTest)
#include "tst_media.moc"
