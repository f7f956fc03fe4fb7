// SPDX-License-Identifier: GPL-2.0-or-later
#include "importsession.h"

#include "cimportsource.h"
#include "cimporttask.h"
#include "facts/readitem.h"
#include "startgate.h"
#include "vspavbased/enginecontrol.h"

#include <QtCore/QFile>

#include <algorithm>

using Vesk::CImportModel;
using Vesk::CImportReply;
using Vesk::CImportSource;
using Vesk::CImportTask;

namespace {

int countPictures(const facts::Item& item)
{
    const std::vector<QString> files = item.pictureFiles();
    return int(std::count_if(files.begin(), files.end(),
                             [](const QString& file) { return QFile::exists(file); }));
}

} // namespace

/// The import's thread calls its operations from direct connections; once that has ended, a thread
/// of the session's.
struct ImportSession::Worker
{
    Worker(ImportSession& owner, const ImportRequest& what)
        : session(owner)
        , request(what)
    {}

    void found(CImportTask* task)
    {
        tasks.emplace_back(task);
        ImportEvent event(ImportEvent::Found, task->url(), int(tasks.size() - 1));
        if (request.describes)
            event.item = std::make_shared<facts::Item>(facts::readItem(task));
        session.post(std::move(event));
        if (!request.takesPictures())
            ready();
    }

    void pictured(CImportTask* task)
    {
        session.post({ImportEvent::Pictured, task->url()});
        ready();
        prepareNext();
    }

    /// Before the pictures of the next task, if there is one.
    void prepareNext()
    {
        if (read == tasks.size() || !request.beforePictures)
            return;
        CImportTask* task = tasks[read].get();
        request.beforePictures(task->url(), facts::pictureName(task));
    }

    /// The next task has all that it will have.
    void ready()
    {
        ImportEvent event(ImportEvent::Ready, tasks[read]->url(), int(read));
        event.item = std::make_shared<facts::Item>(facts::readItem(tasks[read].get()));
        ++read;
        if (request.describes)
            event.pictureCount = countPictures(*event.item);
        if (request.afterPictures)
            request.afterPictures(event);
        session.post(std::move(event));
    }

    ImportSession& session;
    const ImportRequest request;
    std::vector<std::unique_ptr<CImportTask>> tasks;
    std::size_t read = 0; ///< how many of them
};

ImportSession::ImportSession(Receiver receiver)
    : m_receiver(std::move(receiver))
{
    connect(&m_model, SIGNAL(importError(int, QString)), this, SLOT(onImportError(int, QString)),
            Qt::DirectConnection);
}

/// The threads first: they use all the rest.
ImportSession::~ImportSession()
{
    if (m_rest)
        m_rest->wait();
    m_reply.reset();
}

bool ImportSession::start(const ImportRequest& request)
{
    CImportSource source;
    source.setSources(request.sources);
    source.setForImport(request.forImport);
    source.setForPlay(request.forPlay);
    source.setForConvert(request.forConvert);
    m_worker = std::make_shared<Worker>(*this, request);
    const std::lock_guard<std::recursive_mutex> hold(startGate());
    m_reply.reset(m_model.open(source));
    if (m_reply)
        connectReply();
    return !m_reply.isNull();
}

/// All of it directly: percentages are read as they are signalled, since the reply may be further
/// by the time that a queued signal arrives, and tasks while they are at rest.
void ImportSession::connectReply()
{
    CImportReply* reply = m_reply.data();
    Worker* worker = m_worker.get();
    const auto onThread = [this, reply](auto signal, auto slot) {
        connect(reply, signal, this, slot, Qt::DirectConnection);
    };
    onThread(&CImportReply::taskProcess,
             [worker](CImportTask* task, CImportReply::ProcessType type) {
                 if (type == CImportReply::ImportDone)
                     worker->found(task);
                 else
                     worker->pictured(task);
             });
    onThread(&CImportReply::importUrl, [this](const QString& path) {
        post({ImportEvent::Seen, path});
    });
    onThread(&CImportReply::importPercentChanged, [this, reply] {
        post({ImportEvent::ImportPercent, {}, reply->importPercent()});
    });
    onThread(&CImportReply::importFinished, [this, worker] {
        post({ImportEvent::ImportFinished});
        if (worker->request.takesPictures())
            worker->prepareNext();
    });
    onThread(&CImportReply::snapPercentChanged, [this, reply] {
        post({ImportEvent::PicturePercent, {}, reply->snapPercent()});
    });
    onThread(&CImportReply::snapFinished, [this] { post({ImportEvent::PicturesFinished}); });
    // Not from within, since it deletes the reply.
    connect(reply, SIGNAL(finished()), this, SLOT(onFinished()), Qt::QueuedConnection);
}

void ImportSession::stop()
{
    if (m_reply)
        m_reply->exit();
    AVBased::stopEngine(); // the item at hand may take as long as its deadlines
}

void ImportSession::reportFailure(int type, const QString& path)
{
    m_model.importErrorProc(CImportModel::ErrorType(type), path);
}

bool ImportSession::saveReport(QIODevice* device)
{
    return m_model.saveReport(device);
}

/// On the thread that reports it.
void ImportSession::onImportError(int type, const QString& path)
{
    post({ImportEvent::Failed, path, type});
}

/// Tasks that were not signalled once more, since the import was stopped, are read now; not here,
/// since it takes files, and there may be thousands.
void ImportSession::onFinished()
{
    m_reply->wait();
    if (m_worker->read == m_worker->tasks.size()) {
        end();
        return;
    }
    m_rest.reset(QThread::create([worker = m_worker] {
        while (worker->read < worker->tasks.size())
            worker->ready();
    }));
    connect(m_rest.get(), SIGNAL(finished()), this, SLOT(end()), Qt::QueuedConnection);
    m_rest->start();
}

void ImportSession::end()
{
    if (m_rest)
        m_rest->wait();
    m_rest.reset();
    m_reply.reset();
    m_worker.reset();
    post({ImportEvent::Finished});
}

void ImportSession::post(ImportEvent event)
{
    QMetaObject::invokeMethod(
        this, [this, event = std::move(event)] { m_receiver(event); }, Qt::QueuedConnection);
}
