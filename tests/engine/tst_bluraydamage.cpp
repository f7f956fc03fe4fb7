// SPDX-License-Identifier: GPL-2.0-or-later
//
// What is no Blu-ray disc, or one that is damaged or made to do harm.
#include "blurayloader.h"
#include "files.h"
#include "fixture.h"
#include "standarderror.h"
#include "udfwriter.h"

#include <QtCore/QDirIterator>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <sys/stat.h>

using namespace AVBased;
using authoring::Clip;
using authoring::Disc;
using authoring::second;

namespace {

/// Everything that a host relies on.
bool isSane(IBDLoader* loader)
{
    const ListPtr titles(loader->titleList());
    const ListPtr files(loader->fileList());
    const QStringList fileNames = namesOf(files.get());
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
    for (quint32 i = 0; i < titles->count(); ++i) {
        const char* name = titles->item(i)->name();
        const BDPlayInfo* title = loader->titleInfo(name);
        if (!title || title->clipCount == 0 || title->clips->count() != title->clipCount ||
            !clipsAreSane(*title, title->clips))
            return false;
        quint32 count = 0;
        const BDPlayInfo* chapters = loader->chapters(name, &count);
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

} // namespace

class BlurayDamageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void refusesWhatIsNoDisc_data();
    void refusesWhatIsNoDisc();
    void survivesDamage_data();
    void survivesDamage();
    void survivesDamagedImages_data();
    void survivesDamagedImages();
    void boundsChapters();
};

void BlurayDamageTest::refusesWhatIsNoDisc_data()
{
    QTest::addColumn<QString>("name");

    for (const char* name : {"missing", "empty", "file-for-folder", "bare", "text.iso", "zeros.iso",
                             "dvd.iso", "cut.iso", "pipe.iso"})
        QTest::newRow(name) << name;
}

void BlurayDamageTest::refusesWhatIsNoDisc()
{
    QFETCH(QString, name);

    const QTemporaryDir folder;
    const QDir root(folder.path());
    const auto write = [&](const QString& file, const QByteArray& bytes) {
        writeFile(root.filePath(file), bytes);
    };
    root.mkpath("empty");
    root.mkpath("bare/BDMV/STREAM");
    write("file-for-folder/BDMV", "a file");
    write("text.iso", "no image at all");
    write("zeros.iso", QByteArray(1000000, '\0'));
    write("dvd/VIDEO_TS/VIDEO_TS.IFO", "DVDVIDEO-VMG");
    writeUdfImage(root.filePath("dvd"), root.filePath("dvd.iso"), "DVD");
    write("cut.iso", contentOf(fixturePath("bluray/disc-250.iso")).left(300000));
    QCOMPARE(mkfifo(qPrintable(root.filePath("pipe.iso")), 0600), 0);

    StandardError errors;
    QVERIFY(!openDisc(root.filePath(name)));
    QCOMPARE(errors.text(), QByteArray());
}

void BlurayDamageTest::survivesDamage_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<bool>("asImage");

    QTest::newRow("playlists") << "BDMV/PLAYLIST" << false;
    QTest::newRow("clip information") << "BDMV/CLIPINF" << false;
    QTest::newRow("anything") << "" << false;
    QTest::newRow("anything in an image") << "" << true;
}

void BlurayDamageTest::survivesDamage()
{
    QFETCH(QString, folder);
    QFETCH(bool, asImage);

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
    QStringList files;
    QDirIterator it(disc.path(folder), QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
        files << QDir(disc.root()).relativeFilePath(it.next());
    files.sort();
    StandardError errors;
    for (int round = 0; round < roundCount(asImage ? 100 : 300); ++round) {
        const QString victim = files.at(int(random() % unsigned(files.size())));
        const QByteArray whole = contentOf(disc.path(victim));
        disc.write(victim, damaged(whole, random));
        if (asImage)
            writeUdfImage(disc.root(), image, "DAMAGED");
        const LoaderPtr loader = openDisc(asImage ? image : disc.root());
        if (!loader || !isSane(loader.get()))
            QFAIL(qPrintable(QString("round %1: %2").arg(round).arg(victim)));
        disc.write(victim, whole);
    }
    QCOMPARE(errors.text(), QByteArray());
}

void BlurayDamageTest::survivesDamagedImages_data()
{
    QTest::addColumn<QString>("image");
    QTest::newRow("UDF 1.02") << "bluray/disc-102.iso";
    QTest::newRow("UDF 2.50") << "bluray/disc-250.iso";
}

/// The file system itself, rather than the files in it.
void BlurayDamageTest::survivesDamagedImages()
{
    QFETCH(QString, image);

    const QByteArray whole = contentOf(fixturePath(image));
    const int structures = 420 * 2048; // up to the contents of the files
    const QTemporaryDir folder;
    const QString path = folder.filePath("disc.iso");
    std::mt19937 random(2);
    StandardError errors;
    int opened = 0;
    for (int round = 0; round < roundCount(200); ++round) {
        QByteArray bytes = whole;
        for (int i = 0; i < 1 + int(random() % 20); ++i) {
            int at = int(random() % structures);
            while (bytes.at(at) == 0 && at < structures) // where there is something to be damaged
                ++at;
            bytes[at] = char(random());
        }
        writeFile(path, round % 5 == 0 ? whole.left(int(random() % whole.size())) : bytes);
        const LoaderPtr loader = openDisc(path);
        QVERIFY(!loader || isSane(loader.get()));
        opened += loader ? 1 : 0;
    }
    QVERIFY(opened > 20);
    QCOMPARE(errors.text(), QByteArray());
}

/// Each of n chapters that begin in the middle of a clip has n/2 clips on average.
void BlurayDamageTest::boundsChapters()
{
    const QTemporaryDir folder;
    const Disc disc(folder.path());
    disc.addClip("00001", plainClip(0, 10000));
    QList<authoring::Item> items;
    QList<authoring::Mark> marks;
    for (quint32 i = 0; i < 5000; ++i) {
        items.append({"00001", i * second, (i + 2) * second});
        marks.append({quint16(i), (i + 1) * second});
    }
    disc.addPlaylist("00001", items, marks);
    const LoaderPtr loader = openDisc(folder.path());
    QVERIFY(loader);
    quint32 count = 0;
    const BDPlayInfo* chapters = loader->chapters("00001.mpls", &count);
    QCOMPARE(count, 5000u);
    QCOMPARE(chapters[1000].clipCount, 1002u);
    quint64 clips = 0;
    for (quint32 i = 0; i < count; ++i)
        clips += chapters[i].clipCount;
    QVERIFY(clips <= 4000000);
    QCOMPARE(chapters[4999].timeStamp, 9999.0);
}

QTEST_GUILESS_MAIN(BlurayDamageTest)
#include "tst_bluraydamage.moc"
