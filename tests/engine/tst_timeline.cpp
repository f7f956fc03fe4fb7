// SPDX-License-Identifier: GPL-2.0-or-later
//
// Edit timelines, from the records that the module passes in to the frames that it gets back.
#include "blurayloader.h"
#include "enginelink/timeline/timelinetext.h"
#include "files.h"
#include "vspavbased/isimpleedittimeline.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <locale>
#include <sstream>
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

/// Writes a timeline of the parts as the module does.
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
        importer = openItem(folder.filePath("timeline.seix"));
        source = openVideo(importer);
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

/// Whether the first frame at each position is the one that is shown there, when the second file
/// begins at 20 s.
bool showsFrames(const OpenTimeline& timeline, const QList<int>& positions)
{
    for (const int position : positions) {
        std::int64_t timeMs = -1;
        IAVFrame* frame =
            timeline.source ? frameAt(*timeline.source, position, 1, &timeMs) : nullptr;
        const Clock clock = clockOf(frame);
        if (clock.file != (position < 20000 ? 'c' : 'o') || timeMs != position / 40 * 40 ||
            qAbs(clock.time - position % 20000 / 1000.0) >= 0.3)
            return false;
    }
    return true;
}

const QString closedStream = "bluray_streams/closed.m2ts";
const QString openStream = "bluray_streams/open.m2ts";
const QString stillStream = "bluray_streams/still.m2ts";

} // namespace

class TimelineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void seeksToTheFrame()
    {
        QList<int> positions;
        for (int i = 0; i < 60; ++i)
            positions << i * 7919 % 30000;
        // On a disc there is a map of entry points; elsewhere libav searches.
        const std::pair<const char*, const char*> files[] = {
            {"bluray/disc/BDMV/STREAM/00001.m2ts", "bluray/disc/BDMV/STREAM/00002.m2ts"},
            {"bluray/disc-250.iso/BDMV/STREAM/00001.m2ts",
             "bluray/disc-102.iso/BDMV/STREAM/00002.m2ts"},
            {"bluray_streams/closed.m2ts", "bluray_streams/open.m2ts"}};
        for (const auto& [first, second] : files)
            QVERIFY2(showsFrames(OpenTimeline({{first, 20000}, {second, 10000}}), positions),
                     first);
    }

    /// One file of two recordings, each with its own time stamps.
    void seeksAcrossClocks()
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

        QVERIFY(showsFrames(OpenTimeline({{file, 30000}}),
                            {0, 15000, 19990, 20000, 20030, 20500, 29000, 3000}));
    }

    void playsInOrder()
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
        for (const int position : {100, 2100, 500, 2010}) // one file is open at a time
            QVERIFY(frameAt(*timeline.source, position) &&
                    openFiles().filter(".m2ts").size() == (throughHalves ? 0 : 1));
    }

    void unusableFilesKeepTheirPlace()
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

    /// Where the file is damaged there is no picture rather than the last one before.
    void takesNoPictureOfDamage()
    {
        const QTemporaryDir folder;
        const authoring::Disc disc(folder.path());
        disc.addStream("00001", absolutePath(closedStream));
        const QString file = disc.path("BDMV/STREAM/00001.m2ts");
        const QByteArray content = contentOf(file);
        writeFile(file, content.left(content.size() / 2) + QByteArray(content.size() / 2, 0));
        for (const QString& map : {disc.path("BDMV/CLIPINF/00001.clpi"), QString()}) {
            const OpenTimeline timeline({{file, 20000}});
            QVERIFY(qAbs(clockOf(frameAt(*timeline.source, 3000)).time - 3.0) < 0.6);
            for (const int position : {12000, 15000, 19900})
                QVERIFY(!frameAt(*timeline.source, position));
            QFile::remove(map);
        }
    }

    /// What the disc says about entry points may be damaged: then the frame is found by other
    /// means.
    void survivesWrongMaps()
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
                    QFAIL(qPrintable(
                        QString("round %1: %2 at %3").arg(round).arg(time).arg(position)));
            }
        }
        QVERIFY2(timer.elapsed() < 30000, qPrintable(QString::number(timer.elapsed())));
    }

    /// Stills of a single frame, as many as menus have: no rounding may add up.
    void manySourcesStayInPlace()
    {
        QList<Part> parts;
        for (int i = 0; i < 300; ++i)
            parts.append({i % 2 ? stillStream : closedStream, 42});
        const OpenTimeline timeline(parts);
        QVERIFY(timeline.source);
        for (int i = 0; i < 300; i += 13)
            QCOMPARE(clockOf(frameAt(*timeline.source, i * 42 + 4)).file, i % 2 ? 's' : 'c');
    }

    void editsSources()
    {
        const ImporterPtr importer(
            engineWrapper()->avmanager()->createNamedImporter("SimpleEditImporter"));
        QVERIFY(!engineWrapper()->avmanager()->createNamedImporter("Importer"));
        QVERIFY(!importer->queryExtension("IMovieInfoExt"));
        auto* timeline =
            static_cast<ISimpleEditTimeLine*>(importer->queryExtension("ISimpleEditTimeLine"));
        const QByteArray names[] = {"/a?movieid=7&vstreamid=1",
                                    "/b?movieid=1?movieid=2&astreamid=3", "/c%\n"};
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
        struct Grouping : std::numpunct<char>
        {
            char do_thousands_sep() const override { return '.'; }
            std::string do_grouping() const override { return "\3"; }
        };
        const QTemporaryDir folder;
        const std::locale before = std::locale::global({std::locale(), new Grouping});
        timeline->saveToFile(folder.filePath("t.seix").toUtf8().constData());
        std::locale::global(before);
        QCOMPARE(contentOf(folder.filePath("t.seix")),
                 QByteArray("vspimport timeline 1\n"
                            "\nsource\n  file /b?movieid=1\n  movie 2\n  video -2\n  audio 3\n"
                            "  subtitle -2\n  in 0\n  out 1000\n  size 2x2\n"
                            "\nsource\n  file /a\n  movie 7\n  video 1\n  audio -2\n"
                            "  subtitle -2\n  in 0\n  out 1000\n  size 1x1\n"
                            "\nsource\n  file /c%25%0A\n  movie 0\n  video -2\n  audio -2\n"
                            "  subtitle -2\n  in 0\n  out 1000\n  size 3x3\n"));
    }

    void knowsTheRulesOfTimelines()
    {
        const auto wrongLine = [](const QByteArray& lines, const char* version = "1") {
            std::istringstream text("vspimport timeline " +
                                    (version + ('\n' + lines)).toStdString());
            engine::Timeline timeline;
            return engine::parseTimeline(text, timeline);
        };
        QCOMPARE(wrongLine(""), 0);
        QCOMPARE(wrongLine("", "2"), 1);
        QCOMPARE(wrongLine("# by hand\n\nsource\n\tfile /a b \n  words of tomorrow\n"), 0);
        QCOMPARE(wrongLine("source\nfile /a"), 0);
        QCOMPARE(wrongLine("file /a\n"), 2);
        for (const char* line :
             {"file a", "file", "file /%4", "file /a%00b", "out 99999999999", "in -1", "size 20x"})
            QCOMPARE(wrongLine(QByteArray("source\n") + line), 3);
        QCOMPARE(wrongLine(QByteArray("source\nfile /a\0b\n", 17)), 3);
        QCOMPARE(wrongLine(QByteArray("source\n").repeated(200001)), 200002);
        engine::Timeline timeline;
        timeline.items.emplace_back(); // which has no file
        std::istringstream written(engine::timelineText(timeline));
        QCOMPARE(engine::parseTimeline(written, timeline), 0);
    }

#ifdef THROUGH_HALVES
    /// A timeline may name any file, and the module leaves its own in the temporary folder.
    void opensAndRemovesOnlyItsOwn()
    {
        const QTemporaryDir folder;
        const QString own = folder.filePath("own.seix");
        const QString copy = folder.filePath("copy.seix");
        const QString link = folder.filePath("link.seix");
        const QString film = folder.filePath("film.seix");
        saveTimeline({{closedStream, 1000}}, own);
        QVERIFY(QFile::copy(own, copy) && QFile::link(own, link) &&
                QFile::copy(absolutePath(closedStream), film));
        for (const QString& path : {copy, link, film, own}) {
            QCOMPARE(bool(openItem(path)), path == own);
            QCOMPARE(QFile::exists(path), path != own);
        }

        saveTimeline({{closedStream, 1000}}, own);
        ImporterPtr importer = openItem(own);
        QVERIFY(importer && QFile::remove(own) && QFile::copy(copy, own) && !openItem(own));
        importer.reset();
        QVERIFY(QFile::exists(own));

        saveTimeline({{closedStream, 1000}}, folder.filePath("no/such/folder.seix"));
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 4);
    }
#endif
};

QTEST_GUILESS_MAIN(TimelineTest)
#include "tst_timeline.moc"
