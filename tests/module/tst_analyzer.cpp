// SPDX-License-Identifier: GPL-2.0-or-later
//
// Finding and classifying the items below a path.
#include "csourceanalyzer.h"
#include "importrun.h"

#include <stdexcept>
#include <sys/stat.h>

using namespace Vesk;

namespace {

/// What analyze() visits, as "16 a/b", sorted; "finished" as often as it was signalled.
QStringList visits(CSourceAnalyzer& analyzer, const QString& path, const QDir& base)
{
    QStringList found;
    QObject context;
    QObject::connect(&analyzer, &CSourceAnalyzer::visit, &context,
                     [&](const CSourceAnalyzer::AnalyzeResult& result) {
                         found.append(QString("%1 %2").arg(
                             QString::number(result.type),
                             base.relativeFilePath(result.fileInfo.absoluteFilePath())));
                     });
    QObject::connect(&analyzer, &CSourceAnalyzer::finished, &context,
                     [&found] { found.append("finished"); });
    analyzer.analyze(path);
    found.sort();
    return found;
}

} // namespace

class AnalyzerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void classifies()
    {
        const auto expect = [](const char* files, const char* path, const char* visited,
                               int size = 1) {
            const ImportFolder folder;
            for (const QString& file : QString(files).split(' '))
                QFile::resize(folder.file(file), size);
            CSourceAnalyzer analyzer;
            QCOMPARE(visits(analyzer, folder.path(path), folder.path({})),
                     visited + QString("finished"));
        };
        expect("a", "b", "");
        expect("a.mp4", "a.mp4", "1 a.mp4, ");
        expect("a", "a", "1 a, ");
        expect("Film.ISO", "Film.ISO", "4 Film.ISO, ");
        expect("film.Ifo", "film.Ifo", "1 film.Ifo, ", 10485760);
        expect("film.Ifo", "film.Ifo", "64 film.Ifo, ", 10485761);
        expect("d/VIDEO_TS/a.vob d/BDMV/x d/e", "d", "32 d, ");
        // A file that is called like the folder of a disc counts as one.
        expect("d/BDAV d/a.mp4", "d", "16 d, ");
        expect("a/b/BDMV/x a/b/c.mp4 a/d.mp4 a/e/f.mkv", "a", "1 a/d.mp4, 1 a/e/f.mkv, 16 a/b, ");
        expect("d/VIDEO_TS/a.VOB", "d/VIDEO_TS", "1 d/VIDEO_TS/a.VOB, ");
    }

    /// Asking for the real path of each folder takes minutes for these.
    void walksAsDeepAsPathsGo()
    {
        const ImportFolder folder;
        QString path = folder.path("a");
        while (path.size() < 4000)
            path += "/b";
        folder.file(path.mid(folder.path({}).size()) + "/1.mp4");
        CSourceAnalyzer analyzer;
        QCOMPARE(visits(analyzer, folder.path("a"), path), "1 1.mp4, finished");
    }

    void endsInLinkCycles()
    {
        const ImportFolder folder;
        folder.file("a/b/c.mp4");
        QVERIFY(QFile::link(folder.path("a"), folder.path("a/b/up")));
        QVERIFY(QFile::link(folder.path("a/b"), folder.path("a/again")));
        QVERIFY(QFile::link(folder.path("nowhere"), folder.path("a/broken")));
        CSourceAnalyzer analyzer;
        for (int pass = 0; pass < 2; ++pass) {
            const QStringList found = visits(analyzer, folder.path("a"), folder.path("a/b"));
            QVERIFY(found.size() == 2 && found.first().endsWith("c.mp4"));
        }
    }

    void leavesSpecialFilesAndHiddenOnesAlone()
    {
        const ImportFolder folder;
        const QString dir = QFileInfo(folder.file("a/.hidden.mp4")).path();
        QCOMPARE(mkfifo(qPrintable(dir + "/pipe.mp4"), 0600), 0);
        CSourceAnalyzer analyzer;
        for (const QString& path : {dir, dir + "/pipe.mp4", QString("/dev/null")})
            QCOMPARE(visits(analyzer, path, dir), "finished");
        // Named by itself, a hidden file is meant.
        QCOMPARE(visits(analyzer, dir + "/.hidden.mp4", dir), "1 .hidden.mp4, finished");
    }

    void stops()
    {
        const ImportFolder folder;
        for (const char* name : {"a/1.mp4", "a/2.mp4", "a/b/3.mp4"})
            folder.file(name);
        CSourceAnalyzer analyzer;
        // Called from a receiver, it must not wait for itself.
        connect(&analyzer, &CSourceAnalyzer::visit, [&] { analyzer.stop(); });
        const QString base = folder.path("a");
        QCOMPARE(visits(analyzer, base, base).size(), 2);
        QVERIFY(analyzer.isStopped());
        QCOMPARE(visits(analyzer, base, base), "finished");
        QCOMPARE(visits(analyzer, base + "/1.mp4", base), "1 1.mp4, finished");
    }

    void finishesAfterAnException()
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
};

QTEST_GUILESS_MAIN(AnalyzerTest)
#include "tst_analyzer.moc"
