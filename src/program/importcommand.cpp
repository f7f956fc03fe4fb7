// SPDX-License-Identifier: GPL-2.0-or-later
#include "importcommand.h"

#include "cimportcontext.h"
#include "htmlpage.h"
#include "importrun.h"
#include "interrupt.h"
#include "jsonoutput.h"
#include "lostpictures.h"
#include "options.h"
#include "outputfile.h"
#include "sourcepaths.h"
#include "summary.h"
#include "terminaltext.h"
#include "vspavbased/enginecontrol.h"

#include <QtCore/QDir>

#include <algorithm>
#include <cstdio>
#include <unistd.h>

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

void say(const QString& form, const QStringList& paths)
{
    for (const QString& path : paths)
        say(form.arg(path));
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

/// Without it every item fails for the same reason, which is then said once.
bool isEngineMissing()
{
    const char* reason = AVBased::engineFailure();
    if (*reason)
        say(QString::fromUtf8(reason));
    return *reason;
}

/// The files that results go to. They are opened before the import, so that one that cannot be
/// written does not cost the time that it takes.
struct Outputs
{
    OutputFile json;
    OutputFile jsonLines;
    OutputFile html;
    OutputFile report;

    bool open(const Options& options)
    {
        return open(json, options.jsonFile, OutputFile::Replacing) &&
               open(html, options.htmlFile, OutputFile::Replacing) &&
               open(report, options.reportFile, OutputFile::Replacing) &&
               open(jsonLines, options.jsonLinesFile, OutputFile::Growing); // empties its file
    }

    static bool open(OutputFile& file, const QString& name, OutputFile::Mode mode)
    {
        QString error;
        const bool isUsable = name.isEmpty() || file.open(name, mode, error);
        if (!isUsable)
            say(error);
        return isUsable;
    }

    static bool commit(OutputFile& file)
    {
        QString error;
        const bool isWritten = file.commit(error);
        if (!isWritten)
            say(error);
        return isWritten;
    }
};

bool canTakePictures(const Options& options)
{
    if (!options.takesPictures())
        return true;
    if (!canWritePictures()) {
        say(QStringLiteral("Qt's plug-in that writes pictures cannot be loaded"));
        return false;
    }
    const QString folder = QDir(options.configDir).absolutePath();
    const QString reason = reasonAgainstWriting(folder);
    if (!reason.isEmpty())
        say(QStringLiteral("pictures cannot be written to %1: %2").arg(folder, reason));
    return reason.isEmpty();
}

bool writeSummary(const Options& options, const ImportRun& run, const SourcePaths& paths)
{
    if (options.showsSummary()) {
        const QString pictures = options.takesPictures() && run.result().sums().items > 0
                                     ? CImportContext::instance()->configDir()
                                     : QString();
        const QString text =
            summaryOf(run.result(), paths.sources, pictures, isatty(STDOUT_FILENO));
        std::fputs(text.toLocal8Bit().constData(), stdout);
    }
    const bool written = std::fflush(stdout) == 0 && !std::ferror(stdout);
    if (!written)
        say(QStringLiteral("cannot write the output"));
    return written;
}

/// Also what the import has not seen, since it is not there or cannot be read.
PageContent pageContent(const ImportRun& run, const SourcePaths& paths)
{
    PageContent content;
    const auto addAll = [&content](const QStringList& failed, const char* reason) {
        for (const QString& path : failed)
            content.failures.push_back(
                {Vesk::CImportModel::ErrorImportFalsed, path, QLatin1String(reason)});
    };
    for (const auto& item : run.result().items())
        content.items.push_back(item);
    content.failures = run.result().failures();
    addAll(run.unreadable(), "the folder cannot be read");
    addAll(paths.missing, "no such file or folder");
    addAll(paths.special, "neither a file nor a folder");
    content.isStopped = run.result().stopped;
    return content;
}

bool writePage(OutputFile& file, const Options& options, const ImportRun& run,
               const SourcePaths& paths)
{
    QString error;
    const bool isWritten = writeHtmlPage(file.device(), pagePictureFolder(options.htmlFile),
                                         pageContent(run, paths), error);
    if (!isWritten)
        say(error);
    return isWritten && Outputs::commit(file);
}

bool writeResults(Outputs& outputs, const Options& options, ImportRun& run,
                  const SourcePaths& paths, const LogCollector& log)
{
    bool written = writeSummary(options, run, paths);
    if (outputs.json.isOpen()) {
        writeJsonDocument(outputs.json.device(), paths.given, run.result(), log.records());
        written = Outputs::commit(outputs.json) && written;
    }
    if (outputs.html.isOpen())
        written = writePage(outputs.html, options, run, paths) && written;
    if (outputs.jsonLines.isOpen())
        written = Outputs::commit(outputs.jsonLines) && written;
    if (outputs.report.isOpen() && run.saveReport(&outputs.report.device()))
        written = Outputs::commit(outputs.report) && written;
    return written;
}

/// Whether all that could be imported was. An import for conversion reports no failures.
bool isComplete(const Options& options, const SourcePaths& paths, const ImportRun& run,
                const QList<LogCollector::Record>& records)
{
    const ImportResult& result = run.result();
    const bool hasFailures = options.forConvert ? result.hasErrors() : !result.failures().empty();
    return !hasFailures && paths.missing.isEmpty() && paths.special.isEmpty() &&
           run.unreadable().isEmpty() && !hasLostPictures(records);
}

} // namespace

int vspimportRun(const Options& options)
{
    Outputs outputs;
    if (isEngineMissing() || !canTakePictures(options) || !outputs.open(options))
        return CannotRun;
    const LogCollector log(options.verbose);
    setContext(options);
    const SourcePaths paths =
        SourcePaths::inspect(options.paths, options.shard, options.shardCount);
    say(QStringLiteral("no such file or folder: %1"), paths.missing);
    say(QStringLiteral("neither a file nor a folder: %1"), paths.special);
    say(QStringLiteral("the name is no valid text: %1"), paths.undecodable);

    ImportRun run(options, paths, outputs.jsonLines.isOpen() ? &outputs.jsonLines : nullptr);
    const Interrupt interrupt;
    QObject::connect(&interrupt, &Interrupt::interrupted, [&run] { run.stop(); });
    const bool started = run.run();
    if (run.result().sums().items == 0 && isEngineMissing())
        return CannotRun;
    sayLog(log.records());
    say(QStringLiteral("the folder cannot be read: %1"), run.unreadable());
    if (options.takesPictures()) {
        for (const QString& reason : reasonsForLostPictures(run.uncaptured()))
            say(reason);
    }
    if (!started)
        return CannotRun;
    const bool written = writeResults(outputs, options, run, paths, log);
    if (!written)
        return CannotRun; // which may be what has stopped it
    if (run.result().stopped)
        return Interrupted;
    return isComplete(options, paths, run, log.records()) ? AllImported : SomethingMissing;
}
