// SPDX-License-Identifier: GPL-2.0-or-later
//
// From the engine's descriptions to information objects.
#include "cbdfileclip.h"
#include "cdvdtrack.h"
#include "cimportcontext.h"
#include "cimportreply_p.h"
#include "cimporttask_p.h"
#include "importrun.h"

#include <limits>

using namespace Vesk;

namespace {

FakeMovie movie(const QByteArray& name, int id,
                const std::vector<AVBased::AVStreamInfo>& streams = {})
{
    return {name, id, streams, {}};
}

FakeItem dvdOf(const std::vector<FakeTitleSet>& sets, const QByteArray& name = "D")
{
    FakeItem item;
    item.isDvd = true;
    item.sets = sets;
    item.movies = {movie(name, 0)};
    return item;
}

/// "file:in-out" for each clip of a title or chapter.
template <typename Player>
QString clipsOf(const Player* player)
{
    QStringList texts;
    for (int i = 0; i < player->clipCount(); ++i) {
        texts << QString("%1:%2-%3")
                     .arg(player->clip(i)->file()->url())
                     .arg(player->clip(i)->timeStart())
                     .arg(player->clip(i)->timeEnd());
    }
    return texts.join(' ');
}

} // namespace

class ProbingTest : public EngineTest
{
    Q_OBJECT

private Q_SLOTS:
    void mediaFiles()
    {
        const ImportFolder folder;
        const auto probed = [&folder](const QString& name, const std::vector<FakeMovie>& movies) {
            FakeItem item;
            item.movies = movies;
            const TaskPtr task = probeFile(folder.file(name), item);
            const bool isVideo = task->taskType() == CImportTask::VideoTask;
            return (isVideo ? "video " : "audio ") + task->movieInfo()->movieName();
        };
        QCOMPARE(probed("clip.part1.mkv", {movie("", 0, {fakeStream(2), fakeStream(1)})}),
                 "video clip");
        QCOMPARE(probed("clip.mkv", {movie("", 0, {fakeStream(2), fakeStream(3)})}), "audio clip");
        QCOMPARE(probed(".clip.mkv", {movie("", 0)}), "audio ");
        QCOMPARE(probed("clip.mp4", {}), "audio ");

        // Several movies leave the last one's values.
        AVBased::AVStreamInfo video = fakeStream(AVBased::StreamKindVideo, 1, 20.0);
        video.width = 640;
        FakeItem item;
        item.movies = {movie("first", 1, {video, video}),
                       movie("", 2, {fakeStream(AVBased::StreamKindAudio, 1, 5.0)})};
        const TaskPtr task = probeFile(folder.file("clip.mp4"), item);
        const CMovieInfomation* info = task->movieInfo();
        QCOMPARE(task->taskType(), CImportTask::AudioTask);
        QCOMPARE(info->movieName(), "clip");
        QVERIFY(info->movieId() == 2 && info->streamCount() == 1 && info->duration() == 5.0);
        QCOMPARE(info->stream(0)->width(), 640);

        const QString image = folder.file("disc.iso", QByteArray(2048, 0));
        const auto size = [](const TaskPtr& task) { return task ? task->size() : "no task"; };
        QCOMPARE(size(probeFile(image, videoItem())), "2 KB");
        QCOMPARE(size(probeDvd(dvdOf({}), image)), "2 KB");
        QCOMPARE(size(probeBluray({}, image)), "2 KB");
        QCOMPARE(size(probeDvd(dvdOf({}), folder.path({}))), "0 B");
        QCOMPARE(size(probeBluray({}, folder.path({}))), "0 B");
    }

    void protectedFiles()
    {
        const ImportFolder folder;
        FakeItem item;
        const auto isImported = [&](const char* answer) {
            item.drm = answer;
            return bool(probeFile(folder.file("clip.mp4"), item));
        };
        for (const char* text : {"1", "true", "yes"})
            QVERIFY(!isImported(text));
        for (const char* text : {"0", "false", "FALSE", ""})
            QVERIFY(isImported(text));
        item.drm.reset();
        QVERIFY(probeFile(folder.file("clip.mp4"), item));
        CImportContext::instance()->setDrmSupport(true);
        QVERIFY(isImported("1"));
        CImportContext::instance()->setDrmSupport(false);
        engine.failing = QStringList("importer.queryExtension IMovieInfoExt");
        QVERIFY(isImported("1"));

        // The longest stream's.
        const auto duration = [](const QList<double>& durations) {
            FakeMovie description;
            for (const double seconds : durations)
                description.streams.push_back(fakeStream(2, 0, seconds));
            const AVBased::AVMovieInfo record = description.record();
            CMovieInfomation info;
            CImportReplyPrivate::fillMovieInfo(&record, &info);
            return QString::number(info.duration());
        };
        const double nan = std::numeric_limits<double>::quiet_NaN();
        QCOMPARE(joined<QList<double>>({{10.0, 12.5, 3.0}, {-4.0}, {5.0, nan}, {}}, duration),
                 "12.5, 0, 5, 0");
        CMovieInfomation untouched;
        QVERIFY(!CImportReplyPrivate::fillMovieInfo(nullptr, &untouched));
    }

    void dvds()
    {
        const auto name = [](const char* movie) {
            FakeItem item = dvdOf({}, movie);
            item.scrambled = true;
            const TaskPtr task = probeDvd(item);
            return task->dvdInfo()->isScrambled() ? task->dvdInfo()->dvdName() : "not scrambled";
        };
        // The first one is as the engine makes it.
        QCOMPARE(joined({"DISC _1", "DISC_1", "DISC_12", "DISC_2", "_1"}, name),
                 "DISC, DIS, DISC_12, DISC_2, ");

        const auto chapters = [](const FakeTitle& fake) {
            const TaskPtr task = probeDvd(dvdOf({{1, {fake}}}));
            const CDVDTitle* title = task->dvdInfo()->title(0);
            QStringList texts;
            for (int i = 0; i < title->chapterCount(); ++i) {
                const CDVDChapter* chapter = title->chapter(i);
                if (chapter->title() == title)
                    texts << QString("%1-%2").arg(chapter->timeStart()).arg(chapter->timeEnd());
            }
            return texts.join(' ');
        };
        const auto titles = {FakeTitle{120, {0}}, FakeTitle{300, {0, 60, 61, 200}},
                             FakeTitle{30, {10, 20}}, FakeTitle{100, {0, 50, 20}},
                             FakeTitle{100, {}}};
        QCOMPARE(joined(titles, chapters),
                 "0-120, 0-60 61-200 200-300, 10-20 20-40, 0-50 20-100, ");

        // What is counted beyond the record is not read.
        FakeTitle title;
        title.record.audio[0] = {"ac3", "de", "normal", 0x80, 6, 48000, 1};
        title.record.audioCount = 4000000000U;
        title.record.subpictures[1] = {"fr", 0x21};
        title.record.subpictureCount = 2;
        const TaskPtr task = probeDvd(dvdOf({{1, {title}}}));
        const CDVDTitle* made = task->dvdInfo()->title(0);
        QCOMPARE(made->trackCount(), 8);
        const CDVDTrack* t = made->track(0);
        QCOMPARE(QStringList({t->text1(), t->text2(), t->text3()}), "ac3, de, normal");
        QCOMPARE(QList<int>({t->number1(), t->number2(), t->number3(), t->number4()}),
                 QList<int>({0x80, 6, 48000, 1}));
        QVERIFY(made->subtitleCount() == 2 && made->subtitle(1)->streamId() == 0x21);
        QCOMPARE(made->subtitle(1)->name(), "fr");

        QVERIFY(!probeDvd(FakeItem(), "/media/"));
        QVERIFY(!TaskPtr(CImportReplyPrivate::createImportTaskForDvd("/missing/")));
        const TaskPtr empty = probeDvd(dvdOf({}));
        QVERIFY(empty && empty->dvdInfo()->titleCount() == 0);
        CDVDInformation info;
        QVERIFY(!CImportReplyPrivate::fillDvdInfo(nullptr, &info));
    }

    void blurayOddities()
    {
        FakeDisc disc;
        disc.files = {{"a", {}}, {"b", {}}};
        const FakeBdTitle plain{"plain", {{{"b", 0, 5}, {"gone", 0, 9}, {"a", 0, 7}}, 0, 12}, {}};
        disc.titles = {plain, plain, plain, plain, plain};
        disc.titles[2].name = "liar";
        disc.titles[2].play.claimedClips = 10000000;
        disc.titles[3].name = "silent";
        engine.failing = QStringList("loader.titleInfo silent");
        disc.titles[4].name = "chaptered";
        // More clips than the title has: those have no file.
        disc.titles[4].chapters = {{{}, 0, 0, 10000000},
                                   {{{"x", 1, 2}, {"x", 1, 2}, {"x", 3, 4}, {"x", 5, 6}}, 0, 3}};

        const TaskPtr task = probeBluray(disc);
        const CBDInformation* info = task->bdInfo();
        QList<int> ids;
        for (int i = 0; i < info->titleCount(); ++i)
            ids.append(info->title(i)->titleId());
        QCOMPARE(ids, QList<int>({0, 1, -1, -1, 4}));
        QCOMPARE(clipsOf(info->title(0)), "b:0-5 a:0-7");
        QCOMPARE(info->title(4)->chapterCount(), 1);
        QCOMPARE(clipsOf(info->title(4)->chapter(0)), "b:1-2 a:3-4");
        QCOMPARE(info->title(4)->chapter(0)->title(), info->title(4));

        const auto filesWithout = [&](const char* call) {
            engine.failing = QStringList(call);
            const TaskPtr task = probeBluray(disc);
            return task ? QString::number(task->bdInfo()->fileCount()) : "none";
        };
        QCOMPARE(
            joined({"loader.titleList", "loader.fileList", "loader.discInfo", "createBDLoader"},
                   filesWithout),
            "2, 0, none, none");
        QVERIFY(!TaskPtr(CImportReplyPrivate::createImportTaskForBd("/missing")));
    }
};

QTEST_GUILESS_MAIN(ProbingTest)
#include "tst_probing.moc"
