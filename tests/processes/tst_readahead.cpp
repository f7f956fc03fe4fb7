// SPDX-License-Identifier: GPL-2.0-or-later
//
// The module on both halves of the engine: what comes of an import is the same, however many
// processes work at it, in whatever order, and whichever of them are lost.
#include "cimportcontext.h"
#include "files.h"
#include "fixture.h"
#include "moduleimport.h"
#include "policy.h"
#include "process/enginepool.h"

#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <csignal>
#include <dlfcn.h>

using Vesk::CImportContext;

namespace {

/// The pictures below a folder, by their names.
QMap<QString, QByteArray> picturesIn(const QString& folder)
{
    QMap<QString, QByteArray> pictures;
    for (const QString& name : filesBelow(folder))
        pictures.insert(name, contentOf(folder + '/' + name));
    return pictures;
}

} // namespace

class ReadAheadTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        CImportContext::instance()->setSnapSize(QSize(160, 90));
        CImportContext::instance()->setLimitFileFormat(false);
        CImportContext::instance()->setDvdSupport(true);
        CImportContext::instance()->setBdSupport(true);
        engine::policy().idle = std::chrono::seconds(1);
        engine::policy().processes = 1;
        importAll();
        m_expected = m_found;
        QVERIFY(m_expected.pictures.size() > 40);
        QVERIFY(m_expected.order.size() > 20);
    }

    /// The policy is changed while nobody is at work.
    void init()
    {
        QTRY_COMPARE_WITH_TIMEOUT(processesBelow().size(), 0, 20000);
        QCOMPARE(engine::EnginePool::instance().failure(), std::string());
        engine::policy().processes = 2;
        engine::policy().readsAhead = true;
    }

    void changesNothing_data()
    {
        QTest::addColumn<unsigned>("processes");
        QTest::addColumn<bool>("readsAhead");
        QTest::newRow("2 processes") << 2U << true;
        QTest::newRow("4 processes") << 4U << true;
        QTest::newRow("4 processes, nothing ahead") << 4U << false;
    }

    void changesNothing()
    {
        QFETCH(unsigned, processes);
        QFETCH(bool, readsAhead);
        engine::policy().processes = processes;
        engine::policy().readsAhead = readsAhead;
        importAll();
        compare();
        if (readsAhead)
            QCOMPARE(processesBelow().size(), int(processes) + 1);
    }

    /// Whoever has described the items is gone when their pictures are taken.
    void outlivesItsProcesses()
    {
        importAll([] {
            for (const int process : processesBelow().mid(1))
                kill(process, SIGKILL);
            QTRY_COMPARE(processesBelow().size(), 1);
        });
        compare();
        importAll([] {
            kill(processesBelow().first(), SIGKILL);
            QTRY_COMPARE(processesBelow().size(), 1); // itself, for whom nobody has waited yet
        });
        compare();
    }

    /// Pictures that are there are not taken again, nor ahead.
    void takesOnlyWhatIsMissing()
    {
        const QTemporaryDir folder;
        for (int i = 0; i < 20; ++i)
            QFile::copy(fixturePath("media/time-gop2s.mp4"),
                        folder.filePath(QString("%1.mp4").arg(i, 2, 10, QChar('0'))));
        CImportContext::instance()->setConfigDir(m_folder.filePath("again"));
        const auto run = [&folder] {
            ModuleImport import;
            import.run({folder.path()});
            QCOMPARE(import.tasks.size(), size_t(20));
        };
        run();
        QMap<QString, QByteArray> pictures = picturesIn(m_folder.filePath("again"));
        QCOMPARE(pictures.size(), 20);
        for (const char* gone : {"03", "04", "17"}) {
            const QString name = filesBelow(m_folder.filePath("again")).filter(gone).value(0);
            QVERIFY(QFile::remove(m_folder.filePath("again/" + name)));
        }
        run();
        QCOMPARE(picturesIn(m_folder.filePath("again")), pictures);
    }

    /// The library may be unloaded while its processes wait, and loaded again.
    void isUnloadedAndLoadedAgain()
    {
        const int descriptors = openDescriptors();
        for (int pass = 0; pass < 3; ++pass) {
            void* library = dlopen(NEAR_HALF, RTLD_NOW | RTLD_LOCAL);
            QVERIFY2(library, dlerror());
            const auto protections = reinterpret_cast<const char* (*)()>(
                dlsym(library, "_ZN7AVBased17engineProtectionsEv"));
            QVERIFY(protections);
            QVERIFY(QByteArray(protections()).contains("seccomp"));
            QCOMPARE(processesBelow().size(), 2);
            QCOMPARE(dlclose(library), 0);
            QVERIFY(!dlopen(NEAR_HALF, RTLD_NOW | RTLD_NOLOAD));
            QCOMPARE(processesBelow().size(), 0);
            QCOMPARE(openDescriptors(), descriptors);
        }
    }

private:
    struct Found
    {
        QMap<QString, QByteArray> pictures;
        QStringList order; ///< of the tasks
        QStringList failed;
    };

    /// Imports all fixtures; `beforePictures` is called on the import's thread.
    void importAll(const std::function<void()>& beforePictures = {})
    {
        const QTemporaryDir pictures;
        CImportContext::instance()->setConfigDir(pictures.path());
        ModuleImport import;
        import.open({fixturePath("media"), fixturePath("dvd"), fixturePath("bluray/disc")});
        if (beforePictures) {
            connect(import.reply.get(), &Vesk::CImportReply::importFinished, this, beforePictures,
                    Qt::DirectConnection);
        }
        import.wait();
        m_found = {picturesIn(pictures.path()), {}, import.failed};
        for (const auto& task : import.tasks)
            m_found.order << task->url();
    }

    void compare()
    {
        QCOMPARE(m_found.order, m_expected.order);
        QCOMPARE(m_found.failed, m_expected.failed);
        QCOMPARE(m_found.pictures.keys(), m_expected.pictures.keys());
        for (const QString& name : m_expected.pictures.keys())
            QVERIFY2(m_found.pictures[name] == m_expected.pictures[name], qPrintable(name));
    }

    const QTemporaryDir m_folder;
    Found m_expected;
    Found m_found;
};

QTEST_GUILESS_MAIN(ReadAheadTest)
#include "tst_readahead.moc"
