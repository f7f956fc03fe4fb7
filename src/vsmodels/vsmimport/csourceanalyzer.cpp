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
        scanDirectory(info.absoluteFilePath());
    else if (info.isFile())
        checkFile(info);
}

void CSourceAnalyzer::scanDirectory(const QString& path)
{
    if (isStopped())
        return;

    // Links may lead back into their own tree.
    const QString canonicalPath = QFileInfo(path).canonicalFilePath();
    const QString identity = canonicalPath.isEmpty() ? path : canonicalPath;
    if (m_walked.contains(identity))
        return;
    m_walked.insert(identity);

    const QDir dir(path);
    if (dir.exists(QLatin1String("VIDEO_TS")))
        visitItem(QFileInfo(path), SourceTypeDVDDir);
    else if (dir.exists(QLatin1String("BDMV")) || dir.exists(QLatin1String("BDAV")))
        visitItem(QFileInfo(path), SourceTypeBDDir);
    else
        scanEntries(path);
}

void CSourceAnalyzer::scanEntries(const QString& path)
{
    // The list is taken as a whole: a folder kept open on each level would make the number of open
    // files grow with the depth of the tree.
    const QFileInfoList entries =
        QDir(path).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Unsorted);
    for (int i = 0; i < entries.count(); ++i) {
        if (isStopped())
            return;
        const QFileInfo& entry = entries.at(i);
        if (entry.isDir())
            scanDirectory(entry.absoluteFilePath());
        else if (entry.isFile())
            checkFile(entry);
    }
    visitUndecodableNames(path, entries);
}

/// Qt 5 does not list names that it cannot decode, and Qt 4 does not find folders with such names.
/// They cannot be opened by what is left of them either, but they are visited, so that the import
/// says that it could not take them.
void CSourceAnalyzer::visitUndecodableNames(const QString& path, const QFileInfoList& entries)
{
    const QStringList names = undecodableNames(path);
    if (names.isEmpty())
        return;
    QSet<QString> listed;
    for (int i = 0; i < entries.count(); ++i) {
        if (entries.at(i).isFile())
            listed.insert(entries.at(i).fileName());
    }
    for (int i = 0; i < names.count(); ++i) {
        if (isStopped())
            return;
        if (!listed.contains(names.at(i)))
            visitItem(QFileInfo(QDir(path), names.at(i)), SourceTypeUnKnown);
    }
}

void CSourceAnalyzer::checkFile(const QFileInfo& info)
{
    if (hasSuffix(info, "iso"))
        visitItem(info, SourceTypeISOFile);
    else if (hasSuffix(info, "ifo") && info.size() > largestStrayIfo)
        visitItem(info, SourceTypeIFOFile);
    else
        visitItem(info, SourceTypeUnKnown);
}

void CSourceAnalyzer::visitItem(const QFileInfo& info, SourceType type)
{
    AnalyzeResult result;
    result.fileInfo = info;
    result.type = type;
    Q_EMIT visit(result);
}

} // namespace Vesk
