// SPDX-License-Identifier: GPL-2.0-or-later
//
// One import as its host hears it: order of signals, filter, percentages, errors and stops.
#include "cimportcontext.h"
#include "fakeengine.h"
#include "importrun.h"
#include "vsputils/cveskexception.h"

#include <QtCore/QDir>
#include <QtCore/QThread>
#include <QtTest/QtTest>

#include <stdexcept>

using namespace Vesk;

namespace {

FakeItem videoItem()
{
    FakeItem item;
    item.movies = {FakeMovie{"", 0, "fake", {FakeStream()}, {}}};
    return item;
}

/// Puts a video into the engine at each path.
QStringList withVideos(const QStringList& paths)
{
    for (const QString& path : paths)
        FakeEngine::instance().items.insert(path.toUtf8(), videoItem());
    return paths;
}

} // namespace

class ImportLoopTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { FakeEngine::instance().reset(); }
    void cleanup();

    void signalsComeInOrder();
    void percentagesFollowPathsAndTasks();
    void nothingToImport();
    void onlyForPlayTakesNoSnapshots();
    void filtersFormats_data();
    void filtersFormats();
    void conversionTakesAllAndReportsNothing();
    void dispatchesByKind();
    void exceptionsEndTheirItemAlone_data();
    void exceptionsEndTheirItemAlone();
    void theEndIsSignalledWhateverHappens();
    void exitStopsBeforeTheNextItem_data();
    void exitStopsBeforeTheNextItem();
    void importsRunOneAfterAnother();
    void aThreadThatIsKilledIsSignalled();
};

void ImportLoopTest::cleanup()
{
    QCOMPARE(FakeEngine::instance().misuses(), QStringList());
    QCOMPARE(FakeEngine::instance().living(), QStringList());
}

void ImportLoopTest::signalsComeInOrder()
{
    const ImportFolder folder;
    const QString good = folder.file("good.mp4");
    const QString bad = folder.file("bad.mp4");
    const QString refused = folder.file("refused.txt");
    withVideos({good});
    ImportRun import;
    import.run({good, bad, folder.path("missing"), refused});
    QCOMPARE(import.events(),
             QStringList({"taskProcess ImportDone " + good, "importUrl " + good,
                          "importPercentChanged 25", "importError 2 " + bad, "importUrl " + bad,
                          "importPercentChanged 50", "importPercentChanged 75",
                          "importError 0 " + refused, "importPercentChanged 100", "importFinished",
                          "snapPercentChanged 100", "taskProcess SnapDone " + good, "snapFinished",
                          "finished"}));
    QCOMPARE(FakeEngine::instance().calls().first(), QString("beginImport"));
    QCOMPARE(import.reply->tasks()->count(), 1);
    QCOMPARE(import.reply->tasks()->item(0), import.task(0));
    QVERIFY(import.reply->isFinished() && import.reply->wait(0));
    QVERIFY(import.log().isEmpty());
}

void ImportLoopTest::percentagesFollowPathsAndTasks()
{
    const ImportFolder folder;
    const QStringList files = withVideos({folder.file("a/1.mp4"), folder.file("a/2.mp4"),
                                          folder.file("3.mp4"), folder.file("4.mp4")});
    ImportRun import;
    import.run({folder.path("a"), files.at(2), files.at(3)});
    QCOMPARE(
        import.events().filter("PercentChanged"),
        QStringList({"importPercentChanged 33", "importPercentChanged 66",
                     "importPercentChanged 100", "snapPercentChanged 25", "snapPercentChanged 50",
                     "snapPercentChanged 75", "snapPercentChanged 100"}));
}

void ImportLoopTest::nothingToImport()
{
    ImportRun import;
    import.run(QStringList());
    QCOMPARE(import.events(), QStringList({"importFinished", "snapFinished", "finished"}));
    QCOMPARE(import.reply->importPercent(), 0);
    const CImportReply unused;
    QVERIFY(unused.isFinished());
    QVERIFY(const_cast<CImportReply&>(unused).wait());
}

void ImportLoopTest::onlyForPlayTakesNoSnapshots()
{
    const ImportFolder folder;
    const QString file = withVideos({folder.file("1.mp4")}).first();
    ImportRun import;
    import.source.setForImport(false);
    import.source.setForPlay(true);
    import.run({file});
    QCOMPARE(import.events(),
             QStringList({"taskProcess ImportDone " + file, "importUrl " + file,
                          "importPercentChanged 100", "importFinished", "finished"}));
    QCOMPARE(FakeEngine::instance().calls("importer.openSource"), QStringList());
    // The engine's object stays with the task until the task goes.
    QCOMPARE(FakeEngine::instance().living(), QStringList("importer"));
}

void ImportLoopTest::filtersFormats_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("formats");
    QTest::addColumn<QString>("forbidden");
    QTest::addColumn<bool>("limited");
    QTest::addColumn<int>("error"); ///< -1 for none

    QTest::newRow("other case") << "clip.MP4"
                                << "*.avi;*.mp4;"
                                << "" << true << -1;
    QTest::newRow("unknown") << "clip.mkv"
                             << "*.avi;*.mp4;"
                             << "" << true << 0;
    QTest::newRow("forbidden goes first") << "clip.avi"
                                          << "*.avi;"
                                          << "*.AVI;" << true << 1;
    QTest::newRow("not limited") << "clip.mkv"
                                 << ""
                                 << "*.mkv;" << false << -1;
    QTest::newRow("no suffix") << "clip"
                               << "*.avi;"
                               << "" << true << 0;
    QTest::newRow("no suffix wanted") << "clip"
                                      << "*.;"
                                      << "" << true << -1;
    QTest::newRow("only the last suffix") << "clip.avi.part"
                                          << "*.avi;"
                                          << "" << true << 0;
}

void ImportLoopTest::filtersFormats()
{
    QFETCH(QString, name);
    QFETCH(QString, formats);
    QFETCH(QString, forbidden);
    QFETCH(bool, limited);
    QFETCH(int, error);
    const ImportFolder folder;
    CImportContext::instance()->setFileFormats(formats);
    CImportContext::instance()->setForbidFormats(forbidden);
    CImportContext::instance()->setLimitFileFormat(limited);
    const QString file = withVideos({folder.file(name)}).first();
    ImportRun import;
    import.run({file});
    QCOMPARE(import.taskCount(), error < 0 ? 1 : 0);
    QCOMPARE(import.events().filter("importUrl").size(), error < 0 ? 1 : 0);
    QCOMPARE(import.events().filter("importError"),
             error < 0 ? QStringList()
                       : QStringList(QStringLiteral("importError %1 %2").arg(error).arg(file)));
}

void ImportLoopTest::conversionTakesAllAndReportsNothing()
{
    const ImportFolder folder;
    const QString good = withVideos({folder.file("good.xyz")}).first();
    const QString bad = folder.file("bad.xyz");
    ImportRun import;
    import.source.setForImport(false);
    import.source.setForConvert(true);
    import.run({good, bad});
    QCOMPARE(import.taskCount(), 1);
    QCOMPARE(import.events().filter("importError"), QStringList());
    QVERIFY(import.events().contains("importUrl " + bad));
    QVERIFY(import.events().contains("snapFinished"));
}

void ImportLoopTest::dispatchesByKind()
{
    const ImportFolder folder;
    const QString dvd = folder.folder("dvd");
    folder.folder("dvd/VIDEO_TS");
    const QString bluray = folder.folder("bluray");
    folder.folder("bluray/BDMV");
    const QString image = folder.file("image.iso");
    const QString ifo = folder.file("film.ifo");
    QVERIFY(QFile::resize(ifo, 11 * 1024 * 1024));
    ImportRun import;
    import.run({dvd, bluray, image, ifo});
    QCOMPARE(
        FakeEngine::instance().calls().filter(QRegularExpression("createImporter|open ")),
        QStringList({"createImporter " + dvd + "/", "loader.open " + bluray, "loader.open " + image,
                     "createImporter " + image, "createImporter " + ifo + "/"}));
    QCOMPARE(import.events().filter("importError"),
             QStringList({"importError 2 " + dvd, "importError 2 " + bluray,
                          "importError 2 " + image, "importError 2 " + ifo}));
}

void ImportLoopTest::exceptionsEndTheirItemAlone_data()
{
    QTest::addColumn<QString>("call");
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("record");
    QTest::addColumn<int>("tasks");

    // Before the importer is there, before it is handed over, and while it is.
    QTest::newRow("open, standard")
        << "createImporter" << 0 << "20030009 broken cimportreply_p.cpp" << 1;
    QTest::newRow("query, unknown")
        << "importer.queryExtension" << 1 << "20030001 Unknown exception cimportreply_p.cpp" << 1;
    QTest::newRow("handing over, own") << "importer.descriptor" << 2 << "5 own there" << 1;
    QTest::newRow("copying") << "importer.movieInfo" << 0 << "20030009 broken cimportreply_p.cpp"
                             << 1;
    QTest::newRow("snapshot, standard")
        << "source.seek" << 0 << "20030009 broken cimportreply_p.cpp" << 2;
    QTest::newRow("snapshot, unknown")
        << "importer.openSource" << 1 << "20030001 Unknown exception cimportreply_p.cpp" << 2;
}

void ImportLoopTest::exceptionsEndTheirItemAlone()
{
    QFETCH(QString, call);
    QFETCH(int, kind);
    QFETCH(QString, record);
    QFETCH(int, tasks);
    const ImportFolder folder;
    const QStringList files = withVideos({folder.file("1.mp4"), folder.file("2.mp4")});
    int thrown = 0;
    FakeEngine::instance().hook = [&](const QString& name) {
        if (thrown > 0 || !name.startsWith(call))
            return;
        ++thrown;
        switch (kind) {
        case 0:
            throw std::runtime_error("broken");
        case 1:
            throw 42;
        default:
            throw CVeskException(5, "own", "there", 9);
        }
    };
    ImportRun import;
    import.run(files);
    QCOMPARE(thrown, 1);
    QCOMPARE(import.log(), QStringList(record));
    QCOMPARE(import.taskCount(), tasks);
    QCOMPARE(import.events().filter("importError").size(), 2 - tasks);
    QCOMPARE(import.events().filter("SnapDone").size(), tasks);
    QCOMPARE(import.events().last(), QString("finished"));
}

void ImportLoopTest::theEndIsSignalledWhateverHappens()
{
    const ImportFolder folder;
    const QStringList files = withVideos({folder.file("1.mp4")});
    FakeEngine::instance().hook = [](const QString& call) {
        if (call == QLatin1String("beginImport"))
            throw 42;
    };
    ImportRun import;
    import.open(files);
    connect(
        import.reply.get(), &CImportReply::importPercentChanged, &import, [] { throw 43; },
        Qt::DirectConnection);
    import.waitForFinished();
    QCOMPARE(import.taskCount(), 1);
    QCOMPARE(import.log().size(), 2);
    QCOMPARE(import.events().filter(QRegularExpression("inished")),
             QStringList({"importFinished", "snapFinished", "finished"}));
}

void ImportLoopTest::exitStopsBeforeTheNextItem_data()
{
    QTest::addColumn<bool>("inFolder");
    QTest::newRow("one large folder") << true;
    QTest::newRow("many paths") << false;
}

void ImportLoopTest::exitStopsBeforeTheNextItem()
{
    QFETCH(bool, inFolder);
    const ImportFolder folder;
    QStringList files;
    for (int i = 0; i < 50; ++i)
        files.append(folder.file(QStringLiteral("a/%1.mp4").arg(i)));
    withVideos(files);
    ImportRun import;
    FakeEngine::instance().hook = [&](const QString& call) {
        if (call.startsWith("createImporter"))
            import.running.load()->exit();
    };
    import.run(inFolder ? QStringList(folder.path("a")) : files);
    QCOMPARE(FakeEngine::instance().calls("createImporter").size(), 1);
    QCOMPARE(import.taskCount(), 1);
    QVERIFY(import.events().contains("importFinished"));
    QVERIFY(!import.events().contains("snapFinished"));
    QCOMPARE(import.events().last(), QString("finished"));
    QCOMPARE(import.events().filter("SnapDone"), QStringList());
}

void ImportLoopTest::importsRunOneAfterAnother()
{
    const ImportFolder folder;
    const QStringList files = withVideos({folder.file("1.mp4"), folder.file("2.mp4")});
    QAtomicInt inside;
    QAtomicInt worst;
    FakeEngine::instance().hook = [&](const QString& call) {
        if (!call.startsWith("createImporter"))
            return;
        worst.fetchAndStoreOrdered(qMax(worst.loadAcquire(), inside.fetchAndAddOrdered(1) + 1));
        QThread::msleep(30);
        inside.fetchAndAddOrdered(-1);
    };
    ImportRun first;
    ImportRun second;
    first.open({files.at(0)});
    second.open({files.at(1)});
    first.waitForFinished();
    second.waitForFinished();
    QCOMPARE(worst.loadAcquire(), 1);
    QCOMPARE(first.taskCount() + second.taskCount(), 2);
}

/// The thread unwinds through the import, and the next import finds the engine free.
void ImportLoopTest::aThreadThatIsKilledIsSignalled()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    QSKIP("the sanitizers do not survive a thread that is killed");
#endif
    const ImportFolder folder;
    const QStringList files = withVideos({folder.file("1.mp4")});
    QThread* worker = nullptr;
    FakeEngine::instance().hook = [&](const QString& call) {
        if (call == QLatin1String("beginImport")) {
            worker = QThread::currentThread();
            worker->terminate();
            QThread::sleep(60);
        }
    };
    ImportRun killed;
    killed.run(files);
    QCOMPARE(killed.events(), QStringList({"terminated", "finished"}));
    FakeEngine::instance().hook = nullptr;
    ImportRun next;
    next.run(files);
    QCOMPARE(next.taskCount(), 1);
}

QTEST_GUILESS_MAIN(ImportLoopTest)
#include "tst_importloop.moc"
