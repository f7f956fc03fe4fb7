// SPDX-License-Identifier: GPL-2.0-or-later
//
// Blu-ray discs through the engine's loader.
#include "blurayloader.h"
#include "files.h"
#include "fixture.h"
#include "udfwriter.h"
#include "vspavbased/enginelog.h"

#include <libbluray/bluray.h>
#include <libbluray/log_control.h>
#include <libbluray/meta_data.h>

#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <cstring>

#include <sys/inotify.h>
#include <unistd.h>

using namespace AVBased;
using authoring::Clip;
using authoring::Disc;
using authoring::second;

namespace {

/// As in "00001:0-4 00002:10.5-12".
QString clipsText(const BDPlayInfo& record, IBDList* clips)
{
    QStringList texts;
    for (quint32 i = 0; i < record.clipCount; ++i) {
        texts << QString("%1:%2-%3")
                     .arg(fileName(clips->item(i)->name()).section('.', 0, 0))
                     .arg(record.inTimes[i])
                     .arg(record.outTimes[i]);
    }
    return texts.join(' ');
}

/// Each chapter with its start and its length before the clips.
QStringList chapterTexts(const LoaderPtr& loader, const char* title)
{
    quint32 count = 0;
    const BDPlayInfo* chapters = loader->chapters(title, &count);
    QStringList texts;
    for (quint32 i = 0; i < count; ++i) {
        texts << QString("%1+%2 ").arg(chapters[i].timeStamp).arg(chapters[i].duration) +
                     clipsText(chapters[i], loader->titleInfo(title)->clips);
    }
    return texts;
}

QString titleText(const LoaderPtr& loader, const char* title)
{
    const BDPlayInfo* record = loader->titleInfo(title);
    return record ? clipsText(*record, record->clips) : QString();
}

/// Whether files in a folder are read.
class ReadWatch
{
public:
    explicit ReadWatch(const QString& folder)
        : m_events(inotify_init1(IN_NONBLOCK))
    {
        inotify_add_watch(m_events, qPrintable(folder), IN_ACCESS);
    }
    ~ReadWatch() { close(m_events); }

    bool sawReading() const
    {
        QByteArray bytes(64 * 1024, 0);
        const ssize_t size = read(m_events, bytes.data(), size_t(bytes.size()));
        inotify_event event;
        for (ssize_t at = 0; at < size; at += ssize_t(sizeof(event) + event.len)) {
            std::memcpy(&event, bytes.constData() + at, sizeof(event));
            if (!(event.mask & IN_ISDIR))
                return true;
        }
        return false;
    }

private:
    int m_events;
};

void collectMessage(const char* message, void* list)
{
    static_cast<QStringList*>(list)->append(QString::fromUtf8(message));
}

} // namespace

class BlurayTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void agreesWithLibbluray_data();
    void agreesWithLibbluray();
    void playsWhatPlaylistsSay_data();
    void playsWhatPlaylistsSay();
    void listsEachPlaylistOnce();
    void describesStreamsByClipInformation();
    void describesStreamsWithoutClipInformation();
    void findsChannelsInTheStream_data();
    void findsChannelsInTheStream();
    void looksIntoFewStreams();
    void durationsSurviveMilliseconds();
    void findsTheName_data();
    void findsTheName();
    void tellsProtection();
    void usesTheCopies();
};

void BlurayTest::agreesWithLibbluray_data()
{
    QTest::addColumn<QString>("path");
    for (const QString path : {"bluray/disc/", "bluray/disc-250.iso", "bluray/disc-102.iso"})
        QTest::newRow(qPrintable(path)) << fixturePath(path);
}

void BlurayTest::agreesWithLibbluray()
{
    QFETCH(QString, path);

    const int openFiles = openFileCount();
    const LoaderPtr loader = openDisc(path);
    QVERIFY(loader);
    QCOMPARE(openFileCount(), openFiles);
    bd_set_debug_mask(0);
    const std::unique_ptr<BLURAY, void (*)(BLURAY*)> disc(
        bd_open(path.toUtf8().constData(), nullptr), bd_close);
    QVERIFY(disc);
    QCOMPARE(loader->discInfo(0)->name, bd_get_meta(disc.get())->di_name);
    QCOMPARE(int(loader->discInfo(0)->scrambled), 0);
    const QString folder = QDir::cleanPath(path) + "/BDMV/STREAM/";
    QCOMPARE(namesOf(ListPtr(loader->fileList()).get()),
             QStringList({folder + "00001.m2ts", folder + "00002.m2ts", folder + "00003.m2ts"}));
    QVERIFY(!loader->fileMovieInfo("00001.m2ts") && !loader->titleInfo("00003.mpls"));
    const QStringList titles = titleNames(loader);
    QCOMPARE(bd_get_titles(disc.get(), TITLES_ALL, 0), quint32(titles.size()));
    for (const QString& title : titles) {
        const std::unique_ptr<BLURAY_TITLE_INFO, void (*)(BLURAY_TITLE_INFO*)> theirs(
            bd_get_playlist_info(disc.get(), title.left(5).toUInt(), 0), bd_free_title_info);
        const BDPlayInfo* ours = loader->titleInfo(title.toUtf8().constData());
        QVERIFY(theirs && ours);
        QCOMPARE(ours->duration, double(theirs->duration) / 90000.0);
        QCOMPARE(ours->clipCount, theirs->clip_count);
        for (quint32 i = 0; i < ours->clipCount; ++i) {
            QCOMPARE(fileName(ours->clips->item(i)->name()).left(5),
                     QString(theirs->clips[i].clip_id));
            QCOMPARE(ours->outTimes[i] - ours->inTimes[i],
                     double(theirs->clips[i].out_time - theirs->clips[i].in_time) / 90000.0);
        }
        quint32 chapterCount = 0;
        const BDPlayInfo* chapters = loader->chapters(title.toUtf8().constData(), &chapterCount);
        QCOMPARE(chapterCount, theirs->chapter_count);
        for (quint32 i = 0; i < chapterCount; ++i)
            QCOMPARE(chapters[i].timeStamp, double(theirs->chapters[i].start) / 90000.0);
    }
}

using Items = QList<authoring::Item>;
using Marks = QList<authoring::Mark>;
Q_DECLARE_METATYPE(Items)
Q_DECLARE_METATYPE(Marks)

/// Clip 00001 is ten seconds long, from time stamp 600 on; clip 00002 has four seconds from time
/// stamp 100 on and then five from 50 on; of 00009 there is nothing.
void BlurayTest::playsWhatPlaylistsSay_data()
{
    QTest::addColumn<Items>("items");
    QTest::addColumn<Marks>("marks");
    QTest::addColumn<QString>("clips");
    QTest::addColumn<QStringList>("chapters");

    const auto item = [](const char* clip, double in, double out, int sequence = 0) {
        return authoring::Item{clip, quint32(in * second), quint32(out * second), quint8(sequence)};
    };
    const auto mark = [](int index, double time, int kind = 1) {
        return authoring::Mark{quint16(index), quint32(time * second), quint8(kind)};
    };
    const authoring::Item part = item("00001", 602, 606);

    QTest::newRow("a part") << Items{part} << Marks{mark(0, 602)} << "00001:2-6"
                            << QStringList{"0+4 00001:2-6"};
    QTest::newRow("no chapters") << Items{part} << Marks{} << "00001:2-6" << QStringList{};
    QTest::newRow("times outside of the file")
        << Items{item("00001", 590, 700)} << Marks{mark(0, 10), mark(0, 900)} << "00001:0-10"
        << QStringList{"0+10 00001:0-10", "10+0 00001:0-10"};
    QTest::newRow("empty and reversed items")
        << Items{item("00001", 606, 602), item("00001", 604, 604), item("00001", 601, 603)}
        << Marks{mark(0, 604), mark(2, 602)} << "00001:1-3"
        << QStringList{"0+1 00001:1-2", "1+1 00001:2-3"};
    QTest::newRow("a clip that is missing")
        << Items{item("00009", 100, 105), part} << Marks{mark(0, 101), mark(1, 602)}
        << "00009:0-5 00001:2-6" << QStringList{"1+4 00009:1-5", "5+4 00009:0-5 00001:2-6"};
    QTest::newRow("the second clock") << Items{item("00002", 51, 54, 1)} << Marks{mark(0, 52)}
                                      << "00002:5-8" << QStringList{"1+2 00002:6-8"};
    QTest::newRow("a clock with the wrong number")
        << Items{item("00002", 101, 103, 1), item("00002", 51, 54, 9)} << Marks{}
        << "00002:1-3 00002:5-8" << QStringList{};
    QTest::newRow("an end mark") << Items{part} << Marks{mark(0, 602), mark(0, 606)} << "00001:2-6"
                                 << QStringList{"0+4 00001:2-6", "4+0 00001:2-6"};
    QTest::newRow("marks for menus, in disorder, of no item")
        << Items{part} << Marks{mark(0, 605), mark(0, 603, 2), mark(0, 602), mark(1, 602)}
        << "00001:2-6" << QStringList{"0+3 00001:2-5", "3+1 00001:5-6"};
    QTest::newRow("a chapter over three clips")
        << Items{part, item("00002", 100, 104), item("00001", 600, 609)}
        << Marks{mark(0, 604), mark(2, 607)} << "00001:2-6 00002:0-4 00001:0-9"
        << QStringList{"2+13 00001:4-6 00002:0-4 00001:0-7", "15+2 00001:2-6 00002:0-4 00001:7-9"};
    authoring::Item twoAngles = part;
    twoAngles.secondAngle = "00002";
    QTest::newRow("the first angle")
        << Items{twoAngles, part} << Marks{} << "00001:2-6 00001:2-6" << QStringList{};
}

void BlurayTest::playsWhatPlaylistsSay()
{
    QFETCH(Items, items);
    QFETCH(Marks, marks);
    QFETCH(QString, clips);
    QFETCH(QStringList, chapters);

    const QTemporaryDir folder;
    const Disc disc(folder.path());
    disc.addClip("00001", plainClip(600, 10));
    Clip twoClocks = plainClip(100, 4);
    twoClocks.sequences.append({5000, 50 * second, 55 * second});
    disc.addClip("00002", twoClocks);
    disc.addPlaylist("00000", items, marks);
    const LoaderPtr loader = openDisc(folder.path());
    QVERIFY(loader);
    QCOMPARE(titleText(loader, "00000.mpls"), clips);
    QCOMPARE(chapterTexts(loader, "00000.mpls"), chapters);
}

void BlurayTest::listsEachPlaylistOnce()
{
    const QTemporaryDir folder;
    const Disc disc(folder.path());
    disc.addClip("00001", plainClip(0, 10));
    const Items items = {{"00001", 0, 5 * second}};
    disc.addPlaylist("00010", {{"00001", 0, second / 10}}, {});
    disc.addPlaylist("00005", items, {{0, 0}});
    disc.addPlaylist("00004", items, {{0, 0}, {0, second}});
    disc.addPlaylist("00003", items, {{0, 0}});
    disc.addPlaylist("00001", {{"00001", 5, 5}}, {{0, 0}});
    const QByteArray whole = authoring::playlist(items, {});
    disc.write("BDMV/PLAYLIST/00006.mpls", whole.left(whole.size() / 2));
    QByteArray boastful = whole;
    boastful.replace(64, 2, "\xFF\xFF"); // the number of items
    disc.write("BDMV/PLAYLIST/00007.mpls", boastful);
    disc.write("BDMV/PLAYLIST/readme.txt", "no playlist");

    QStringList messages;
    setLogReceiver(collectMessage, &messages);
    const LoaderPtr loader = openDisc(folder.path());
    setLogReceiver(nullptr, nullptr);
    QVERIFY(loader);
    QCOMPARE(titleNames(loader), QStringList({"00003.mpls", "00004.mpls", "00010.mpls"}));
    for (const QString name : {"00001.mpls", "00006.mpls", "00007.mpls"})
        QCOMPARE(messages.filter(name).size(), 1);
}

void BlurayTest::describesStreamsByClipInformation()
{
    const QTemporaryDir folder;
    const Disc disc(folder.path());
    Clip clip = plainClip(600, 90);
    clip.streams = {{0x1011, 0x1B, 0x61, {}},    {0x1015, 0xEA, 0x14, {}, 2},
                    {0x1100, 0x86, 0x61, "deu"}, {0x1101, 0x80, 0x34, "jpn"},
                    {0x1200, 0x90, 0, "fra"},    {0x1400, 0x91, 0, "eng"},
                    {0x1A00, 0x77, 0, {}}};
    disc.addClip("00001", clip);
    disc.write("BDMV/STREAM/00001.m2ts", "not looked at");
    const LoaderPtr loader = openDisc(folder.path());
    QVERIFY(loader);
    const AVMovieInfo* movie =
        loader->fileMovieInfo(qPrintable(folder.path() + "/BDMV/STREAM/00001.m2ts"));
    QVERIFY(movie);
    QStringList streams;
    for (quint32 i = 0; i < movie->streamCount; ++i) {
        const AVStreamInfo& s = movie->streams[i];
        streams << QString("%1 %2 %3 %4 %5x%6 %7/%8 %9:%10 ")
                           .arg(s.kind)
                           .arg(s.id, 0, 16)
                           .arg(s.codecName, s.language)
                           .arg(s.width)
                           .arg(s.height)
                           .arg(s.frameRate >> 32)
                           .arg(s.frameRate & 0xFFFFFFFF)
                           .arg(s.aspectRatio >> 16)
                           .arg(s.aspectRatio & 0xFFFF) +
                       QString("%1 Hz, %2, %3 s").arg(s.sampleRate).arg(s.channels).arg(s.duration);
    }
    QCOMPARE(streams, QStringList({"1 1011 h264  1920x1080 24000/1001 16:9 0 Hz, 0, 90 s",
                                   "1 1015 vc1  720x480 30000/1001 4:3 0 Hz, 0, 90 s",
                                   "2 1100 dts deu 0x0 0/0 0:0 48000 Hz, 0, 90 s",
                                   "2 1101 pcm_bluray jpn 0x0 0/0 0:0 96000 Hz, 2, 90 s",
                                   "3 1200 hdmv_pgs_subtitle fra 0x0 0/0 0:0 0 Hz, 0, 90 s",
                                   "0 1400  eng 0x0 0/0 0:0 0 Hz, 0, 90 s",
                                   "0 1a00   0x0 0/0 0:0 0 Hz, 0, 90 s"}));
    QCOMPARE(movie->format, "mpegts");
    QCOMPARE(movie->id, 0);
}

void BlurayTest::describesStreamsWithoutClipInformation()
{
    const QTemporaryDir folder;
    const Disc disc(folder.path());
    const quint32 start =
        disc.addStream("00001", fixturePath("bluray_streams/closed.m2ts")).sequences[0].start;
    disc.addPlaylist("00000", {{"00001", start + 5 * second, start + 20 * second}}, {});
    disc.write("BDMV/CLIPINF/00001.clpi", "HDMV0200 and no more");
    const LoaderPtr loader = openDisc(folder.path());
    QVERIFY(loader);
    const AVMovieInfo* movie =
        loader->fileMovieInfo(qPrintable(folder.path() + "/BDMV/STREAM/00001.m2ts"));
    QCOMPARE(movie->streamCount, 2u);
    QCOMPARE(movie->streams[0].id, 0x1011);
    QCOMPARE(movie->streams[0].codecName, "h264");
    QCOMPARE(movie->streams[1].id, 0x1100);
    QVERIFY(qAbs(movie->streams[0].duration - 20.0) < 0.1);
    const BDPlayInfo* title = loader->titleInfo("00000.mpls");
    QCOMPARE(title->inTimes[0], 5.0);
    QVERIFY(qAbs(title->outTimes[0] - 20.0) < 0.1);
}

void BlurayTest::findsChannelsInTheStream_data()
{
    QTest::addColumn<QString>("file"); ///< what there is of the stream file
    QTest::addColumn<bool>("asImage");
    QTest::addColumn<int>("channels");

    QTest::newRow("folder") << "whole" << false << 6;
    QTest::newRow("image") << "whole" << true << 6;
    QTest::newRow("encrypted") << "encrypted" << false << 0;
    QTest::newRow("cut off at once") << "header" << false << 0;
    QTest::newRow("missing") << "" << false << 0;
}

/// Clip information has one code for all sound of more than two channels.
void BlurayTest::findsChannelsInTheStream()
{
    QFETCH(QString, file);
    QFETCH(bool, asImage);
    QFETCH(int, channels);

    const QTemporaryDir folder;
    QString path = folder.filePath("disc");
    const Disc disc(path);
    Clip clip = plainClip(10, 2);
    clip.streams = {{0x1011, 0x1B, 0x53, {}},
                    {0x1100, 0x81, 0x61, "eng"},
                    {0x1101, 0x83, 0x61, "deu"},
                    {0x1102, 0x81, 0x31, "fra"}};
    disc.addClip("00001", clip);
    disc.addPlaylist("00001", {{"00001", 10 * second, 11 * second}}, {});
    QByteArray stream = contentOf(fixturePath("bluray_streams/surround.m2ts"));
    if (file == "encrypted")
        stream.replace(16, 6128, randomBytes(6128));
    else if (file == "header")
        stream.truncate(4);
    if (!file.isEmpty())
        disc.write("BDMV/STREAM/00001.m2ts", stream);
    if (asImage) {
        path = folder.filePath("disc.iso");
        writeUdfImage(disc.root(), path, "VOLUME");
    }
    const LoaderPtr loader = openDisc(path);
    QVERIFY(loader);
    const AVMovieInfo* movie = loader->fileMovieInfo(qPrintable(path + "/BDMV/STREAM/00001.m2ts"));
    QCOMPARE(movie->streamCount, 4u);
    for (const int i : {1, 2}) {
        QCOMPARE(movie->streams[i].channels, channels);
        QCOMPARE(movie->streams[i].channelLayout, quint64(channels ? 0x60F : 0));
        QCOMPARE(movie->streams[i].sampleRate, 48000);
    }
    QCOMPARE(QByteArray(movie->streams[1].language), QByteArray("eng"));
    QCOMPARE(movie->streams[3].channels, 2);
}

/// Only where it has to, and in the largest files.
void BlurayTest::looksIntoFewStreams()
{
    const QTemporaryDir folder;
    const Disc disc(folder.path());
    const QByteArray stream = contentOf(fixturePath("bluray_streams/surround.m2ts"));
    Clip clip = plainClip(10, 2);
    for (int i = 0; i < 40; ++i) {
        const QString name = QString("%1").arg(i, 5, 10, QChar('0'));
        disc.addClip(name, clip);
        disc.write("BDMV/STREAM/" + name + ".m2ts", stream + stream.left(i * 192));
    }
    const ReadWatch watch(disc.path("BDMV/STREAM"));
    QVERIFY(openDisc(folder.path()));
    QVERIFY(!watch.sawReading());

    clip.streams[1].formatAndRate = 0x61;
    for (int i = 0; i < 40; ++i)
        disc.addClip(QString("%1").arg(i, 5, 10, QChar('0')), clip);
    const LoaderPtr loader = openDisc(folder.path());
    QVERIFY(loader && watch.sawReading());
    QByteArray channels;
    const ListPtr files(loader->fileList());
    for (quint32 i = 0; i < files->count(); ++i) {
        const AVStreamInfo& sound = loader->fileMovieInfo(files->item(i)->name())->streams[1];
        channels += QByteArray::number(sound.channels);
    }
    QCOMPARE(channels, QByteArray(10, '0') + QByteArray(30, '6'));
}

/// A host multiplies by a thousand and cuts off, and adds up durations: none may lose a
/// millisecond.
void BlurayTest::durationsSurviveMilliseconds()
{
    const QTemporaryDir folder;
    const Disc disc(folder.path());
    for (quint32 i = 0; i < 400; ++i) {
        Clip clip = plainClip(0, 0);
        clip.sequences = {{0, 0, 1 + i * 7919}};
        const QString name = QString("%1").arg(i, 5, 10, QChar('0'));
        disc.addClip(name, clip);
        disc.write("BDMV/STREAM/" + name + ".m2ts", {});
    }
    const LoaderPtr loader = openDisc(folder.path());
    QVERIFY(loader);
    const ListPtr files(loader->fileList());
    QCOMPARE(files->count(), 400u);
    for (quint32 i = 0; i < files->count(); ++i) {
        const double duration = loader->fileMovieInfo(files->item(i)->name())->streams[0].duration;
        QCOMPARE(int(duration * 1000.0), int((1 + i * 7919 + 44) / 45));
    }
}

void BlurayTest::findsTheName_data()
{
    QTest::addColumn<QString>("language"); ///< of the metadata; none when empty
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("asImage");
    QTest::addColumn<QByteArray>("expected");

    const QString english = "eng";
    QTest::newRow("metadata") << english << QByteArray("A &lt;Film&gt; &#233;") << true
                              << QByteArray("A <Film> \xE9");
    QTest::newRow("unparsed text")
        << english << QByteArray("A <![CDATA[& B]]><!-- C -->") << false << QByteArray("A & B");
    QTest::newRow("another language")
        << "rus" << QByteArray("Москва") << false << QByteArray("Moskva");
    QTest::newRow("empty metadata") << english << QByteArray(" ") << true << QByteArray("VOLUME");
    QTest::newRow("no metadata") << QString() << QByteArray() << true << QByteArray("VOLUME");
    QTest::newRow("folder") << QString() << QByteArray() << false << QByteArray("a.disc");
}

void BlurayTest::findsTheName()
{
    QFETCH(QString, language);
    QFETCH(QByteArray, name);
    QFETCH(bool, asImage);
    QFETCH(QByteArray, expected);

    const QTemporaryDir folder;
    QString path = folder.filePath("a.disc");
    const Disc disc(path);
    disc.addClip("00001", plainClip(0, 10));
    disc.addPlaylist("00001", {{"00001", 0, second}}, {});
    if (!language.isEmpty())
        disc.setName(name, language);
    if (asImage) {
        path = folder.filePath("image.iso");
        writeUdfImage(disc.root(), path, "VOLUME");
    }
    const LoaderPtr loader = openDisc(path);
    QVERIFY(loader);
    QCOMPARE(QByteArray(loader->discInfo(0)->name), expected);
}

void BlurayTest::tellsProtection()
{
    const QTemporaryDir folder;
    const Disc disc(folder.path());
    disc.addClip("00001", plainClip(0, 10));
    disc.addPlaylist("00001", {{"00001", 0, second}}, {});
    for (const QString file : {"AACS/Unit_Key_RO.inf", "BDSVM/00000.svm"}) {
        disc.write(file, "key");
        const LoaderPtr loader = openDisc(folder.path());
        QVERIFY(loader);
        QCOMPARE(int(loader->discInfo(0)->scrambled), 1);
        QCOMPARE(titleNames(loader).size(), 1);
        QVERIFY(QFile::remove(disc.path(file)));
    }
}

void BlurayTest::usesTheCopies()
{
    const QTemporaryDir folder;
    const Disc disc(folder.path());
    const QByteArray playlist = authoring::playlist({{"00001", 600 * second, 605 * second}}, {});
    disc.write("BDMV/BACKUP/PLAYLIST/00001.mpls", playlist);
    disc.write("BDMV/BACKUP/CLIPINF/00001.clpi", authoring::clipInformation(plainClip(600, 10)));
    disc.write("BDMV/CLIPINF/00001.clpi", QByteArray(1000, '\xFF'));
    const LoaderPtr loader = openDisc(folder.path());
    QVERIFY(loader);
    QCOMPARE(titleText(loader, "00001.mpls"), QString("00001:0-5"));
    QCOMPARE(loader->fileMovieInfo(qPrintable(folder.path() + "/BDMV/STREAM/00001.m2ts"))
                 ->streams[0]
                 .duration,
             10.0);
}

QTEST_GUILESS_MAIN(BlurayTest)
#include "tst_bluray.moc"
