// SPDX-License-Identifier: GPL-2.0-or-later
//
// Replies that are deleted while their import runs, at every moment of it. Most telling under the
// sanitizers.
#include "cimportcontext.h"
#include "fakeengine.h"
#include "importrun.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QThread>
#include <QtTest/QtTest>

#include <atomic>

using namespace Vesk;

class LifetimeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { FakeEngine::instance().reset(); }
    void repliesAreDeletedAtAnyMoment();
    void nothingIsHeardOfAReplyInDestruction();
    void tasksOutliveTheirReply();
};

void LifetimeTest::repliesAreDeletedAtAnyMoment()
{
    const ImportFolder folder;
    FakeItem item;
    item.movies = {FakeMovie{"", 0, "fake", {FakeStream()}, {}}};
    for (int i = 0; i < 20; ++i)
        FakeEngine::instance().items.insert(folder.file(QStringLiteral("a/%1.mp4").arg(i)).toUtf8(),
                                            item);
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
    QCOMPARE(FakeEngine::instance().misuses(), QStringList());
    QCOMPARE(FakeEngine::instance().living(), QStringList());
}

void LifetimeTest::nothingIsHeardOfAReplyInDestruction()
{
    const ImportFolder folder;
    FakeItem item;
    item.movies = {FakeMovie{"", 0, "fake", {FakeStream()}, {}}};
    FakeEngine::instance().items.insert(folder.file("a/1.mp4").toUtf8(), item);
    folder.file("a/2.mp4");
    std::atomic<bool> inEngine{false};
    std::atomic<bool> goOn{false};
    FakeEngine::instance().hook = [&](const QString& call) {
        if (!call.startsWith("createImporter"))
            return;
        inEngine = true;
        while (!goOn)
            QThread::msleep(1);
        QThread::msleep(50); // the destructor is waiting by now
    };
    ImportRun import;
    import.open({folder.path("a")});
    while (!inEngine)
        QThread::msleep(1);
    goOn = true;
    import.reply.reset();
    QCOMPARE(import.events(), QStringList());
    // The task that was being made had nobody to go to.
    QCOMPARE(FakeEngine::instance().living(), QStringList());
}

void LifetimeTest::tasksOutliveTheirReply()
{
    const ImportFolder folder;
    const QString path = folder.file("1.mp4");
    FakeItem item;
    item.movies = {FakeMovie{"", 0, "fake", {FakeStream()}, {}}};
    FakeEngine::instance().items.insert(path.toUtf8(), item);
    ImportRun import;
    import.run({path});
    import.reply.reset();
    QCOMPARE(import.task(0)->url(), path);
    QCOMPARE(import.task(0)->movieInfo()->streamCount(), 1);
}

QTEST_GUILESS_MAIN(LifetimeTest)
#include "tst_lifetime.moc"
