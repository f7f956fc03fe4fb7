// SPDX-License-Identifier: GPL-2.0-or-later
//
// DVDs through the engine's boundary.
#include "engineobjects.h"
#include "files.h"
#include "fixture.h"
#include "standarderror.h"
#include "vspavbased/idvdinfo.h"

#include <QtTest/QtTest>

#include <functional>

#include <sys/stat.h>

using namespace AVBased;

/// Does something to the VIDEO_TS folder that it is given.
using Damage = std::function<void(const QDir& videoTs)>;
Q_DECLARE_METATYPE(Damage)

namespace {

const int videoId = 0x1E0;

/// What PAL_FILM is made of: titles with their chapters, their movie's streams and their tracks.
const char* const palFilm =
    "set 1\n"
    "title 20.00 s, chapters 0.00 4.80 6.40 12.00\n"
    "  480 mpeg2video 720x576 25/1 4:3, 128 ac3 en, 129 ac3 de, 32 dvd_subtitle en, "
    "33 dvd_subtitle fr\n"
    "  128 ac3 en normal 1 48000, 129 ac3 de commentary 1 48000, 32 en, 33 fr\n"
    "title 1.20 s, chapters 0.00\n"
    "  480 mpeg2video 720x576 25/1 4:3, 128 ac3 en, 129 ac3 de\n"
    "  128 ac3 en normal 1 48000, 129 ac3 de commentary 1 48000\n"
    "main title 21.20 s, chapters 0.00 10.00 20.00\n"
    "  480 mpeg2video 720x576 25/1 4:3, 128 ac3 en, 129 ac3 de, 32 dvd_subtitle en, "
    "33 dvd_subtitle fr\n"
    "  128 ac3 en normal 1 48000, 129 ac3 de commentary 1 48000, 32 en, 33 fr\n"
    "set 2\n"
    "title 10.00 s, chapters 0.00 2.80 6.00\n"
    "  480 mpeg2video 720x576 25/1 16:9, 448 mp2 fr, 449 mp2 es\n"
    "  448 mp2 fr  2 48000, 449 mp2 es  2 48000\n";

const char* const ntscFilm = "set 1\n"
                             "main title 19.99 s, chapters 0.00 4.94 9.94 14.95\n"
                             "  480 mpeg2video 720x480 30000/1001 16:9, 128 ac3 en, 129 ac3 ja\n"
                             "  128 ac3 en  1 48000, 129 ac3 ja  1 48000\n";

IDVDInfo* dvdOf(IAVImporter& importer)
{
    return static_cast<IDVDInfo*>(importer.queryExtension("IDVDInfo"));
}

QString seconds(double time)
{
    return QString::number(time, 'f', 2);
}

QString textOf(const AVStreamInfo& stream)
{
    const QString text = QString("%1 %2").arg(stream.id).arg(stream.codecName);
    if (stream.kind != StreamKindVideo)
        return text + ' ' + stream.language;
    return text + QString(" %1x%2 %3/%4 %5:%6")
                      .arg(stream.width)
                      .arg(stream.height)
                      .arg(stream.frameRate >> 32)
                      .arg(stream.frameRate & 0xFFFFFFFF)
                      .arg(stream.aspectRatio >> 16)
                      .arg(stream.aspectRatio & 0xFFFF);
}

QString textOf(const DVDTitleInfo& title, const AVMovieInfo& movie)
{
    QString text = "title " + seconds(title.duration) + " s, chapters";
    for (unsigned i = 0; i < title.chapterCount; ++i)
        text += ' ' + seconds(title.chapterStarts[i]);
    QStringList streams;
    for (unsigned i = 0; i < movie.streamCount; ++i)
        streams << textOf(movie.streams[i]);
    QStringList tracks;
    for (unsigned i = 0; i < title.audioCount; ++i) {
        const DVDAudioInfo& audio = title.audio[i];
        tracks << QString("%1 %2 %3 %4 %5 %6")
                      .arg(audio.streamId)
                      .arg(audio.codec, audio.language, audio.kind)
                      .arg(audio.channels)
                      .arg(audio.sampleRate);
    }
    for (unsigned i = 0; i < title.subpictureCount; ++i)
        tracks
            << QString("%1 %2").arg(title.subpictures[i].streamId).arg(title.subpictures[i].name);
    return text + "\n  " + streams.join(", ") + "\n  " + tracks.join(", ") + '\n';
}

/// Everything that the importer tells of the disc but its name.
QString textOf(IAVImporter& importer)
{
    IDVDInfo* dvd = dvdOf(importer);
    QString text;
    unsigned movie = 0;
    for (unsigned i = 0; i < dvd->titleSetCount(); ++i) {
        const DVDTitleSetInfo& set = *dvd->titleSet(i);
        text += QString("set %1\n").arg(set.id);
        for (unsigned j = 0; j < set.titleCount; ++j, ++movie) {
            const AVMovieInfo* info = importer.movieInfo(movie);
            if (!info || info->id != int(movie))
                return text + "a movie is missing";
            if (set.id == DVDTitleSetInfo::UnusableId)
                text += QString("title of %1 streams\n").arg(info->streamCount);
            else
                text += (dvd->isMainTitle(info->id) ? "main " : "") + textOf(set.titles[j], *info);
        }
    }
    return importer.movieCount() == movie ? text : text + "movies are left over";
}

void copyFiles(const QDir& from, const QDir& to, const std::function<QString(QString)>& rename)
{
    to.mkpath(".");
    for (const QString& name : from.entryList(QDir::Files))
        QFile::copy(from.filePath(name), to.filePath(rename(name)));
}

/// A copy of PAL_FILM that is gone at the end.
class DiscCopy
{
public:
    DiscCopy()
    {
        copyFiles(fixturePath("dvd/PAL_FILM/VIDEO_TS"), videoTs(),
                  [](QString name) { return name; });
    }

    QDir videoTs() const { return QDir(m_folder.filePath("VIDEO_TS")); }
    QByteArray path() const { return (m_folder.path() + '/').toUtf8(); }

private:
    QTemporaryDir m_folder;
};

void removeAll(const QDir& videoTs, const QStringList& patterns)
{
    for (const QString& name : videoTs.entryList(patterns, QDir::Files))
        QFile::remove(videoTs.filePath(name));
}

Damage removal(const QStringList& patterns)
{
    return [patterns](const QDir& videoTs) { removeAll(videoTs, patterns); };
}

} // namespace

class DvdTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void describesTheDisc_data();
    void describesTheDisc();
    void anIfoFileOpensItsTitleSet();
    void seeksToTheFrameShown_data();
    void seeksToTheFrameShown();
    void aStillPictureIsGivenForAsLongAsItIsShown();
    void scrambledTitleSetsHaveNoPictures();
    void badDiscs_data();
    void badDiscs();
    void badImages_data();
    void badImages();
    void survivesDamagedTables();

private:
    void makeVariants();

    QTemporaryDir m_variants; ///< other shapes of PAL_FILM
};

void DvdTest::makeVariants()
{
    const QDir original(fixturePath("dvd/PAL_FILM/VIDEO_TS"));
    const auto same = [](QString name) { return name; };
    copyFiles(original, m_variants.filePath(QString::fromUtf8("Größe/video_ts")),
              [](QString name) { return name.toLower(); });

    const QDir copies(m_variants.filePath("copies/VIDEO_TS"));
    copyFiles(original, copies, same);
    removeAll(copies, {"*.IFO"});

    const QDir damaged(m_variants.filePath("damaged/VIDEO_TS"));
    copyFiles(original, damaged, same);
    writeFile(damaged.filePath("VIDEO_TS.IFO"), randomBytes(6144));
    QFile::resize(damaged.filePath("VTS_01_0.IFO"), 5000);
}

void DvdTest::describesTheDisc_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("content");

    makeVariants();
    const QString folder = fixturePath("dvd/PAL_FILM");
    const auto row = [](const char* tag, const QString& path, const char* name) {
        QTest::newRow(tag) << path << QByteArray(name) << palFilm;
    };
    row("folder and separator", folder + '/', "PAL_FILM");
    row("IFO file and separator", folder + "/VIDEO_TS/VIDEO_TS.IFO/", "PAL_FILM");
    row("image", fixturePath("dvd/pal.iso"), "PAL_VOLUME");
    row("lower case", m_variants.filePath(QString::fromUtf8("Größe/")), "Grosse");
    row("only copies", m_variants.filePath("copies"), "copies");
    row("damaged tables", m_variants.filePath("damaged"), "damaged");
    QTest::newRow("NTSC") << fixturePath("dvd/NTSC_FILM") << QByteArray("NTSC_FILM") << ntscFilm;
}

void DvdTest::describesTheDisc()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, name);
    QFETCH(QString, content);

    const int openFiles = openFileCount();
    const ImporterPtr importer = openItem(path.toUtf8());
    QVERIFY(importer);
    QCOMPARE(openFileCount(), openFiles);
    QCOMPARE(textOf(*importer), content);
    QCOMPARE(QByteArray(importer->movieInfo(0)->name), name + " _1");
    QCOMPARE(QByteArray(importer->movieInfo(0)->format), QByteArray("dvd"));
    QVERIFY(!dvdOf(*importer)->isDiscScrambled(path.toUtf8().constData()));
}

void DvdTest::anIfoFileOpensItsTitleSet()
{
    const ImporterPtr importer = openItem(fixtureUtf8("dvd/PAL_FILM/VIDEO_TS/VTS_02_0.IFO/"));
    QVERIFY(importer);
    const QString wholeDisc = palFilm;
    QCOMPARE(textOf(*importer),
             "set -1\ntitle of 0 streams\ntitle of 0 streams\ntitle of 0 streams\n" +
                 wholeDisc.mid(wholeDisc.indexOf("set 2")).replace("title 10", "main title 10"));
    QVERIFY(!importer->openSource(0, videoId, -1));
    const SourcePtr source(importer->openSource(3, videoId, -1));
    QVERIFY(source);
    QVERIFY(qAbs(secondOf(pictureOf(frameAt(*source, 5000)), 20.0) - 5.1) < 0.6);
}

void DvdTest::seeksToTheFrameShown_data()
{
    QTest::addColumn<QString>("disc");
    QTest::addColumn<int>("movie");
    QTest::addColumn<int>("frames");
    QTest::addColumn<double>("step"); ///< of luma, in a second
    QTest::newRow("one clock") << "dvd/PAL_FILM" << 0 << 500 << 10.0;
    QTest::newRow("clock starts over") << "dvd/pal.iso" << 2 << 530 << 10.0;
    QTest::newRow("second set") << "dvd/pal.iso" << 3 << 250 << 20.0;
    QTest::newRow("pictures that need the unit before") << "dvd/NTSC_FILM" << 0 << 599 << 10.0;
}

/// Against the frames as they come without a seek, and as they tell the time themselves.
void DvdTest::seeksToTheFrameShown()
{
    QFETCH(QString, disc);
    QFETCH(int, movie);
    QFETCH(int, frames);
    QFETCH(double, step);

    const ImporterPtr importer = openItem(fixtureUtf8(disc));
    QVERIFY(importer);
    SourcePtr source(importer->openSource(movie, videoId, -1));
    QVERIFY(source);
    QMap<std::int64_t, QImage> shown;
    std::int64_t time;
    std::int32_t flags;
    IAVFrame* frame;
    while (source->readFrame(&time, &frame, &flags, 1)) {
        const QImage picture = shown.insert(time, pictureOf(frame, 80, 45)).value();
        // The third title goes on with video that tells the time from 0 again.
        QVERIFY(qAbs(secondOf(picture, step) - time % 20000 / 1000.0) < 0.4);
    }
    QCOMPARE(shown.size(), frames);
    QCOMPARE(shown.firstKey(), std::int64_t(0));

    source.reset(importer->openSource(movie, videoId, -1));
    std::mt19937 random(7);
    for (int i = 0; i < 60; ++i) {
        const int position = int(random() % unsigned(shown.lastKey() + 1000));
        const auto expected = std::prev(shown.upperBound(position));
        frame = frameAt(*source, position, 1, &time);
        QVERIFY(frame);
        QCOMPARE(time, expected.key());
        QCOMPARE(pictureOf(frame, 80, 45), expected.value());
    }
}

void DvdTest::aStillPictureIsGivenForAsLongAsItIsShown()
{
    const ImporterPtr importer = openItem(fixtureUtf8("dvd/STILLS"));
    QVERIFY(importer);
    const SourcePtr source(importer->openSource(0, videoId, -1));
    QVERIFY(source);
    for (const int count : {1, 4, 50}) {
        std::int64_t time;
        const QImage picture = pictureOf(frameAt(*source, 7500, count, &time));
        QCOMPARE(time, std::int64_t(count == 1 ? 5000 : 7500 + (count - 1) * 40));
        QVERIFY(qAbs(secondOf(picture, 10.0) - 5.0) < 0.4);
    }
    QVERIFY(qAbs(secondOf(pictureOf(frameAt(*source, 7500, 70)), 10.0) - 10.0) < 0.4);
}

void DvdTest::scrambledTitleSetsHaveNoPictures()
{
    const DiscCopy disc;
    const QString vob = disc.videoTs().filePath("VTS_01_1.VOB");
    QByteArray bytes = contentOf(vob);
    // Half of the packs with video, as a scrambling drive leaves them.
    for (int i = 0; i < bytes.size(); i += 2 * 2048) {
        if (quint8(bytes[i + 17]) == 0xE0)
            bytes[i + 20] = char(bytes[i + 20] | 0x10);
    }
    writeFile(vob, bytes);

    const ImporterPtr importer = openItem(disc.path());
    QVERIFY(importer);
    QCOMPARE(textOf(*importer), QString(palFilm));
    QVERIFY(dvdOf(*importer)->isDiscScrambled(disc.path().constData()));
    QVERIFY(!importer->openSource(0, videoId, -1));
    QVERIFY(SourcePtr(importer->openSource(3, videoId, -1)));
}

void DvdTest::badDiscs_data()
{
    QTest::addColumn<Damage>("damage");
    QTest::addColumn<int>("movies"); ///< -1: no importer
    QTest::addColumn<QList<int>>("sources");

    QTest::newRow("VIDEO_TS is a file") << Damage([](const QDir& videoTs) {
        QDir(videoTs).removeRecursively();
        writeFile(videoTs.path(), "text");
    }) << -1 << QList<int>();
    QTest::newRow("empty") << removal({"*"}) << -1 << QList<int>();
    QTest::newRow("no tables") << removal({"*.IFO", "*.BUP"}) << -1 << QList<int>();
    QTest::newRow("no table of contents") << removal({"VIDEO_TS.*"}) << 4 << QList<int>{0, 1, 2, 3};
    QTest::newRow("a set without tables") << removal({"VTS_01_0.*"}) << 4 << QList<int>{3};
    QTest::newRow("no video") << removal({"*.VOB"}) << 4 << QList<int>();
    QTest::newRow("video of one set") << removal({"VTS_02_1.VOB"}) << 4 << QList<int>{0, 1, 2};
    QTest::newRow("tables without an end") << Damage([](const QDir& videoTs) {
        removeAll(videoTs, {"*.BUP", "VTS_01_0.IFO", "VTS_02_0.IFO"});
        mkfifo(QFile::encodeName(videoTs.filePath("VTS_01_0.IFO")).constData(), 0600);
        QFile::link("/dev/zero", videoTs.filePath("VTS_02_0.IFO"));
    }) << 4 << QList<int>();
    // The titles' first seconds are left; the other titles lie behind.
    QTest::newRow("video cut off") << Damage([](const QDir& videoTs) {
        QFile::resize(videoTs.filePath("VTS_01_1.VOB"), 500 * 1024 + 77);
    }) << 4 << QList<int>{0, 2, 3};
}

void DvdTest::badDiscs()
{
    QFETCH(Damage, damage);
    QFETCH(int, movies);
    QFETCH(QList<int>, sources);

    const DiscCopy disc;
    damage(disc.videoTs());
    StandardError standardError;
    const ImporterPtr importer = openItem(disc.path());
    QCOMPARE(importer ? int(importer->movieCount()) : -1, movies);
    QList<int> opened;
    for (int i = 0; i < movies; ++i) {
        const SourcePtr source(importer->openSource(i, videoId, -1));
        if (source && !pictureOf(frameAt(*source, 900)).isNull() && frameAt(*source, 9000))
            opened.append(i);
    }
    QCOMPARE(opened, sources);
    QCOMPARE(standardError.text(), QByteArray());
}

void DvdTest::badImages_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("opens");

    const QByteArray disc = contentOf(fixturePath("dvd/pal.iso"));
    QTest::newRow("no DVD") << contentOf(fixturePath("dvd/data.iso")) << false;
    QTest::newRow("random") << randomBytes(1000000) << false;
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("cut before the anchor") << disc.left(100 * 2048) << false;
    QTest::newRow("without its second half") << disc.left(disc.size() / 2) << true;
}

void DvdTest::badImages()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, opens);

    QTemporaryDir folder;
    const QString path = folder.filePath("disc.ISO");
    writeFile(path, content);
    StandardError standardError;
    const ImporterPtr importer = openItem(path.toUtf8());
    QCOMPARE(bool(importer), opens);
    for (int i = 0; importer && i < int(importer->movieCount()); ++i) {
        const SourcePtr source(importer->openSource(i, videoId, -1));
        if (source)
            frameAt(*source, 9000);
    }
    QCOMPARE(standardError.text(), QByteArray());
}

/// Numbers in the tables lead anywhere. What comes of it does not matter, as long as it ends and
/// is something.
void DvdTest::survivesDamagedTables()
{
    const DiscCopy disc;
    const QStringList names = {"VIDEO_TS.IFO", "VTS_01_0.IFO"};
    removeAll(disc.videoTs(), {"*.BUP"});
    QHash<QString, QByteArray> originals;
    for (const QString& name : names)
        originals[name] = contentOf(disc.videoTs().filePath(name));

    std::mt19937 random(11);
    const char extremes[] = {0, 1, 0x7F, char(0x80), char(0xFF)};
    StandardError standardError;
    int opened = 0;
    for (int i = 0; i < 300; ++i) {
        for (const QString& name : names) {
            QByteArray bytes = originals[name];
            for (int change = int(random() % 12); change >= 0; --change) {
                // Half of the changes hit the pointers to the tables and the tables' beginnings.
                const int table = int(random() % unsigned(bytes.size() / 2048)) * 2048;
                const int place = random() % 2 ? int(random() % unsigned(bytes.size()))
                                  : table == 0 ? 0xC0 + int(random() % 40)
                                               : table + int(random() % 48);
                bytes[place] = random() % 2 ? extremes[random() % 5] : char(random());
            }
            writeFile(disc.videoTs().filePath(name), bytes);
        }
        const ImporterPtr importer = openItem(disc.path());
        if (!importer)
            continue;
        ++opened;
        QVERIFY(!textOf(*importer).contains("missing"));
        for (int movie = 0; movie < qMin(int(importer->movieCount()), 5); ++movie) {
            const SourcePtr source(importer->openSource(movie, videoId, -1));
            if (source)
                frameAt(*source, int(random() % 20000));
        }
    }
    QVERIFY(opened > 150);
    QCOMPARE(standardError.text(), QByteArray());
}

QTEST_GUILESS_MAIN(DvdTest)
#include "tst_dvd.moc"
