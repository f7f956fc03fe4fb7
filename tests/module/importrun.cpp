// SPDX-License-Identifier: GPL-2.0-or-later
#include "importrun.h"

#include "cimportcontext.h"
#include "vsputils/cveskexception.h"
#include "vsputils/cvesklog.h"

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QMutexLocker>
#include <QtTest/QtTest>

using namespace Vesk;

ImportRun::ImportRun()
{
    source.setForImport(true);
    CVeskLog::setReceiver(
        [](const CVeskException& record, void* context) {
            auto* self = static_cast<ImportRun*>(context);
            QMutexLocker lock(&self->m_mutex);
            self->m_log.append(QStringLiteral("%1 %2 %3")
                                   .arg(QString::number(record.code()), record.message(),
                                        QFileInfo(record.file()).fileName()));
        },
        this);
    connect(
        &model, &CImportModel::importError, this,
        [this](int type, const QString& url) {
            note(QStringLiteral("importError %1 %2").arg(QString::number(type), url));
        },
        Qt::DirectConnection);
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
    running = r;
    const auto direct = Qt::DirectConnection;
    connect(
        r, &CImportReply::taskProcess, this,
        [this](CImportTask* task, CImportReply::ProcessType type) {
            if (type == CImportReply::ImportDone)
                m_tasks.emplace_back(task);
            note(QStringLiteral("taskProcess %1 %2")
                     .arg(type == CImportReply::ImportDone ? QStringLiteral("ImportDone")
                                                           : QStringLiteral("SnapDone"),
                          task->url()));
        },
        direct);
    connect(
        r, &CImportReply::importUrl, this,
        [this](const QString& url) { note(QStringLiteral("importUrl ") + url); }, direct);
    connect(
        r, &CImportReply::importPercentChanged, this,
        [this, r] { note(QStringLiteral("importPercentChanged %1").arg(r->importPercent())); },
        direct);
    connect(
        r, &CImportReply::importFinished, this, [this] { note(QStringLiteral("importFinished")); },
        direct);
    connect(
        r, &CImportReply::snapPercentChanged, this,
        [this, r] { note(QStringLiteral("snapPercentChanged %1").arg(r->snapPercent())); }, direct);
    connect(
        r, &CImportReply::snapFinished, this, [this] { note(QStringLiteral("snapFinished")); },
        direct);
    connect(r, &CImportReply::terminated, this, [this] { note(QStringLiteral("terminated")); });
    m_finished = false;
    connect(r, &CImportReply::finished, this, [this] {
        m_finished = true;
        note(QStringLiteral("finished"));
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
    QTRY_VERIFY_WITH_TIMEOUT(m_finished, 60000);
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

ImportFolder::ImportFolder()
{
    CImportContext* context = CImportContext::instance();
    context->setConfigDir(pictures());
    context->setFileFormats(QStringLiteral("*.mp4;*.avi;"));
    context->setForbidFormats(QString());
    context->setLimitFileFormat(true);
    context->setDrmSupport(false);
}

QString ImportFolder::path(const QString& name) const
{
    return m_dir.path() + QLatin1Char('/') + name;
}

QString ImportFolder::file(const QString& name, const QByteArray& content) const
{
    QDir().mkpath(QFileInfo(path(name)).absolutePath());
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write a file of the test");
    return path(name);
}

QString ImportFolder::folder(const QString& name) const
{
    QDir().mkpath(path(name));
    return path(name);
}

QStringList ImportFolder::pictureNames() const
{
    QStringList names;
    QDirIterator it(pictures(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext())
        names.append(QDir(pictures()).relativeFilePath(it.next()));
    names.sort();
    return names;
}
