// SPDX-License-Identifier: GPL-2.0-or-later
//
// Tasks and their snapshots: what is asked of the engine, and which pictures there are afterwards.
#include "cbdfileclip.h"
#include "cimportcontext.h"
#include "cimporttask_p.h"
#include "imagestore.h"
#include "importrun.h"
#include "vspavbased/iavsource.h"

#include <QtCore/QDateTime>
#include <QtGui/QImage>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <tuple>

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

/// A task for a file with that name, and the pictures taken. Their names hold the file's time,
/// which is always the same.
TaskPtr snapped(const ImportFolder& folder, const FakeItem& item = videoItem(),
                const QString& name = "clip.mp4")
{
    const QString file = folder.file(name);
    setModified(file, 1600000000);
    TaskPtr task = probeFile(file, item);
    snap(task);
    return task;
}

/// The file that an image URL leads to.
QString fileOf(const QString& imageUrl)
{
    return imageUrl.mid(int(qstrlen("file://")));
}

} // namespace

class SnapshotsTest : public EngineTest
{
    Q_OBJECT

private Q_SLOTS:
    /// The converter keeps its first size; one that the engine refuses is said once.
    void initTestCase()
    {
        CImportContext* context = CImportContext::instance();
        ImportRun log;
        engine.failing = QStringList("createConverter");
        for (const QSize& size : {QSize(0, 20), QSize(40, 20)}) {
            context->setSnapSize(size);
            QVERIFY(!context->imageConvert() && !context->imageConvert());
        }
        const QString record("20030001 the engine makes no pictures of %1 x 20 pixels "
                             "cimportcontext.cpp");
        QCOMPARE(log.log(), QStringList({record.arg(0), record.arg(40)}));
        engine.failing.clear();
        AVBased::IImageConverter* converter = context->imageConvert();
        context->setSnapSize(QSize(80, 60));
        QVERIFY(converter && context->imageConvert() == converter);
        QCOMPARE(context->snapSize(), QSize(80, 60));
        QCOMPARE(engine.calls().mid(3), "createConverter 30 40 20 0, createConverter 30 40 20 0");
    }

    /// The converter goes with the process, which must not end by what it throws.
    void cleanupTestCase()
    {
        engine.on("converter.release", [] { throw 42; });
    }

    void aVideoIsSnappedOnce()
    {
        const ImportFolder folder;
        const QString path = folder.file("clip.part1.mp4");
        setModified(path, 1600000000);
        TaskPtr task = probeFile(path, videoItem());
        snap(task);
        QCOMPARE(engine.calls("^(importer|source)"),
                 "importer.openSource 0 3 4, source.seek 100, source.readFrame 1, source.readFrame "
                 "1, source.readFrame 1, source.readFrame 1, source.release, importer.close, "
                 "importer.release");
        QCOMPARE(folder.pictureNames(), "clip-1600000000.jpg");
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
        QCOMPARE(engine.calls(), "importer.close, importer.release");

        setModified(same, 1600000001);
        task = probeFile(same, videoItem());
        snap(task);
        QCOMPARE(folder.pictureNames(), "clip-1600000000.jpg, clip-1600000001.jpg");
    }

    /// Two files whose pictures have one name, each with a folder that is set between them.
    void foldersChangeBetweenTasks()
    {
        const ImportFolder folder;
        const QStringList paths =
            withVideos({folder.file("a/clip.mp4"), folder.file("b/clip.mp4")});
        for (const QString& path : paths)
            setModified(path, 1600000000);
        QStringList next = {folder.path("pictures/one"), folder.path("pictures/two"), ""};
        const auto setNext = [&] { CImportContext::instance()->setConfigDir(next.takeFirst()); };
        ImportRun import;
        CImportReply* reply = import.open(paths);
        connect(reply, &CImportReply::importFinished, reply, setNext, Qt::DirectConnection);
        connect(
            reply, &CImportReply::taskProcess, reply,
            [&](CImportTask*, CImportReply::ProcessType type) {
                if (type == CImportReply::SnapDone)
                    setNext();
            },
            Qt::DirectConnection);
        import.waitForFinished();
        QCOMPARE(folder.pictureNames(), "one/clip-1600000000.jpg, two/clip-1600000000.jpg");
        QCOMPARE(import.tasks[1]->movieInfo()->imageUrl(),
                 "file://" + folder.path("pictures/two/clip-1600000000.jpg"));
    }

    void framesAreChosen()
    {
        const auto position = [this](double duration) {
            snapped(ImportFolder(), videoItem(duration));
            return engine.calls("source.seek").join(' ').section(' ', 1);
        };
        QCOMPARE(joined({10.0, 12.399, 0.0999, 0.0, 1e12}, position), "100, 123, 0, 0, 2147483647");

        const auto expect = [this](const QByteArray& reads, int count, const QString& shown) {
            const ImportFolder folder;
            FakeItem item = videoItem();
            item.reads = reads;
            const TaskPtr task = snapped(folder, item);
            QCOMPARE(engine.calls("source.readFrame").size(), count);
            QCOMPARE(engine.calls("^converter").join(' '), shown);
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
        const auto isRedOverBlue = [](const TaskPtr& task) {
            const QImage picture(fileOf(task->movieInfo()->imageUrl()));
            const QColor top = picture.pixelColor(20, 2);
            const QColor bottom = picture.pixelColor(20, 17);
            return top.red() > 200 && top.blue() < 60 && bottom.red() < 60 && bottom.blue() > 200;
        };
        QVERIFY(isRedOverBlue(snapped(ImportFolder())));
        engine.topDown = false;
        QVERIFY(isRedOverBlue(snapped(ImportFolder())));
        engine.pictureFormat = 31;
        const ImportFolder folder;
        snapped(folder);
        QCOMPARE(folder.pictureNames(), "");
    }

    void namesStayInTheFolder()
    {
        const auto pictureName = [](const QString& file) {
            const ImportFolder folder;
            const TaskPtr task = snapped(folder, videoItem(), file + ".mp4");
            const QString picture = folder.pictureNames().value(0);
            const QString url = task->movieInfo()->imageUrl();
            return url == "file://" + folder.path("pictures/" + picture)
                       ? picture.section('-', 0, -2)
                       : "not there: " + url;
        };
        const QString longest(80, QChar(0x6620)); // 240 bytes, and 15 come behind it
        for (const QString& name : {QString("My clip"), QString("a#b%41?c"), QString(u8"\u00e9"),
                                    QString("%1%2"), longest})
            QCOMPARE(pictureName(name), name);
        QCOMPARE(pictureName("a\\b\nc"), "a_b_c");
        const QString cut = longest.left(74) + '~';
        QCOMPARE(pictureName(longest + 'a').left(75), cut);
        QCOMPARE(pictureName(longest + 'b').left(75), cut);
        QVERIFY(pictureName(longest + 'a') != pictureName(longest + 'b'));

        // URLs have the path as it stands, whatever it holds.
        const auto url = [](const char* path) { return imageUrlOf(path); };
        QCOMPARE(joined({"/a b/%41#?.jpg", "C:/a.jpg", "a/../b.jpg", "//host/a.jpg"}, url),
                 "file:///a b/%41#?.jpg, file:///C:/a.jpg, file:///a/../b.jpg, "
                 "file:////host/a.jpg");
    }

    void onlyWholePicturesAreKept()
    {
        const auto expect = [this](const QByteArray& content, bool isKept) {
            const ImportFolder folder;
            const QString path = fileOf(snapped(folder)->movieInfo()->imageUrl());
            writeFile(path, content);
            snapped(folder);
            QCOMPARE(contentOf(path) == content, isKept);
            QCOMPARE(engine.calls("source.seek").size(), isKept ? 0 : 1);
            QVERIFY(!QImage(path).isNull() || isKept);
        };
        expect("\xff\xd8 whole \xff\xd9", true);
        expect("\xff\xd8 cut", false);
        expect("no picture \xff\xd9", false);
        expect("\xff\xd8\xd9", false);
        expect("", false);

        // Others may write to the folder, and earlier imports were killed there.
        const ImportFolder folder;
        const QString picture = fileOf(snapped(folder)->movieInfo()->imageUrl());
        QVERIFY(QFile::remove(picture));
        const QString victim = folder.file("victim", "mine");
        QVERIFY(QFile::link(victim, picture));
        // By whom the process lets read its files.
        const mode_t mask = umask(0027);
        snapped(folder);
        umask(mask);
        QCOMPARE(contentOf(victim), QByteArray("mine"));
        QVERIFY(!QFileInfo(picture).isSymLink() && !QImage(picture).isNull());
        QCOMPARE(int(QFile::permissions(picture) & 0x777), 0x640);

        const QString fresh = ".vspimport-0123456789abcdef0123456789abcdef.part";
        const QString old = ".vspimport-00000000000000000000000000000000.part";
        const QString other = ".vspimport-0000000000000000000000000000000x.part";
        folder.file("left/" + fresh);
        for (const QString& name : {old, other})
            setModified(folder.file("left/" + name), 1600000000);
        CImportContext::instance()->setConfigDir(folder.path("left"));
        snapped(folder);
        QCOMPARE(filesBelow(folder.path("left")).mid(0, 2), other + ", " + fresh);
        QCOMPARE(filesBelow(folder.path("left")).size(), 3);
    }

    void picturesThatCannotBeStored()
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
        QCOMPARE(import.events().filter(QRegularExpression("SnapDone|snapF")).size(), 3);
        QVERIFY(import.tasks[0]->movieInfo()->imageUrl().isEmpty());

        // As on a full disk: nothing is left behind.
        const ImportFolder full;
        const TaskPtr task = probeFile(full.file("clip.mp4"), videoItem());
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit limit;
        getrlimit(RLIMIT_FSIZE, &limit);
        const rlimit little = {100, limit.rlim_max};
        setrlimit(RLIMIT_FSIZE, &little);
        snap(task);
        setrlimit(RLIMIT_FSIZE, &limit);
        QCOMPARE(engine.calls("^converter").size(), 1);
        QCOMPARE(full.pictureNames(), "");
    }

    void dvdChapters()
    {
        const ImportFolder folder;
        FakeItem item;
        item.isDvd = true;
        item.sets = {{1, {FakeTitle(), {1000.0, {0.0, 300.0, 700.0}}}}};
        const FakeMovie sound{"DISC _1", 0, {fakeStream(AVBased::StreamKindAudio)}, {}};
        item.movies = {sound, videoMovie(1000.0, 7, "DISC _2")};
        for (const char* seeks :
             {"source.seek 150000, source.seek 500000, source.seek 850000, ", ""}) {
            const TaskPtr task = probeDvd(item);
            snap(task);
            QCOMPARE(engine.calls("^(importer|source.[sc])|release"),
                     QString("importer.openSource 7 3 4, %1source.release, importer.close, "
                             "importer.release")
                         .arg(seeks));
            const QString picture = "DISC/DISC _2-title-2-chapter-%1.jpg";
            QCOMPARE(folder.pictureNames(),
                     QStringList({picture.arg(1), picture.arg(2), picture.arg(3)}));
            QVERIFY(task->dvdInfo()->title(0)->movieInfo()->imageUrl().isEmpty());
            QCOMPARE(fileOf(task->dvdInfo()->title(1)->movieInfo()->imageUrl()),
                     folder.path("pictures/" + picture.arg(3)));
        }

        // Without a name it is called after its folder.
        const ImportFolder other;
        item.sets = {{1, {FakeTitle()}}};
        item.movies = {videoMovie()};
        snap(probeDvd(item, "/a/My.Disc/"));
        QCOMPARE(other.pictureNames(), "My/-title-1-chapter-1.jpg");
    }

    void blurayClips()
    {
        const ImportFolder folder;
        FakeMovie first = videoMovie(100.0);
        AVBased::AVStreamInfo& video = first.streams[0];
        std::tie(video.width, video.height) = std::pair(1920, 1080);
        std::tie(video.frameRate, video.aspectRatio) = std::pair(24, 16);
        AVBased::AVStreamInfo& audio = first.streams[1];
        std::tie(audio.sampleRate, audio.channels, audio.frameRate) = std::tuple(48000, 6, 99);
        FakeMovie silent = videoMovie(50.0);
        silent.streams.pop_back();
        silent.streams[0].width = 720;
        FakeDisc disc;
        disc.files = {{"/d/1.m2ts", first}, {"/d/2.m2ts", videoMovie(70.0)}, {"/d/3.m2ts", silent}};
        disc.titles = {{"00000", {{{"/d/1.m2ts", 0, 100}, {"/d/3.m2ts", 10, 30}}, 0, 120}, {}}};
        engine.anyTimeline = videoItem();

        for (const char* seeks : {"source.seek 10000, source.seek 112000, ", ""}) {
            const TaskPtr task = probeBluray(disc, "/a/Disc.1");
            snap(task);
            QCOMPARE(engine.calls("^(timeline|create|importer|source.seek)"),
                     QString("createNamedImporter SimpleEditImporter, "
                             "timeline.queryExtension ISimpleEditTimeLine, timeline.reset, "
                             "timeline.insertSource -1 /d/1.m2ts"
                             "?movieid=0&vstreamid=3&astreamid=4&subtitleid=-2 0 100000, "
                             "timeline.applyFormat 100000 1920 1080 24 48000 6 16, "
                             "timeline.selectItem 0, timeline.insertSource -1 /d/3.m2ts"
                             "?movieid=0&vstreamid=3&astreamid=-2&subtitleid=-2 0 50000, "
                             "timeline.applyFormat 50000 720 0 0 48000 6 0, "
                             "timeline.selectItem 1, timeline.saveToFile (timeline), "
                             "timeline.release, createImporter (timeline), "
                             "importer.openSource 0 0 0, %1importer.close, importer.release")
                         .arg(seeks));
            QCOMPARE(folder.pictureNames(), "Disc/clip-0-file-1.jpg, Disc/clip-0-file-3.jpg");
            CBDFileClip* clip = task->bdInfo()->file(2)->clips().first();
            QCOMPARE(fileOf(clip->imageUrl()), folder.path("pictures/Disc/clip-0-file-3.jpg"));
        }

        const ImportFolder other;
        for (const char* missing :
             {"createNamedImporter", "importer.openSource", "createImporter"}) {
            engine.failing = QStringList(missing);
            if (missing == QString("createImporter"))
                engine.anyTimeline.reset();
            const TaskPtr task = probeBluray(disc);
            snap(task);
            QVERIFY(task->bdInfo()->file(0)->clips().first()->imageUrl().isEmpty());
            QCOMPARE(other.pictureNames(), "");
        }
    }

    void tasksReopenTheirImporter()
    {
        const TaskPtr task = probeFile("clip.mp4", videoItem());
        CImportTaskPrivate* part = CImportTaskPrivate::getImportTaskPrivate(task.get());
        engine.forgetCalls();
        part->freeContext();
        part->freeContext();
        QCOMPARE(engine.calls(), "importer.close, importer.release");
        part->createSource(3, -1)->release();
        QVERIFY(engine.calls().contains("importer.openSource 0 3 -1"));
    }
};

QTEST_GUILESS_MAIN(SnapshotsTest)
#include "tst_snapshots.moc"
