// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "importprogress.h"
#include "importqueue.h"
#include "importresult.h"
#include "refusals.h"

#include <QtCore/QEventLoop>
#include <QtCore/QStringList>

struct Options;
struct SourcePaths;
class OutputFile;

/// What the command line asks for, imported: all at once, or part by part where each item is a line
/// of output and nothing of it is kept. Shows how far it is, and collects what comes of it.
class ImportRun
{
public:
    /// Items and failures go to `lines` as they come; null when nobody wants them.
    ImportRun(const Options& options, const SourcePaths& paths, OutputFile* lines);

    /// Imports to the end. False when an import cannot be started.
    bool run();

    /// What is at hand ends, and nothing more is begun.
    void stop();

    const ImportResult& result() const { return m_result; }
    /// Folders that cannot be read.
    const QStringList& unreadable() const { return m_unreadable; }
    /// An item that could have no pictures of its own, or a disc whose pictures could not be begun
    /// with; empty without one.
    const QString& uncaptured() const { return m_uncaptured; }
    bool saveReport(QIODevice* device) { return m_imports.saveReport(device); }

private:
    bool importParts();
    bool importPart(const QStringList& sources);
    void reportUndecodable(const QByteArray& path);

    void receive(const ImportEvent& event);
    void receiveReady(const ImportEvent& event);
    void receiveFailure(int type, const QString& path);
    void receiveSeen(const QString& path);
    QString reasonFor(int type, const QString& path);
    void writeLine(const QByteArray& line);

    const Options& m_options;
    const SourcePaths& m_paths;
    OutputFile* m_lines;
    ImportResult m_result;
    ImportProgress m_progress;
    Refusals m_refusals;
    ImportQueue m_imports;
    QEventLoop m_loop;
    bool m_isStarted = true;
    QStringList m_unreadable;
    QString m_uncaptured;
    bool m_isAnswered = false; ///< the item at hand gave a task or an error
    int m_itemsBefore = 0;     ///< in earlier parts
    int m_itemsNow = 0;

    Q_DISABLE_COPY(ImportRun)
};
