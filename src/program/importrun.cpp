// SPDX-License-Identifier: GPL-2.0-or-later
#include "importrun.h"

#include "jsonoutput.h"
#include "lostpictures.h"
#include "options.h"
#include "outputfile.h"
#include "sourcepaths.h"
#include "sourcewalk.h"
#include "unreadablefolders.h"
#include "vspavbased/enginecontrol.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <cstdio>
#include <sys/stat.h>

using Vesk::CImportModel;

namespace {

/// So many that the start of a part counts for nothing, so few that they take no memory to speak
/// of.
const int itemsInPart = 1000;

bool isFolder(const QByteArray& path)
{
    struct stat status = {};
    return ::stat(path.constData(), &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace

ImportRun::ImportRun(const Options& options, const SourcePaths& paths, OutputFile* lines)
    : m_options(options)
    , m_paths(paths)
    , m_lines(lines)
    , m_result(paths.sources, !lines || !options.jsonFile.isEmpty() || !options.htmlFile.isEmpty())
    , m_progress(!options.quiet, paths.sources.size() > 1 && !lines)
    , m_imports([this](const ImportEvent& event) { receive(event); })
{}

bool ImportRun::run()
{
    for (const QString& path : m_paths.undecodable)
        m_imports.reportFailure(CImportModel::ErrorImportFalsed, path);
    const bool isInParts = m_lines || m_options.shardCount > 1;
    const bool started = isInParts ? importParts() : importPart(m_paths.sources);
    for (const QString& source : m_paths.sources) {
        if (!isInParts && !m_result.stopped)
            m_unreadable += unreadableFolders(QFile::encodeName(source));
    }
    m_progress.clear();
    return started;
}

bool ImportRun::importParts()
{
    SourceWalk walk(m_paths.sources);
    QStringList part;
    QByteArray path;
    bool started = true;
    bool isMore = true;
    int walked = 0;
    while (started && isMore && !m_result.stopped) {
        isMore = walk.next(path);
        if (++walked % itemsInPart == 0)
            QCoreApplication::processEvents(); // to stop where few are of this shard
        const bool isOurs =
            isMore && SourcePaths::isInShard(path, m_options.shard, m_options.shardCount);
        const QString text = QFile::decodeName(path);
        if (isOurs && QFile::encodeName(text) == path)
            part.append(text);
        else if (isOurs)
            reportUndecodable(path);
        if (m_result.stopped)
            part.clear();
        if (isMore ? m_lines && part.size() == itemsInPart : true) {
            started = importPart(part);
            part.clear();
        }
    }
    m_unreadable = walk.unreadable();
    return started;
}

/// As the import does when it finds it in a folder.
void ImportRun::reportUndecodable(const QByteArray& path)
{
    const QFileInfo file(QFile::decodeName(path));
    const QString pattern = QStringLiteral("*.%1;").arg(file.suffix());
    const bool isTried = m_options.allFiles || m_options.forConvert || isFolder(path) ||
                         file.suffix().compare(QLatin1String("iso"), Qt::CaseInsensitive) == 0;
    int type = CImportModel::ErrorImportFalsed;
    if (!isTried && m_options.forbidden.contains(pattern, Qt::CaseInsensitive))
        type = CImportModel::ErrorUnSupportSource;
    else if (!isTried && !m_options.formats.contains(pattern, Qt::CaseInsensitive))
        type = CImportModel::ErrorUnKnownSource;
    m_imports.reportFailure(type, file.absoluteFilePath());
}

bool ImportRun::importPart(const QStringList& sources)
{
    ImportRequest request;
    request.sources = sources;
    request.forImport = m_options.forImport;
    request.forPlay = m_options.forPlay;
    request.forConvert = m_options.forConvert;
    m_imports.add(request);
    if (!m_imports.isIdle())
        m_loop.exec();
    return m_isStarted;
}

void ImportRun::stop()
{
    m_result.stopped = true;
    m_imports.stop();
}

void ImportRun::receive(const ImportEvent& event)
{
    m_progress.show(event);
    if (m_options.events) {
        const QByteArray line = jsonLine(event);
        std::fwrite(line.constData(), 1, size_t(line.size()), stdout);
        std::fflush(stdout);
    }
    switch (event.kind) {
    case ImportEvent::Found:
        m_isAnswered = true;
        ++m_itemsNow;
        m_refusals.take(event.path); // of an image, as the other kind of disc
        break;
    case ImportEvent::Failed:
        receiveFailure(event.value, event.path);
        break;
    case ImportEvent::Seen:
        receiveSeen(event.path);
        break;
    case ImportEvent::ImportPercent:
        m_result.importPercent = event.value;
        break;
    case ImportEvent::PicturePercent:
        m_result.picturePercent = event.value;
        break;
    case ImportEvent::Ready:
        receiveReady(event);
        break;
    case ImportEvent::NotStarted:
        m_isStarted = false;
        break;
    case ImportEvent::Finished:
        m_itemsBefore += m_itemsNow;
        m_itemsNow = 0;
        m_loop.quit();
        break;
    default:
        break;
    }
}

void ImportRun::receiveReady(const ImportEvent& event)
{
    const bool isWithout = event.pictures != PictureIndex::Own || lacksCapture(*event.item);
    if (!m_result.stopped && m_options.takesPictures() && isWithout)
        m_uncaptured = event.path;
    m_result.add(event.item, m_itemsBefore + event.value);
    if (m_lines)
        writeLine(jsonLine(*event.item));
}

void ImportRun::receiveFailure(int type, const QString& path)
{
    // A file refused for its suffix is answered by this alone.
    m_isAnswered = type == CImportModel::ErrorImportFalsed;
    const ImportResult::Failure failure{type, path, reasonFor(type, path)};
    m_result.add(failure);
    if (m_lines && !m_result.isOfOtherKind(failure))
        writeLine(jsonLine(failure));
}

/// An import for conversion reports no errors, but a person wants to know.
void ImportRun::receiveSeen(const QString& path)
{
    if (!m_isAnswered) {
        const int type = CImportModel::ErrorImportFalsed;
        const ImportResult::Failure failure{type, path, reasonFor(type, path)};
        m_result.addUnreported(failure.path, failure.reason);
        if (m_lines)
            writeLine(jsonLine(failure));
    }
    m_isAnswered = false;
}

QString ImportRun::reasonFor(int type, const QString& path)
{
    Refusals::Refusal refusal;
    if (type == CImportModel::ErrorImportFalsed)
        refusal = m_refusals.take(path);
    if (refusal.reason.isEmpty())
        return QLatin1String(errorName(type).reason);
    const bool mayBeLetIn = refusal.kind == AVBased::RefusedProtected && !m_options.allowDrm;
    return refusal.reason + QLatin1String(mayBeLetIn ? "; --allow-drm lets it in" : "");
}

/// Without anybody to read them, the rest of the lines are of no use.
void ImportRun::writeLine(const QByteArray& line)
{
    if (!m_lines->write(line) && !m_result.stopped)
        stop();
}
