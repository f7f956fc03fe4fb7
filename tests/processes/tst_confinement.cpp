// SPDX-License-Identifier: GPL-2.0-or-later
//
// What an engine process cannot do, and what the near half does not do for it.
#include "enginelink/supervision.h"
#include "files.h"
#include "files/itemfiles.h"
#include "server/sandbox.h"

#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/wait.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <functional>

using engine::ItemFiles;

using Attempt = std::function<bool()>;
Q_DECLARE_METATYPE(Attempt)

namespace {

/// What `attempt` comes to in a confined copy of this process: 0 when it succeeds, else its errno.
int confined(const Attempt& attempt)
{
    const pid_t process = fork();
    if (process == 0) {
        engine::enterSandbox();
        errno = 0;
        _exit(attempt() ? 0 : errno == 0 ? 255 : errno);
    }
    int status = 0;
    waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

QString readAll(const wire::Descriptor& file)
{
    char text[100] = "";
    return file && pread(file.get(), text, sizeof(text) - 1, 0) >= 0 ? QString(text) : QString();
}

} // namespace

class ConfinementTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        writeFile(m_folder.filePath("file"), "content");
        const int file = ::open(path("file").constData(), O_RDONLY);
        // What is open goes on being readable, and memory can be had.
        QCOMPARE(confined([file] {
                     char text[7];
                     return pread(file, text, 7, 0) == 7 && malloc(10 << 20) != nullptr;
                 }),
                 0);
        ::close(file);
    }

    void cannot_data()
    {
        QTest::addColumn<Attempt>("attempt");
        const auto row = [](const char* name, const Attempt& attempt) {
            QTest::newRow(name) << attempt;
        };
        const QByteArray file = path("file");
        const QByteArray other = path("other");
        const pid_t parent = getpid();
        row("open", [file] { return ::open(file.constData(), O_RDONLY) >= 0; });
        row("create", [other] { return ::open(other.constData(), O_CREAT | O_WRONLY, 0600) >= 0; });
        row("rename", [=] { return rename(file.constData(), other.constData()) == 0; });
        row("remove", [file] { return unlink(file.constData()) == 0; });
        row("link", [=] { return link(file.constData(), other.constData()) == 0; });
        row("make a folder", [other] { return mkdir(other.constData(), 0700) == 0; });
        row("look at a file", [file] {
            struct stat status;
            return stat(file.constData(), &status) == 0;
        });
        row("have others signalled", [] {
            return fcntl(0, F_SETOWN, getppid()) == 0 || fcntl(0, F_SETSIG, SIGKILL) == 0 ||
                   fcntl(0, F_SETFL, O_ASYNC) == 0;
        });
        row("lock a file", [] {
            struct flock whole = {};
            whole.l_type = F_RDLCK;
            return fcntl(0, F_SETLK, &whole) == 0;
        });
        row("talk to the network", [] { return socket(AF_INET, SOCK_STREAM, 0) >= 0; });
        row("talk to other programs", [] { return socket(AF_UNIX, SOCK_STREAM, 0) >= 0; });
        row("start a program", [] {
            char* arguments[] = {const_cast<char*>("/bin/true"), nullptr};
            return execv("/bin/true", arguments) == 0;
        });
        row("make a process", [] { return fork() >= 0; });
        row("signal its parent", [parent] { return kill(parent, SIGCONT) == 0; });
        row("trace its parent",
            [parent] { return ptrace(PTRACE_ATTACH, parent, nullptr, nullptr) == 0; });
        row("read its parent's memory", [parent] {
            static int something = 1;
            int copy = 0;
            iovec here = {&copy, sizeof(copy)};
            iovec there = {&something, sizeof(something)};
            return process_vm_readv(parent, &here, 1, &there, 1, 0) > 0;
        });
        row("raise its limits", [] {
            const rlimit limit = {RLIM_INFINITY, RLIM_INFINITY};
            return setrlimit(RLIMIT_AS, &limit) == 0;
        });
        row("run what it has written", [] {
            return mmap(nullptr, 4096, PROT_WRITE | PROT_EXEC, MAP_PRIVATE | MAP_ANONYMOUS, -1,
                        0) != MAP_FAILED;
        });
#ifndef VSPIMPORT_SANITIZED
        row("take all memory", [] {
            return mmap(nullptr, size_t(8) << 30, PROT_READ | PROT_WRITE,
                        MAP_PRIVATE | MAP_ANONYMOUS, -1, 0) != MAP_FAILED;
        });
#endif
    }

    void cannot()
    {
        QFETCH(Attempt, attempt);
        QVERIFY(confined(attempt) != 0);
        QCOMPARE(contentOf(m_folder.filePath("file")), QByteArray("content"));
    }

    void saysWhatIsInForce()
    {
        const pid_t process = fork();
        if (process == 0)
            _exit(int(engine::enterSandbox()));
        int status = 0;
        waitpid(process, &status, 0);
        int expected = int(wire::allProtections);
#ifdef VSPIMPORT_SANITIZED
        expected &= ~wire::MemoryLimit;
#endif
        const int tellVersion = 1;
        if (syscall(SYS_landlock_create_ruleset, nullptr, 0, tellVersion) < 1)
            expected &= ~wire::FileSystem; // an old kernel, or one that has it switched off
        QCOMPARE(WEXITSTATUS(status), expected);
    }

    /// What is opened for an item: itself, what lies beneath it, and nothing else.
    void opensWhatIsOfAnItem_data()
    {
        QTest::addColumn<QString>("item");
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("content");
        const auto row = [](const char* name, const char* item, const char* file,
                            const char* content) {
            QTest::newRow(name) << QString(item) << QString(file) << QString(content);
        };
        row("a file", "film.mp4", "film.mp4", "film");
        row("a file through a link", "link.mp4", "link.mp4", "film");
        row("a file beside it", "film.mp4", "secret", "");
        row("a folder's", "disc", "disc/BDMV/index.bdmv", "index");
        row("of a folder with a separator", "disc/", "disc/BDMV/index.bdmv", "index");
        row("with two separators", "disc", "disc//BDMV//index.bdmv", "index");
        row("a folder as a file", "disc", "disc/BDMV", "");
        row("upwards", "disc", "disc/../secret", "");
        row("up and down", "disc", "disc/BDMV/../BDMV/index.bdmv", "index");
        row("a link inside", "disc", "disc/inside", "index");
        row("a link outside", "disc", "disc/outside", "");
        row("a link to a folder outside", "disc", "disc/up/secret", "");
        row("an absolute link", "disc", "disc/absolute", "");
        row("a pipe", "disc", "disc/pipe", "");
        row("a folder with a name that begins alike", "disc", "disc2/file", "");
        row("a table beside an IFO file", "disc/VIDEO_TS/VTS_01_0.IFO/",
            "disc/VIDEO_TS/VTS_01_1.VOB", "video");
        row("anything else beside it", "disc/VIDEO_TS/VTS_01_0.IFO", "disc/VIDEO_TS/notes.txt", "");
        row("the system's", "disc", "/etc/passwd", "");
    }

    void opensWhatIsOfAnItem()
    {
        static const bool isMade = [this] {
            for (const auto& [name, content] :
                 {std::pair("film.mp4", "film"), std::pair("secret", "secret"),
                  std::pair("disc/BDMV/index.bdmv", "index"),
                  std::pair("disc/VIDEO_TS/VTS_01_0.IFO", "table"),
                  std::pair("disc/VIDEO_TS/VTS_01_1.VOB", "video"),
                  std::pair("disc/VIDEO_TS/notes.txt", "notes"), std::pair("disc2/file", "other")})
                writeFile(m_folder.filePath(name), content);
            for (const auto& [target, name] :
                 {std::pair("film.mp4", "link.mp4"), std::pair("BDMV/index.bdmv", "disc/inside"),
                  std::pair("../secret", "disc/outside"), std::pair("..", "disc/up")})
                symlink(target, path(name).constData());
            symlink(path("secret").constData(), path("disc/absolute").constData());
            return mkfifo(path("disc/pipe").constData(), 0600) == 0;
        }();
        QVERIFY(isMade);
        QFETCH(QString, item);
        QFETCH(QString, file);
        QFETCH(QString, content);
        const ItemFiles files = ItemFiles::ofItem(path(item).toStdString());
        const QByteArray wanted = file.startsWith('/') ? file.toUtf8() : path(file);
        QCOMPARE(readAll(files.open(wanted.toStdString())), content);
        std::vector<ItemFiles::Entry> entries;
        if (content.isEmpty())
            QVERIFY(files.list(path(".").toStdString(), entries) != 0);
    }

    /// A timeline opens the files that it names, and what their discs tell about them.
    void opensWhatATimelineNames()
    {
        for (const char* name : {"a/BDMV/STREAM/1.m2ts", "a/BDMV/STREAM/2.m2ts",
                                 "a/BDMV/CLIPINF/1.clpi", "a/BDMV/CLIPINF/2.clpi", "image.iso"})
            writeFile(m_folder.filePath(name), name);
        writeFile(m_folder.filePath("t.seix"), "timeline");
        for (const char* link : {"a/BDMV/STREAM/3.m2ts", "a/BDMV/CLIPINF/3.clpi"})
            QVERIFY(QFile::link(m_folder.filePath("image.iso"), m_folder.filePath(link)));
        engine::Timeline timeline;
        timeline.items.resize(3);
        timeline.items[2].path = path("a/BDMV/STREAM/3.m2ts").toStdString();
        timeline.items[0].path = path("a/BDMV/STREAM/1.m2ts").toStdString();
        timeline.items[1].path = path("image.iso/BDMV/STREAM/1.m2ts").toStdString();
        const auto files = ItemFiles::ofTimeline(path("t.seix").toStdString(), timeline);
        for (const char* name :
             {"t.seix", "a/BDMV/STREAM/1.m2ts", "a/BDMV/CLIPINF/1.clpi", "image.iso"})
            QVERIFY2(files.open(path(name).toStdString()), name);
        for (const char* name : {"a/BDMV/STREAM/2.m2ts", "a/BDMV/CLIPINF/2.clpi", "film.mp4",
                                 "a/BDMV/STREAM/3.m2ts", "a/BDMV/CLIPINF/3.clpi"})
            QVERIFY2(!files.open(path(name).toStdString()), name);
        QCOMPARE(files.kindOf(path("a").toStdString()), ItemFiles::Kind::folder);
        QCOMPARE(files.kindOf(path("image.iso/BDMV").toStdString()), ItemFiles::Kind::none);
    }

private:
    QByteArray path(const QString& name) const
    {
        return QFile::encodeName(m_folder.filePath(name));
    }

    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(ConfinementTest)
#include "tst_confinement.moc"
