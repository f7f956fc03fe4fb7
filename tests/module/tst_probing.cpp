// SPDX-License-Identifier: GPL-2.0-or-later
//
// From the engine's descriptions to information objects.
#include "cbdfileclip.h"
#include "cdvdtrack.h"
#include "cimportcontext.h"
#include "cimportreply_p.h"
#include "cimporttask_p.h"
#include "importrun.h"

#include <QtTest/QtTest>

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

class ProbingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { FakeEngine::instance().reset(); }
    void cleanup();

    void mediaFile();
    void severalMoviesLeaveTheLastOnesValues();
    void typeAndNameOfAFile();
    void protectedFiles();
    void longestStreamIsTheDuration();

    void dvdTitlesAndMoviesStayInStep();
    void dvdName();
    void dvdChapters();
    void dvdTracksStayWithinTheRecord();
    void dvdWithoutContent();

    void blurayTree();
    void blurayOddities();
    void blurayWithoutLists();
};

void ProbingTest::cleanup()
{
    QCOMPARE(FakeEngine::instance().misuses(), QStringList());
    QCOMPARE(FakeEngine::instance().living(), QStringList());
}

void ProbingTest::mediaFile()
{
    const ImportFolder folder;
    const QString path = folder.file("clip.part1.mp4", QByteArray(1536, 'x'));
    AVBased::AVStreamInfo video = fakeStream(AVBased::StreamKindVideo, 3, 10.0);
    video.width = 720;
    video.frameRate = quint64(25) << 32 | 1;
    video.aspectRatio = 16U << 16 | 9U;
    video.channels = 9;
    AVBased::AVStreamInfo audio = fakeStream(AVBased::StreamKindAudio, 4, 12.5);
    audio.name = "Ton \xe9";
    audio.channelLayout = quint64(1) << 40;
    audio.width = 99;
    FakeItem item;
    item.movies = {movie("Caf\xc3\xa9", 8, {video, audio, fakeStream(4, 5)})};
    item.movies[0].tags = {{"title", "Caf\xe9"}};

    const TaskPtr task = probeFile(path, item);
    QVERIFY(task);
    QCOMPARE(task->url(), path);
    QCOMPARE(task->size(), QString("1.5 KB"));
    QCOMPARE(CImportTaskPrivate::getImportTaskPrivate(task.get())->importerName,
             QString("Fake importer"));
    const CMovieInfomation* info = task->movieInfo();
    QCOMPARE(info->movieName(), QString(u8"Caf\u00e9"));
    QCOMPARE(info->fileName(), QString("clip.part1.mp4"));
    QCOMPARE(info->movieId(), 8);
    QCOMPARE(info->metadata(0)->value(), QString(u8"Caf\u00e9"));
    QCOMPARE(info->stream(0)->streamType(), CStreamInfomation::StreamVideo);
    QCOMPARE(info->stream(0)->fourcc(), QString("FAKE"));
    QCOMPARE(info->stream(0)->framerate(), QString("25 fps"));
    QCOMPARE(info->stream(0)->aspectRatio(), QString("16:9"));
    QCOMPARE(info->stream(0)->channels(), 0);
    QCOMPARE(info->stream(1)->streamName(), QString(u8"Ton \u00e9"));
    QCOMPARE(info->stream(1)->channelLayout(), quint64(1) << 40);
    QCOMPARE(info->stream(1)->width(), 0);
    QCOMPARE(info->stream(2)->streamType(), CStreamInfomation::StreamUnknown);
    QCOMPARE(FakeEngine::instance().living(), QStringList("importer"));
}

void ProbingTest::severalMoviesLeaveTheLastOnesValues()
{
    const ImportFolder folder;
    AVBased::AVStreamInfo video = fakeStream(AVBased::StreamKindVideo, 1, 20.0);
    video.width = 640;
    FakeItem item;
    item.movies = {movie("first", 1, {video, video}),
                   movie("", 2, {fakeStream(AVBased::StreamKindAudio, 1, 5.0)})};
    const TaskPtr task = probeFile(folder.file("clip.mp4"), item);
    QCOMPARE(task->taskType(), CImportTask::AudioTask);
    QCOMPARE(task->movieInfo()->movieName(), QString("clip"));
    QCOMPARE(task->movieInfo()->movieId(), 2);
    QCOMPARE(task->movieInfo()->streamCount(), 1);
    QCOMPARE(task->movieInfo()->duration(), 5.0);
    QCOMPARE(task->movieInfo()->stream(0)->width(), 640);
}

void ProbingTest::typeAndNameOfAFile()
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
             QString("video clip"));
    QCOMPARE(probed("clip.mkv", {movie("", 0, {fakeStream(2), fakeStream(3)})}),
             QString("audio clip"));
    QCOMPARE(probed(".clip.mkv", {movie("", 0)}), QString("audio "));
    QCOMPARE(probed("clip.mp4", {}), QString("audio "));
}

void ProbingTest::protectedFiles()
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
    FakeEngine::instance().failing = QStringList("importer.queryExtension IMovieInfoExt");
    QVERIFY(isImported("1"));
}

void ProbingTest::longestStreamIsTheDuration()
{
    const auto duration = [](const QList<double>& durations) {
        FakeMovie description;
        for (const double seconds : durations)
            description.streams.push_back(fakeStream(2, 0, seconds));
        const AVBased::AVMovieInfo record = description.record();
        CMovieInfomation info;
        return CImportReplyPrivate::fillMovieInfo(&record, &info) ? info.duration() : -1.0;
    };
    QCOMPARE(duration({10.0, 12.5, 3.0}), 12.5);
    QCOMPARE(duration({-4.0}), 0.0);
    QCOMPARE(duration({5.0, std::numeric_limits<double>::quiet_NaN()}), 5.0);
    QCOMPARE(duration({}), 0.0);
    CMovieInfomation info;
    QVERIFY(!CImportReplyPrivate::fillMovieInfo(nullptr, &info));
}

void ProbingTest::dvdTitlesAndMoviesStayInStep()
{
    FakeTitle brief;
    brief.duration = 1.5;
    FakeItem item = dvdOf({{-1, {FakeTitle(), FakeTitle(), FakeTitle()}},
                           {2, {FakeTitle(), brief, FakeTitle()}},
                           {3, {FakeTitle()}}});
    item.mainMovies = {15, 16};
    item.movies.clear();
    for (int i = 0; i < 6; ++i)
        item.movies.push_back(movie("DISC _" + QByteArray::number(i + 1), 10 + i));

    const TaskPtr task = probeDvd(item);
    QVERIFY(task);
    QCOMPARE(task->taskType(), CImportTask::DvdTask);
    const CDVDInformation* info = task->dvdInfo();
    QCOMPARE(info->url(), QString("/disc/"));
    QVERIFY(!info->isScrambled());
    QCOMPARE(info->titleCount(), 3);
    QCOMPARE(info->title(0)->movieInfo()->movieId(), 13);
    QCOMPARE(info->title(1)->movieInfo()->movieId(), 15);
    QVERIFY(!info->title(0)->isMainTitle() && info->title(1)->isMainTitle());
    // The importer has no seventh movie: the title keeps its defaults.
    QCOMPARE(info->title(2)->movieInfo()->movieId(), -1);
    QVERIFY(!info->title(2)->isMainTitle());
}

void ProbingTest::dvdName()
{
    const auto name = [](const QByteArray& movie) {
        FakeItem item = dvdOf({}, movie);
        item.scrambled = true;
        const TaskPtr task = probeDvd(item);
        return task->dvdInfo()->isScrambled() ? task->dvdInfo()->dvdName() : "not scrambled";
    };
    QCOMPARE(name("DISC _1"), QString("DISC")); // as the engine makes it
    QCOMPARE(name("DISC_1"), QString("DIS"));
    QCOMPARE(name("DISC_12"), QString("DISC_12"));
    QCOMPARE(name("DISC_2"), QString("DISC_2"));
    QCOMPARE(name("_1"), QString());
}

void ProbingTest::dvdChapters()
{
    const auto chapters = [](double duration, const std::vector<double>& times) {
        const TaskPtr task = probeDvd(dvdOf({{1, {{duration, times}}}}));
        const CDVDTitle* title = task->dvdInfo()->title(0);
        QStringList texts;
        for (int i = 0; i < title->chapterCount(); ++i) {
            const CDVDChapter* chapter = title->chapter(i);
            texts << QString("%1-%2").arg(chapter->timeStart()).arg(chapter->timeEnd());
        }
        return texts.join(' ');
    };
    QCOMPARE(chapters(120, {0}), QString("0-120"));
    QCOMPARE(chapters(300, {0, 60, 61, 200}), QString("0-60 61-200 200-300"));
    QCOMPARE(chapters(30, {10, 20}), QString("10-20 20-40"));
    QCOMPARE(chapters(100, {0, 50, 20}), QString("0-50 20-100"));
    QCOMPARE(chapters(100, {}), QString());
}

void ProbingTest::dvdTracksStayWithinTheRecord()
{
    FakeTitle title;
    title.record.audio[0] = {"ac3", "de", "normal", 0x80, 6, 48000, 1};
    title.record.audioCount = 4000000000U;
    title.record.subpictures[1] = {"fr", 0x21};
    title.record.subpictureCount = 2;
    const TaskPtr task = probeDvd(dvdOf({{1, {title}}}));
    const CDVDTitle* made = task->dvdInfo()->title(0);
    QCOMPARE(made->trackCount(), 8);
    const CDVDTrack* track = made->track(0);
    QCOMPARE(QStringList({track->text1(), track->text2(), track->text3()}).join(' '),
             QString("ac3 de normal"));
    QCOMPARE(QList<int>({track->number1(), track->number2(), track->number3(), track->number4()}),
             QList<int>({0x80, 6, 48000, 1}));
    QCOMPARE(made->subtitleCount(), 2);
    QCOMPARE(made->subtitle(1)->name(), QString("fr"));
    QCOMPARE(made->subtitle(1)->streamId(), 0x21U);
}

void ProbingTest::dvdWithoutContent()
{
    QVERIFY(!probeDvd(FakeItem(), "/media/"));
    QVERIFY(!TaskPtr(CImportReplyPrivate::createImportTaskForDvd("/missing/")));
    const TaskPtr task = probeDvd(dvdOf({}));
    QVERIFY(task && task->dvdInfo()->titleCount() == 0);
    CDVDInformation info;
    QVERIFY(!CImportReplyPrivate::fillDvdInfo(nullptr, &info));
}

void ProbingTest::blurayTree()
{
    const QByteArray a = "/d/BDMV/STREAM/00001.m2ts";
    const QByteArray b = "/d/BDMV/STREAM/00002.m2ts";
    FakeDisc disc;
    disc.name = "Caf\xe9";
    disc.files = {{a, movie("engine's name", 0)}, {b, movie("", 0)}};
    disc.titles = {{"00000",
                    {{{a, 0, 100}, {b, 0, 50}}, 0, 150},
                    {{{{a, 0, 60}}, 0, 60}, {{{a, 60, 100}, {b, 0, 50}}, 60, 90}}},
                   {"00001", {{{a, 0, 100}}, 0, 100}, {}}};

    const TaskPtr task = probeBluray(disc);
    QVERIFY(task);
    QCOMPARE(task->taskType(), CImportTask::BdTask);
    CBDInformation* info = task->bdInfo();
    QCOMPARE(info->bdName(), QString(u8"Caf\u00e9"));
    QCOMPARE(info->url(), QString("/d"));
    QCOMPARE(info->fileCount(), 2);
    QCOMPARE(info->file(0)->movieInfo()->movieName(), QString("00001.m2ts"));
    QCOMPARE(clipsOf(info->title(0)), QString(a + ":0-100 " + b + ":0-50"));
    const CBDChapter* chapter = info->title(0)->chapter(1);
    QCOMPARE(clipsOf(chapter), QString(a + ":60-100 " + b + ":0-50"));
    QCOMPARE(chapter->title(), info->title(0));
    QCOMPARE(chapter->timeStamp(), 60.0);
    QCOMPARE(info->title(1)->clip(0), info->title(0)->clip(0));
    QCOMPARE(info->file(0)->clips().count(), 3);
    QCOMPARE(FakeEngine::instance().living(), QStringList("loader"));
}

void ProbingTest::blurayOddities()
{
    FakeDisc disc;
    disc.files = {{"a", {}}, {"b", {}}};
    const FakeBdTitle plain{"plain", {{{"b", 0, 5}, {"gone", 0, 9}, {"a", 0, 7}}, 0, 12}, {}};
    disc.titles = {plain, plain, plain, plain, plain};
    disc.titles[2].name = "liar";
    disc.titles[2].play.claimedClips = 10000000;
    disc.titles[3].name = "silent";
    FakeEngine::instance().failing = QStringList("loader.titleInfo silent");
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
    QCOMPARE(clipsOf(info->title(0)), QString("b:0-5 a:0-7"));
    QCOMPARE(info->title(4)->chapterCount(), 1);
    QCOMPARE(clipsOf(info->title(4)->chapter(0)), QString("b:1-2 a:3-4"));
}

void ProbingTest::blurayWithoutLists()
{
    FakeDisc disc;
    disc.name = "name";
    disc.files = {{"a", {}}};
    const auto fileCountWithout = [&disc](const QString& call) {
        FakeEngine::instance().failing = QStringList(call);
        const TaskPtr task = probeBluray(disc);
        return task ? task->bdInfo()->fileCount() : -1;
    };
    QCOMPARE(fileCountWithout("loader.titleList"), 1);
    QCOMPARE(fileCountWithout("loader.fileList"), 0);
    QCOMPARE(fileCountWithout("loader.discInfo"), -1);
    QCOMPARE(fileCountWithout("createBDLoader"), -1);
    QVERIFY(!TaskPtr(CImportReplyPrivate::createImportTaskForBd("/missing")));
}

QTEST_GUILESS_MAIN(ProbingTest)
#include "tst_probing.moc"
