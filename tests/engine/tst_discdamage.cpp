// SPDX-License-Identifier: GPL-2.0-or-later
//
// What is no disc, or one that is damaged, or made to do harm.
#include "blurayloader.h"
#include "files.h"
#include "standarderror.h"
#include "udfwriter.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <climits>
#include <sys/stat.h>

using namespace AVBased;
using authoring::Clip;
using authoring::Disc;
using authoring::second;

namespace {

/// Everything that the module relies on.
bool isSane(const LoaderPtr& loader)
{
    const QStringList fileNames = namesOf(loader->fileList());
    const auto clipsAreSane = [&](const BDPlayInfo& record, IBDList* clips) {
        for (quint32 i = 0; i < record.clipCount; ++i) {
            const char* name = clips->item(i)->name();
            const AVMovieInfo* movie = loader->fileMovieInfo(name);
            const bool isInFile =
                record.inTimes[i] >= 0.0 && record.inTimes[i] < record.outTimes[i] &&
                movie->streamCount > 0 && record.outTimes[i] <= movie->streams[0].duration;
            if (!isInFile || !fileNames.contains(QString::fromUtf8(name)))
                return false;
        }
        return true;
    };
    for (const QString& name : namesOf(loader->titleList())) {
        const BDPlayInfo* title = loader->titleInfo(qPrintable(name));
        if (!title || title->clipCount == 0 || title->clips->count() != title->clipCount ||
            !clipsAreSane(*title, title->clips))
            return false;
        quint32 count = 0;
        const BDPlayInfo* chapters = loader->chapters(qPrintable(name), &count);
        double end = 0.0;
        for (quint32 j = 0; j < count; ++j) {
            const bool isInOrder =
                chapters[j].timeStamp >= end - 1e-9 && chapters[j].duration >= 0.0;
            end = chapters[j].timeStamp + chapters[j].duration;
            if (!isInOrder || end > title->duration + 1e-6 ||
                chapters[j].clipCount > title->clipCount ||
                !clipsAreSane(chapters[j], title->clips))
                return false;
        }
    }
    return true;
}

/// Damages a file in one of the ways in which files are damaged. Its places and counts are told
/// from `header` on, and what is told of the rest lies before `end`.
QByteArray damaged(QByteArray bytes, int header, int end, std::mt19937& random)
{
    const auto below = [&](int limit) { return int(random() % unsigned(std::max(limit, 1))); };
    const auto corrupt = [&](int count, int from, int to) {
        const char extremes[] = {0, 1, 0x7F, char(0x80), char(0xFF)};
        for (int i = 0; i < count; ++i)
            bytes[from + below(to - from)] = random() % 2 ? extremes[random() % 5] : char(random());
    };
    const int size = std::min(int(bytes.size()), end);
    switch (below(5)) {
    case 0:
        bytes.truncate(below(bytes.size()));
        break;
    case 1:
        corrupt(size, 0, size);
        break;
    case 2:
        corrupt(1 + below(20), 0, size);
        break;
    case 3:
        corrupt(1 + below(4), header, std::min(size, header + 76));
        break;
    case 4:
        bytes.replace(below(size - 4), 4, QByteArray(4, '\xFF'));
        break;
    }
    return bytes;
}

} // namespace

class DiscDamageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        const Disc disc(m_folder.filePath("bluray"));
        Clip clip = plainClip(600, 100);
        for (quint32 i = 0; i < 200; ++i)
            clip.entryPoints.append({(600 * second + i * second / 2) * 2, i * 9000});
        clip.sequences.append({2000000, 0, 50 * second});
        for (const QString name : {"00001", "00002", "00003"})
            disc.addClip(name, clip);
        disc.addPlaylist("00001",
                         {{"00001", 600 * second, 690 * second}, {"00002", 0, 9 * second, 1}},
                         {{0, 601 * second}, {1, 5 * second}});
        disc.addPlaylist("00002", {{"00003", 610 * second, 620 * second, 0, "00001"}}, {{0, 0}});
        disc.setName("Name &amp; more");
        copyFolder(fixturePath("dvd/PAL_FILM"), m_folder.filePath("dvd"));
        for (const QString& copy : filesBelow(m_folder.filePath("dvd")).filter(".BUP"))
            QFile::remove(m_folder.filePath("dvd/" + copy));
        for (const char* image : {"bluray/disc-102.iso", "bluray/disc-250.iso", "dvd/pal.iso"})
            writeFile(m_folder.filePath(QFileInfo(image).fileName()),
                      contentOf(fixturePath(image)));
    }

    void refusesWhatIsNoDisc()
    {
        const QTemporaryDir folder;
        const auto write = [&folder](const QString& file, const QByteArray& bytes) {
            return writeFile(folder.filePath(file), bytes);
        };
        QDir(folder.path()).mkpath("bare/BDMV/STREAM");
        write("file-for-folder/BDMV", "a file");
        write("dvd/VIDEO_TS/VIDEO_TS.IFO", "DVDVIDEO-VMG");
        writeUdfImage(folder.filePath("dvd"), folder.filePath("dvd.iso"), "DVD");
        QCOMPARE(mkfifo(qPrintable(folder.filePath("pipe.iso")), 0600), 0);
        const QByteArray dvd = contentOf(fixturePath("dvd/pal.iso"));
        const QByteArray bluray = contentOf(fixturePath("bluray/disc-250.iso"));
        QStringList paths = {fixturePath("dvd/data.iso")};
        for (const char* name :
             {"missing", "dvd", "file-for-folder", "bare", "dvd.iso", "pipe.iso"})
            paths << folder.filePath(name);
        for (const QByteArray& image :
             {QByteArray(), QByteArray("no image"), QByteArray(1000000, '\0'), randomBytes(1000000),
              bluray.left(300000), dvd.left(100 * 2048)})
            paths << write(QString("image%1.ISO").arg(paths.size()), image);
        StandardError errors;
        for (const QString& path : paths)
            QVERIFY2(!openDisc(path) && !openItem(path), qPrintable(path));
        QCOMPARE(errors.text(), QByteArray());
    }

    void survivesDamage_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("files"); // of a folder; none of an image
        QTest::addColumn<int>("header");
        QTest::addColumn<int>("rounds");
        QTest::addColumn<int>("leastOpened");
        QTest::newRow("playlists") << "bluray"
                                   << "PLAYLIST" << 4 << 300 << 300;
        QTest::newRow("clip information") << "bluray"
                                          << "CLIPINF" << 4 << 300 << 300;
        QTest::newRow("any file") << "bluray"
                                  << "BDMV" << 4 << 300 << 300;
        QTest::newRow("any file in an image") << "bluray in an image"
                                              << "BDMV" << 4 << 100 << 100;
        QTest::newRow("DVD") << "dvd"
                             << "IFO" << 0xC0 << 300 << 120;
        QTest::newRow("UDF 1.02") << "disc-102.iso"
                                  << "" << 257 * 2048 << 200 << 20;
        QTest::newRow("UDF 2.50") << "disc-250.iso"
                                  << "" << 32 * 2048 << 200 << 20;
        QTest::newRow("DVD image") << "pal.iso"
                                   << "" << 257 * 2048 << 60 << 10;
    }

    /// Of the files, or of the file system that an image begins with. What comes of it does not
    /// matter, as long as it ends and is something.
    void survivesDamage()
    {
        QFETCH(QString, source);
        QFETCH(QString, files);
        QFETCH(int, header);
        QFETCH(int, rounds);
        QFETCH(int, leastOpened);
        const QString disc = m_folder.filePath(source.section(' ', 0, 0));
        const bool isPacked = source.contains(' ');
        const QString path = isPacked ? m_folder.filePath("packed.iso") : disc;
        const QStringList victims =
            files.isEmpty() ? QStringList("") : filesBelow(disc).filter(files);
        const int end = files.isEmpty() ? 420 * 2048 : INT_MAX;
        // More on request, for a long run.
        rounds = qMax(rounds, qEnvironmentVariableIntValue("VSPIMPORT_DAMAGE_ROUNDS"));
        std::mt19937 random(1);
        StandardError errors;
        int opened = 0;
        for (int round = 0; round < rounds; ++round) {
            const QString name = victims.at(int(random() % unsigned(victims.size())));
            const QString victim = QDir::cleanPath(disc + '/' + name);
            const QByteArray whole = contentOf(victim);
            writeFile(victim, damaged(whole, header, end, random));
            if (isPacked)
                writeUdfImage(disc, path, "DAMAGED");
            const LoaderPtr loader = openDisc(path);
            const ImporterPtr importer = loader ? nullptr : openItem(path);
            opened += loader || importer ? 1 : 0;
            if (loader && !isSane(loader))
                QFAIL(qPrintable(QString("round %1: %2").arg(round).arg(victim)));
            for (int i = 0; importer && i < qMin(int(importer->movieCount()), 5); ++i) {
                QVERIFY(importer->movieInfo(unsigned(i))->id == i);
                if (const SourcePtr frames = openVideo(importer, i, 0x1E0))
                    frameAt(*frames, int(random() % 20000));
            }
            writeFile(victim, whole);
        }
        QVERIFY2(opened >= leastOpened, qPrintable(QString::number(opened)));
        QCOMPARE(errors.text(), QByteArray());
    }

    /// Each of n chapters that begin in the middle of a clip has n/2 clips on average; playlists
    /// have many clips, files many streams, and a name takes the parser long.
    void boundsWhatADiscTakes()
    {
        const QTemporaryDir folder;
        const Disc disc(folder.path());
        disc.addClip("00001", plainClip(0, 10000));
        Clip manyStreams = plainClip(0, 10);
        while (manyStreams.streams.size() < 255)
            manyStreams.streams << manyStreams.streams[1];
        QList<authoring::Item> parts;
        QList<authoring::Item> files;
        QList<authoring::Mark> marks;
        for (quint32 i = 0; i < 5000; ++i) {
            parts.append({"00001", i * second, (i + 2) * second, 0, {}, {}});
            marks.append({quint16(i), (i + 1) * second});
        }
        for (int i = 0; i < 300; ++i) {
            files.append({QByteArray::number(10000 + i), 0, second, 0, {}, {}});
            disc.addClip(files.last().clip, manyStreams);
        }
        disc.addPlaylist("00001", parts, marks);
        disc.addPlaylist("00002", files, {});
        while (parts.size() < 60000)
            parts += parts;
        disc.addPlaylist("00003", parts.mid(1, 60000), {});
        disc.addPlaylist("00004", parts.mid(2, 60000), {});
        QByteArray element = "<x";
        for (int i = 0; i < 100000; ++i)
            element += " a" + QByteArray::number(i) + "=\"\"";
        for (int i = 0; i < 20; ++i)
            disc.setName(element + "/>", QString::number(100 + i));

        QElapsedTimer timer;
        timer.start();
        const LoaderPtr loader = openDisc(folder.path());
        QVERIFY2(timer.elapsed() < 10000, qPrintable(QString::number(timer.elapsed())));
        QCOMPARE(namesOf(loader->titleList()),
                 QStringList({"00001.mpls", "00002.mpls", "00003.mpls"}));
        quint32 count = 0;
        const BDPlayInfo* chapters = loader->chapters("00001.mpls", &count);
        QCOMPARE(count, 5000u);
        QCOMPARE(chapters[500].clipCount, 502u);
        QCOMPARE(chapters[4999].timeStamp, 9999.0);
        quint64 clips = 0;
        for (quint32 i = 0; i < count; ++i)
            clips += chapters[i].clipCount;
        QVERIFY(clips <= 500000);
        quint32 streams = 0;
        for (const QString& name : namesOf(loader->fileList()))
            streams += streamFile(loader, name)->streamCount;
        QCOMPARE(streams, 50000u + 103); // one each for the last files
    }

private:
    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(DiscDamageTest)
#include "tst_discdamage.moc"
