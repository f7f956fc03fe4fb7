// SPDX-License-Identifier: GPL-2.0-or-later
//
// Blu-ray discs through the engine's loader.
#include "blurayloader.h"
#include "files.h"
#include "udfwriter.h"
#include "vspavbased/enginelog.h"

#include <libbluray/bluray.h>
#include <libbluray/log_control.h>
#include <libbluray/meta_data.h>

extern "C" {
#include <libavutil/crc.h>
}

#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

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
                     .arg(QFileInfo(clips->item(i)->name()).baseName())
                     .arg(record.inTimes[i])
                     .arg(record.outTimes[i]);
    }
    return texts.join(' ');
}

/// The clips of a title, then each chapter with its start and its length before its clips.
QString titleText(const LoaderPtr& loader, const char* title)
{
    const BDPlayInfo* record = loader->titleInfo(title);
    if (!record)
        return {};
    QString text = clipsText(*record, record->clips);
    quint32 count = 0;
    const BDPlayInfo* chapters = loader->chapters(title, &count);
    for (quint32 i = 0; i < count; ++i) {
        text += QString(", %1+%2 ").arg(chapters[i].timeStamp).arg(chapters[i].duration) +
                clipsText(chapters[i], record->clips);
    }
    return text;
}

/// A disc in a folder of its own, as such or as an image.
class TestDisc : public Disc
{
public:
    TestDisc()
        : TestDisc(new QTemporaryDir)
    {}

    /// Also how the files are called that lie in it.
    QString folder() const { return root(); }
    QString image() const
    {
        const QString path = m_folder->filePath("image.iso");
        writeUdfImage(root(), path, "VOLUME");
        return path;
    }
    LoaderPtr open() const
    {
        LoaderPtr loader = openDisc(folder());
        if (!loader)
            qFatal("the disc cannot be opened");
        return loader;
    }
    QString stream(int number) const
    {
        return path(QString("BDMV/STREAM/0000%1.m2ts").arg(number));
    }
    void addNumberedClip(int number, const Clip& clip, const QByteArray& stream) const
    {
        const QString name = QString("%1").arg(number, 5, 10, QChar('0'));
        addClip(name, clip);
        write("BDMV/STREAM/" + name + ".m2ts", stream);
    }

private:
    explicit TestDisc(QTemporaryDir* folder)
        : Disc(folder->filePath("a.disc"))
        , m_folder(folder)
    {}

    std::unique_ptr<QTemporaryDir> m_folder;
};

/// Compares everything that both tell of the disc.
void compareWithLibbluray(const QString& path)
{
    const int openFileCount = openFiles().size();
    const LoaderPtr loader = openDisc(path);
    QVERIFY(loader);
    QCOMPARE(openFiles().size(), openFileCount);
    bd_set_debug_mask(0);
    const std::unique_ptr<BLURAY, void (*)(BLURAY*)> disc(
        bd_open(path.toUtf8().constData(), nullptr), bd_close);
    QVERIFY(disc);
    QCOMPARE(loader->discInfo(0)->name, bd_get_meta(disc.get())->di_name);
    QCOMPARE(int(loader->discInfo(0)->scrambled), 0);
    const QString folder = QDir::cleanPath(path) + "/BDMV/STREAM/";
    QCOMPARE(namesOf(loader->fileList()),
             QStringList({folder + "00001.m2ts", folder + "00002.m2ts", folder + "00003.m2ts"}));
    QVERIFY(!loader->fileMovieInfo("00001.m2ts") && !loader->titleInfo("00003.mpls"));
    const QStringList titles = namesOf(loader->titleList());
    QCOMPARE(bd_get_titles(disc.get(), TITLES_ALL, 0), quint32(titles.size()));
    for (const QString& title : titles) {
        const std::unique_ptr<BLURAY_TITLE_INFO, void (*)(BLURAY_TITLE_INFO*)> theirs(
            bd_get_playlist_info(disc.get(), title.left(5).toUInt(), 0), bd_free_title_info);
        const BDPlayInfo* ours = loader->titleInfo(qPrintable(title));
        QVERIFY(theirs && ours);
        QCOMPARE(ours->duration, double(theirs->duration) / 90000.0);
        QCOMPARE(ours->clipCount, theirs->clip_count);
        for (quint32 i = 0; i < ours->clipCount; ++i) {
            QCOMPARE(QFileInfo(ours->clips->item(i)->name()).baseName(),
                     QString(theirs->clips[i].clip_id));
            QCOMPARE(ours->outTimes[i] - ours->inTimes[i],
                     double(theirs->clips[i].out_time - theirs->clips[i].in_time) / 90000.0);
        }
        quint32 chapterCount = 0;
        const BDPlayInfo* chapters = loader->chapters(qPrintable(title), &chapterCount);
        QCOMPARE(chapterCount, theirs->chapter_count);
        for (quint32 i = 0; i < chapterCount; ++i)
            QCOMPARE(chapters[i].timeStamp, double(theirs->chapters[i].start) / 90000.0);
    }
}

/// The stream with a registration of its video, as discs have it.
QByteArray withRegistration(QByteArray stream)
{
    for (int at = 0; at + 192 <= stream.size(); at += 192) {
        const QByteArray packet = stream.mid(at, 192);
        const int video = packet.indexOf(QByteArray("\x1B\xF0\x11\xF0\x00", 5));
        if (packet.mid(5, 2) != QByteArray("\x41\x00", 2) || video < 0)
            continue;
        const int length = quint8(packet[11]) + 6;
        QByteArray section = packet.mid(9, length - 6 - 1);
        section.replace(video + 4 - 9, 1, QByteArray("\x06\x05\x04HDMV"));
        section[2] = char(length);
        const quint32 sum =
            av_crc(av_crc_get_table(AV_CRC_32_IEEE), ~0u,
                   reinterpret_cast<const uchar*>(section.constData()), size_t(section.size()));
        section.append(reinterpret_cast<const char*>(&sum), 4);
        stream.replace(at + 9, section.size(), section);
    }
    return stream;
}

} // namespace

class BlurayTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void agreesWithLibbluray()
    {
        for (const char* image : {"bluray/disc/", "bluray/disc-250.iso", "bluray/disc-102.iso"})
            compareWithLibbluray(fixturePath(image));
    }

    /// Clip 00001 is ten seconds long, from time stamp 600 on; clip 00002 has four seconds from
    /// time stamp 100 on and then five from 50 on; of 00009 there is nothing.
    void playsWhatPlaylistsSay()
    {
        const auto item = [](const char* clip, double in, double out, int sequence = 0) {
            return authoring::Item{clip, quint32(in * second), quint32(out * second),
                                   quint8(sequence)};
        };
        const auto mark = [](int index, double time, int kind = 1) {
            return authoring::Mark{quint16(index), quint32(time * second), quint8(kind)};
        };
        const auto expect = [](const QList<authoring::Item>& items,
                               const QList<authoring::Mark>& marks, const char* text) {
            const TestDisc disc;
            disc.addClip("00001", plainClip(600, 10));
            Clip twoClocks = plainClip(100, 4);
            twoClocks.sequences.append({5000, 50 * second, 55 * second});
            disc.addClip("00002", twoClocks);
            disc.addPlaylist("00000", items, marks);
            const LoaderPtr loader = disc.open();
            QCOMPARE(titleText(loader, "00000.mpls"), QString(text));
        };
        const authoring::Item part = item("00001", 602, 606);
        expect({part}, {mark(0, 602)}, "00001:2-6, 0+4 00001:2-6");
        expect({part}, {}, "00001:2-6");
        // Times outside of the file.
        expect({item("00001", 590, 700)}, {mark(0, 10), mark(0, 900)},
               "00001:0-10, 0+10 00001:0-10, 10+0 00001:0-10");
        // Empty and reversed items.
        expect({item("00001", 606, 602), item("00001", 604, 604), item("00001", 601, 603)},
               {mark(0, 604), mark(2, 602)}, "00001:1-3, 0+1 00001:1-2, 1+1 00001:2-3");
        // A clip that is missing.
        expect({item("00009", 100, 105), part}, {mark(0, 101), mark(1, 602)},
               "00009:0-5 00001:2-6, 1+4 00009:1-5, 5+4 00009:0-5 00001:2-6");
        // The second clock, and clocks with wrong numbers.
        expect({item("00002", 51, 54, 1)}, {mark(0, 52)}, "00002:5-8, 1+2 00002:6-8");
        expect({item("00002", 101, 103, 1), item("00002", 51, 54, 9)}, {}, "00002:1-3 00002:5-8");
        // An end mark; marks for menus, in disorder, of no item.
        expect({part}, {mark(0, 602), mark(0, 606)}, "00001:2-6, 0+4 00001:2-6, 4+0 00001:2-6");
        expect({part}, {mark(0, 605), mark(0, 603, 2), mark(0, 602), mark(1, 602)},
               "00001:2-6, 0+3 00001:2-5, 3+1 00001:5-6");
        // A chapter over three clips.
        expect({part, item("00002", 100, 104), item("00001", 600, 609)},
               {mark(0, 604), mark(2, 607)},
               "00001:2-6 00002:0-4 00001:0-9, 2+13 00001:4-6 00002:0-4 00001:0-7, "
               "15+2 00001:2-6 00002:0-4 00001:7-9");
        authoring::Item twoAngles = part;
        twoAngles.secondAngle = "00002";
        expect({twoAngles, part}, {}, "00001:2-6 00001:2-6");
    }

    void listsEachPlaylistOnce()
    {
        const TestDisc disc;
        disc.addClip("00001", plainClip(0, 10));
        const QList<authoring::Item> items = {{"00001", 0, 5 * second}};
        disc.addPlaylist("00010", {{"00001", 0, second / 10}}, {});
        disc.addPlaylist("00005", items, {{0, 0}});
        disc.addPlaylist("00004", items, {{0, 0}, {0, second}});
        disc.addPlaylist("00003", items, {{0, 0}});
        authoring::Item dubbed = items[0];
        dubbed.streams[1].language = "deu";
        disc.addPlaylist("00002", {dubbed}, {{0, 0}});
        disc.addPlaylist("00001", {{"00001", 5, 5}}, {{0, 0}});
        const QByteArray whole = authoring::playlist(items, {});
        disc.write("BDMV/PLAYLIST/00006.mpls", whole.left(whole.size() / 2));
        QByteArray boastful = whole;
        boastful.replace(64, 2, "\xFF\xFF"); // the number of items
        disc.write("BDMV/PLAYLIST/00007.mpls", boastful);
        disc.write("BDMV/PLAYLIST/readme.txt", "no playlist");

        QStringList messages;
        setLogReceiver([](const char* message,
                          void* list) { static_cast<QStringList*>(list)->append(message); },
                       &messages);
        const LoaderPtr loader = disc.open();
        setLogReceiver(nullptr, nullptr);
        QCOMPARE(namesOf(loader->titleList()),
                 QStringList({"00002.mpls", "00003.mpls", "00004.mpls", "00010.mpls"}));
        for (const char* name : {"00001.mpls", "00006.mpls", "00007.mpls"})
            QCOMPARE(messages.filter(name).size(), 1);
    }

    void describesStreamsByClipInformation()
    {
        const TestDisc disc;
        Clip clip = plainClip(600, 90);
        clip.streams = {{0x1011, 0x1B, 0x61, {}},    {0x1015, 0xEA, 0x14, {}, 2},
                        {0x1100, 0x86, 0x61, "deu"}, {0x1101, 0x80, 0x34, "jpn"},
                        {0x1200, 0x90, 0, "fra"},    {0x1400, 0x91, 0, "eng"},
                        {0x1A00, 0x77, 0, {}}};
        disc.addNumberedClip(1, clip, "not looked at");
        const LoaderPtr loader = disc.open();
        const AVMovieInfo* movie = streamFile(loader, disc.stream(1));
        QVERIFY(movie);
        QStringList streams;
        for (quint32 i = 0; i < movie->streamCount; ++i) {
            streams << QString::number(movie->streams[i].id, 16) + ": " + textOf(movie->streams[i]);
            QCOMPARE(movie->streams[i].duration, 90.0);
        }
        QCOMPARE(streams, QStringList({"1011: 1 h264   1920x1080 24000/1001 16:9 H264",
                                       "1015: 1 vc1   720x480 30000/1001 4:3 WVC1",
                                       "1100: 2 dts deu  48000Hz 0ch 0",
                                       "1101: 2 pcm_bluray jpn  96000Hz 2ch 3",
                                       "1200: 3 hdmv_pgs_subtitle fra  0Hz 0ch 0",
                                       "1400: 0  eng  0Hz 0ch 0", "1a00: 0    0Hz 0ch 0"}));
        QCOMPARE(movie->format, "mpegts");
        QCOMPARE(movie->id, 0);
    }

    void describesStreamsWithoutClipInformation()
    {
        const TestDisc disc;
        const quint32 start =
            disc.addStream("00001", fixturePath("bluray_streams/closed.m2ts")).sequences[0].start;
        disc.addPlaylist("00000", {{"00001", start + 5 * second, start + 20 * second}}, {});
        disc.write("BDMV/CLIPINF/00001.clpi", "HDMV0200 and no more");
        const QByteArray stream = withRegistration(contentOf(disc.stream(1)));
        QVERIFY(stream.contains(QByteArray("\x11\xF0\x06\x05\x04HDMV")));
        writeFile(disc.stream(1), stream);
        const LoaderPtr loader = disc.open();
        const AVMovieInfo* movie = streamFile(loader, disc.stream(1));
        QCOMPARE(movie->streamCount, 2u);
        QCOMPARE(QString("%1: ").arg(movie->streams[0].id) + textOf(movie->streams[0]),
                 QString("4113: 1 h264   1280x720 25/1 16:9 H264"));
        QCOMPARE(QString("%1: ").arg(movie->streams[1].id) + textOf(movie->streams[1]),
                 QString("4352: 2 ac3 eng  48000Hz 2ch 3"));
        QVERIFY(qAbs(movie->streams[0].duration - 20.0) < 0.1);
        const BDPlayInfo* title = loader->titleInfo("00000.mpls");
        QCOMPARE(title->inTimes[0], 5.0);
        QVERIFY(qAbs(title->outTimes[0] - 20.0) < 0.1);
    }

    /// Clip information has one code for all sound of more than two channels, and few for rates.
    void findsSoundInTheStream()
    {
        const auto expectChannels = [](int channels, const QByteArray& stream,
                                       bool asImage = false) {
            const TestDisc disc;
            Clip clip = plainClip(10, 2);
            clip.streams = {{0x1011, 0x1B, 0x53, {}},
                            {0x1100, 0x81, 0x61, "eng"},
                            {0x1101, 0x83, 0x61, "deu"},
                            {0x1102, 0x03, 0x30, "fra"}};
            disc.addNumberedClip(1, clip, stream);
            const QString path = asImage ? disc.image() : disc.folder();
            const LoaderPtr loader = openDisc(path);
            QVERIFY(loader);
            const AVMovieInfo* movie = streamFile(loader, path + "/BDMV/STREAM/00001.m2ts");
            QCOMPARE(movie->streamCount, 4u);
            for (const int i : {1, 2}) {
                QCOMPARE(movie->streams[i].channels, channels);
                QCOMPARE(movie->streams[i].channelLayout, quint64(channels ? 0x60F : 0));
                QCOMPARE(movie->streams[i].sampleRate, 48000);
            }
            QCOMPARE(movie->streams[1].language, "eng");
            QCOMPARE(movie->streams[3].channels, 2);
            QCOMPARE(movie->streams[3].sampleRate, channels ? 44100 : 0);
        };
        const QByteArray whole = contentOf(fixturePath("bluray_streams/surround.m2ts"));
        expectChannels(6, whole);
        expectChannels(6, whole, true);
        expectChannels(0, QByteArray(whole).replace(16, 6128, randomBytes(6128))); // encrypted
        expectChannels(0, whole.left(4));
    }

    /// Only in the largest.
    void looksIntoFewStreams()
    {
        const TestDisc disc;
        const QByteArray stream = contentOf(fixturePath("bluray_streams/surround.m2ts"));
        Clip clip = plainClip(10, 2);
        clip.streams[1].formatAndRate = 0x61;
        for (int i = 0; i < 40; ++i)
            disc.addNumberedClip(i, clip, stream + stream.left(i * 192));
        const LoaderPtr loader = disc.open();
        QByteArray channels;
        for (const QString& file : namesOf(loader->fileList()))
            channels += QByteArray::number(streamFile(loader, file)->streams[1].channels);
        QCOMPARE(channels, QByteArray(10, '0') + QByteArray(30, '6'));
    }

    /// The module multiplies by a thousand and cuts off, and adds up durations: none may lose a
    /// millisecond.
    void durationsSurviveMilliseconds()
    {
        const TestDisc disc;
        for (int i = 0; i < 400; ++i) {
            Clip clip = plainClip(0, 0);
            clip.sequences[0].end = quint32(1 + i * 7919);
            disc.addNumberedClip(i, clip, {});
        }
        const LoaderPtr loader = disc.open();
        const QStringList files = namesOf(loader->fileList());
        QCOMPARE(files.size(), 400);
        for (int i = 0; i < files.size(); ++i) {
            const double duration = streamFile(loader, files.at(i))->streams[0].duration;
            QCOMPARE(int(duration * 1000.0), (1 + i * 7919 + 44) / 45);
        }
    }

    void findsTheName()
    {
        const auto name = [](bool asImage, const QByteArray& metadata,
                             const QString& language = "eng") {
            const TestDisc disc;
            disc.addClip("00001", plainClip(0, 10));
            disc.addPlaylist("00001", {{"00001", 0, second}}, {});
            if (!metadata.isEmpty())
                disc.setName(metadata, language);
            const LoaderPtr loader = openDisc(asImage ? disc.image() : disc.folder());
            return QByteArray(loader ? loader->discInfo(0)->name : "no disc");
        };
        QCOMPARE(name(true, "A &lt;Film&gt; &#233;"), QByteArray("A <Film> \xE9"));
        QCOMPARE(name(false, "A <![CDATA[& B]]><!-- C -->"), QByteArray("A & B"));
        QCOMPARE(name(false, "Москва", "rus"), QByteArray("Moskva"));
        QCOMPARE(name(true, " "), QByteArray("VOLUME"));
        QCOMPARE(name(true, {}), QByteArray("VOLUME"));
        QCOMPARE(name(false, {}), QByteArray("a.disc"));
    }

    void tellsProtection()
    {
        for (const QString file : {"AACS/Unit_Key_RO.inf", "BDSVM/00000.svm"}) {
            const TestDisc disc;
            disc.addNumberedClip(1, plainClip(0, 10), {});
            disc.write(file, "key");
            QCOMPARE(int(disc.open()->discInfo(0)->scrambled), 1);
        }
    }

    /// Discs of cameras have names of eight letters and three, often of upper case; and of damaged
    /// files the copies are read.
    void findsFilesElsewhere()
    {
        const QByteArray playlist =
            authoring::playlist({{"00001", 600 * second, 605 * second}}, {});
        const QByteArray clip = authoring::clipInformation(plainClip(600, 10));
        const TestDisc camera;
        camera.write("BDMV/PLAYLIST/00000.MPL", playlist);
        camera.write("BDMV/CLIPINF/00001.CPI", clip);
        camera.write("BDMV/STREAM/00001.MTS", "stream");
        LoaderPtr loader = camera.open();
        QCOMPARE(titleText(loader, "00000.MPL"), QString("00001:0-5"));
        QCOMPARE(namesOf(loader->fileList()), QStringList(camera.path("BDMV/STREAM/00001.MTS")));

        const TestDisc damaged;
        damaged.write("BDMV/BACKUP/PLAYLIST/00001.mpls", playlist);
        damaged.write("BDMV/BACKUP/CLIPINF/00001.clpi", clip);
        damaged.write("BDMV/CLIPINF/00001.clpi", QByteArray(1000, '\xFF'));
        loader = damaged.open();
        QCOMPARE(titleText(loader, "00001.mpls"), QString("00001:0-5"));
        QCOMPARE(streamFile(loader, damaged.stream(1))->streams[0].duration, 10.0);
    }
};

QTEST_GUILESS_MAIN(BlurayTest)
#include "tst_bluray.moc"
