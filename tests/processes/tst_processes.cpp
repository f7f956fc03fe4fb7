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
#include "process/jobs.h"
#include "vspavbased/enginecontrol.h"
#include "vspavbased/enginelog.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <sys/socket.h>
#include <sys/wait.h>

#include <cmath>
#include <csignal>
#include <memory>
#include <mutex>
#include <thread>

using Vesk::CImportContext;

namespace {

constexpr std::chrono::milliseconds shortLimit{150};

using flatbuffers::FlatBufferBuilder;

/// An empty list of whatever it is used for.
flatbuffers::Offset<void> nothing(FlatBufferBuilder& builder)
{
    return builder.CreateVector(std::vector<flatbuffers::Offset<void>>()).o;
}

template <typename Job, typename Answer>
bool isBelieved(FlatBufferBuilder& builder, flatbuffers::Offset<Answer> answer)
{
    int ends[2];
    socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends);
    wire::Channel far(wire::Descriptor(ends[0]), wire::Channel::Descriptors::refused);
    wire::Channel near(wire::Descriptor(ends[1]), wire::Channel::Descriptors::refused);
    far.send(builder, answer, wire::noDeadline);
    wire::Letter letter;
    Job job({"/item", nullptr});
    return near.receive(letter, wire::noDeadline) == wire::Channel::Result::done &&
           job.accept(letter, nullptr) && job.record();
}

/// Whether a DVD is believed that tells one title so often, with so many chapters. `shift` moves
/// the place of their times by so many bytes; each of those begins with a number that is small
/// enough for that of the times.
bool isDvdBelieved(std::size_t titles, std::size_t chapters, int shift)
{
    FlatBufferBuilder builder;
    const auto text = builder.CreateString("dvd");
    const auto none = nothing(builder);
    const auto starts =
        builder.CreateVector(std::vector<double>(chapters, std::nextafter(1.0, 2.0)));
    const auto title = wire::CreateDvdTitle(builder, 1.0, starts, none.o, none.o);
    const auto* kept = reinterpret_cast<const flatbuffers::Table*>(
        flatbuffers::GetTemporaryPointer(builder, title));
    auto* place = const_cast<quint8*>(kept->GetAddressOf(wire::DvdTitle::VT_CHAPTER_STARTS));
    flatbuffers::WriteScalar(place, flatbuffers::ReadScalar<quint32>(place) + quint32(shift));
    const auto all = builder.CreateVector(std::vector(titles, title));
    const auto set = wire::CreateDvdTitleSet(builder, 1, all);
    const auto dvd = wire::CreateDvd(builder, builder.CreateVector(&set, 1));
    const auto item = wire::CreateItem(builder, text, text, none.o, 0, dvd);
    return isBelieved<engine::DescribeJob>(builder, wire::CreateDescribed(builder, item));
}

/// The same of a Blu-ray disc of two titles, of so many chapters of so many clips.
bool isBlurayBelieved(const char* first, const char* second, std::size_t chapters, unsigned clips)
{
    FlatBufferBuilder builder;
    const auto none = nothing(builder);
    const auto seconds = builder.CreateVector(std::vector<double>(clips, 1.0));
    const auto times = wire::CreateClipTimes(builder, seconds);
    const auto chapter = wire::CreateChapter(builder, 0, 0, clips);
    const auto chapterList = builder.CreateVector(std::vector(chapters, chapter));
    const auto title = [&](const char* name) {
        return wire::CreateTitle(builder, builder.CreateString(name), none.o, 0, 0, 0, 0,
                                 chapterList);
    };
    const flatbuffers::Offset<wire::Title> titles[] = {title(first), title(second)};
    const auto disc =
        wire::CreateDisc(builder, builder.CreateString(""), false, none.o,
                         builder.CreateVector(titles, 2), builder.CreateVector(&times, 1));
    return isBelieved<engine::ReadDiscJob>(builder, wire::CreateDiscRead(builder, disc));
}

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
        AVBased::setRefusalReceiver(
            [](const char* path, int refusal, const char*, void* test) {
                static_cast<ProcessesTest*>(test)->m_refusals[QString::fromUtf8(path)] = refusal;
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
        m_refusals.clear();
    }

    void cleanupTestCase()
    {
        AVBased::setLogReceiver(nullptr, nullptr);
        AVBased::setRefusalReceiver(nullptr, nullptr);
    }

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
        row("flood", "gave no answer within");
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
        const bool isLate = reason.contains("within");
        QCOMPARE(m_refusals, (QMap<QString, int>{{bad, isLate ? AVBased::RefusedTooLong
                                                              : AVBased::RefusedCrashed}}));
        for (const QString& path : {bad, picture})
            QVERIFY2(m_log.filter(path).filter(reason).size() == 1, qPrintable(m_log.join('\n')));
    }

    /// What is said twice is not taken for the answer to what is asked next.
    void answersTwice()
    {
        engine::policy().processes = 1;
        ModuleImport import;
        import.run({item("twice-1.mp4"), item("kill-11-1.mp4"), item("a.mp4")});
        engine::policy().processes = 4;
        QCOMPARE(import.failed, QStringList(item("kill-11-1.mp4")));
        QCOMPARE(import.tasks.size(), size_t(2));
        for (std::size_t i : {0, 1})
            QVERIFY(QFile::exists(import.picture(i)));
    }

    /// One bad item beside each good one: the good ones are imported, with pictures, and nothing of
    /// the bad ones is left.
    void manyMisbehave()
    {
        const char* const kinds[] = {"kill-11", "kill-6",  "exit",   "random", "lie-",
                                     "kill-9",  "endless", "closed", "order",  "memory"};
        // None of them takes its time, and the good ones may, on a machine that has a lot to do.
        engine::policy().describe = engine::policy().takePicture = 20 * shortLimit;
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
        engine::policy().describe = engine::policy().takePicture = shortLimit;
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
        QVERIFY(m_refusals.isEmpty());
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
        QCOMPARE(m_refusals.values(), QList<int>{AVBased::RefusedNoEngine});
        QCOMPARE(m_log.filter("/nowhere/vspimport-engine").size(), 1);
        QVERIFY(QByteArray(AVBased::engineFailure()).contains("/nowhere/vspimport-engine"));
        engine::policy().program = SCRIPTED_ENGINE;
        ModuleImport next;
        next.run({item("a.mp4")});
        QVERIFY(next.failed.isEmpty());
        QCOMPARE(AVBased::engineFailure(), "");
    }

    /// In a message that is well-formed, parts may lie in the same place, or numbers askew.
    void believesNoImpossibleAnswer()
    {
        QVERIFY(isDvdBelieved(2, 10, 0));
        QVERIFY(!isDvdBelieved(10000, 10000, 0));
        QVERIFY(!isDvdBelieved(2, 10, 4));
        QVERIFY(isBlurayBelieved("a", "b", 100, 10));
        QVERIFY(!isBlurayBelieved("a", "a", 100, 10));
        QVERIFY(!isBlurayBelieved("a", "b", 10000, 10000));
    }

    /// Two imports at once, and a host that collects every child that ends.
    void hostsOfAllKinds()
    {
        struct sigaction collect = {};
        struct sigaction former = {};
        collect.sa_handler = [](int) {
            const int error = errno;
            while (waitpid(-1, nullptr, WNOHANG) > 0) {
            }
            errno = error;
        };
        sigaction(SIGCHLD, &collect, &former);
        ModuleImport first;
        ModuleImport second;
        first.open({item("a.mp4"), item("kill-11-1.mp4"), item("b.mp4")});
        second.run({item("c.mp4"), item("exit-1.mp4"), item("d.mp4")});
        first.wait();
        QCOMPARE(first.tasks.size(), size_t(2));
        QCOMPARE(second.tasks.size(), size_t(2));

        // A copy of this process has none of its threads, and leaves the processes alone; one that
        // lives longer does not keep them.
        const pid_t copy = fork();
        if (copy == 0)
            _exit(engine::EnginePool::instance().start() ? 0 : 1);
        int status = -1;
        waitpid(copy, &status, 0);
        const pid_t idleCopy = fork();
        if (idleCopy == 0) {
            sleep(60);
            _exit(0);
        }
        ModuleImport third;
        third.run({item("e.mp4")});
        QCOMPARE(third.tasks.size(), size_t(1));
        QTRY_COMPARE(processesBelow(), QList<int>({int(idleCopy)}));
        kill(idleCopy, SIGKILL);
        waitpid(idleCopy, nullptr, 0);
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
    QMap<QString, int> m_refusals; ///< by path
};

QTEST_GUILESS_MAIN(ProcessesTest)
#include "tst_processes.moc"
