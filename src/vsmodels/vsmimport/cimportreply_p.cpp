// SPDX-License-Identifier: LGPL-2.1-or-later
#include "cimportreply_p.h"

#include "bdprobing.h"
#include "cimportcontext.h"
#include "cimportreplythread.h"
#include "cimporttask.h"
#include "cimporttask_p.h"
#include "dvdprobing.h"
#include "engineaccess.h"
#include "guard.h"
#include "mediaprobing.h"

#include <QtCore/QDebug>
#include <QtCore/QDir>
#include <QtCore/QMutex>
#include <QtCore/QMutexLocker>

#include <stdexcept>

namespace Vesk {

namespace {

/// Held by an import for its whole run: the engine and the one image converter serve one import at
/// a time.
Q_GLOBAL_STATIC(QMutex, importMutex)

const unsigned long waitStepMs = 10;

bool containsFormat(const QString& formats, const QString& pattern)
{
    return formats.contains(pattern, Qt::CaseInsensitive);
}

int percentage(int done, int total)
{
    return int((qint64(100) * done) / total);
}

} // namespace

CImportReplyPrivate::CImportReplyPrivate()
    : tasks(0)
    , source(0)
    , thread(0)
    , analyzer(nullptr)
    , importPercent(0)
    , snapPercent(0)
    , model(0)
{
    tasks.setOwner(false);
}

CImportReplyPrivate::~CImportReplyPrivate()
{
    if (thread) {
        if (!thread->isFinished())
            thread->exit(-1);
        // Asked anew each time: the analyzer may only just have been made. Also waited for when it
        // says that it has finished: it may still be on its way out.
        do
            stopAnalyzer();
        while (!thread->wait(waitStepMs));
    }
    delete thread;
    thread = 0;
    delete analyzer.exchange(nullptr);
}

void CImportReplyPrivate::silence()
{
    m_gate.close();
}

void CImportReplyPrivate::start()
{
    qDebug() << "main thread:" << QThread::currentThreadId();
    if (!thread) {
        thread = new CImportReplyThread;
        thread->replyPrivate = this;
    }
    thread->start(QThread::InheritPriority);
    if (!thread->isRunning() && !thread->isFinished())
        throw std::runtime_error("the thread of the import cannot be started");
}

void CImportReplyPrivate::exit(int code)
{
    if (!thread)
        return;
    stopAnalyzer();
    thread->exit(code);
}

bool CImportReplyPrivate::wait(unsigned long time)
{
    return !thread || thread->wait(time);
}

bool CImportReplyPrivate::isFinished() const
{
    return !thread || thread->isFinished();
}

void CImportReplyPrivate::stopAnalyzer()
{
    if (CSourceAnalyzer* existing = analyzer)
        existing->stop();
}

void CImportReplyPrivate::threadFinished()
{
    tasks.setOwner(false);
    Q_EMIT q_func()->finished();
}

void CImportReplyPrivate::threadTerminated()
{
    Q_EMIT q_func()->terminated();
}

/// Each phase has a guard of its own: whatever goes wrong in one, the host is told of its end.
void CImportReplyPrivate::innerRun()
{
    QMutexLocker lock(importMutex());
    if (VESK_GUARDED_CALL(createAnalyzer())) {
        VESK_GUARDED_CALL(engineManager()->beginImport());
        VESK_GUARDED_CALL(importSources());
    }
    VESK_GUARDED_CALL(m_gate.pass([&] { Q_EMIT q_func()->importFinished(); }));
    if (analyzer && (source.forImport() || source.forConvert()))
        VESK_GUARDED_CALL(takeSnapshots());
    thread->exit(0);
}

void CImportReplyPrivate::createAnalyzer()
{
    if (analyzer)
        return;
    CSourceAnalyzer* created = new CSourceAnalyzer(0);
    QObject::connect(created, SIGNAL(visit(CSourceAnalyzer::AnalyzeResult)), thread,
                     SLOT(_analyze_visit(CSourceAnalyzer::AnalyzeResult)), Qt::DirectConnection);
    analyzer = created;
}

void CImportReplyPrivate::importSources()
{
    const QStringList paths = source.sources();
    for (int i = 0; i < paths.count(); ++i) {
        analyzer.load()->analyze(paths.at(i));
        importPercent = percentage(i + 1, paths.count());
        qDebug() << " percent:" << importPercent.load() << " i:" << i << " size:" << paths.count();
        m_gate.pass([&] { Q_EMIT q_func()->importPercentChanged(); });
    }
}

void CImportReplyPrivate::takeSnapshots()
{
    for (int i = 0; i < tasks.count() && !analyzer.load()->isStopped(); ++i) {
        CImportTask* task = static_cast<CImportTask*>(tasks.item(i));
        snapTask(task);
        snapPercent = percentage(i + 1, tasks.count());
        m_gate.pass([&] {
            Q_EMIT q_func()->snapPercentChanged();
            Q_EMIT q_func()->taskProcess(task, CImportReply::SnapDone);
        });
    }
    if (!analyzer.load()->isStopped())
        m_gate.pass([&] { Q_EMIT q_func()->snapFinished(); });
}

/// A task whose pictures cannot be stored does not keep the others from theirs.
void CImportReplyPrivate::snapTask(CImportTask* task)
{
    CImportTaskPrivate* taskPrivate = CImportTaskPrivate::getImportTaskPrivate(task);
    if (!VESK_GUARDED_CALL(taskPrivate->snap()))
        VESK_GUARDED_CALL(taskPrivate->freeContext());
}

void CImportReplyPrivate::analyzeVisit(const CSourceAnalyzer::AnalyzeResult& result)
{
    // The walk ends by itself when it is stopped; this holds for files named one by one too.
    if (analyzer.load()->isStopped() || !m_gate.isOpen())
        return;
    if (result.type == CSourceAnalyzer::SourceTypeUnKnown && !passesFormatFilter(result.fileInfo))
        return;

    const QString path = result.fileInfo.absoluteFilePath();
    CImportTask* task = result.isReachable ? probe(result) : 0;
    if (task) {
        const bool handedOver = m_gate.pass([&] {
            tasks.append(task);
            Q_EMIT q_func()->taskProcess(task, CImportReply::ImportDone);
        });
        // Nobody has heard of it, so nobody would delete it.
        if (!handedOver)
            delete task;
    } else {
        reportError(CImportModel::ErrorImportFalsed, path);
    }
    m_gate.pass([&] { Q_EMIT q_func()->importUrl(path); });
}

/// Whether a media file's suffix is to be imported; reports it when it is not.
bool CImportReplyPrivate::passesFormatFilter(const QFileInfo& fileInfo)
{
    const CImportContext* context = CImportContext::instance();
    const QString forbidFormats = context->forbidFormats();
    const QString fileFormats = context->fileFormats();
    if (!context->limitFileFormat() || source.forConvert())
        return true;

    const QString pattern = QLatin1String("*.") + fileInfo.suffix() + QLatin1Char(';');
    if (containsFormat(forbidFormats, pattern)) {
        reportError(CImportModel::ErrorUnSupportSource, fileInfo.absoluteFilePath());
        return false;
    }
    if (!containsFormat(fileFormats, pattern)) {
        reportError(CImportModel::ErrorUnKnownSource, fileInfo.absoluteFilePath());
        return false;
    }
    return true;
}

/// The task for one item, or null. The host's switches for discs are asked and refuse nothing: what
/// it does not support it leaves aside when it sees the task.
CImportTask* CImportReplyPrivate::probe(const CSourceAnalyzer::AnalyzeResult& result)
{
    const QString path = result.fileInfo.absoluteFilePath();
    const CImportContext* context = CImportContext::instance();
    switch (result.type) {
    case CSourceAnalyzer::SourceTypeUnKnown:
        return createImportTaskForFile(path);
    case CSourceAnalyzer::SourceTypeDVDDir:
    case CSourceAnalyzer::SourceTypeIFOFile:
        context->dvdSupport();
        return createImportTaskForDvd(QDir::toNativeSeparators(path + QLatin1Char('/')));
    case CSourceAnalyzer::SourceTypeBDDir:
        context->bdSupport();
        return createImportTaskForBd(path);
    case CSourceAnalyzer::SourceTypeISOFile:
        context->bdSupport();
        if (CImportTask* task = createImportTaskForBd(path))
            return task;
        context->dvdSupport();
        return createImportTaskForDvd(path);
    }
    return 0;
}

void CImportReplyPrivate::reportError(CImportModel::ErrorType type, const QString& url)
{
    if (!source.forConvert())
        m_gate.pass([&] { model->importErrorProc(type, url); });
}

CImportTask* CImportReplyPrivate::createImportTaskForFile(const QString& path)
{
    return VESK_GUARDED(static_cast<CImportTask*>(0), probeMediaFile(path));
}

CImportTask* CImportReplyPrivate::createImportTaskForDvd(const QString& path)
{
    return VESK_GUARDED(static_cast<CImportTask*>(0), probeDvd(path));
}

CImportTask* CImportReplyPrivate::createImportTaskForBd(const QString& path)
{
    return VESK_GUARDED(static_cast<CImportTask*>(0), probeBd(path));
}

bool CImportReplyPrivate::fillMovieInfo(const AVBased::AVMovieInfo* record, CMovieInfomation* info)
{
    return VESK_GUARDED(false, copyMovieInfo(record, info));
}

bool CImportReplyPrivate::fillDvdInfo(AVBased::IAVImporter* importer, CDVDInformation* info)
{
    return VESK_GUARDED(false, copyDvdInfo(importer, info));
}

bool CImportReplyPrivate::fillBdInfo(AVBased::IBDLoader* loader, CBDInformation* info)
{
    return VESK_GUARDED(false, copyBdInfo(loader, info));
}

} // namespace Vesk
