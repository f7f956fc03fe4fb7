// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <QtCore/QFileInfo>
#include <QtCore/QMutex>
#include <QtCore/QObject>
#include <QtCore/QSet>
#include <QtCore/QString>

namespace Vesk {

struct UndecodableEntry;

/// Finds and classifies the items below a path.
///
/// analyze() runs on the import's thread and emits from it; stop() and isStopped() may be called
/// from any thread. The stop flag is the only thing shared, and its lock is never held during a
/// signal.
class CSourceAnalyzer : public QObject
{
    Q_OBJECT
    Q_ENUMS(SourceType)

public:
    enum SourceType
    {
        SourceTypeUnKnown = 1, ///< any other file: taken for a media file
        SourceTypeISOFile = 4, ///< a disc image
        SourceTypeBDDir = 16,  ///< a folder that holds BDMV or BDAV
        SourceTypeDVDDir = 32, ///< a folder that holds VIDEO_TS
        SourceTypeIFOFile = 64 ///< a DVD IFO file too large to be a stray one
    };

    struct AnalyzeResult
    {
        QFileInfo fileInfo;
        SourceType type; ///< 0 for a folder that is not reachable
        /// False for what is there under a name that Qt cannot decode. `fileInfo` has only a
        /// reading of the name, which must not be opened: it may be that of a neighbour.
        bool isReachable = true;
    };

    CSourceAnalyzer(QObject* parent = 0);

    /// Classifies the file at `path`, or walks the folder there: depth first, in the order of the
    /// file system, disc folders not entered, each real folder once. Emits visit() for each item
    /// and then finished(). Throws nothing.
    void analyze(const QString& path);

    /// Ends folder walks before their next entry, now and ever after.
    void stop();
    bool isStopped() const;

Q_SIGNALS:
    /// `result` lasts for the emission only.
    void visit(const CSourceAnalyzer::AnalyzeResult& result);
    void finished();

private:
    void analyzePath(const QString& path);
    void scanDirectory(const QString& path, const QString& realPath);
    void scanEntries(const QString& path, const QString& realPath);
    void visitUndecodable(const QString& folder, const UndecodableEntry& entry);
    void visitItem(const QFileInfo& info, SourceType type, bool isReachable = true);

    bool m_stopped;
    mutable QMutex m_mutex;
    QSet<QString> m_walked; ///< real paths of the folders met in this analyze()

    Q_DISABLE_COPY(CSourceAnalyzer)
};

} // namespace Vesk
