// SPDX-License-Identifier: GPL-2.0-or-later
//
// DVDs through the engine's boundary.
#include "engineobjects.h"
#include "files.h"
#include "standarderror.h"
#include "vspavbased/idvdinfo.h"

#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <functional>

#include <sys/stat.h>

using namespace AVBased;

namespace {

const int videoId = 0x1E0;

/// What PAL_FILM is made of: titles with their chapters, their movie's streams and their tracks.
const char* const palFilm =
    "set 1\n"
    "title 20.00 s, chapters 0.00 4.80 6.40 12.00\n"
    "  480 1 mpeg2video   720x576 25/1 4:3 mpg2, 128 2 ac3 en  48000Hz 1ch 0, "
    "129 2 ac3 de  48000Hz 1ch 0, 32 3 dvd_subtitle en  0Hz 0ch 0, "
    "33 3 dvd_subtitle fr  0Hz 0ch 0\n"
    "  128 ac3 en normal 1 48000, 129 ac3 de commentary 1 48000, 32 en, 33 fr\n"
    "title 1.20 s, chapters 0.00\n"
    "  480 1 mpeg2video   720x576 25/1 4:3 mpg2, 128 2 ac3 en  48000Hz 1ch 0, "
    "129 2 ac3 de  48000Hz 1ch 0\n"
    "  128 ac3 en normal 1 48000, 129 ac3 de commentary 1 48000\n"
    "main title 21.20 s, chapters 0.00 10.00 20.00\n"
    "  480 1 mpeg2video   720x576 25/1 4:3 mpg2, 128 2 ac3 en  48000Hz 1ch 0, "
    "129 2 ac3 de  48000Hz 1ch 0, 32 3 dvd_subtitle en  0Hz 0ch 0, "
    "33 3 dvd_subtitle fr  0Hz 0ch 0\n"
    "  128 ac3 en normal 1 48000, 129 ac3 de commentary 1 48000, 32 en, 33 fr\n"
    "set 2\n"
    "title 10.00 s, chapters 0.00 2.80 6.00\n"
    "  480 1 mpeg2video   720x576 25/1 16:9 mpg2, 448 2 mp2 fr  48000Hz 2ch 0, "
    "449 2 mp2 es  48000Hz 2ch 0\n"
    "  448 mp2 fr  2 48000, 449 mp2 es  2 48000\n";

const char* const ntscFilm =
    "set 1\n"
    "main title 19.99 s, chapters 0.00 4.94 9.94 14.95\n"
    "  480 1 mpeg2video   720x480 30000/1001 16:9 mpg2, 128 2 ac3 en  48000Hz 1ch 0, "
    "129 2 ac3 ja  48000Hz 1ch 0\n"
    "  128 ac3 en  1 48000, 129 ac3 ja  1 48000\n";

IDVDInfo* dvdOf(const ImporterPtr& importer)
{
    return static_cast<IDVDInfo*>(importer->queryExtension("IDVDInfo"));
}

QString titleText(const DVDTitleInfo& title, const AVMovieInfo& movie)
{
    QString text = QString("title %1 s, chapters").arg(title.duration, 0, 'f', 2);
    for (unsigned i = 0; i < title.chapterCount; ++i)
        text += ' ' + QString::number(title.chapterStarts[i], 'f', 2);
    QStringList streams;
    for (unsigned i = 0; i < movie.streamCount; ++i)
        streams << QString::number(movie.streams[i].id) + ' ' + textOf(movie.streams[i]);
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
        tracks << QString::number(title.subpictures[i].streamId) + ' ' + title.subpictures[i].name;
    return text + "\n  " + streams.join(", ") + "\n  " + tracks.join(", ") + '\n';
}

/// Everything that the importer tells of the disc but its name.
QString discText(const ImporterPtr& importer)
{
    IDVDInfo* dvd = dvdOf(importer);
    QString text;
    unsigned movie = 0;
    for (unsigned i = 0; i < dvd->titleSetCount(); ++i) {
        const DVDTitleSetInfo& set = *dvd->titleSet(i);
        text += QString("set %1\n").arg(set.id);
        for (unsigned j = 0; j < set.titleCount; ++j, ++movie) {
            const AVMovieInfo* info = importer->movieInfo(movie);
            if (!info || info->id != int(movie))
                return text + "a movie is missing";
            if (set.id == DVDTitleSetInfo::UnusableId)
                text += QString("title of %1 streams\n").arg(info->streamCount);
            else
                text +=
                    (dvd->isMainTitle(info->id) ? "main " : "") + titleText(set.titles[j], *info);
        }
    }
    return importer->movieCount() == movie ? text : text + "movies are left over";
}

/// A copy of PAL_FILM that is gone at the end.
class DiscCopy
{
public:
    DiscCopy() { copyFolder(fixturePath("dvd/PAL_FILM"), path()); }

    QString path() const { return m_folder.path() + '/'; }
    QString file(const QString& name) const { return path() + "VIDEO_TS/" + name; }
    void remove(const QStringList& patterns) const
    {
        for (const QString& name : QDir(file("")).entryList(patterns, QDir::Files))
            QFile::remove(file(name));
    }

private:
    QTemporaryDir m_folder;
};

} // namespace

class DvdTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void describesTheDisc()
    {
        const auto expect = [](const QString& path, const QString& name, const char* content) {
            const int openFileCount = openFiles().size();
            const ImporterPtr importer = openItem(path);
            QVERIFY2(importer, qPrintable(path));
            QCOMPARE(openFiles().size(), openFileCount);
            QCOMPARE(discText(importer), QString(content));
            QCOMPARE(QString(importer->movieInfo(0)->name), name + " _1");
            QCOMPARE(importer->movieInfo(0)->format, "dvd");
            QVERIFY(!dvdOf(importer)->isDiscScrambled(path.toUtf8().constData()));
        };
        const QString film = fixturePath("dvd/PAL_FILM");
        expect(film + '/', "PAL_FILM", palFilm);
        expect(film + "/VIDEO_TS/VIDEO_TS.IFO/", "PAL_FILM", palFilm);
        expect(fixturePath("dvd/pal.iso"), "PAL_VOLUME", palFilm);
        expect(fixturePath("dvd/NTSC_FILM"), "NTSC_FILM", ntscFilm);

        const QTemporaryDir folder;
        const QString lower = folder.filePath(u8"Größe/");
        for (const QString& name : filesBelow(film))
            writeFile(lower + name.toLower(), contentOf(film + '/' + name));
        expect(lower, "Grosse", palFilm);

        // Only copies of tables, and damaged tables beside whole copies.
        const QString copies = folder.filePath("copies");
        copyFolder(film, copies);
        for (const QString& name : filesBelow(copies).filter(".IFO"))
            QFile::remove(copies + '/' + name);
        expect(copies, "copies", palFilm);
        writeFile(copies + "/VIDEO_TS/VIDEO_TS.IFO", randomBytes(6144));
        writeFile(copies + "/VIDEO_TS/VTS_01_0.IFO",
                  contentOf(film + "/VIDEO_TS/VTS_01_0.IFO").left(5000));
        expect(copies, "copies", palFilm);
    }

    void seeksToTheFrameShown_data()
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
    void seeksToTheFrameShown()
    {
        QFETCH(QString, disc);
        QFETCH(int, movie);
        QFETCH(int, frames);
        QFETCH(double, step);

        const ImporterPtr importer = openFixture(disc);
        SourcePtr source = openVideo(importer, movie, videoId);
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

        source = openVideo(importer, movie, videoId);
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

    void aStillPictureIsGivenForAsLongAsItIsShown()
    {
        const ImporterPtr importer = openFixture("dvd/STILLS");
        const SourcePtr source = openVideo(importer, 0, videoId);
        QVERIFY(source);
        for (const int count : {1, 4, 50}) {
            std::int64_t time;
            const QImage picture = pictureOf(frameAt(*source, 7500, count, &time));
            QCOMPARE(time, std::int64_t(count == 1 ? 5000 : 7500 + (count - 1) * 40));
            QVERIFY(qAbs(secondOf(picture, 10.0) - 5.0) < 0.4);
        }
        QVERIFY(qAbs(secondOf(pictureOf(frameAt(*source, 7500, 70)), 10.0) - 10.0) < 0.4);
    }

    void scrambledTitleSetsHaveNoPictures()
    {
        const DiscCopy disc;
        QByteArray bytes = contentOf(disc.file("VTS_01_1.VOB"));
        // Half of the packs with video, as a scrambling drive leaves them.
        for (int i = 0; i < bytes.size(); i += 2 * 2048) {
            if (quint8(bytes[i + 17]) == 0xE0)
                bytes[i + 20] = char(bytes[i + 20] | 0x10);
        }
        writeFile(disc.file("VTS_01_1.VOB"), bytes);

        const ImporterPtr importer = openItem(disc.path());
        QVERIFY(importer);
        QCOMPARE(discText(importer), QString(palFilm));
        QVERIFY(dvdOf(importer)->isDiscScrambled(disc.path().toUtf8().constData()));
        QVERIFY(!openVideo(importer, 0, videoId));
        QVERIFY(openVideo(importer, 3, videoId));
    }

    void readsTheTablesOfASetOnce()
    {
        const DiscCopy disc;
        const ImporterPtr importer = openItem(disc.path());
        QVERIFY(openVideo(importer, 0, videoId));
        disc.remove({"*.IFO", "*.BUP"});
        QVERIFY(openVideo(importer, 2, videoId));
        importer->close();
        QVERIFY(!openVideo(importer, 0, videoId));
    }

    /// What is left of a disc after damage: its movies, with "*" for each of two pictures.
    void badDiscs()
    {
        const auto expect = [](const QStringList& removed, const char* movies,
                               const std::function<void(const DiscCopy&)>& damage = {}) {
            const DiscCopy disc;
            disc.remove(removed);
            if (damage)
                damage(disc);
            StandardError standardError;
            const ImporterPtr importer = openItem(disc.path());
            QString found;
            for (unsigned i = 0; importer && i < importer->movieCount(); ++i) {
                const SourcePtr source = openVideo(importer, int(i), videoId);
                found += QString::number(i);
                for (const int position : {900, 9000})
                    found += source && frameAt(*source, position) ? "*" : "";
                found += ' ';
            }
            QCOMPARE(found + standardError.text(), QString(movies));
        };
        expect({"*"}, "");
        expect({"*.IFO", "*.BUP"}, "");
        expect({"VIDEO_TS.*"}, "0** 1** 2** 3** ");
        expect({"VTS_01_0.*"}, "0 1 2 3** ");
        expect({"*.VOB"}, "0 1 2 3 ");
        expect({"VTS_02_1.VOB"}, "0** 1** 2** 3 ");
        expect({"*.BUP", "VTS_0?_0.IFO"}, "0 1 2 3 ", [](const DiscCopy& disc) {
            mkfifo(qPrintable(disc.file("VTS_01_0.IFO")), 0600);
            QFile::link("/dev/zero", disc.file("VTS_02_0.IFO"));
        });
        // A table without a size.
        expect({"*.BUP"}, "0** 1** 2** 3** ", [](const DiscCopy& disc) {
            QByteArray bytes = contentOf(disc.file("VIDEO_TS.IFO"));
            const int titleTable = 2048 * quint8(bytes[0xC7]);
            writeFile(disc.file("VIDEO_TS.IFO"),
                      bytes.replace(titleTable + 4, 4, QByteArray(4, 0)));
        });
        // The titles' first seconds are left; the other titles lie behind. No picture is made of
        // what is missing.
        expect({"none"}, "0* 1 2* 3** ", [](const DiscCopy& disc) {
            QFile::resize(disc.file("VTS_01_1.VOB"), 500 * 1024 + 77);
        });
    }
};

QTEST_GUILESS_MAIN(DvdTest)
#include "tst_dvd.moc"
