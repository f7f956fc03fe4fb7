// SPDX-License-Identifier: GPL-2.0-or-later
//
// One import as its host hears it: order of signals, filter, percentages, errors, stops, and
// replies that are deleted while it runs.
#include "cimportcontext.h"
#include "importrun.h"
#include "vsputils/cveskexception.h"

#include <QtCore/QProcess>
#include <QtCore/QThread>

#include <atomic>
#include <stdexcept>

using namespace Vesk;

class ImportLoopTest : public EngineTest
{
    Q_OBJECT

private Q_SLOTS:
    void signalsComeInOrder()
    {
        const ImportFolder folder;
        const QString good = folder.file("good.mp4");
        const QString bad = folder.file("bad.mp4");
        const QString refused = folder.file("refused.txt");
        withVideos({good});
        ImportRun import;
        import.run({good, bad, folder.path("missing"), refused});
        QCOMPARE(import.events(),
                 QString("taskProcess ImportDone %1, importUrl %1, importPercentChanged 25, "
                         "importError 2 %2, importUrl %2, importPercentChanged 50, "
                         "importPercentChanged 75, importError 0 %3, importPercentChanged 100, "
                         "importFinished, snapPercentChanged 100, taskProcess SnapDone %1, "
                         "snapFinished, finished")
                     .arg(good, bad, refused));
        QCOMPARE(engine.calls().first(), "beginImport");
        CVeskList* tasks = import.reply->tasks();
        QVERIFY(tasks->count() == 1 && tasks->item(0) == import.tasks.at(0).get());
        QVERIFY(import.reply->isFinished() && import.reply->wait(0) && import.log().isEmpty());
        import.reply.reset();
        QCOMPARE(import.tasks.at(0)->url(), good);

        const QString other = withVideos({folder.file("a/1.mp4"), folder.file("a/2.mp4")}).first();
        ImportRun percentages;
        percentages.run({folder.path("a"), good, other});
        QCOMPARE(
            percentages.events().filter("Percent").replaceInStrings("PercentChanged", "").join(' '),
            "import 33 import 66 import 100 snap 25 snap 50 snap 75 snap 100");
    }

    void purposes()
    {
        const ImportFolder folder;
        const QString good = withVideos({folder.file("good.xyz")}).first();
        const QString bad = folder.file("bad.xyz");
        /// What is heard of the two, and whether the engine's object is still with the task.
        const auto heard = [&](void (CImportSource::*purpose)(bool), const QStringList& paths) {
            CImportContext::instance()->setFileFormats("*.xyz;");
            ImportRun import;
            import.source.setForImport(false);
            (import.source.*purpose)(true);
            import.run(paths);
            return import.events().filter(QRegularExpression("Done|Error|inished")).join(' ') +
                   ' ' + engine.leftovers().join(' ');
        };
        const QString made = "taskProcess ImportDone " + good;
        const QString failed = " importError 2 " + bad;
        const QString snapped = " taskProcess SnapDone " + good + " snapFinished finished ";
        QCOMPARE(heard(&CImportSource::setForPlay, {good, bad}),
                 made + failed + " importFinished finished importer");
        QCOMPARE(heard(&CImportSource::setForImport, {good, bad}),
                 made + failed + " importFinished" + snapped);
        // All formats are taken, and nothing is reported.
        CImportContext::instance()->setFileFormats("");
        QCOMPARE(heard(&CImportSource::setForConvert, {good, bad}),
                 made + " importFinished" + snapped);
        QCOMPARE(heard(&CImportSource::setForImport, {}), "importFinished snapFinished finished ");
        CImportReply unused;
        QVERIFY(unused.isFinished() && unused.wait());
    }

    void filtersFormats()
    {
        const auto import = [](const char* name, const char* formats, const char* forbidden,
                               bool limited = true) {
            const ImportFolder folder;
            CImportContext::instance()->setFileFormats(formats);
            CImportContext::instance()->setForbidFormats(forbidden);
            CImportContext::instance()->setLimitFileFormat(limited);
            ImportRun import;
            import.run(withVideos({folder.file(name)}));
            return import.events().first().section('/', 0, 0);
        };
        const QString imported = "taskProcess ImportDone ";
        QCOMPARE(import("clip.MP4", "*.avi;*.mp4;", ""), imported);
        QCOMPARE(import("clip.mkv", "*.avi;*.mp4;", ""), "importError 0 ");
        QCOMPARE(import("clip.avi", "*.avi;", "*.AVI;"), "importError 1 ");
        QCOMPARE(import("clip.mkv", "", "*.mkv;", false), imported);
        QCOMPARE(import("clip", "*.avi;", ""), "importError 0 ");
        QCOMPARE(import("clip", "*.;", ""), imported);
        QCOMPARE(import("clip.avi.part", "*.avi;", ""), "importError 0 ");
    }

    /// Under names that Qt cannot decode. Hidden entries and empty folders are left out, and the
    /// neighbour, which is called as the others are shown, is imported once.
    void namesThatAreNoText()
    {
        const ImportFolder folder;
        const auto make = [&folder](const char* name) {
            QProcess::execute("sh", {"-c", QString("cd %1; %2").arg(folder.path("a"), name)});
        };
        withVideos({folder.file(u8"a/\ufffd.mp4")});
        make("x=$(printf '\\351'); touch $x.mp4 $x.iso $x.txt .$x.mp4; mkdir -p $x $x.empty/.h "
             "$x.dvd/VIDEO_TS; touch $x/a.txt; mkfifo $x.pipe");
        ImportRun import;
        import.run({folder.path("a")});
        make("rm -r *"); // Qt cannot
        QStringList heard = import.events().filter(QRegularExpression("ImportDone|Error"));
        heard.replaceInStrings(folder.path("a/"), "").sort();
        QCOMPARE(heard, u8"importError 0 \ufffd.txt, importError 2 \ufffd, "
                        u8"importError 2 \ufffd.dvd, importError 2 \ufffd.iso, "
                        u8"importError 2 \ufffd.mp4, "
                        u8"taskProcess ImportDone \ufffd.mp4");
        QCOMPARE(engine.calls("create").size(), 1);
    }

    void exceptionsEndTheirItemAlone()
    {
        /// Of two files; `tasks` is how many of them are imported when `call` throws once.
        const auto expect = [this](const char* call, int kind, const char* record, int tasks) {
            const ImportFolder folder;
            int thrown = 0;
            engine.on(call, [&] {
                if (thrown++ > 0)
                    return;
                if (kind == 0)
                    throw std::runtime_error("broken");
                if (kind == 1)
                    throw 42;
                throw CVeskException(5, "own", "there", 9);
            });
            ImportRun import;
            import.run(withVideos({folder.file("1.mp4"), folder.file("2.mp4")}));
            QCOMPARE(import.log(), record);
            const QStringList events = import.events();
            QCOMPARE(events.filter("importError").size(), 2 - tasks);
            QCOMPARE(events.filter("SnapDone").size(), tasks);
            QVERIFY(int(import.tasks.size()) == tasks && events.last() == "finished");
        };
        // Before the importer is there, before it is handed over, and while it is.
        expect("createImporter", 0, "20030009 broken cimportreply_p.cpp", 1);
        expect("importer.queryExtension", 1, "20030001 Unknown exception cimportreply_p.cpp", 1);
        expect("importer.descriptor", 2, "5 own there", 1);
        // While its picture is taken, and at the end.
        expect("source.seek", 0, "20030009 broken cimportreply_p.cpp", 2);
        expect("importer.openSource", 1, "20030001 Unknown exception cimportreply_p.cpp", 2);
        expect("importer.close", 0, "20030009 broken cimportreply_p.cpp", 2);
        expect("source.release", 0, "20030009 broken engineaccess.h", 2);
        expect("importer.release", 1, "20030001 Unknown exception engineaccess.h", 2);

        // At the start, and from a receiver: the end is signalled whatever happens.
        const ImportFolder folder;
        const QStringList files = withVideos({folder.file("1.mp4")});
        engine.on("beginImport", [] { throw 42; });
        ImportRun import;
        connect(
            import.open(files), &CImportReply::importPercentChanged, &import, [] { throw 43; },
            Qt::DirectConnection);
        import.waitForFinished();
        QVERIFY(import.tasks.size() == 1 && import.log().size() == 2);
        QCOMPARE(import.events().filter("inished"), "importFinished, snapFinished, finished");
    }

    void exitStopsBeforeTheNextItem()
    {
        const ImportFolder folder;
        QStringList files;
        for (int i = 0; i < 50; ++i)
            files.append(folder.file(QString("a/%1.mp4").arg(i)));
        for (const QStringList& paths : {files, QStringList(folder.path("a"))}) {
            engine.reset();
            withVideos(files);
            ImportRun import;
            CImportReply* reply = import.open(paths);
            connect(
                reply, &CImportReply::taskProcess, reply, [reply] { reply->exit(); },
                Qt::DirectConnection);
            import.waitForFinished();
            QCOMPARE(engine.calls("createImporter").size(), 1);
            QCOMPARE(import.events().filter(QRegularExpression("Done|inished")).mid(1),
                     "importFinished, finished");
        }
    }

    void importsRunOneAfterAnother()
    {
        const ImportFolder folder;
        const QStringList files = withVideos({folder.file("1.mp4"), folder.file("2.mp4")});
        std::atomic<int> inside{0};
        std::atomic<bool> overlapped{false};
        engine.on("createImporter", [&] {
            if (++inside > 1)
                overlapped = true;
            QThread::msleep(30);
            --inside;
        });
        ImportRun imports[2];
        for (int i = 0; i < 2; ++i)
            imports[i].open({files.at(i)});
        for (ImportRun& import : imports)
            import.waitForFinished();
        QVERIFY(!overlapped && imports[0].tasks.size() + imports[1].tasks.size() == 2);
    }

    /// The thread unwinds through the import, and the next import finds the engine free.
    void aThreadThatIsKilledIsSignalled()
    {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
        QSKIP("the sanitizers do not survive a thread that is killed");
#endif
        const ImportFolder folder;
        const QStringList files = withVideos({folder.file("1.mp4")});
        engine.on("beginImport", [] {
            QThread::currentThread()->terminate();
            QThread::sleep(60);
        });
        ImportRun killed;
        killed.run(files);
        QCOMPARE(killed.events(), "terminated, finished");
        engine.hook = nullptr;
        ImportRun next;
        next.run(files);
        QCOMPARE(int(next.tasks.size()), 1);
    }

    /// Most telling under the sanitizers.
    void repliesAreDeletedAtAnyMoment()
    {
        const ImportFolder folder;
        for (int i = 0; i < 20; ++i)
            withVideos({folder.file(QString("a/%1.mp4").arg(i))});
        for (int round = 0; round < 300; ++round) {
            ImportRun import;
            import.open({folder.path("a")});
            // 10 ms is when the import begins.
            QThread::usleep(static_cast<unsigned long>(round % 100) * 200);
            if (round % 3 == 0)
                import.reply->exit();
            if (round % 5 == 0)
                QCoreApplication::processEvents();
            import.reply.reset();
        }
    }

    void nothingIsHeardOfAReplyInDestruction()
    {
        const ImportFolder folder;
        withVideos({folder.file("a/1.mp4")});
        folder.file("a/2.mp4");
        std::atomic<bool> inEngine{false};
        std::atomic<bool> goOn{false};
        engine.on("createImporter", [&] {
            inEngine = true;
            while (!goOn)
                QThread::msleep(1);
            QThread::msleep(50); // the destructor is waiting by now
        });
        ImportRun import;
        import.open({folder.path("a")});
        while (!inEngine)
            QThread::msleep(1);
        goOn = true;
        import.reply.reset();
        QCOMPARE(import.events(), "");
        // The task that was being made had nobody to go to, and has gone by the end of the test.
    }
};

QTEST_GUILESS_MAIN(ImportLoopTest)
#include "tst_importloop.moc"
