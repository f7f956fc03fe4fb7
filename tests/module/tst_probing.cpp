// SPDX-License-Identifier: GPL-2.0-or-later
//
// From the engine's descriptions to information objects.
#include "cbdfileclip.h"
#include "cdvdtrack.h"
#include "cimportcontext.h"
#include "cimportreply_p.h"
#include "cimporttask_p.h"
#include "fakeengine.h"
#include "fakeobjects.h"
#include "importrun.h"

#include <QtTest/QtTest>

using namespace Vesk;
using TaskPtr = std::unique_ptr<CImportTask>;

namespace {

FakeStream stream(int kind, int id, double duration = 10.0)
{
    FakeStream result;
    result.kind = kind;
    result.id = id;
    result.duration = duration;
    return result;
}

FakeMovie movie(const std::string& name, int id, const std::vector<FakeStream>& streams)
{
    return {name, id, "fake", streams, {}};
}

QString starts(const CDVDTitle* title)
{
    QStringList texts;
    for (int i = 0; i < title->chapterCount(); ++i) {
        texts.append(QStringLiteral("%1-%2")
                         .arg(title->chapter(i)->timeStart())
                         .arg(title->chapter(i)->timeEnd()));
    }
    return texts.join(' ');
}

/// "file:in-out" for each clip of a title or chapter.
template <typename Player>
QString clipsOf(const Player* player)
{
    QStringList texts;
    for (int i = 0; i < player->clipCount(); ++i) {
        texts.append(QStringLiteral("%1:%2-%3")
                         .arg(player->clip(i)->file()->url())
                         .arg(player->clip(i)->timeStart())
                         .arg(player->clip(i)->timeEnd()));
    }
    return texts.join(' ');
}

} // namespace

class ProbingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { FakeEngine::instance().reset(); }
    void cleanup() { QCOMPARE(FakeEngine::instance().misuses(), QStringList()); }

    void mediaFile();
    void severalMoviesLeaveTheLastOnesValues();
    void taskTypeFollowsTheStreams_data();
    void taskTypeFollowsTheStreams();
    void movieNameFallsBackToTheFile_data();
    void movieNameFallsBackToTheFile();
    void protectedFiles_data();
    void protectedFiles();
    void longestStreamIsTheDuration_data();
    void longestStreamIsTheDuration();

    void dvdTitlesAndMoviesStayInStep();
    void dvdName_data();
    void dvdName();
    void dvdChapters_data();
    void dvdChapters();
    void dvdTracksStayWithinTheRecord();
    void dvdWithoutContent();

    void blurayTree();
    void blurayOddities();
    void blurayWithoutLists();
};

void ProbingTest::mediaFile()
{
    const ImportFolder folder;
    const QString path = folder.file("clip.part1.mp4", QByteArray(1536, 'x'));
    FakeStream video = stream(AVBased::StreamKindVideo, 3, 10.0);
    video.width = 720;
    video.height = 576;
    video.frameRate = quint64(25) << 32 | 1;
    video.aspectRatio = 16U << 16 | 9U;
    video.channels = 9;
    FakeStream audio = stream(AVBased::StreamKindAudio, 4, 12.5);
    audio.language = "de";
    audio.name = "Ton \xe9";
    audio.channels = 6;
    audio.channelLayout = quint64(1) << 40;
    audio.sampleRate = 48000;
    audio.bitRate = 448000;
    audio.width = 99;
    FakeMovie description = movie("Caf\xc3\xa9", 8, {video, audio, stream(4, 5)});
    description.tags = {{"title", "Caf\xe9"}};
    FakeItem item;
    item.movies = {description};
    FakeEngine::instance().items.insert(path.toUtf8(), item);

    const TaskPtr task(CImportReplyPrivate::createImportTaskForFile(path));
    QVERIFY(task);
    QCOMPARE(task->taskType(), CImportTask::VideoTask);
    QCOMPARE(task->url(), path);
    QCOMPARE(task->size(), QString("1.5 KB"));
    QCOMPARE(CImportTaskPrivate::getImportTaskPrivate(task.get())->importerName,
             QString("Fake importer"));
    const CMovieInfomation* info = task->movieInfo();
    QCOMPARE(info->movieName(), QStringLiteral("Caf\u00e9"));
    QCOMPARE(info->fileName(), QString("clip.part1.mp4"));
    QCOMPARE(info->movieId(), 8);
    QCOMPARE(info->duration(), 12.5);
    QCOMPARE(info->metadata(0)->value(), QStringLiteral("Caf\u00e9"));
    QCOMPARE(info->stream(0)->streamType(), CStreamInfomation::StreamVideo);
    QCOMPARE(info->stream(0)->fourcc(), QString("FAKE"));
    QCOMPARE(info->stream(0)->framerate(), QString("25 fps"));
    QCOMPARE(info->stream(0)->aspectRatio(), QString("16:9"));
    QCOMPARE(info->stream(0)->channels(), 0);
    QCOMPARE(info->stream(1)->streamName(), QStringLiteral("Ton \u00e9"));
    QCOMPARE(info->stream(1)->channelLayout(), quint64(1) << 40);
    QCOMPARE(info->stream(1)->width(), 0);
    QCOMPARE(info->stream(2)->streamType(), CStreamInfomation::StreamUnknown);
    QCOMPARE(FakeEngine::instance().living(), QStringList("importer"));
}

void ProbingTest::severalMoviesLeaveTheLastOnesValues()
{
    const ImportFolder folder;
    const QString path = folder.file("clip.mp4");
    FakeStream video = stream(AVBased::StreamKindVideo, 1, 20.0);
    video.width = 640;
    FakeItem item;
    item.movies = {movie("first", 1, {video, video}),
                   movie("", 2, {stream(AVBased::StreamKindAudio, 1, 5.0)})};
    FakeEngine::instance().items.insert(path.toUtf8(), item);
    const TaskPtr task(CImportReplyPrivate::createImportTaskForFile(path));
    QCOMPARE(task->taskType(), CImportTask::AudioTask);
    QCOMPARE(task->movieInfo()->movieName(), QString("clip"));
    QCOMPARE(task->movieInfo()->movieId(), 2);
    QCOMPARE(task->movieInfo()->streamCount(), 1);
    QCOMPARE(task->movieInfo()->duration(), 5.0);
    QCOMPARE(task->movieInfo()->stream(0)->width(), 640);
}

void ProbingTest::taskTypeFollowsTheStreams_data()
{
    QTest::addColumn<QList<int>>("kinds");
    QTest::addColumn<int>("type");
    QTest::newRow("video and sound") << QList<int>({2, 1}) << int(CImportTask::VideoTask);
    QTest::newRow("sound") << QList<int>({2, 3}) << int(CImportTask::AudioTask);
    QTest::newRow("nothing") << QList<int>() << int(CImportTask::AudioTask);
    QTest::newRow("no movie") << QList<int>({-1}) << int(CImportTask::AudioTask);
}

void ProbingTest::taskTypeFollowsTheStreams()
{
    QFETCH(QList<int>, kinds);
    QFETCH(int, type);
    const ImportFolder folder;
    const QString path = folder.file("clip.mp4");
    FakeItem item;
    FakeMovie description;
    for (const int kind : kinds)
        description.streams.push_back(stream(kind, 0));
    if (kinds != QList<int>({-1}))
        item.movies = {description};
    FakeEngine::instance().items.insert(path.toUtf8(), item);
    const TaskPtr task(CImportReplyPrivate::createImportTaskForFile(path));
    QVERIFY(task);
    QCOMPARE(int(task->taskType()), type);
    QCOMPARE(task->movieInfo()->fileName(), QString("clip.mp4"));
    QCOMPARE(task->movieInfo()->movieName().isEmpty(), item.movies.empty());
}

void ProbingTest::movieNameFallsBackToTheFile_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("name");
    QTest::newRow("suffixes") << "clip.part1.mkv"
                              << "clip";
    QTest::newRow("hidden") << ".clip.mkv"
                            << "";
}

void ProbingTest::movieNameFallsBackToTheFile()
{
    QFETCH(QString, file);
    const ImportFolder folder;
    const QString path = folder.file(file);
    FakeItem item;
    item.movies = {FakeMovie()};
    FakeEngine::instance().items.insert(path.toUtf8(), item);
    const TaskPtr task(CImportReplyPrivate::createImportTaskForFile(path));
    QTEST(task->movieInfo()->movieName(), "name");
}

void ProbingTest::protectedFiles_data()
{
    QTest::addColumn<QString>("answer"); ///< null: none; "-": the extension is missing
    QTest::addColumn<bool>("isProtected");
    for (const char* text : {"1", "true", "yes"})
        QTest::newRow(text) << text << true;
    for (const char* text : {"0", "false", "FALSE", "", "-"})
        QTest::newRow(text) << text << false;
    QTest::newRow("none") << QString() << false;
}

void ProbingTest::protectedFiles()
{
    QFETCH(QString, answer);
    QFETCH(bool, isProtected);
    const ImportFolder folder;
    const QString path = folder.file("clip.mp4");
    FakeItem item;
    item.hasMovieInfoExt = answer != "-";
    item.drm.reset();
    if (!answer.isNull())
        item.drm = answer.toStdString();
    FakeEngine::instance().items.insert(path.toUtf8(), item);
    for (const bool allowed : {false, true}) {
        CImportContext::instance()->setDrmSupport(allowed);
        const TaskPtr task(CImportReplyPrivate::createImportTaskForFile(path));
        QCOMPARE(bool(task), allowed || !isProtected);
    }
    QCOMPARE(FakeEngine::instance().living(), QStringList());
}

void ProbingTest::longestStreamIsTheDuration_data()
{
    QTest::addColumn<QList<double>>("durations");
    QTest::addColumn<double>("expected");
    const double nan = std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("longest") << QList<double>({10.0, 12.5, 3.0}) << 12.5;
    QTest::newRow("negative") << QList<double>({-4.0}) << 0.0;
    QTest::newRow("not a number") << QList<double>({5.0, nan}) << 5.0;
    QTest::newRow("none") << QList<double>() << 0.0;
}

void ProbingTest::longestStreamIsTheDuration()
{
    QFETCH(QList<double>, durations);
    FakeMovie description;
    for (const double duration : durations)
        description.streams.push_back(stream(2, 0, duration));
    const FakeMovieRecord record(description);
    CMovieInfomation info;
    QVERIFY(CImportReplyPrivate::fillMovieInfo(record.get(), &info));
    QTEST(info.duration(), "expected");
    QVERIFY(!CImportReplyPrivate::fillMovieInfo(nullptr, &info));
    QVERIFY(!CImportReplyPrivate::fillMovieInfo(record.get(), nullptr));
}

void ProbingTest::dvdTitlesAndMoviesStayInStep()
{
    FakeTitle brief;
    brief.duration = 1.5;
    FakeDvd dvd;
    dvd.sets = {FakeTitleSet{-1, {FakeTitle(), FakeTitle(), FakeTitle()}},
                FakeTitleSet{2, {FakeTitle(), brief, FakeTitle()}}, FakeTitleSet{3, {FakeTitle()}}};
    dvd.mainMovies = {15, 16};
    FakeItem item;
    item.dvd = dvd;
    for (int i = 0; i < 6; ++i)
        item.movies.push_back(movie("DISC _" + std::to_string(i + 1), 10 + i, {}));
    FakeEngine::instance().items.insert("/disc/", item);

    const TaskPtr task(CImportReplyPrivate::createImportTaskForDvd("/disc/"));
    QVERIFY(task);
    QCOMPARE(task->taskType(), CImportTask::DvdTask);
    const CDVDInformation* info = task->dvdInfo();
    QCOMPARE(info->url(), QString("/disc/"));
    QCOMPARE(info->dvdName(), QString("DISC"));
    QVERIFY(!info->isScrambled());
    QCOMPARE(info->titleCount(), 3);
    QCOMPARE(info->title(0)->movieInfo()->movieId(), 13);
    QCOMPARE(info->title(1)->movieInfo()->movieId(), 15);
    QVERIFY(!info->title(0)->isMainTitle() && info->title(1)->isMainTitle());
    // The importer has no seventh movie: the title keeps its defaults.
    QCOMPARE(info->title(2)->movieInfo()->movieId(), -1);
    QVERIFY(!info->title(2)->isMainTitle());
}

void ProbingTest::dvdName_data()
{
    QTest::addColumn<QString>("movie");
    QTest::addColumn<QString>("expected");
    QTest::newRow("cut by three") << "DISC_1"
                                  << "DIS";
    QTest::newRow("other number") << "DISC_12"
                                  << "DISC_12";
    QTest::newRow("second") << "DISC_2"
                            << "DISC_2";
    QTest::newRow("as the engine makes it") << "DISC _1"
                                            << "DISC";
    QTest::newRow("shorter than what is cut") << "_1"
                                              << "";
}

void ProbingTest::dvdName()
{
    QFETCH(QString, movie);
    FakeItem item;
    item.dvd = FakeDvd();
    item.dvd->scrambled = true;
    item.movies = {::movie(movie.toStdString(), 0, {})};
    FakeEngine::instance().items.insert("/disc/", item);
    const TaskPtr task(CImportReplyPrivate::createImportTaskForDvd("/disc/"));
    QTEST(task->dvdInfo()->dvdName(), "expected");
    QVERIFY(task->dvdInfo()->isScrambled());
}

void ProbingTest::dvdChapters_data()
{
    QTest::addColumn<QList<double>>("times");
    QTest::addColumn<double>("duration");
    QTest::addColumn<QString>("chapters");
    QTest::newRow("one") << QList<double>({0}) << 120.0 << "0-120";
    QTest::newRow("short span") << QList<double>({0, 60, 61, 200}) << 300.0
                                << "0-60 61-200 200-300";
    QTest::newRow("starts later") << QList<double>({10, 20}) << 30.0 << "10-20 20-40";
    QTest::newRow("backwards") << QList<double>({0, 50, 20}) << 100.0 << "0-50 20-100";
    QTest::newRow("none") << QList<double>() << 100.0 << "";
}

void ProbingTest::dvdChapters()
{
    QFETCH(QList<double>, times);
    QFETCH(double, duration);
    FakeTitle title;
    title.duration = duration;
    title.chapters.assign(times.begin(), times.end());
    FakeItem item;
    item.dvd = FakeDvd();
    item.dvd->sets = {FakeTitleSet{1, {title}}};
    item.movies = {movie("D", 0, {})};
    FakeEngine::instance().items.insert("/disc/", item);
    const TaskPtr task(CImportReplyPrivate::createImportTaskForDvd("/disc/"));
    QTEST(starts(task->dvdInfo()->title(0)), "chapters");
}

void ProbingTest::dvdTracksStayWithinTheRecord()
{
    FakeTitle title;
    title.audio = {{"ac3", "de", "normal", 0x80, 6, 48000, 1}};
    title.claimedAudio = 4000000000U;
    title.subtitles = {{"en", 0x20}, {"fr", 0x21}};
    FakeItem item;
    item.dvd = FakeDvd();
    item.dvd->sets = {FakeTitleSet{1, {title}}};
    FakeEngine::instance().items.insert("/disc/", item);
    const TaskPtr task(CImportReplyPrivate::createImportTaskForDvd("/disc/"));
    const CDVDTitle* made = task->dvdInfo()->title(0);
    QCOMPARE(made->trackCount(), 8);
    QCOMPARE(made->track(0)->text1(), QString("ac3"));
    QCOMPARE(made->track(0)->text2(), QString("de"));
    QCOMPARE(made->track(0)->text3(), QString("normal"));
    QCOMPARE(made->track(0)->number1(), 0x80);
    QCOMPARE(made->track(0)->number2(), 6);
    QCOMPARE(made->track(0)->number3(), 48000);
    QCOMPARE(made->track(0)->number4(), 1);
    QCOMPARE(made->subtitleCount(), 2);
    QCOMPARE(made->subtitle(1)->name(), QString("fr"));
    QCOMPARE(made->subtitle(1)->streamId(), 0x21U);
}

void ProbingTest::dvdWithoutContent()
{
    FakeEngine::instance().items.insert("/media/", FakeItem());
    QVERIFY(!TaskPtr(CImportReplyPrivate::createImportTaskForDvd("/media/")));
    QVERIFY(!TaskPtr(CImportReplyPrivate::createImportTaskForDvd("/missing/")));
    FakeItem empty;
    empty.dvd = FakeDvd();
    FakeEngine::instance().items.insert("/empty/", empty);
    const TaskPtr task(CImportReplyPrivate::createImportTaskForDvd("/empty/"));
    QVERIFY(task);
    QCOMPARE(task->dvdInfo()->titleCount(), 0);
    QCOMPARE(task->dvdInfo()->url(), QString("/empty/"));
    CDVDInformation info;
    QVERIFY(!CImportReplyPrivate::fillDvdInfo(nullptr, &info));
}

void ProbingTest::blurayTree()
{
    const std::string a = "/d/BDMV/STREAM/00001.m2ts";
    const std::string b = "/d/BDMV/STREAM/00002.m2ts";
    FakeDisc disc;
    disc.name = "Caf\xe9";
    disc.files = {{a, movie("engine's name", 0, {stream(1, 0x1011, 100.0)})},
                  {b, movie("", 0, {stream(1, 0x1011, 50.0)})}};
    FakeBdTitle first{"00000", {{{a, 0, 100}, {b, 0, 50}}, 0, 150, {}}, {}, true};
    first.chapters = {{{{a, 0, 60}}, 0, 60, {}}, {{{a, 60, 100}, {b, 0, 50}}, 60, 90, {}}};
    const FakeBdTitle second{"00001", {{{a, 0, 100}}, 0, 100, {}}, {}, true};
    disc.titles = {first, second};
    FakeEngine::instance().discs.insert("/d", disc);

    const TaskPtr task(CImportReplyPrivate::createImportTaskForBd("/d"));
    QVERIFY(task);
    QCOMPARE(task->taskType(), CImportTask::BdTask);
    CBDInformation* info = task->bdInfo();
    QCOMPARE(info->bdName(), QStringLiteral("Caf\u00e9"));
    QCOMPARE(info->url(), QString("/d"));
    QCOMPARE(info->fileCount(), 2);
    QCOMPARE(info->file(0)->movieInfo()->movieName(), QString("00001.m2ts"));
    QCOMPARE(info->file(0)->url(), QString::fromStdString(a));
    const QString A = info->file(0)->url() + ':';
    const QString B = info->file(1)->url() + ':';
    QCOMPARE(clipsOf(info->title(0)), A + "0-100 " + B + "0-50");
    QCOMPARE(clipsOf(info->title(0)->chapter(1)), A + "60-100 " + B + "0-50");
    QCOMPARE(info->title(0)->chapter(1)->title(), info->title(0));
    QCOMPARE(info->title(0)->chapter(1)->timeStamp(), 60.0);
    QCOMPARE(info->title(1)->clip(0), info->title(0)->clip(0));
    QCOMPARE(info->file(0)->clips().count(), 3);
    QCOMPARE(FakeEngine::instance().living(), QStringList("loader"));
}

void ProbingTest::blurayOddities()
{
    FakeDisc disc;
    disc.files = {{"a", FakeMovie()}, {"b", FakeMovie()}};
    const FakeBdTitle plain{
        "plain", {{{"b", 0, 5}, {"gone", 0, 9}, {"a", 0, 7}}, 0, 12, {}}, {}, true};
    FakeBdTitle liar = plain;
    liar.name = "liar";
    liar.play.claimedClips = 10000000;
    FakeBdTitle silent = plain;
    silent.name = "silent";
    silent.hasInfo = false;
    FakeBdTitle chaptered = plain;
    chaptered.name = "chaptered";
    FakePlayInfo lyingChapter;
    lyingChapter.claimedClips = 10000000;
    // More clips than the title has: those have no file.
    const FakePlayInfo longChapter{{{"x", 1, 2}, {"x", 1, 2}, {"x", 3, 4}, {"x", 5, 6}}, 0, 3, {}};
    chaptered.chapters = {lyingChapter, longChapter};
    disc.titles = {plain, plain, liar, silent, chaptered};
    FakeEngine::instance().discs.insert("/d", disc);

    const TaskPtr task(CImportReplyPrivate::createImportTaskForBd("/d"));
    const CBDInformation* info = task->bdInfo();
    QCOMPARE(info->titleCount(), 5);
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
    disc.files = {{"a", FakeMovie()}};
    disc.hasTitles = false;
    FakeEngine::instance().discs.insert("/notitles", disc);
    disc.hasFiles = false;
    FakeEngine::instance().discs.insert("/nofiles", disc);
    disc.hasDisc = false;
    FakeEngine::instance().discs.insert("/nodisc", disc);

    const TaskPtr noTitles(CImportReplyPrivate::createImportTaskForBd("/notitles"));
    QCOMPARE(noTitles->bdInfo()->fileCount(), 1);
    const TaskPtr noFiles(CImportReplyPrivate::createImportTaskForBd("/nofiles"));
    QCOMPARE(noFiles->bdInfo()->bdName(), QString("name"));
    QVERIFY(!TaskPtr(CImportReplyPrivate::createImportTaskForBd("/nodisc")));
    QVERIFY(!TaskPtr(CImportReplyPrivate::createImportTaskForBd("/missing")));
    FakeEngine::instance().hasLoader = false;
    QVERIFY(!TaskPtr(CImportReplyPrivate::createImportTaskForBd("/notitles")));
    QCOMPARE(FakeEngine::instance().living(), QStringList({"loader", "loader"}));
}

QTEST_GUILESS_MAIN(ProbingTest)
#include "tst_probing.moc"
