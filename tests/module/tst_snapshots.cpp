// SPDX-License-Identifier: GPL-2.0-or-later
//
// Tasks and their snapshots: what is asked of the engine, and which pictures there are afterwards.
#include "cbdfileclip.h"
#include "cimportcontext.h"
#include "cimportreply_p.h"
#include "cimporttask_p.h"
#include "fakeengine.h"
#include "importrun.h"
#include "vspavbased/iavsource.h"

#include <QtCore/QDateTime>
#include <QtCore/QUrl>
#include <QtGui/QImage>
#include <QtTest/QtTest>

using namespace Vesk;
using TaskPtr = std::unique_ptr<CImportTask>;

namespace {

const uint modified = 1600000000;

FakeMovie videoMovie(double duration = 10.0, int id = 0, const std::string& name = "")
{
    FakeStream video;
    video.id = 3;
    video.duration = duration;
    FakeStream audio;
    audio.kind = AVBased::StreamKindAudio;
    audio.id = 4;
    audio.duration = 0.0;
    return {name, id, "fake", {video, audio}, {}};
}

void setModified(const QString& path, uint seconds)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(QDateTime::fromSecsSinceEpoch(seconds), QFile::FileModificationTime));
}

void snap(CImportTask* task)
{
    CImportTaskPrivate::getImportTaskPrivate(task)->snap();
}

/// The file that an image URL leads to.
QString fileOf(const QString& imageUrl)
{
    return QUrl(imageUrl).toLocalFile();
}

} // namespace

class SnapshotsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { CImportContext::instance()->setSnapSize(QSize(40, 20)); }
    void init() { FakeEngine::instance().reset(); }
    void cleanup();

    void aVideoIsSnappedOnce();
    void positions_data();
    void positions();
    void framesAreChosen_data();
    void framesAreChosen();
    void picturesStandUpright_data();
    void picturesStandUpright();
    void namesStayInTheFolder_data();
    void namesStayInTheFolder();
    void noFolderNoPicture();
    void aPictureThatCannotBeWrittenLeavesNothing();

    void dvdChapters();
    void dvdNames_data();
    void dvdNames();
    void blurayTimeline();
    void blurayWithoutTimeline_data();
    void blurayWithoutTimeline();

    void tasksReopenTheirImporter();
    void tasksSayGoodbyeFirst();

private:
    static TaskPtr probe(const QString& path, const FakeItem& item);
};

TaskPtr SnapshotsTest::probe(const QString& path, const FakeItem& item)
{
    FakeEngine::instance().items.insert(path.toUtf8(), item);
    TaskPtr task(CImportReplyPrivate::createImportTaskForFile(path));
    FakeEngine::instance().forgetCalls();
    return task;
}

void SnapshotsTest::cleanup()
{
    QCOMPARE(FakeEngine::instance().misuses(), QStringList());
    QCOMPARE(FakeEngine::instance().living(), QStringList());
}

void SnapshotsTest::aVideoIsSnappedOnce()
{
    const ImportFolder folder;
    const QString path = folder.file("clip.part1.mp4");
    setModified(path, modified);
    FakeItem item;
    item.movies = {videoMovie()};
    TaskPtr task = probe(path, item);
    snap(task.get());
    QCOMPARE(FakeEngine::instance().calls().filter(QRegularExpression("^(importer|source)")),
             QStringList({"importer.openSource 0 3 4", "source.seek 100", "source.readFrame 1",
                          "source.readFrame 1", "source.readFrame 1", "source.readFrame 1",
                          "source.release", "importer.close", "importer.release"}));
    QCOMPARE(folder.pictureNames(), QStringList("clip-1600000000.jpg"));
    const QString url = task->movieInfo()->imageUrl();
    QCOMPARE(url, "file://" + folder.pictures() + "/clip-1600000000.jpg");
    const QImage picture(fileOf(url), "JPG");
    QCOMPARE(picture.size(), QSize(40, 20));

    // Another file of that name and time shares the picture, and the engine is left alone.
    const QString same = folder.file("other/clip.avi");
    setModified(same, modified);
    task = probe(same, item);
    CImportContext::instance()->setConfigDir(folder.pictures() + '/');
    snap(task.get());
    QCOMPARE(task->movieInfo()->imageUrl(), url);
    QCOMPARE(FakeEngine::instance().calls(), QStringList({"importer.close", "importer.release"}));

    setModified(same, modified + 1);
    task = probe(same, item);
    snap(task.get());
    QCOMPARE(folder.pictureNames(), QStringList({"clip-1600000000.jpg", "clip-1600000001.jpg"}));
}

void SnapshotsTest::positions_data()
{
    QTest::addColumn<double>("duration");
    QTest::addColumn<QString>("seek");
    QTest::newRow("a hundredth") << 10.0 << "source.seek 100";
    QTest::newRow("truncated") << 12.399 << "source.seek 123";
    QTest::newRow("under a tenth of a second") << 0.0999 << "source.seek 0";
    QTest::newRow("unknown") << 0.0 << "source.seek 0";
    QTest::newRow("beyond the engine's reach") << 1e12 << "source.seek 2147483647";
}

void SnapshotsTest::positions()
{
    QFETCH(double, duration);
    QFETCH(QString, seek);
    const ImportFolder folder;
    FakeItem item;
    item.movies = {videoMovie(duration)};
    const TaskPtr task = probe(folder.file("clip.mp4"), item);
    snap(task.get());
    QCOMPARE(FakeEngine::instance().calls("source.seek"), QStringList(seek));
}

void SnapshotsTest::framesAreChosen_data()
{
    using Reads = std::vector<FakeRead>;
    QTest::addColumn<std::vector<int>>("reads");
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("converted"); ///< the read whose frame is shown; empty for none

    const auto row = [](const char* name, const Reads& reads, int count, const QString& converted) {
        std::vector<int> numbers;
        for (const FakeRead read : reads)
            numbers.push_back(int(read));
        QTest::newRow(name) << numbers << count << converted;
    };
    row("fourth", {FakeRead::Frame}, 4, "converter.convert 4");
    row("empty reads do not count", {FakeRead::Nothing, FakeRead::Nothing, FakeRead::Frame}, 6,
        "converter.convert 6");
    row("never", {FakeRead::Nothing}, 100, "");
    row("last one of a short movie", {FakeRead::Frame, FakeRead::LastFrame}, 2,
        "converter.convert 2");
    row("end without a frame", {FakeRead::Frame, FakeRead::End}, 2, "");
}

void SnapshotsTest::framesAreChosen()
{
    QFETCH(std::vector<int>, reads);
    QFETCH(int, count);
    QFETCH(QString, converted);
    const ImportFolder folder;
    FakeItem item;
    item.movies = {videoMovie()};
    item.reads.clear();
    for (const int read : reads)
        item.reads.push_back(FakeRead(read));
    const TaskPtr task = probe(folder.file("clip.mp4"), item);
    snap(task.get());
    FakeEngine& engine = FakeEngine::instance();
    QCOMPARE(engine.calls("source.readFrame").size(), count);
    QCOMPARE(engine.calls("converter.convert").join(' '), converted);
    QCOMPARE(folder.pictureNames().size(), converted.isEmpty() ? 0 : 1);
    QVERIFY(!task->movieInfo()->imageUrl().isEmpty());
}

void SnapshotsTest::picturesStandUpright_data()
{
    QTest::addColumn<bool>("topDown");
    QTest::addColumn<int>("format");
    QTest::addColumn<bool>("hasPicture");
    QTest::newRow("top down") << true << 30 << true;
    QTest::newRow("bottom up") << false << 30 << true;
    QTest::newRow("other format") << true << 31 << false;
}

void SnapshotsTest::picturesStandUpright()
{
    QFETCH(bool, topDown);
    QFETCH(int, format);
    QFETCH(bool, hasPicture);
    const ImportFolder folder;
    FakeEngine::instance().topDown = topDown;
    FakeEngine::instance().pictureFormat = format;
    FakeItem item;
    item.movies = {videoMovie()};
    const TaskPtr task = probe(folder.file("clip.mp4"), item);
    snap(task.get());
    const QImage picture(fileOf(task->movieInfo()->imageUrl()));
    QCOMPARE(!picture.isNull(), hasPicture);
    if (hasPicture) {
        QVERIFY(qRed(picture.pixel(20, 2)) > 200 && qBlue(picture.pixel(20, 2)) < 60);
        QVERIFY(qBlue(picture.pixel(20, 17)) > 200 && qRed(picture.pixel(20, 17)) < 60);
    }
}

void SnapshotsTest::namesStayInTheFolder_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("picture"); ///< without the time
    QTest::newRow("usual") << "My clip.mp4"
                           << "My clip";
    QTest::newRow("backslash and newline") << "a\\b\nc.mp4"
                                           << "a_b_c";
    QTest::newRow("marks of URLs") << "a#b%41?c.mp4"
                                   << "a#b%41?c";
    QTest::newRow("letters") << QStringLiteral("\u00e9\u6620.mp4")
                             << QStringLiteral("\u00e9\u6620");
    QTest::newRow("too long") << QString(80, QChar(0x6620)) + "ab.mp4"
                              << QString(66, QChar(0x6620));
    QTest::newRow("marks of arguments") << "%1%2.mp4"
                                        << "%1%2";
}

void SnapshotsTest::namesStayInTheFolder()
{
    QFETCH(QString, file);
    QFETCH(QString, picture);
    const ImportFolder folder;
    FakeItem item;
    item.movies = {videoMovie()};
    const TaskPtr task = probe(folder.file(file), item);
    snap(task.get());
    QCOMPARE(folder.pictureNames().size(), 1);
    QVERIFY(folder.pictureNames().first().startsWith(picture + '-'));
    QVERIFY(task->movieInfo()->imageUrl().startsWith("file:///"));
    QVERIFY(QFile::exists(fileOf(task->movieInfo()->imageUrl())));
}

void SnapshotsTest::noFolderNoPicture()
{
    const ImportFolder folder;
    const QString obstacle = folder.file("obstacle");
    CImportContext::instance()->setConfigDir(obstacle + "/pictures");
    const QStringList files = {folder.file("1.mp4"), folder.file("2.mp4")};
    FakeItem item;
    item.movies = {videoMovie()};
    for (const QString& file : files) {
        setModified(file, modified);
        FakeEngine::instance().items.insert(file.toUtf8(), item);
    }
    ImportRun import;
    import.run(files);
    const QString text("20030001 import config dir not exits :%1/pictures/%2-1600000000.jpg "
                       "cimporttask_p.cpp");
    QCOMPARE(import.log(), QStringList({text.arg(obstacle, "1"), text.arg(obstacle, "2")}));
    QCOMPARE(import.events().filter("SnapDone").size(), 2);
    QVERIFY(import.events().contains("snapFinished"));
    QVERIFY(import.task(0)->movieInfo()->imageUrl().isEmpty());
}

void SnapshotsTest::aPictureThatCannotBeWrittenLeavesNothing()
{
    const ImportFolder folder;
    const QString path = folder.file("clip.mp4");
    setModified(path, modified);
    // Something that a picture cannot replace stands in its place.
    folder.file("pictures/clip-1600000000.jpg/x");
    FakeItem item;
    item.movies = {videoMovie()};
    const TaskPtr task = probe(path, item);
    CImportTaskPrivate* part = CImportTaskPrivate::getImportTaskPrivate(task.get());
    part->snap();
    QCOMPARE(folder.pictureNames(), QStringList("clip-1600000000.jpg/x"));
}

void SnapshotsTest::dvdChapters()
{
    const ImportFolder folder;
    FakeTitle film;
    film.duration = 1000.0;
    film.chapters = {0.0, 300.0, 700.0};
    FakeItem item;
    item.dvd = FakeDvd();
    item.dvd->sets = {FakeTitleSet{1, {FakeTitle(), film}}};
    FakeStream sound;
    sound.kind = AVBased::StreamKindAudio;
    item.movies = {FakeMovie{"DISC _1", 0, "dvd", {sound}, {}}, videoMovie(1000.0, 7, "DISC _2")};
    FakeEngine& engine = FakeEngine::instance();
    engine.items.insert("/disc/", item);

    for (int pass = 0; pass < 2; ++pass) {
        const TaskPtr task(CImportReplyPrivate::createImportTaskForDvd("/disc/"));
        engine.forgetCalls();
        snap(task.get());
        QCOMPARE(engine.calls("importer.openSource"), QStringList("importer.openSource 7 3 4"));
        QCOMPARE(engine.calls("source.seek"),
                 pass == 0 ? QStringList(
                                 {"source.seek 150000", "source.seek 500000", "source.seek 850000"})
                           : QStringList());
        QCOMPARE(engine.calls("source.release").size(), 1);
        QCOMPARE(folder.pictureNames(), QStringList({"DISC/DISC _2-title-2-chapter-1.jpg",
                                                     "DISC/DISC _2-title-2-chapter-2.jpg",
                                                     "DISC/DISC _2-title-2-chapter-3.jpg"}));
        CDVDInformation* info = task->dvdInfo();
        QVERIFY(info->title(0)->movieInfo()->imageUrl().isEmpty());
        QCOMPARE(fileOf(info->title(1)->movieInfo()->imageUrl()),
                 folder.pictures() + "/DISC/DISC _2-title-2-chapter-3.jpg");
    }
}

void SnapshotsTest::dvdNames_data()
{
    QTest::addColumn<QString>("movie");
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("picture");
    QTest::newRow("no name") << ""
                             << "/a/My.Disc/"
                             << "My/-title-1-chapter-1.jpg";
    QTest::newRow("leads out") << "../../x _1"
                               << "/d/"
                               << "___.._x/___.._x _1-title-1-chapter-1.jpg";
    QTest::newRow("absolute") << "/etc/x _1"
                              << "/d/"
                              << "_etc_x/_etc_x _1-title-1-chapter-1.jpg";
    QTest::newRow("marks") << "%1%2%3 _1"
                           << "/d/"
                           << "%1%2%3/%1%2%3 _1-title-1-chapter-1.jpg";
}

void SnapshotsTest::dvdNames()
{
    QFETCH(QString, movie);
    QFETCH(QString, url);
    QFETCH(QString, picture);
    const ImportFolder folder;
    FakeItem item;
    item.dvd = FakeDvd();
    item.dvd->sets = {FakeTitleSet{1, {FakeTitle()}}};
    item.movies = {videoMovie(60.0, 0, movie.toStdString())};
    FakeEngine::instance().items.insert(url.toUtf8(), item);
    const TaskPtr task(CImportReplyPrivate::createImportTaskForDvd(url));
    snap(task.get());
    QCOMPARE(folder.pictureNames(), QStringList(picture));
}

void SnapshotsTest::blurayTimeline()
{
    const ImportFolder folder;
    FakeMovie first = videoMovie(100.0);
    first.streams[0].width = 1920;
    first.streams[0].height = 1080;
    first.streams[0].frameRate = 24;
    first.streams[0].aspectRatio = 16;
    first.streams[1].sampleRate = 48000;
    first.streams[1].channels = 6;
    first.streams[1].frameRate = 99;
    FakeMovie silent = videoMovie(50.0);
    silent.streams.pop_back();
    silent.streams[0].width = 720;
    FakeDisc disc;
    disc.files = {{"/d/1.m2ts", first}, {"/d/2.m2ts", videoMovie(70.0)}, {"/d/3.m2ts", silent}};
    disc.titles = {
        {"00000", {{{"/d/1.m2ts", 0, 100}, {"/d/3.m2ts", 10, 30}}, 0, 120, {}}, {}, true}};
    FakeEngine& engine = FakeEngine::instance();
    engine.discs.insert("/a/Disc.1", disc);
    FakeItem timeline;
    timeline.movies = {videoMovie(150.0)};
    engine.anyTimeline = timeline;

    for (int pass = 0; pass < 2; ++pass) {
        const TaskPtr task(CImportReplyPrivate::createImportTaskForBd("/a/Disc.1"));
        engine.forgetCalls();
        snap(task.get());
        QCOMPARE(
            engine.calls().filter(QRegularExpression("^(timeline|create|importer|source.seek)")),
            QStringList({"createNamedImporter SimpleEditImporter",
                         "timeline.queryExtension ISimpleEditTimeLine", "timeline.reset",
                         "timeline.insertSource -1 "
                         "/d/1.m2ts?movieid=0&vstreamid=3&astreamid=4&subtitleid=-2 0-100000",
                         "timeline.applyFormat 100000ms 1920x1080 24 48000Hz 6ch 16",
                         "timeline.selectItem 0",
                         "timeline.insertSource -1 "
                         "/d/3.m2ts?movieid=0&vstreamid=3&astreamid=-2&subtitleid=-2 0-50000",
                         "timeline.applyFormat 50000ms 720x0 0 48000Hz 6ch 0",
                         "timeline.selectItem 1", "timeline.saveToFile (timeline)",
                         "timeline.release", "createImporter (timeline)",
                         "importer.openSource 0 0 0"}) +
                (pass == 0 ? QStringList({"source.seek 10000", "source.seek 112000"})
                           : QStringList()) +
                QStringList({"importer.close", "importer.release"}));
        QCOMPARE(folder.pictureNames(),
                 QStringList({"Disc/clip-0-file-1.jpg", "Disc/clip-0-file-3.jpg"}));
        CBDFileClip* clip = task->bdInfo()->file(2)->clips().first();
        QCOMPARE(fileOf(clip->imageUrl()), folder.pictures() + "/Disc/clip-0-file-3.jpg");
        QVERIFY(QFile::exists(fileOf(clip->imageUrl())));
    }
}

void SnapshotsTest::blurayWithoutTimeline_data()
{
    QTest::addColumn<bool>("hasTimeline");
    QTest::addColumn<bool>("opens");
    QTest::newRow("no timeline") << false << false;
    QTest::newRow("cannot be opened") << true << false;
    QTest::newRow("no source") << true << true;
}

void SnapshotsTest::blurayWithoutTimeline()
{
    QFETCH(bool, hasTimeline);
    QFETCH(bool, opens);
    const ImportFolder folder;
    FakeDisc disc;
    disc.files = {{"/d/1.m2ts", videoMovie()}};
    disc.titles = {{"00000", {{{"/d/1.m2ts", 0, 10}}, 0, 10, {}}, {}, true}};
    FakeEngine& engine = FakeEngine::instance();
    engine.discs.insert("/d", disc);
    engine.hasTimeline = hasTimeline;
    if (opens) {
        engine.anyTimeline = FakeItem();
        engine.anyTimeline->hasSource = false;
    }
    const TaskPtr task(CImportReplyPrivate::createImportTaskForBd("/d"));
    snap(task.get());
    QVERIFY(task->bdInfo()->file(0)->clips().first()->imageUrl().isEmpty());
    QCOMPARE(folder.pictureNames(), QStringList());
}

void SnapshotsTest::tasksReopenTheirImporter()
{
    const ImportFolder folder;
    FakeItem item;
    item.movies = {videoMovie()};
    const TaskPtr task = probe(folder.file("clip.mp4"), item);
    CImportTaskPrivate* part = CImportTaskPrivate::getImportTaskPrivate(task.get());
    part->freeContext();
    part->freeContext();
    QCOMPARE(FakeEngine::instance().calls(), QStringList({"importer.close", "importer.release"}));
    AVBased::IAVSource* source = part->createSource(3, -1);
    QVERIFY(source);
    source->release();
    QVERIFY(FakeEngine::instance().calls().contains("importer.openSource 0 3 -1"));

    FakeEngine::instance().forgetCalls();
    CImportTask disc;
    part = CImportTaskPrivate::getImportTaskPrivate(&disc);
    part->taskType = CImportTask::BdTask;
    QVERIFY(!part->createSource(1, 2));
    QVERIFY(FakeEngine::instance().calls().isEmpty());
    QVERIFY(!CImportTaskPrivate::getImportTaskPrivate(nullptr));
}

void SnapshotsTest::tasksSayGoodbyeFirst()
{
    auto task = std::make_unique<CImportTask>();
    QVERIFY(task->movieInfo() && task->bdInfo() && task->dvdInfo());
    task->movieInfo()->setMovieName("name");
    QStringList names;
    connect(task.get(), &CImportTask::aboutToDestory,
            [&] { names.append(task->movieInfo()->movieName()); });
    CImportTask* raw = task.get();
    delete raw;
    static_cast<void>(task.release());
    QCOMPARE(names, QStringList("name"));
}

QTEST_GUILESS_MAIN(SnapshotsTest)
#include "tst_snapshots.moc"
