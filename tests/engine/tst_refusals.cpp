// SPDX-License-Identifier: GPL-2.0-or-later
//
// Why items cannot be opened, as the engine tells hosts, through its two halves.
#include "engineobjects.h"
#include "files.h"
#include "vspavbased/enginecontrol.h"

#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace AVBased;

namespace {

/// What was told of the last path.
struct Told
{
    QString path;
    int refusal = -1;
    QByteArray reason;
} told;

void receive(const char* path, int refusal, const char* reason, void* told)
{
    *static_cast<Told*>(told) = {QString::fromUtf8(path), refusal, reason};
}

QByteArray media(const QString& name)
{
    return contentOf(fixturePath("media/" + name));
}

} // namespace

class RefusalsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        setRefusalReceiver(receive, &told);
        chmod(qPrintable(m_folder.path()), 0755);
        QVERIFY(startEngine());
    }

    void cleanupTestCase() { setRefusalReceiver(nullptr, nullptr); }

    void reasons_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<int>("asDisc");
        QTest::addColumn<int>("asItem");
        QTest::addColumn<bool>("isOpened");
        const auto row = [](const QString& path, int asDisc, int asItem, bool isOpened = false) {
            QTest::newRow(qPrintable(path.section('/', -3)))
                << path << asDisc << asItem << isOpened;
        };
        const auto file = [&](const QString& name, const QByteArray& content, int asItem) {
            row(writeFile(m_folder.filePath(name), content), RefusedNoDisc, asItem);
        };
        const QByteArray mp4 = media("time-gop2s.mp4"), mkv = media("several.mkv");
        const QByteArray noIndex = mp4.left(mp4.indexOf("moov") - 4);
        file("no-index.mp4", noIndex, RefusedNoIndex);
        file("cut-in-the-data.mp4", noIndex.left(2000), RefusedNoIndex);
        file("no-boxes.mp4", mp4.left(40) + randomBytes(5000), RefusedUnknown);
        file("cut-in-the-index.mp4", media("fragmented.mp4").left(600), RefusedCutOff);
        file("cut.mkv", mkv.left(400), RefusedCutOff);
        file("cut.avi", media("time-riff.avi").left(3000), RefusedCutOff);
        file("no-streams.flv", media("time-flash.flv").left(200), RefusedNoStreams);
        file("archive.mp4", "PK\x03\x04" + randomBytes(3000), RefusedUnknown);
        file("random.avi", randomBytes(100000), RefusedUnknown);
        row(writeFile(m_folder.filePath("empty.iso"), ""), RefusedEmpty, RefusedEmpty);
        for (const char* name : {"text.mp4", "picture.mp4", "subtitles.mkv", "sparse.ts"})
            row(fixturePath(QString("media/") + name), RefusedNoDisc, RefusedUnknown);
        row(fixturePath("media/encrypted.mp4"), RefusedNoDisc, RefusedProtected, true);
        row(fixturePath("dvd/data.iso"), RefusedNoDisc, RefusedNoDisc);
        row(fixturePath("media/"), RefusedNoDisc, RefusedNoDisc);
        row(fixturePath("dvd/PAL_FILM"), RefusedNoDisc, -1, true);
        QDir(m_folder.path()).mkpath("dvd/VIDEO_TS");
        QDir(m_folder.path()).mkpath("bluray/BDMV");
        row(m_folder.filePath("dvd"), RefusedNoDisc, RefusedDamaged);
        row(m_folder.filePath("bluray"), RefusedDamaged, RefusedNoDisc);
        row("/dev/zero", RefusedNoFile, RefusedNoFile);
        row("/nowhere/film.mp4", RefusedGone, RefusedGone);
        const QString secret = writeFile(m_folder.filePath("secret.mp4"), mp4);
        const QString tables = m_folder.filePath("secret/VIDEO_TS/VIDEO_TS.IFO");
        writeFile(tables, "DVDVIDEO-VMG");
        for (const QString& path : {secret, tables})
            chmod(qPrintable(path), 0);
        row(secret, RefusedDenied, RefusedDenied);
        row(m_folder.filePath("secret/"), RefusedNoDisc, RefusedDenied);
    }

    void reasons()
    {
        QFETCH(QString, path);
        QFETCH(bool, isOpened);
        const auto isTold = [&path](int refusal) {
            return told.refusal == refusal && (refusal < 0 || told.path == path) &&
                   (refusal < 0) == told.reason.isEmpty() && !told.reason.endsWith('.');
        };
        const uid_t user = geteuid();
        if (user == 0 && path.contains("secret")) // who may read everything
            QCOMPARE(seteuid(65534), 0);
        told = Told();
        const bool isDisc = LoaderPtr(engineWrapper()->createBDLoader())->open(qPrintable(path));
        const Told ofDisc = std::exchange(told, Told());
        const ImporterPtr importer = openItem(path);
        QCOMPARE(seteuid(user), 0);
        QFETCH(int, asItem);
        QVERIFY2(isTold(asItem), told.reason.constData());
        QCOMPARE(importer != nullptr, isOpened);
        told = ofDisc;
        QFETCH(int, asDisc);
        QVERIFY2(isTold(asDisc) && !isDisc, told.reason.constData());
    }

private:
    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(RefusalsTest)
#include "tst_refusals.moc"
