// SPDX-License-Identifier: GPL-2.0-or-later
//
// Finding and classifying the items below a path.
#include "csourceanalyzer.h"
#include "importrun.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtTest/QtTest>

#include <fcntl.h>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

using namespace Vesk;

class AnalyzerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void classifies_data();
    void classifies();
    void endsInLinkCycles();
    void walksDeepTreesWithFewFiles();
    void leavesSpecialFilesAndHiddenOnesAlone();
    void namesWhatQtCannotDecode();
    void stops();
    void finishesAfterAnException();

private:
    /// What analyze() visits, as "16 a/b", sorted; "finished" as often as it was signalled.
    static QStringList visits(CSourceAnalyzer& analyzer, const QString& path, const QDir& base);
};

QStringList AnalyzerTest::visits(CSourceAnalyzer& analyzer, const QString& path, const QDir& base)
{
    QStringList found;
    QObject context;
    connect(&analyzer, &CSourceAnalyzer::visit, &context,
            [&](const CSourceAnalyzer::AnalyzeResult& result) {
                found.append(QStringLiteral("%1 %2").arg(
                    QString::number(result.type),
                    base.relativeFilePath(result.fileInfo.absoluteFilePath())));
            });
    connect(&analyzer, &CSourceAnalyzer::finished, &context,
            [&found] { found.append("finished"); });
    analyzer.analyze(path);
    found.sort();
    return found;
}

void AnalyzerTest::classifies_data()
{
    QTest::addColumn<QStringList>("files"); ///< "name" or "name size"; a folder ends in "/"
    QTest::addColumn<QString>("path");
    QTest::addColumn<QStringList>("expected");

    const QStringList nothing("finished");
    QTest::newRow("missing") << QStringList("a") << "b" << nothing;
    QTest::newRow("empty folder") << QStringList("a/") << "a" << nothing;
    QTest::newRow("file") << QStringList("a.mp4") << "a.mp4"
                          << QStringList({"1 a.mp4", "finished"});
    QTest::newRow("no suffix") << QStringList("a") << "a" << QStringList({"1 a", "finished"});
    QTest::newRow("image") << QStringList("Film.ISO") << "Film.ISO"
                           << QStringList({"4 Film.ISO", "finished"});
    QTest::newRow("ifo as large as a stray one") << QStringList("film.Ifo 10485760") << "film.Ifo"
                                                 << QStringList({"1 film.Ifo", "finished"});
    QTest::newRow("larger ifo") << QStringList("film.Ifo 10485761") << "film.Ifo"
                                << QStringList({"64 film.Ifo", "finished"});
    QTest::newRow("dvd before blu-ray") << QStringList({"d/VIDEO_TS/a.vob", "d/BDMV/x", "d/e"})
                                        << "d" << QStringList({"32 d", "finished"});
    QTest::newRow("file called like a disc folder")
        << QStringList({"d/BDAV", "d/a.mp4"}) << "d" << QStringList({"16 d", "finished"});
    QTest::newRow("disc in a tree")
        << QStringList({"a/b/BDMV/x", "a/b/c.mp4", "a/d.mp4", "a/e/f.mkv"}) << "a"
        << QStringList({"1 a/d.mp4", "1 a/e/f.mkv", "16 a/b", "finished"});
    QTest::newRow("within a disc")
        << QStringList({"d/VIDEO_TS/VTS_01_1.VOB", "d/VIDEO_TS/VIDEO_TS.IFO"}) << "d/VIDEO_TS"
        << QStringList({"1 d/VIDEO_TS/VIDEO_TS.IFO", "1 d/VIDEO_TS/VTS_01_1.VOB", "finished"});
}

void AnalyzerTest::classifies()
{
    QFETCH(QStringList, files);
    QFETCH(QString, path);
    const ImportFolder folder;
    for (const QString& file : files) {
        const QStringList parts = file.split(' ');
        if (file.endsWith('/'))
            folder.folder(file);
        else if (parts.size() == 2)
            QVERIFY(QFile::resize(folder.file(parts.at(0)), parts.at(1).toLongLong()));
        else
            folder.file(file);
    }
    CSourceAnalyzer analyzer;
    QTEST(visits(analyzer, folder.path(path), QDir(folder.path(QString()))), "expected");
}

void AnalyzerTest::endsInLinkCycles()
{
    const ImportFolder folder;
    folder.file("a/b/c.mp4");
    QVERIFY(QFile::link(folder.path("a"), folder.path("a/b/up")));
    QVERIFY(QFile::link(folder.path("a/b"), folder.path("a/again")));
    QVERIFY(QFile::link(folder.path("nowhere"), folder.path("a/broken")));
    CSourceAnalyzer analyzer;
    const QDir base(folder.path("a/b"));
    for (int pass = 0; pass < 2; ++pass) {
        const QStringList found = visits(analyzer, folder.path("a"), base);
        QCOMPARE(found.size(), 2);
        QVERIFY(found.first().endsWith("c.mp4"));
    }
}

void AnalyzerTest::walksDeepTreesWithFewFiles()
{
    const ImportFolder folder;
    QString deep = "d";
    for (int i = 0; i < 200; ++i)
        deep += "/d";
    folder.file(deep + "/film.mp4");
    CSourceAnalyzer analyzer;
    QCOMPARE(visits(analyzer, folder.path("d"), QDir(folder.path(deep))),
             QStringList({"1 film.mp4", "finished"}));
}

void AnalyzerTest::leavesSpecialFilesAndHiddenOnesAlone()
{
    const ImportFolder folder;
    const QString dir = folder.folder("a");
    QCOMPARE(mkfifo(QFile::encodeName(dir + "/pipe.mp4").constData(), 0600), 0);
    folder.file("a/.hidden.mp4");
    CSourceAnalyzer analyzer;
    QCOMPARE(visits(analyzer, dir, QDir(dir)), QStringList("finished"));
    QCOMPARE(visits(analyzer, dir + "/pipe.mp4", QDir(dir)), QStringList("finished"));
    QCOMPARE(visits(analyzer, "/dev/null", QDir(dir)), QStringList("finished"));
    // Named by itself, a hidden file is meant.
    QCOMPARE(visits(analyzer, dir + "/.hidden.mp4", QDir(dir)),
             QStringList({"1 .hidden.mp4", "finished"}));
}

void AnalyzerTest::namesWhatQtCannotDecode()
{
    const ImportFolder folder;
    const QString dir = folder.folder("a");
    folder.file("a/caf\u00e9.mp4");
    const QByteArray name = QFile::encodeName(dir) + "/caf\xe9.mp4";
    QCOMPARE(close(creat(name.constData(), 0600)), 0);
    CSourceAnalyzer analyzer;
    QCOMPARE(visits(analyzer, dir, QDir(dir)),
             QStringList({QStringLiteral("1 caf\u00e9.mp4"), QStringLiteral("1 caf\ufffd.mp4"),
                          "finished"}));
}

void AnalyzerTest::stops()
{
    const ImportFolder folder;
    folder.file("a/1.mp4");
    folder.file("a/2.mp4");
    folder.file("a/b/3.mp4");
    CSourceAnalyzer analyzer;
    int visited = 0;
    // Called from a receiver, it must not wait for itself.
    connect(&analyzer, &CSourceAnalyzer::visit, [&] {
        ++visited;
        analyzer.stop();
    });
    analyzer.analyze(folder.path("a"));
    QCOMPARE(visited, 1);
    QVERIFY(analyzer.isStopped());
    const QDir base(folder.path("a"));
    QCOMPARE(visits(analyzer, folder.path("a"), base), QStringList("finished"));
    QCOMPARE(visits(analyzer, folder.path("a/1.mp4"), base), QStringList({"1 1.mp4", "finished"}));
}

void AnalyzerTest::finishesAfterAnException()
{
    const ImportFolder folder;
    const ImportRun log;
    CSourceAnalyzer analyzer;
    QSignalSpy finished(&analyzer, SIGNAL(finished()));
    connect(&analyzer, &CSourceAnalyzer::visit, [] { throw std::runtime_error("broken"); });
    analyzer.analyze(folder.file("1.mp4"));
    analyzer.analyze(folder.path("1.mp4"));
    QCOMPARE(finished.count(), 2);
    const QString record("20030009 broken csourceanalyzer.cpp");
    QCOMPARE(log.log(), QStringList({record, record}));
}

QTEST_GUILESS_MAIN(AnalyzerTest)
#include "tst_analyzer.moc"
