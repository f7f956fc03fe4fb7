// SPDX-License-Identifier: GPL-2.0-or-later
//
// What is no Blu-ray disc, or one that is damaged or made to do harm.
#include "blurayloader.h"
#include "files.h"
#include "standarderror.h"
#include "udfwriter.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <sys/stat.h>

using namespace AVBased;
using authoring::Clip;
using authoring::Disc;
using authoring::second;

namespace {

/// Everything that a host relies on.
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

/// More on request, for a long run.
int roundCount(int usual)
{
    return qMax(usual, qEnvironmentVariableIntValue("VSPIMPORT_DAMAGE_ROUNDS"));
}

/// Damages a file in one of the ways in which files are damaged.
QByteArray damaged(QByteArray bytes, std::mt19937& random)
{
    const auto below = [&](int limit) { return int(random() % unsigned(std::max(limit, 1))); };
    const auto corrupt = [&](int count, int from, int to) {
        for (int i = 0; i < count; ++i)
            bytes[from + below(to - from)] = char(random());
    };
    const int size = bytes.size();
    switch (below(5)) {
    case 0:
        bytes.truncate(below(size));
        break;
    case 1:
        corrupt(size, 0, size);
        break;
    case 2:
        corrupt(1 + below(20), 0, size);
        break;
    case 3: // the header, with the places and counts of everything
        corrupt(1 + below(4), 4, std::min(size, 80));
        break;
    case 4:
        bytes.replace(below(size - 4), 4, QByteArray(4, '\xFF'));
        break;
    }
    return bytes;
}

/// Opens a disc, as a folder or an image, again and again, with damage to one of its files.
void damageFiles(const QString& files, bool asImage)
{
    const QTemporaryDir temporary;
    const Disc disc(temporary.filePath("disc"));
    Clip clip = plainClip(600, 100);
    for (quint32 i = 0; i < 200; ++i)
        clip.entryPoints.append({(600 * second + i * second / 2) * 2, i * 9000});
    clip.sequences.append({2000000, 0, 50 * second});
    for (const QString name : {"00001", "00002", "00003"})
        disc.addClip(name, clip);
    disc.addPlaylist("00001", {{"00001", 600 * second, 690 * second}, {"00002", 0, 9 * second, 1}},
                     {{0, 601 * second}, {1, 5 * second}});
    disc.addPlaylist("00002", {{"00003", 610 * second, 620 * second, 0, "00001"}}, {{0, 0}});
    disc.setName("Name &amp; more");
    const QString image = temporary.filePath("disc.iso");

    std::mt19937 random(1);
    const QStringList victims = filesBelow(disc.root()).filter(files);
    StandardError errors;
    for (int round = 0; round < roundCount(asImage ? 100 : 300); ++round) {
        const QString victim = victims.at(int(random() % unsigned(victims.size())));
        const QByteArray whole = contentOf(disc.path(victim));
        disc.write(victim, damaged(whole, random));
        if (asImage)
            writeUdfImage(disc.root(), image, "DAMAGED");
        const LoaderPtr loader = openDisc(asImage ? image : disc.root());
        if (!loader || !isSane(loader))
            QFAIL(qPrintable(QString("round %1: %2").arg(round).arg(victim)));
        disc.write(victim, whole);
    }
    QCOMPARE(errors.text(), QByteArray());
}

} // namespace

class BlurayDamageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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

        StandardError errors;
        for (const char* name :
             {"missing", "dvd", "file-for-folder", "bare", "dvd.iso", "pipe.iso"})
            QVERIFY2(!openDisc(folder.filePath(name)), name);
        for (const QByteArray& image : {QByteArray("no image at all"), QByteArray(1000000, '\0'),
                                        contentOf(fixturePath("bluray/disc-250.iso")).left(300000)})
            QVERIFY(!openDisc(write("no-image.iso", image)));
        QCOMPARE(errors.text(), QByteArray());
    }

    void survivesDamage()
    {
        for (const char* files : {"BDMV/PLAYLIST", "BDMV/CLIPINF", "BDMV"})
            damageFiles(files, false);
        damageFiles("BDMV", true);
    }

    /// The file system itself, rather than the files in it, which lie behind.
    void survivesDamagedImages()
    {
        const QTemporaryDir folder;
        std::mt19937 random(2);
        StandardError errors;
        for (const char* image : {"bluray/disc-102.iso", "bluray/disc-250.iso"}) {
            const QByteArray whole = contentOf(fixturePath(image));
            int opened = 0;
            for (int round = 0; round < roundCount(200); ++round) {
                QByteArray bytes = whole;
                for (int i = int(random() % 20); i >= 0; --i) {
                    int at = int(random() % (420 * 2048));
                    while (bytes.at(at) == 0) // to where there is something to damage
                        ++at;
                    bytes[at] = char(random());
                }
                if (round % 5 == 0)
                    bytes = whole.left(int(random() % unsigned(whole.size())));
                const LoaderPtr loader = openDisc(writeFile(folder.filePath("disc.iso"), bytes));
                QVERIFY2(!loader || isSane(loader), image);
                opened += loader ? 1 : 0;
            }
            QVERIFY(opened > 20);
        }
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
};

QTEST_GUILESS_MAIN(BlurayDamageTest)
#include "tst_bluraydamage.moc"
