// SPDX-License-Identifier: GPL-2.0-or-later
#include "importhost.h"

#include "cimportcontext.h"
#include "errornames.h"
#include "importsession.h"
#include "interrupt.h"
#include "jsonmodel.h"
#include "logcollector.h"
#include "lostpictures.h"
#include "options.h"
#include "sourcepaths.h"
#include "summary.h"
#include "terminaltext.h"
#include "vspavbased/enginecontrol.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QSaveFile>

#include <algorithm>
#include <cstdio>

using Vesk::CImportContext;

namespace {

enum ExitStatus
{
    AllImported = 0,
    SomethingMissing = 1,
    CannotRun = 2,
    Interrupted = 130
};

/// Records of the log beyond these are counted, not shown: one fault may strike every item.
const int mostRecordsShown = 5;

void say(const QString& text)
{
    std::fprintf(stderr, "vspimport: %s\n", terminalText(text).toLocal8Bit().constData());
}

void setContext(const Options& options)
{
    CImportContext* context = CImportContext::instance();
    context->setConfigDir(QDir(options.configDir).absolutePath());
    context->setSnapSize(options.snapSize);
    context->setFileFormats(options.formats);
    context->setForbidFormats(options.forbidden);
    context->setLimitFileFormat(!options.allFiles);
    context->setDrmSupport(options.allowDrm);
    context->setDvdSupport(true);
    context->setBdSupport(true);
}

void sayUnusablePaths(const SourcePaths& paths)
{
    for (const QString& path : paths.missing)
        say(QStringLiteral("no such file or folder: %1").arg(path));
    for (const QString& path : paths.special)
        say(QStringLiteral("neither a file nor a folder: %1").arg(path));
    for (const QString& path : paths.unreadable)
        say(QStringLiteral("the folder cannot be read: %1").arg(path));
    for (const QString& path : paths.undecodable)
        say(QStringLiteral("the name is no valid text: %1").arg(path));
}

void sayLog(const QList<LogCollector::Record>& records)
{
    for (int i = 0; i < qMin(records.size(), mostRecordsShown); ++i)
        say(records.at(i).message);
    if (records.size() > mostRecordsShown)
        say(QStringLiteral("… and %1 more").arg(records.size() - mostRecordsShown));
}

/// Pictures that were lost for want of memory, or with the process that took them, have left no
/// other trace than the log.
bool hasLostPictures(const QList<LogCollector::Record>& records)
{
    return std::any_of(records.begin(), records.end(), [](const LogCollector::Record& record) {
        return record.isOfEngine || record.message.contains(QLatin1String("std::bad_alloc"));
    });
}

/// Whether all that could be imported was. An import for conversion reports no failures.
bool isComplete(const Options& options, const SourcePaths& paths, const ImportSession& session,
                const QList<LogCollector::Record>& records)
{
    return session.errors().isEmpty() && (options.forConvert || session.unreported().isEmpty()) &&
           paths.missing.isEmpty() && paths.special.isEmpty() && paths.unreadable.isEmpty() &&
           !hasLostPictures(records);
}

QByteArray jsonOf(const SourcePaths& paths, const ImportSession& session,
                  const QList<LogCollector::Record>& records)
{
    QJsonArray tasks;
    for (const auto& task : session.tasks())
        tasks.append(taskToJson(task.get()));
    QJsonArray errors;
    for (const ImportSession::Error& error : session.errors()) {
        errors.append(QJsonObject{{QStringLiteral("type"), errorName(error.type).enumerator},
                                  {QStringLiteral("url"), error.path}});
    }
    QJsonArray log;
    for (const LogCollector::Record& record : records) {
        log.append(QJsonObject{{QStringLiteral("code"), record.code},
                               {QStringLiteral("message"), record.message}});
    }
    const QJsonObject document{{QStringLiteral("sources"), QJsonArray::fromStringList(paths.given)},
                               {QStringLiteral("stopped"), session.wasStopped()},
                               {QStringLiteral("importPercent"), session.importPercent()},
                               {QStringLiteral("snapPercent"), session.snapPercent()},
                               {QStringLiteral("tasks"), tasks},
                               {QStringLiteral("errors"), errors},
                               {QStringLiteral("log"), log}};
    return QJsonDocument(document).toJson();
}

bool writeJson(const QByteArray& json, const Options& options)
{
    if (options.jsonToStandardOutput()) {
        return std::fwrite(json.constData(), 1, size_t(json.size()), stdout) ==
                   size_t(json.size()) &&
               std::fflush(stdout) == 0;
    }
    // A pipe or device is written to, a file replaced once all of it is written.
    const QFileInfo target(options.jsonFile);
    if (target.exists() && !target.isFile()) {
        QFile file(options.jsonFile);
        return file.open(QIODevice::WriteOnly) && file.write(json) == json.size() && file.flush();
    }
    QSaveFile file(options.jsonFile);
    file.setDirectWriteFallback(true);
    return file.open(QIODevice::WriteOnly) && file.write(json) == json.size() && file.commit();
}

bool writeResults(const Options& options, const SourcePaths& paths, ImportSession& session,
                  const LogCollector& log)
{
    bool written = true;
    if (options.showsSummary())
        std::fputs(summaryOf(session).toLocal8Bit().constData(), stdout);
    if (std::fflush(stdout) != 0 || std::ferror(stdout)) {
        say(QStringLiteral("cannot write the output"));
        written = false;
    }
    if (!options.jsonFile.isEmpty() && !writeJson(jsonOf(paths, session, log.records()), options)) {
        say(QStringLiteral("cannot write %1")
                .arg(options.jsonToStandardOutput() ? QStringLiteral("the output")
                                                    : options.jsonFile));
        written = false;
    }
    if (!options.reportFile.isEmpty() && !session.saveReport(options.reportFile)) {
        say(QStringLiteral("cannot write %1").arg(options.reportFile));
        written = false;
    }
    return written;
}

/// Without it every item fails for the same reason, which is then said once.
bool isEngineMissing()
{
    const char* reason = AVBased::engineFailure();
    if (*reason)
        say(QString::fromUtf8(reason));
    return *reason;
}

} // namespace

int vspimportRun(const Options& options)
{
    if (isEngineMissing())
        return CannotRun;
    if ((options.forImport || options.forConvert) && !canWritePictures()) {
        say(QStringLiteral("Qt's plug-in that writes pictures cannot be loaded"));
        return CannotRun;
    }
    LogCollector log(options.verbose);
    setContext(options);
    const SourcePaths paths = SourcePaths::inspect(options.paths);
    sayUnusablePaths(paths);

    ImportSession session(options);
    const Interrupt interrupt;
    QObject::connect(&interrupt, SIGNAL(interrupted()), &session, SLOT(stop()));
    const bool started = session.run(paths.sources, paths.undecodable);
    if (session.tasks().empty() && isEngineMissing())
        return CannotRun;
    sayLog(log.records());
    if (options.forImport || options.forConvert) {
        for (const QString& reason : reasonsForLostPictures(session))
            say(reason);
    }
    if (!started)
        return CannotRun;
    const bool written = writeResults(options, paths, session, log);

    if (session.wasStopped())
        return Interrupted;
    if (!written)
        return CannotRun;
    return isComplete(options, paths, session, log.records()) ? AllImported : SomethingMissing;
}
