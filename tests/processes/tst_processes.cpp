// SPDX-License-Identifier: GPL-2.0-or-later
//
// The module on the near half of the engine, with a far half that misbehaves: whatever that does
// costs the item that it is at, and nothing else.
#include "cimportcontext.h"
#include "engineobjects.h"
#include "files.h"
#include "moduleimport.h"
#include "policy.h"
#include "process/enginepool.h"
#include "vspavbased/enginecontrol.h"
#include "vspavbased/enginelog.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <sys/wait.h>

#include <csignal>
#include <memory>
#include <mutex>
#include <thread>

using Vesk::CImportContext;

namespace {

constexpr std::chrono::milliseconds shortLimit{150};

} // namespace

class ProcessesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        AVBased::setLogReceiver(
            [](const char* message, void* test) {
                auto* self = static_cast<ProcessesTest*>(test);
                const std::lock_guard<std::mutex> lock(self->m_logMutex);
                self->m_log << QString::fromUtf8(message);
            },
            this);
        CImportContext::instance()->setSnapSize(QSize(32, 18));
        CImportContext::instance()->setLimitFileFormat(false);
        engine::policy().program = engine::policy().tablesProgram = SCRIPTED_ENGINE;
        engine::policy().processes = 4;
        engine::policy().describe = shortLimit;
        engine::policy().takePicture = shortLimit;
        engine::policy().idle = std::chrono::milliseconds(500);
    }

    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        CImportContext::instance()->setConfigDir(m_folder->filePath("pictures"));
        m_log.clear();
    }

    void cleanupTestCase() { AVBased::setLogReceiver(nullptr, nullptr); }

    void misbehaviour_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("reason");
        const auto row = [](const char* name, const char* reason) {
            QTest::newRow(name) << QString(name) << QString(reason);
        };
        row("kill-11", "signal 11");
        row("kill-6", "signal 6");
        row("kill-9", "signal 9");
        row("exit", "status 0");
        row("memory", "want of memory");
        row("loop", "gave no answer within");
        row("sleep", "gave no answer within");
        row("late", "gave no answer within");
        row("endless", "makes no sense");
        row("short", "gave no answer within");
        row("deaf", "gave no answer within");
        row("order", "makes no sense");
        row("random", "");
        row("lie-", "makes no sense");
        row("closed", "closed its socket");
    }

    void misbehaviour()
    {
        QFETCH(QString, name);
        QFETCH(QString, reason);
        const QString bad = item(name + "-1.mp4");
        const QString picture = item("picture-" + name + "-1.mp4");
        ModuleImport import;
        import.run({item("a.mp4"), bad, item("b.mp4"), picture, item("c.mp4")});
        QCOMPARE(import.failed, QStringList(bad));
        QCOMPARE(import.tasks.size(), size_t(4));
        for (std::size_t i : {0, 1, 3})
            QVERIFY2(QFile::exists(import.picture(i)), qPrintable(import.picture(i)));
        QVERIFY(!QFile::exists(import.picture(2)));
        for (const QString& path : {bad, picture})
            QVERIFY2(m_log.filter(path).filter(reason).size() == 1, qPrintable(m_log.join('\n')));
    }

    /// One bad item beside each good one: the good ones are imported, with pictures, and nothing of
    /// the bad ones is left.
    void manyMisbehave()
    {
        const char* const kinds[] = {"kill-11", "kill-6",  "exit",   "random", "lie-",
                                     "kill-9",  "endless", "closed", "order",  "short"};
        QTRY_COMPARE(processesBelow().size(), 0);
        const int filesBefore = openDescriptors();
        QStringList bad;
        for (int i = 0; i < 1000; ++i) {
            bad << item(QString("%1-%2.mp4").arg(kinds[i % 10]).arg(i));
            item(QString("%1.mp4").arg(i));
        }
        QElapsedTimer timer;
        timer.start();
        {
            ModuleImport import;
            import.run({m_folder->path()});
            import.failed.sort();
            bad.sort();
            QCOMPARE(import.failed, bad);
            QCOMPARE(import.tasks.size(), size_t(1000));
            for (std::size_t i = 0; i < import.tasks.size(); ++i)
                QVERIFY2(QFile::exists(import.picture(i)), qPrintable(import.picture(i)));
        }
        qInfo("%lld ms", timer.elapsed());
        QTRY_COMPARE(processesBelow().size(), 0);
        QCOMPARE(openDescriptors(), filesBefore);
    }

    /// A stop takes effect at once, whatever the engine is at, and the next import works.
    void stops()
    {
        engine::policy().describe = std::chrono::hours(1);
        ModuleImport stopped;
        stopped.open({item("sleep-1.mp4"), item("a.mp4")});
        QTRY_VERIFY(processesBelow().size() >= 2);
        QTest::qWait(50);
        QElapsedTimer timer;
        timer.start();
        stopped.reply->exit();
        AVBased::stopEngine();
        QVERIFY(stopped.finished->wait(5000));
        QVERIFY(timer.elapsed() < 1000);
        engine::policy().describe = shortLimit;
        ModuleImport next;
        next.run({item("b.mp4")});
        QCOMPARE(next.tasks.size(), size_t(1));
    }

    void saysWhichProgramIsMissing()
    {
        QTRY_COMPARE(processesBelow().size(), 0); // the one that is there still serves
        engine::policy().program = "/nowhere/vspimport-engine";
        ModuleImport import;
        import.run({item("a.mp4")});
        QCOMPARE(import.failed.size(), 1);
        QCOMPARE(m_log.filter("/nowhere/vspimport-engine").size(), 1);
        QVERIFY(QByteArray(AVBased::engineFailure()).contains("/nowhere/vspimport-engine"));
        engine::policy().program = SCRIPTED_ENGINE;
        ModuleImport next;
        next.run({item("a.mp4")});
        QVERIFY(next.failed.isEmpty());
        QCOMPARE(AVBased::engineFailure(), "");
    }

    /// Two imports at once, and a host that collects every child that ends.
    void hostsOfAllKinds()
    {
        struct sigaction collect = {};
        struct sigaction former = {};
        collect.sa_handler = [](int) {
            while (waitpid(-1, nullptr, WNOHANG) > 0) {
            }
        };
        sigaction(SIGCHLD, &collect, &former);
        ModuleImport first;
        ModuleImport second;
        first.open({item("a.mp4"), item("kill-11-1.mp4"), item("b.mp4")});
        second.run({item("c.mp4"), item("exit-1.mp4"), item("d.mp4")});
        if (!first.reply->isFinished())
            QVERIFY(first.finished->wait(30000));
        QCOMPARE(first.reply->tasks()->count(), 2);
        QCOMPARE(second.tasks.size(), size_t(2));

        // A copy of this process has none of its threads, and leaves the processes alone.
        const pid_t copy = fork();
        if (copy == 0)
            std::exit(engine::EnginePool::instance().start() ? 0 : 1);
        int status = -1;
        waitpid(copy, &status, 0);
        ModuleImport third;
        third.run({item("e.mp4")});
        QCOMPARE(third.tasks.size(), size_t(1));
        sigaction(SIGCHLD, &former, nullptr);
        QTRY_COMPARE(processesBelow().size(), 0);
        // Tasks may go on another thread than the one that made them.
        std::thread([&third] { third.tasks.clear(); }).join();
    }

private:
    /// An item that the scripted engine knows by its name.
    QString item(const QString& name)
    {
        const QString path = m_folder->filePath(name);
        writeFile(path, "x");
        return path;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::mutex m_logMutex;
    QStringList m_log;
};

QTEST_GUILESS_MAIN(ProcessesTest)
#include "tst_processes.moc"
