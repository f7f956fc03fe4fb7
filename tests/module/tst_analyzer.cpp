// SPDX-License-Identifier: GPL-2.0-or-later
//
// Finding and classifying the items below a path.
#include "csourceanalyzer.h"
#include "importrun.h"

#include <QtTest/QtTest>

#include <fcntl.h>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

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
        const auto found = [](const QStringList& files, const QString& path, int size = 1) {
            const ImportFolder folder;
            for (const QString& file : files)
                QFile::resize(folder.file(file), size);
            CSourceAnalyzer analyzer;
            return visits(analyzer, folder.path(path), folder.path({})).join(", ");
        };
        QCOMPARE(found({"a"}, "b"), QString("finished"));
        QCOMPARE(found({"a.mp4"}, "a.mp4"), QString("1 a.mp4, finished"));
        QCOMPARE(found({"a"}, "a"), QString("1 a, finished"));
        QCOMPARE(found({"Film.ISO"}, "Film.ISO"), QString("4 Film.ISO, finished"));
        QCOMPARE(found({"film.Ifo"}, "film.Ifo", 10485760), QString("1 film.Ifo, finished"));
        QCOMPARE(found({"film.Ifo"}, "film.Ifo", 10485761), QString("64 film.Ifo, finished"));
        QCOMPARE(found({"d/VIDEO_TS/a.vob", "d/BDMV/x", "d/e"}, "d"), QString("32 d, finished"));
        // A file that is called like the folder of a disc counts as one.
        QCOMPARE(found({"d/BDAV", "d/a.mp4"}, "d"), QString("16 d, finished"));
        QCOMPARE(found({"a/b/BDMV/x", "a/b/c.mp4", "a/d.mp4", "a/e/f.mkv"}, "a"),
                 QString("1 a/d.mp4, 1 a/e/f.mkv, 16 a/b, finished"));
        QCOMPARE(found({"d/VIDEO_TS/VTS_01_1.VOB"}, "d/VIDEO_TS"),
                 QString("1 d/VIDEO_TS/VTS_01_1.VOB, finished"));
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
            QCOMPARE(found.size(), 2);
            QVERIFY(found.first().endsWith("c.mp4"));
        }
    }

    void leavesSpecialFilesAndHiddenOnesAlone()
    {
        const ImportFolder folder;
        const QString dir = folder.path("a");
        folder.file("a/.hidden.mp4");
        QCOMPARE(mkfifo(qPrintable(dir + "/pipe.mp4"), 0600), 0);
        CSourceAnalyzer analyzer;
        for (const QString& path : {dir, dir + "/pipe.mp4", QString("/dev/null")})
            QCOMPARE(visits(analyzer, path, dir), QStringList("finished"));
        // Named by itself, a hidden file is meant.
        QCOMPARE(visits(analyzer, dir + "/.hidden.mp4", dir),
                 QStringList({"1 .hidden.mp4", "finished"}));
    }

    void namesWhatQtCannotDecode()
    {
        const ImportFolder folder;
        folder.file(u8"a/caf\u00e9.mp4");
        const QByteArray name = QFile::encodeName(folder.path("a")) + "/caf\xe9.mp4";
        QCOMPARE(close(creat(name.constData(), 0600)), 0);
        CSourceAnalyzer analyzer;
        QCOMPARE(visits(analyzer, folder.path("a"), folder.path("a")),
                 QStringList({u8"1 caf\u00e9.mp4", u8"1 caf\ufffd.mp4", "finished"}));
    }

    void stops()
    {
        const ImportFolder folder;
        for (const char* name : {"a/1.mp4", "a/2.mp4", "a/b/3.mp4"})
            folder.file(name);
        CSourceAnalyzer analyzer;
        int visited = 0;
        // Called from a receiver, it must not wait for itself.
        connect(&analyzer, &CSourceAnalyzer::visit, [&] {
            ++visited;
            analyzer.stop();
        });
        const QString base = folder.path("a");
        QCOMPARE(visits(analyzer, base, base).size(), 2);
        QCOMPARE(visited, 1);
        QVERIFY(analyzer.isStopped());
        QCOMPARE(visits(analyzer, base, base), QStringList("finished"));
        QCOMPARE(visits(analyzer, base + "/1.mp4", base), QStringList({"1 1.mp4", "finished"}));
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
