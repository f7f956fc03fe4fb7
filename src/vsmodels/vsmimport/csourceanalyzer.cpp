// SPDX-License-Identifier: LGPL-2.1-or-later
#include "csourceanalyzer.h"

#include "guard.h"
#include "undecodablenames.h"

#include <QtCore/QDir>
#include <QtCore/QMutexLocker>

namespace Vesk {

namespace {

/// IFO files of real discs are far smaller; above this size one stands for its disc.
const qint64 largestStrayIfo = Q_INT64_C(10) * 1024 * 1024;

bool hasSuffix(const QFileInfo& info, const char* suffix)
{
    return info.suffix().compare(QLatin1String(suffix), Qt::CaseInsensitive) == 0;
}

CSourceAnalyzer::SourceType typeOfFile(const QFileInfo& info, qint64 size)
{
    if (hasSuffix(info, "iso"))
        return CSourceAnalyzer::SourceTypeISOFile;
    if (hasSuffix(info, "ifo") && size > largestStrayIfo)
        return CSourceAnalyzer::SourceTypeIFOFile;
    return CSourceAnalyzer::SourceTypeUnKnown;
}

/// Asks for the size only where it says something.
CSourceAnalyzer::SourceType typeOfFile(const QFileInfo& info)
{
    return typeOfFile(info, hasSuffix(info, "ifo") ? info.size() : 0);
}

/// Of no kind that is imported.
const CSourceAnalyzer::SourceType noType = CSourceAnalyzer::SourceType(0);

/// Without links, a folder in a real one is where its path says. Qt does not know all kinds of
/// links that other systems have.
bool mayBeLink(const QFileInfo& folder)
{
#ifdef Q_OS_UNIX
    return folder.isSymLink();
#else
    Q_UNUSED(folder);
    return true;
#endif
}

QString resolvedPath(const QFileInfo& folder)
{
    const QString path = folder.canonicalFilePath();
    return path.isEmpty() ? folder.absoluteFilePath() : path;
}

/// The real path of `folder`, which was found in the folder at `realParent`. To ask the system
/// costs a step for each folder above: on each level, the depth of the tree squared.
QString realPathOf(const QFileInfo& folder, const QString& realParent)
{
    if (mayBeLink(folder))
        return resolvedPath(folder);
    return QDir(realParent).filePath(folder.fileName());
}

/// Qt 4 lists a name that it cannot decode without the bytes in question: as one that does not
/// exist, or as that of a neighbour once more.
QFileInfoList withoutMisreadNames(const QFileInfoList& entries)
{
    QFileInfoList existing;
    QSet<QString> names;
    for (int i = 0; i < entries.count(); ++i) {
        const QFileInfo entry(entries.at(i).filePath()); // asks the file system by that name
        if (!entry.exists() || names.contains(entry.fileName()))
            continue;
        names.insert(entry.fileName());
        existing.append(entry);
    }
    return existing;
}

} // namespace

CSourceAnalyzer::CSourceAnalyzer(QObject* parent)
    : QObject(parent)
    , m_stopped(false)
{}

void CSourceAnalyzer::analyze(const QString& path)
{
    m_walked.clear();
    VESK_GUARDED_CALL(analyzePath(path));
    Q_EMIT finished();
}

void CSourceAnalyzer::stop()
{
    QMutexLocker lock(&m_mutex);
    m_stopped = true;
}

bool CSourceAnalyzer::isStopped() const
{
    QMutexLocker lock(&m_mutex);
    return m_stopped;
}

void CSourceAnalyzer::analyzePath(const QString& path)
{
    const QFileInfo info(path);
    if (info.isDir())
        scanDirectory(info.absoluteFilePath(), resolvedPath(info));
    else if (info.isFile())
        visitItem(info, typeOfFile(info));
}

/// Links may lead back into their own tree, so that folders are told apart by their real paths.
void CSourceAnalyzer::scanDirectory(const QString& path, const QString& realPath)
{
    if (isStopped() || m_walked.contains(realPath))
        return;
    m_walked.insert(realPath);

    const QDir dir(path);
    if (dir.exists(QLatin1String("VIDEO_TS")))
        visitItem(QFileInfo(path), SourceTypeDVDDir);
    else if (dir.exists(QLatin1String("BDMV")) || dir.exists(QLatin1String("BDAV")))
        visitItem(QFileInfo(path), SourceTypeBDDir);
    else
        scanEntries(path, realPath);
}

void CSourceAnalyzer::scanEntries(const QString& path, const QString& realPath)
{
    // The list is taken as a whole: a folder kept open on each level would make the number of open
    // files grow with the depth of the tree.
    QFileInfoList entries =
        QDir(path).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Unsorted);
    const QList<UndecodableEntry> undecodable = undecodableEntries(path);
    if (!undecodable.isEmpty())
        entries = withoutMisreadNames(entries);
    for (int i = 0; i < entries.count() && !isStopped(); ++i) {
        const QFileInfo& entry = entries.at(i);
        if (entry.isDir())
            scanDirectory(entry.absoluteFilePath(), realPathOf(entry, realPath));
        else if (entry.isFile())
            visitItem(entry, typeOfFile(entry));
    }
    for (int i = 0; i < undecodable.count() && !isStopped(); ++i)
        visitUndecodable(path, undecodable.at(i));
}

/// So that the import says that it could not take it.
void CSourceAnalyzer::visitUndecodable(const QString& folder, const UndecodableEntry& entry)
{
    const QFileInfo info(QDir(folder), entry.name);
    visitItem(info, entry.isFolder ? noType : typeOfFile(info, entry.size), false);
}

void CSourceAnalyzer::visitItem(const QFileInfo& info, SourceType type, bool isReachable)
{
    AnalyzeResult result;
    result.fileInfo = info;
    result.type = type;
    result.isReachable = isReachable;
    Q_EMIT visit(result);
}

} // namespace Vesk
