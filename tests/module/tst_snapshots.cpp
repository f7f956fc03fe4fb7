// SPDX-License-Identifier: GPL-2.0-or-later
//
// Tasks and their snapshots: what is asked of the engine, and which pictures there are afterwards.
#include "cbdfileclip.h"
#include "cimportcontext.h"
#include "cimporttask_p.h"
#include "importrun.h"
#include "vspavbased/iavsource.h"

#include <QtCore/QDateTime>
#include <QtCore/QUrl>
#include <QtGui/QImage>
#include <QtTest/QtTest>

#include <csignal>
#include <sys/resource.h>

using namespace Vesk;

namespace {

void setModified(const QString& path, uint seconds)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(QDateTime::fromSecsSinceEpoch(seconds), QFile::FileModificationTime));
}

/// Takes the task's pictures; `calls` are only those that this makes.
void snap(const TaskPtr& task)
{
    FakeEngine::instance().forgetCalls();
    CImportTaskPrivate::getImportTaskPrivate(task.get())->snap();
}

/// A task for a file with that name, and the pictures taken.
TaskPtr snapped(const ImportFolder& folder, const FakeItem& item = videoItem(),
                const QString& name = "clip.mp4")
{
    TaskPtr task = probeFile(folder.file(name), item);
    snap(task);
    return task;
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
    /// The converter keeps its first size.
    void initTestCase()
    {
        CImportContext* context = CImportContext::instance();
        context->setSnapSize(QSize(40, 20));
        engine.failing = QStringList("createConverter");
        QVERIFY(!context->imageConvert());
        engine.failing.clear();
        AVBased::IImageConverter* converter = context->imageConvert();
        context->setSnapSize(QSize(80, 60));
        QVERIFY(converter && context->imageConvert() == converter);
        QCOMPARE(context->snapSize(), QSize(80, 60));
        const QString call = "createConverter 30 40 20 0";
        QCOMPARE(engine.calls(), QStringList({call, call}));
    }

    void init() { engine.reset(); }

    void cleanup()
    {
        QCOMPARE(engine.misuses(), QStringList());
        QCOMPARE(engine.living(), QStringList());
    }

    void aVideoIsSnappedOnce()
    {
        const ImportFolder folder;
        const QString path = folder.file("clip.part1.mp4");
        setModified(path, 1600000000);
        TaskPtr task = probeFile(path, videoItem());
        snap(task);
        QCOMPARE(engine.calls().filter(QRegularExpression("^(importer|source)")),
                 QStringList({"importer.openSource 0 3 4", "source.seek 100", "source.readFrame 1",
                              "source.readFrame 1", "source.readFrame 1", "source.readFrame 1",
                              "source.release", "importer.close", "importer.release"}));
        QCOMPARE(folder.pictureNames(), QStringList("clip-1600000000.jpg"));
        const QString url = task->movieInfo()->imageUrl();
        QCOMPARE(url, "file://" + folder.path("pictures/clip-1600000000.jpg"));
        QCOMPARE(QImage(fileOf(url), "JPG").size(), QSize(40, 20));

        // Another file of that name and time shares the picture, and the engine is left alone.
        const QString same = folder.file("other/clip.avi");
        setModified(same, 1600000000);
        task = probeFile(same, videoItem());
        CImportContext::instance()->setConfigDir(folder.path("pictures/"));
        snap(task);
        QCOMPARE(task->movieInfo()->imageUrl(), url);
        QCOMPARE(engine.calls(), QStringList({"importer.close", "importer.release"}));

        setModified(same, 1600000001);
        task = probeFile(same, videoItem());
        snap(task);
        QCOMPARE(folder.pictureNames(),
                 QStringList({"clip-1600000000.jpg", "clip-1600000001.jpg"}));
    }

    void positions()
    {
        const auto position = [this](double duration) {
            snapped(ImportFolder(), videoItem(duration));
            return engine.calls("source.seek").join(' ');
        };
        QCOMPARE(position(10.0), QString("source.seek 100"));
        QCOMPARE(position(12.399), QString("source.seek 123"));
        QCOMPARE(position(0.0999), QString("source.seek 0"));
        QCOMPARE(position(0.0), QString("source.seek 0"));
        QCOMPARE(position(1e12), QString("source.seek 2147483647"));
    }

    void framesAreChosen()
    {
        const auto expect = [this](const QByteArray& reads, int count, const QString& shown) {
            const ImportFolder folder;
            FakeItem item = videoItem();
            item.reads = reads;
            const TaskPtr task = snapped(folder, item);
            QCOMPARE(engine.calls("source.readFrame").size(), count);
            QCOMPARE(engine.calls("converter").join(' '), shown);
            QCOMPARE(folder.pictureNames().size(), shown.isEmpty() ? 0 : 1);
            QVERIFY(!task->movieInfo()->imageUrl().isEmpty());
        };
        expect("f", 4, "converter.convert 4");
        expect("nnf", 6, "converter.convert 6"); // reads without a frame do not count
        expect("n", 100, "");
        expect("fl", 2, "converter.convert 2");
        expect("fe", 2, "");
    }

    void picturesStandUpright()
    {
        const auto colours = [](const TaskPtr& task) {
            const QImage picture(fileOf(task->movieInfo()->imageUrl()));
            const auto colourAt = [&picture](int y) {
                const QRgb c = picture.pixel(20, y);
                return qRed(c) > 200 && qBlue(c) < 60   ? "red "
                       : qBlue(c) > 200 && qRed(c) < 60 ? "blue "
                                                        : "? ";
            };
            return picture.isNull() ? QString() : QString(colourAt(2)) + colourAt(17);
        };
        const ImportFolder folder;
        QCOMPARE(colours(snapped(folder, videoItem(), "a.mp4")), QString("red blue "));
        engine.topDown = false;
        QCOMPARE(colours(snapped(folder, videoItem(), "b.mp4")), QString("red blue "));
        engine.pictureFormat = 31;
        QCOMPARE(colours(snapped(folder, videoItem(), "c.mp4")), QString());
    }

    void namesStayInTheFolder()
    {
        const auto pictureName = [](const QString& file) {
            const ImportFolder folder;
            const TaskPtr task = snapped(folder, videoItem(), file);
            const QString url = task->movieInfo()->imageUrl();
            const QString picture = folder.pictureNames().value(0);
            const bool leadsThere =
                url.startsWith("file:///") && fileOf(url) == folder.path("pictures/" + picture);
            return leadsThere ? picture.section('-', 0, -2) : "not there: " + url;
        };
        for (const QString name : {"My clip", "a#b%41?c", u8"\u00e9\u6620", "%1%2"})
            QCOMPARE(pictureName(name + ".mp4"), name);
        QCOMPARE(pictureName("a\\b\nc.mp4"), QString("a_b_c"));
        QCOMPARE(pictureName(QString(80, QChar(0x6620)) + "ab.mp4"), QString(66, QChar(0x6620)));
    }

    void noFolderNoPicture()
    {
        const ImportFolder folder;
        const QString obstacle = folder.file("obstacle");
        CImportContext::instance()->setConfigDir(obstacle + "/pictures");
        const QStringList files = withVideos({folder.file("1.mp4"), folder.file("2.mp4")});
        for (const QString& file : files)
            setModified(file, 1600000000);
        ImportRun import;
        import.run(files);
        const QString text("20030001 import config dir not exits :%1/pictures/%2-1600000000.jpg "
                           "cimporttask_p.cpp");
        QCOMPARE(import.log(), QStringList({text.arg(obstacle, "1"), text.arg(obstacle, "2")}));
        QCOMPARE(import.events().filter("SnapDone").size(), 2);
        QVERIFY(import.events().contains("snapFinished"));
        QVERIFY(import.tasks[0]->movieInfo()->imageUrl().isEmpty());
    }

    /// As on a full disk.
    void aPictureThatCannotBeWrittenLeavesNothing()
    {
        const ImportFolder folder;
        const TaskPtr task = probeFile(folder.file("clip.mp4"), videoItem());
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit limit;
        getrlimit(RLIMIT_FSIZE, &limit);
        const rlimit little = {100, limit.rlim_max};
        setrlimit(RLIMIT_FSIZE, &little);
        snap(task);
        setrlimit(RLIMIT_FSIZE, &limit);
        QCOMPARE(engine.calls("converter").size(), 1);
        QCOMPARE(folder.pictureNames(), QStringList());
    }

    void dvdChapters()
    {
        const ImportFolder folder;
        FakeItem item;
        item.isDvd = true;
        item.sets = {{1, {FakeTitle(), {1000.0, {0.0, 300.0, 700.0}}}}};
        const FakeMovie sound{"DISC _1", 0, {fakeStream(AVBased::StreamKindAudio)}, {}};
        item.movies = {sound, videoMovie(1000.0, 7, "DISC _2")};

        for (int pass = 0; pass < 2; ++pass) {
            const TaskPtr task = probeDvd(item);
            snap(task);
            QStringList calls = {
                "importer.openSource 7 3 4", "source.seek 150000", "source.seek 500000",
                "source.seek 850000",        "source.release",     "importer.close",
                "importer.release"};
            if (pass == 1) // the pictures are there
                calls = calls.filter(QRegularExpression("^(?!source.seek)"));
            QCOMPARE(engine.calls().filter(QRegularExpression("^(importer|source.[sc])|release")),
                     calls);
            const QString picture = "DISC/DISC _2-title-2-chapter-%1.jpg";
            QCOMPARE(folder.pictureNames(),
                     QStringList({picture.arg(1), picture.arg(2), picture.arg(3)}));
            QVERIFY(task->dvdInfo()->title(0)->movieInfo()->imageUrl().isEmpty());
            QCOMPARE(fileOf(task->dvdInfo()->title(1)->movieInfo()->imageUrl()),
                     folder.path("pictures/" + picture.arg(3)));
        }
    }

    void aDvdWithoutANameIsCalledAfterItsFolder()
    {
        const ImportFolder folder;
        FakeItem item;
        item.isDvd = true;
        item.sets = {{1, {FakeTitle()}}};
        item.movies = {videoMovie()};
        snap(probeDvd(item, "/a/My.Disc/"));
        QCOMPARE(folder.pictureNames(), QStringList("My/-title-1-chapter-1.jpg"));
    }

    void blurayTimeline()
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
        disc.titles = {{"00000", {{{"/d/1.m2ts", 0, 100}, {"/d/3.m2ts", 10, 30}}, 0, 120}, {}}};
        engine.anyTimeline = videoItem();

        for (int pass = 0; pass < 2; ++pass) {
            const TaskPtr task = probeBluray(disc, "/a/Disc.1");
            snap(task);
            const QStringList seeks = {"source.seek 10000", "source.seek 112000"};
            QCOMPARE(
                engine.calls().filter(
                    QRegularExpression("^(timeline|create|importer|source.seek)")),
                QStringList(
                    {"createNamedImporter SimpleEditImporter",
                     "timeline.queryExtension ISimpleEditTimeLine", "timeline.reset",
                     "timeline.insertSource -1 "
                     "/d/1.m2ts?movieid=0&vstreamid=3&astreamid=4&subtitleid=-2 0 100000",
                     "timeline.applyFormat 100000 1920 1080 24 48000 6 16", "timeline.selectItem 0",
                     "timeline.insertSource -1 "
                     "/d/3.m2ts?movieid=0&vstreamid=3&astreamid=-2&subtitleid=-2 0 50000",
                     "timeline.applyFormat 50000 720 0 0 48000 6 0", "timeline.selectItem 1",
                     "timeline.saveToFile (timeline)", "timeline.release",
                     "createImporter (timeline)", "importer.openSource 0 0 0"}) +
                    (pass == 0 ? seeks : QStringList()) +
                    QStringList({"importer.close", "importer.release"}));
            QCOMPARE(folder.pictureNames(),
                     QStringList({"Disc/clip-0-file-1.jpg", "Disc/clip-0-file-3.jpg"}));
            CBDFileClip* clip = task->bdInfo()->file(2)->clips().first();
            QCOMPARE(fileOf(clip->imageUrl()), folder.path("pictures/Disc/clip-0-file-3.jpg"));
        }
    }

    void blurayWithoutTimeline()
    {
        const ImportFolder folder;
        FakeDisc disc;
        disc.files = {{"/d/1.m2ts", videoMovie()}};
        disc.titles = {{"00000", {{{"/d/1.m2ts", 0, 10}}, 0, 10}, {}}};
        for (const char* missing :
             {"createNamedImporter", "createImporter", "importer.openSource"}) {
            engine.failing = QStringList(missing);
            if (missing == QString("importer.openSource"))
                engine.anyTimeline = videoItem();
            const TaskPtr task = probeBluray(disc);
            snap(task);
            QVERIFY(task->bdInfo()->file(0)->clips().first()->imageUrl().isEmpty());
            QCOMPARE(folder.pictureNames(), QStringList());
        }
    }

    void tasksReopenTheirImporter()
    {
        const ImportFolder folder;
        const TaskPtr task = probeFile(folder.file("clip.mp4"), videoItem());
        CImportTaskPrivate* part = CImportTaskPrivate::getImportTaskPrivate(task.get());
        engine.forgetCalls();
        part->freeContext();
        part->freeContext();
        QCOMPARE(engine.calls(), QStringList({"importer.close", "importer.release"}));
        AVBased::IAVSource* source = part->createSource(3, -1);
        QVERIFY(source);
        source->release();
        QVERIFY(engine.calls().contains("importer.openSource 0 3 -1"));
    }

    void tasksSayGoodbyeFirst()
    {
        auto* task = new CImportTask;
        task->movieInfo()->setMovieName("name");
        QString name;
        connect(task, &CImportTask::aboutToDestory, [&] { name = task->movieInfo()->movieName(); });
        delete task;
        QCOMPARE(name, QString("name"));
    }

private:
    FakeEngine& engine = FakeEngine::instance();
};

QTEST_GUILESS_MAIN(SnapshotsTest)
#include "tst_snapshots.moc"
