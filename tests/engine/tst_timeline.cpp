// SPDX-License-Identifier: GPL-2.0-or-later
//
// Edit timelines, from the records that a host passes in to the frames that it gets back.
#include "blurayloader.h"
#include "files.h"
#include "fixture.h"
#include "vspavbased/isimpleedittimeline.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <sys/stat.h>

using namespace AVBased;

namespace {

struct Part
{
    QString file; ///< relative to the fixtures, or absolute
    int durationMs;
    int inMs = 0;
};

QString absolutePath(const QString& file)
{
    return file.startsWith('/') ? file : fixturePath(file);
}

/// Writes a timeline of the parts as hosts do.
void saveTimeline(const QList<Part>& parts, const QString& path)
{
    const ImporterPtr importer(
        engineWrapper()->avmanager()->createNamedImporter("SimpleEditImporter"));
    auto* timeline =
        static_cast<ISimpleEditTimeLine*>(importer->queryExtension("ISimpleEditTimeLine"));
    timeline->reset();
    SourceRecord source = {};
    FormatRecord format = {};
    for (const Part& part : parts) {
        const QByteArray url = absolutePath(part.file).toUtf8() +
                               "?movieid=0&vstreamid=4113&astreamid=4352&subtitleid=-2";
        source.url = url.constData();
        source.inPointMs = part.inMs;
        source.outPointMs = part.inMs + part.durationMs;
        format.durationMs = part.durationMs;
        format.width = 1280;
        format.height = 720;
        format.frameRate = quint64(25) << 32 | 1;
        timeline->insertSource(-1, &source);
        timeline->selectItem(timeline->applyFormat(&format) - 1);
    }
    timeline->saveToFile(path.toUtf8().constData());
}

/// An open timeline, with a folder for its file.
struct OpenTimeline
{
    explicit OpenTimeline(const QList<Part>& parts)
    {
        saveTimeline(parts, folder.filePath("timeline.seix"));
        importer = openItem(folder.filePath("timeline.seix").toUtf8());
        if (importer)
            source.reset(importer->openSource(0, 0, 0));
    }

    QTemporaryDir folder;
    ImporterPtr importer;
    SourcePtr source;
};

/// What a frame of the fixtures tells: the file by its corner, the second by its brightness.
struct Clock
{
    char file = ' '; ///< 'c' for closed.m2ts, 'o' for open.m2ts, 's' for still.m2ts
    double time = -1.0;
};

Clock clockOf(IAVFrame* frame)
{
    const QImage picture = pictureOf(frame);
    Clock clock;
    if (picture.isNull())
        return clock;
    const int corner = qGray(picture.pixel(15, 8));
    clock.file = corner < 60 ? 'c' : corner > 200 ? 'o' : 's';
    clock.time = secondOf(picture, 10.0);
    return clock;
}

const QString closedStream = "bluray_streams/closed.m2ts";
const QString openStream = "bluray_streams/open.m2ts";
const QString stillStream = "bluray_streams/still.m2ts";

/// How many stream files this process has open.
int openStreamCount()
{
    int count = 0;
    const QDir files("/proc/self/fd");
    for (const QString& name : files.entryList(QDir::AllEntries | QDir::System))
        count += QFile::symLinkTarget(files.filePath(name)).endsWith(".m2ts") ? 1 : 0;
    return count;
}

} // namespace

class TimelineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void seeksToTheFrame_data();
    void seeksToTheFrame();
    void seeksAcrossClocks();
    void playsInOrder();
    void unusableFilesKeepTheirPlace();
    void survivesWrongMaps();
    void opensOneFileAtATime();
    void manySourcesStayInPlace();
    void editsSources();
    void refusesTimelines_data();
    void refusesTimelines();
    void removesOnlyItsOwnFiles();
};

void TimelineTest::seeksToTheFrame_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");

    // On a disc there is a map of entry points; elsewhere libav searches.
    QTest::newRow("files of a disc") << "bluray/disc/BDMV/STREAM/00001.m2ts"
                                     << "bluray/disc/BDMV/STREAM/00002.m2ts";
    QTest::newRow("files in an image") << "bluray/disc-250.iso/BDMV/STREAM/00001.m2ts"
                                       << "bluray/disc-102.iso/BDMV/STREAM/00002.m2ts";
    QTest::newRow("files alone") << closedStream << openStream;
}

/// The first frame is the one that is shown at the position, every time.
void TimelineTest::seeksToTheFrame()
{
    QFETCH(QString, first);
    QFETCH(QString, second);

    const OpenTimeline timeline({{first, 20000}, {second, 10000}});
    QVERIFY(timeline.source);
    for (int i = 0; i < 60; ++i) {
        const int position = i * 7919 % 30000;
        std::int64_t timeMs = -1;
        const Clock clock = clockOf(frameAt(*timeline.source, position, 1, &timeMs));
        const bool isFirst = position < 20000;
        QCOMPARE(clock.file, isFirst ? 'c' : 'o');
        QCOMPARE(timeMs, position / 40 * 40);
        const double expected = (position - (isFirst ? 0 : 20000)) / 1000.0;
        QVERIFY2(qAbs(clock.time - expected) < 0.3, qPrintable(QString::number(expected)));
    }
}

/// One file of two recordings, each with its own time stamps.
void TimelineTest::seeksAcrossClocks()
{
    const QTemporaryDir folder;
    const authoring::Disc disc(folder.path());
    authoring::Clip clip = disc.addStream("00001", absolutePath(closedStream));
    const authoring::Clip next = authoring::scanStream(absolutePath(openStream));
    const QString file = disc.path("BDMV/STREAM/00001.m2ts");
    const QByteArray content = contentOf(file);
    const quint32 packets = quint32(content.size() / 192);
    writeFile(file, content + contentOf(absolutePath(openStream)));
    clip.sequences.append({packets, next.sequences[0].start, next.sequences[0].end});
    for (const authoring::EntryPoint& entry : next.entryPoints)
        clip.entryPoints.append({entry.time, entry.packet + packets});
    disc.addClip("00001", clip);

    const OpenTimeline timeline({{file, 30000}});
    for (const int position : {0, 15000, 19990, 20000, 20030, 20500, 29000, 3000}) {
        std::int64_t timeMs = -1;
        const Clock clock = clockOf(frameAt(*timeline.source, position, 1, &timeMs));
        QCOMPARE(clock.file, position < 20000 ? 'c' : 'o');
        QCOMPARE(timeMs, position / 40 * 40);
        QVERIFY(qAbs(clock.time - position % 20000 / 1000.0) < 0.3);
    }
}

void TimelineTest::playsInOrder()
{
    const OpenTimeline timeline(
        {{closedStream, 2000}, {stillStream, 40}, {openStream, 1000, 3000}});
    QVERIFY(timeline.source);
    QByteArray files;
    std::int64_t last = -1;
    std::int64_t time;
    IAVFrame* frame;
    std::int32_t flags;
    while (timeline.source->readFrame(&time, &frame, &flags, 1)) {
        QVERIFY(time > last);
        last = time;
        files += clockOf(frame).file;
    }
    QCOMPARE(files, QByteArray(50, 'c') + 's' + QByteArray(25, 'o'));
    QCOMPARE(last, std::int64_t(3000));

    // Near the end of a source its last frame stands in, and only then reading goes on.
    const Clock clock = clockOf(frameAt(*timeline.source, 1970, 4, &time));
    QCOMPARE(clock.file, 'c');
    QCOMPARE(time, std::int64_t(1960));
    QVERIFY(timeline.source->readFrame(&time, &frame, &flags, 1));
    QCOMPARE(clockOf(frame).file, 's');
    QVERIFY(!frameAt(*timeline.source, 3040));
}

void TimelineTest::unusableFilesKeepTheirPlace()
{
    const QTemporaryDir folder;
    const QString encrypted = folder.filePath("encrypted.m2ts");
    writeFile(encrypted, randomBytes(300000));
    const QString pipe = folder.filePath("pipe.m2ts");
    QCOMPARE(mkfifo(qPrintable(pipe), 0600), 0);
    const OpenTimeline timeline({{"bluray_streams/missing.m2ts", 5000},
                                 {closedStream, 5000},
                                 {encrypted, 5000},
                                 {pipe, 5000},
                                 {"bluray/disc-250.iso/BDMV/STREAM/00009.m2ts", 5000},
                                 {openStream, 5000}});
    QVERIFY(timeline.source);
    for (const int position : {100, 4999, 12000, 17000, 22000, 31000})
        QVERIFY2(!frameAt(*timeline.source, position), qPrintable(QString::number(position)));
    QCOMPARE(clockOf(frameAt(*timeline.source, 6000)).file, 'c');
    QCOMPARE(clockOf(frameAt(*timeline.source, 26000)).file, 'o');

    std::int64_t time = 0;
    QCOMPARE(clockOf(frameAt(*timeline.source, 9000, 26, &time)).file, 'o');
    QCOMPARE(time, std::int64_t(25000));
}

/// What the disc says about entry points may be damaged: then the frame is found by other means.
void TimelineTest::survivesWrongMaps()
{
    const QTemporaryDir folder;
    const authoring::Disc disc(folder.path());
    const authoring::Clip clip = disc.addStream("00001", absolutePath(closedStream));
    QElapsedTimer timer;
    timer.start();
    std::mt19937 random(3);
    for (int round = 0; round < 40; ++round) {
        authoring::Clip wrong = clip;
        for (authoring::EntryPoint& entry : wrong.entryPoints) {
            if (round % 2 == 0)
                entry.packet = quint32(random() % 5000);
            if (round % 3 == 0)
                entry.time = clip.sequences[0].start * 2 + quint32(random() % (25 * 90000));
        }
        if (round % 5 == 0)
            std::shuffle(wrong.entryPoints.begin(), wrong.entryPoints.end(), random);
        disc.addClip("00001", wrong);
        const OpenTimeline timeline({{disc.path("BDMV/STREAM/00001.m2ts"), 20000}});
        for (const int position : {0, 5500, 12300, 19900}) {
            IAVFrame* frame = frameAt(*timeline.source, position, 1);
            const double time = frame ? clockOf(frame).time : position / 1000.0;
            if (qAbs(time - position / 1000.0) >= 0.6)
                QFAIL(qPrintable(QString("round %1: %2 at %3").arg(round).arg(time).arg(position)));
        }
    }
    QVERIFY2(timer.elapsed() < 30000, qPrintable(QString::number(timer.elapsed())));
}

void TimelineTest::opensOneFileAtATime()
{
    const OpenTimeline timeline({{closedStream, 2000}, {openStream, 2000}, {stillStream, 40}});
    QCOMPARE(openStreamCount(), 0);
    for (const int position : {100, 2100, 500, 4010})
        QVERIFY(frameAt(*timeline.source, position) && openStreamCount() == 1);
}

/// Stills of a single frame, as many as menus have: no rounding may add up.
void TimelineTest::manySourcesStayInPlace()
{
    QList<Part> parts;
    for (int i = 0; i < 300; ++i)
        parts.append({i % 2 ? stillStream : closedStream, 42});
    const OpenTimeline timeline(parts);
    QVERIFY(timeline.source);
    for (int i = 0; i < 300; i += 13)
        QCOMPARE(clockOf(frameAt(*timeline.source, i * 42 + 4)).file, i % 2 ? 's' : 'c');
}

void TimelineTest::editsSources()
{
    const ImporterPtr importer(
        engineWrapper()->avmanager()->createNamedImporter("SimpleEditImporter"));
    QVERIFY(!engineWrapper()->avmanager()->createNamedImporter("Importer"));
    QVERIFY(!importer->queryExtension("IMovieInfoExt"));
    auto* timeline =
        static_cast<ISimpleEditTimeLine*>(importer->queryExtension("ISimpleEditTimeLine"));
    const QByteArray names[] = {"/a?movieid=7&vstreamid=1", "/b?movieid=1?movieid=2&astreamid=3",
                                "/c%\n"};
    SourceRecord source = {};
    source.outPointMs = 1000;
    QCOMPARE(timeline->applyFormat(nullptr), 0);
    source.url = "/gone";
    timeline->insertSource(-1, &source);
    timeline->reset();
    int count = 0;
    for (const int position : {-1, 0, 99}) {
        source.url = names[count].constData();
        timeline->insertSource(position, &source);
        FormatRecord format = {};
        format.width = format.height = ++count;
        QCOMPARE(timeline->applyFormat(&format), count);
    }
    const QTemporaryDir folder;
    timeline->saveToFile(folder.filePath("t.seix").toUtf8().constData());
    QCOMPARE(contentOf(folder.filePath("t.seix")),
             QByteArray("vspimport timeline 1\n"
                        "\nsource\n  file /b?movieid=1\n  movie 2\n  video -2\n  audio 3\n"
                        "  subtitle -2\n  in 0\n  out 1000\n  size 2x2\n"
                        "\nsource\n  file /a\n  movie 7\n  video 1\n  audio -2\n"
                        "  subtitle -2\n  in 0\n  out 1000\n  size 1x1\n"
                        "\nsource\n  file /c%25%0A\n  movie 0\n  video -2\n  audio -2\n"
                        "  subtitle -2\n  in 0\n  out 1000\n  size 3x3\n"));
}

void TimelineTest::refusesTimelines_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<bool>("isGood");

    QTest::newRow("no sources") << QByteArray() << true;
    QTest::newRow("comments and words of tomorrow")
        << QByteArray("# made by hand\n\nsource\n\tfile /a b \n  mood calm\n") << true;
    QTest::newRow("nothing but a path") << QByteArray("source\nfile /a") << true;
    QTest::newRow("a line before the first source") << QByteArray("file /a\n") << false;
    QTest::newRow("a relative path") << QByteArray("source\nfile a\n") << false;
    QTest::newRow("no path") << QByteArray("source\nfile\n") << false;
    QTest::newRow("half an escape") << QByteArray("source\nfile /%4\n") << false;
    QTest::newRow("an escaped end") << QByteArray("source\nfile /a%00b\n") << false;
    QTest::newRow("a large number") << QByteArray("source\nout 99999999999\n") << false;
    QTest::newRow("a negative time") << QByteArray("source\nin -1\n") << false;
    QTest::newRow("half a size") << QByteArray("source\nsize 20x\n") << false;
    QTest::newRow("too many sources") << QByteArray("source\n").repeated(200001) << false;
}

void TimelineTest::refusesTimelines()
{
    QFETCH(QByteArray, lines);
    QFETCH(bool, isGood);

    const QTemporaryDir folder;
    const QString path = folder.filePath("t.seix");
    writeFile(path, "vspimport timeline 1\n" + lines);
    const ImporterPtr importer = openItem(path.toUtf8());
    QCOMPARE(importer != nullptr, isGood);
    if (importer) {
        const SourcePtr source(importer->openSource(0, 0, 0));
        QVERIFY(!frameAt(*source, 0));
        QVERIFY(!importer->openSource(1, 0, 0) && !importer->openSource(0, 1, 0));
    }
    writeFile(path, "vspimport timeline 2\n");
    QVERIFY(!openItem(path.toUtf8()));
}

/// Hosts leave timeline files in the temporary folder.
void TimelineTest::removesOnlyItsOwnFiles()
{
    const QTemporaryDir folder;
    const QString own = folder.filePath("own.seix");
    const QString copy = folder.filePath("copy.seix");
    saveTimeline({{closedStream, 1000}}, own);
    QVERIFY(QFile::copy(own, copy));
    for (const QString& path : {own, copy}) {
        ImporterPtr importer = openItem(path.toUtf8());
        QVERIFY(importer && QFile::exists(path));
        importer.reset();
        QCOMPARE(QFile::exists(path), path == copy);
    }

    saveTimeline({{closedStream, 1000}}, own);
    ImporterPtr importer = openItem(own.toUtf8());
    QVERIFY(importer && QFile::remove(own) && QFile::copy(copy, own));
    importer.reset();
    QVERIFY(QFile::exists(own));

    saveTimeline({{closedStream, 1000}}, folder.filePath("no/such/folder.seix"));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 2);
}

QTEST_GUILESS_MAIN(TimelineTest)
#include "tst_timeline.moc"
