// SPDX-License-Identifier: GPL-2.0-or-later
#include "importrun.h"

#include "cimportcontext.h"
#include "cimportreply_p.h"
#include "vsputils/cveskexception.h"
#include "vsputils/cvesklog.h"

#include <QtCore/QMutexLocker>

using namespace Vesk;

FakeMovie videoMovie(double duration, int id, const QByteArray& name)
{
    return {name,
            id,
            {fakeStream(AVBased::StreamKindVideo, 3, duration),
             fakeStream(AVBased::StreamKindAudio, 4, 0.0)},
            {}};
}

FakeItem videoItem(double duration)
{
    FakeItem item;
    item.movies = {videoMovie(duration)};
    return item;
}

QStringList withVideos(const QStringList& paths)
{
    for (const QString& path : paths)
        FakeEngine::instance().items.insert(path.toUtf8(), videoItem());
    return paths;
}

TaskPtr probeFile(const QString& path, const FakeItem& item)
{
    FakeEngine::instance().items.insert(path.toUtf8(), item);
    return TaskPtr(CImportReplyPrivate::createImportTaskForFile(path));
}

TaskPtr probeDvd(const FakeItem& item, const QString& path)
{
    FakeEngine::instance().items.insert(path.toUtf8(), item);
    return TaskPtr(CImportReplyPrivate::createImportTaskForDvd(path));
}

TaskPtr probeBluray(const FakeDisc& disc, const QString& path)
{
    FakeEngine::instance().discs.insert(path.toUtf8(), disc);
    return TaskPtr(CImportReplyPrivate::createImportTaskForBd(path));
}

ImportRun::ImportRun()
{
    source.setForImport(true);
    CVeskLog::setReceiver(
        [](const CVeskException& record, void* context) {
            auto* self = static_cast<ImportRun*>(context);
            QMutexLocker lock(&self->m_mutex);
            self->m_log.append(QString("%1 %2 %3")
                                   .arg(QString::number(record.code()), record.message(),
                                        QFileInfo(record.file()).fileName()));
        },
        this);
    const auto noteError = [this](int type, const QString& url) {
        note(QString("importError %1 %2").arg(QString::number(type), url));
    };
    connect(&model, &CImportModel::importError, this, noteError, Qt::DirectConnection);
}

ImportRun::~ImportRun()
{
    reply.reset();
    CVeskLog::setReceiver(nullptr, nullptr);
}

CImportReply* ImportRun::open(const QStringList& paths)
{
    source.setSources(paths);
    reply.reset(model.open(source));
    CImportReply* r = reply.get();
    /// Notes what `text` makes of the signal's arguments.
    const auto listen = [this, r](auto signal, auto text) {
        const auto receive = [this, text](auto... arguments) { note(text(arguments...)); };
        connect(r, signal, this, receive, Qt::DirectConnection);
    };
    listen(&CImportReply::importPercentChanged,
           [r] { return QString("importPercentChanged %1").arg(r->importPercent()); });
    listen(&CImportReply::importFinished, [] { return "importFinished"; });
    listen(&CImportReply::snapPercentChanged,
           [r] { return QString("snapPercentChanged %1").arg(r->snapPercent()); });
    listen(&CImportReply::snapFinished, [] { return "snapFinished"; });
    listen(&CImportReply::terminated, [] { return "terminated"; });
    listen(&CImportReply::finished, [] { return "finished"; });
    listen(&CImportReply::importUrl, [](const QString& url) { return "importUrl " + url; });
    listen(&CImportReply::taskProcess, [this](CImportTask* task, CImportReply::ProcessType type) {
        const bool isNew = type == CImportReply::ImportDone;
        if (isNew)
            tasks.emplace_back(task);
        return QString("taskProcess %1 %2").arg(isNew ? "ImportDone" : "SnapDone", task->url());
    });
    return r;
}

void ImportRun::run(const QStringList& paths)
{
    open(paths);
    waitForFinished();
}

void ImportRun::waitForFinished()
{
    QTRY_VERIFY_WITH_TIMEOUT(events().contains("finished"), 60000);
}

QStringList ImportRun::events() const
{
    QMutexLocker lock(&m_mutex);
    return m_events;
}

QStringList ImportRun::log() const
{
    QMutexLocker lock(&m_mutex);
    return m_log;
}

void ImportRun::note(const QString& event)
{
    QMutexLocker lock(&m_mutex);
    m_events.append(event);
}

void EngineTest::cleanup()
{
    QCOMPARE(engine.leftovers(), "");
}

ImportFolder::ImportFolder()
{
    CImportContext* context = CImportContext::instance();
    context->setConfigDir(path("pictures"));
    context->setFileFormats("*.mp4;*.avi;");
    context->setForbidFormats({});
    context->setLimitFileFormat(true);
    context->setDrmSupport(false);
}
