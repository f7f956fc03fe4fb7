// SPDX-License-Identifier: GPL-2.0-or-later
#include "importsession.h"

#include "cimportsource.h"
#include "options.h"
#include "startgate.h"
#include "vspavbased/enginecontrol.h"

#include <QtCore/QEventLoop>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <cstdio>

using Vesk::CImportModel;
using Vesk::CImportReply;
using Vesk::CImportSource;
using Vesk::CImportTask;

namespace {

QJsonObject eventOf(const char* name)
{
    return {{QStringLiteral("signal"), QLatin1String(name)}};
}

QJsonObject percentEvent(const char* name, int percent)
{
    QJsonObject event = eventOf(name);
    event.insert(QStringLiteral("value"), percent);
    return event;
}

} // namespace

ImportSession::ImportSession(const Options& options)
    : m_options(options)
    , m_progress(!options.quiet)
{
    qRegisterMetaType<Vesk::CImportTask*>("Vesk::CImportTask*");
    qRegisterMetaType<Vesk::CImportReply::ProcessType>("Vesk::CImportReply::ProcessType");
    connect(&m_model, SIGNAL(importError(int, QString)), this, SLOT(onImportError(int, QString)));
}

ImportSession::~ImportSession() = default;

bool ImportSession::run(const QStringList& sources, const QStringList& failed)
{
    for (const QString& path : failed)
        m_model.importErrorProc(CImportModel::ErrorImportFalsed, path);

    CImportSource source;
    source.setSources(sources);
    source.setForImport(m_options.forImport);
    source.setForPlay(m_options.forPlay);
    source.setForConvert(m_options.forConvert);
    QEventLoop loop;
    connect(this, SIGNAL(ended()), &loop, SLOT(quit()));
    {
        const std::lock_guard<std::recursive_mutex> hold(startGate());
        m_reply.reset(m_model.open(source));
        if (!m_reply)
            return false;
        connectReply();
    }
    loop.exec();
    for (int i = 0; i < m_reply->tasks()->count(); ++i)
        m_tasks.emplace_back(static_cast<CImportTask*>(m_reply->tasks()->item(i)));
    m_importPercent = m_reply->importPercent();
    m_snapPercent = m_reply->snapPercent();
    m_reply.reset();
    m_progress.clear();
    return true;
}

/// Percentages are read when they are signalled, on the import's thread, and then queued among the
/// other signals: by the time that these arrive the reply may be further.
void ImportSession::connectReply()
{
    CImportReply* reply = m_reply.data();
    connect(reply, SIGNAL(taskProcess(Vesk::CImportTask*, Vesk::CImportReply::ProcessType)), this,
            SLOT(onTaskProcess(Vesk::CImportTask*, Vesk::CImportReply::ProcessType)));
    connect(reply, SIGNAL(importUrl(QString)), this, SLOT(onImportUrl(QString)));
    connect(
        reply, &CImportReply::importPercentChanged, this,
        [this, reply] { queueCall("onImportPercent", reply->importPercent()); },
        Qt::DirectConnection);
    connect(reply, SIGNAL(importFinished()), this, SLOT(onImportFinished()));
    connect(
        reply, &CImportReply::snapPercentChanged, this,
        [this, reply] { queueCall("onSnapPercent", reply->snapPercent()); }, Qt::DirectConnection);
    connect(reply, SIGNAL(snapFinished()), this, SLOT(onSnapFinished()));
    connect(reply, SIGNAL(finished()), this, SLOT(onFinished()));
}

void ImportSession::stop()
{
    m_stopped = true;
    if (m_reply)
        m_reply->exit();
    AVBased::stopEngine(); // the item at hand may take as long as its deadlines
}

bool ImportSession::saveReport(const QString& fileName)
{
    if (m_errors.isEmpty())
        return true;
    QFile file(fileName);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && m_model.saveReport(&file) &&
           file.flush();
}

void ImportSession::onTaskProcess(CImportTask* task, CImportReply::ProcessType type)
{
    const bool isNew = type == CImportReply::ImportDone;
    m_isAnswered = m_isAnswered || isNew;
    if (!isNew)
        ++m_itemsSnapped;
    QJsonObject event = eventOf("taskProcess");
    event.insert(QStringLiteral("type"), QLatin1String(isNew ? "ImportDone" : "SnapDone"));
    event.insert(QStringLiteral("url"), task->url());
    showEvent(event);
    if (!isNew)
        showProgress(task->url());
}

void ImportSession::onImportError(int type, const QString& url)
{
    // A file refused for its suffix is answered by this alone.
    m_isAnswered = type == CImportModel::ErrorImportFalsed;
    m_errors.append({type, url});
    QJsonObject event = eventOf("importError");
    event.insert(QStringLiteral("type"), type);
    event.insert(QStringLiteral("url"), url);
    showEvent(event);
}

void ImportSession::onImportUrl(const QString& url)
{
    ++m_itemsSeen;
    // An import for conversion reports no errors, but a person wants to know.
    if (!m_isAnswered)
        m_unreported.append(url);
    m_isAnswered = false;
    QJsonObject event = eventOf("importUrl");
    event.insert(QStringLiteral("url"), url);
    showEvent(event);
    showProgress(url);
}

void ImportSession::onImportPercent(int percent)
{
    m_importPercent = percent;
    showEvent(percentEvent("importPercentChanged", percent));
}

void ImportSession::onImportFinished()
{
    m_takesSnapshots = true;
    showEvent(eventOf("importFinished"));
}

void ImportSession::onSnapPercent(int percent)
{
    m_snapPercent = percent;
    showEvent(percentEvent("snapPercentChanged", percent));
}

void ImportSession::onSnapFinished()
{
    showEvent(eventOf("snapFinished"));
}

void ImportSession::onFinished()
{
    showEvent(eventOf("finished"));
    Q_EMIT ended();
}

void ImportSession::queueCall(const char* slot, int value)
{
    QMetaObject::invokeMethod(this, slot, Qt::QueuedConnection, Q_ARG(int, value));
}

void ImportSession::showEvent(const QJsonObject& event)
{
    if (!m_options.events)
        return;
    const QByteArray line = QJsonDocument(event).toJson(QJsonDocument::Compact) + '\n';
    std::fwrite(line.constData(), 1, size_t(line.size()), stdout);
    std::fflush(stdout);
}

void ImportSession::showProgress(const QString& path)
{
    if (m_takesSnapshots)
        m_progress.show(QStringLiteral("snapshots"), m_snapPercent, m_itemsSnapped, path);
    else
        m_progress.show(QStringLiteral("import"), m_importPercent, m_itemsSeen, path);
}
