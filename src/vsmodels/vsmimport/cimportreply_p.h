// SPDX-License-Identifier: LGPL-2.1-or-later
//
// One import, from its start to its end:
//
//   CImportReplyPrivate   the import itself: loop over the paths, dispatch of items, snapshots
//   CImportReplyThread    the thread it works on; owned here
//   CSourceAnalyzer       finds the items of a path; made on that thread, owned here
//   SignalGate            closed when the reply's destruction begins
//   probeMediaFile() …    one file a kind of item: mediaprobing, dvdprobing, bdprobing
//
// The host's thread calls start(), exit(), wait(), isFinished() and the destructor; the import's
// thread runs innerRun() and everything below it, with importMutex held: one import at a time.
#pragma once

#include "cimportmodel.h"
#include "cimportreply.h"
#include "cimportsource.h"
#include "csourceanalyzer.h"
#include "signalgate.h"
#include "vspbased/cveskobject.h"

#include <atomic>

namespace AVBased {
class IAVImporter;
class IBDLoader;
struct AVMovieInfo;
} // namespace AVBased

namespace Vesk {

class CBDInformation;
class CDVDInformation;
class CImportReplyThread;
class CImportTask;
class CMovieInfomation;

class CImportReplyPrivate : public CVeskObjectPrivate
{
public:
    CImportReplyPrivate();
    /// Stops the import and waits for its thread.
    virtual ~CImportReplyPrivate();

    /// Keeps all signals of the import in, from now on.
    void silence();

    /// Throws when the system has no thread to give.
    void start();
    void exit(int code);
    bool wait(unsigned long time);
    bool isFinished() const;

    /// The import loop.
    void innerRun();
    /// Probes one item and signals what came of it.
    void analyzeVisit(const CSourceAnalyzer::AnalyzeResult& result);

    /// On the host's thread, when the import's thread has ended or was killed.
    void threadFinished();
    void threadTerminated();

    /// Probing. A new task that the caller owns, or null when the item cannot be imported. Nothing
    /// is thrown: what goes wrong is flushed.
    static CImportTask* createImportTaskForFile(const QString& path);
    static CImportTask* createImportTaskForDvd(const QString& path);
    static CImportTask* createImportTaskForBd(const QString& path);

    /// Copying of the engine's descriptions. False, with what was copied so far left in place, when
    /// an argument is null, the description is missing or something is thrown, which is flushed.
    static bool fillMovieInfo(const AVBased::AVMovieInfo* record, CMovieInfomation* info);
    static bool fillDvdInfo(AVBased::IAVImporter* importer, CDVDInformation* info);
    static bool fillBdInfo(AVBased::IBDLoader* loader, CBDInformation* info);

    CVeskList tasks; ///< in the order made; not owned
    CImportSource source;
    CImportReplyThread* thread;
    std::atomic<CSourceAnalyzer*> analyzer; ///< null until the import's thread has made it
    std::atomic<int> importPercent;
    std::atomic<int> snapPercent;
    CImportModel* model;

    VESK_DECLARE_PUBLIC(CImportReply)

private:
    void stopAnalyzer();
    void createAnalyzer();
    void importSources();
    void takeSnapshots();
    void snapTask(CImportTask* task);

    bool passesFormatFilter(const QFileInfo& fileInfo);
    CImportTask* probe(const CSourceAnalyzer::AnalyzeResult& result);
    void reportError(CImportModel::ErrorType type, const QString& url);

    SignalGate m_gate;
};

} // namespace Vesk
