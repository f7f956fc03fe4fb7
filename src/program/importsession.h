// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "cimportmodel.h"
#include "cimportreply.h"
#include "cimporttask.h"
#include "progressline.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QScopedPointer>
#include <QtCore/QStringList>

#include <memory>
#include <vector>

class QJsonObject;
struct Options;

/// One import as this program runs it: opens it, shows its signals and progress, and keeps what
/// came of it. Owns the tasks.
class ImportSession : public QObject
{
    Q_OBJECT

public:
    struct Error
    {
        int type;
        QString path;
    };

    explicit ImportSession(const Options& options);
    ~ImportSession() override;

    /// Imports `sources`, and returns when all is over. `failed` are items that the import cannot
    /// be given: they are reported as it would report them.
    /// False when the import could not be started.
    bool run(const QStringList& sources, const QStringList& failed);

    const std::vector<std::unique_ptr<Vesk::CImportTask>>& tasks() const { return m_tasks; }
    const QList<Error>& errors() const { return m_errors; }
    /// Paths of items that gave neither a task nor an error.
    const QStringList& unreported() const { return m_unreported; }
    bool wasStopped() const { return m_stopped; }
    int importPercent() const { return m_importPercent; }
    int snapPercent() const { return m_snapPercent; }

    /// Writes the report if there was an error. False when the file cannot be written.
    bool saveReport(const QString& fileName);

public Q_SLOTS:
    /// Asks the import to stop.
    void stop();

Q_SIGNALS:
    void ended();

private Q_SLOTS:
    void onTaskProcess(Vesk::CImportTask* task, Vesk::CImportReply::ProcessType type);
    void onImportError(int type, const QString& url);
    void onImportUrl(const QString& url);
    void onImportPercent(int percent);
    void onImportFinished();
    void onSnapPercent(int percent);
    void onSnapFinished();
    void onFinished();

private:
    void connectReply();
    void queueCall(const char* slot, int value);
    void showEvent(const QJsonObject& event);
    void showProgress(const QString& path);

    const Options& m_options;
    ProgressLine m_progress;
    Vesk::CImportModel m_model; ///< outlives the reply
    QScopedPointer<Vesk::CImportReply> m_reply;
    std::vector<std::unique_ptr<Vesk::CImportTask>> m_tasks;
    QList<Error> m_errors;
    QStringList m_unreported;
    bool m_isAnswered = false; ///< the item at hand gave a task or an error
    bool m_stopped = false;
    bool m_takesSnapshots = false; ///< the import phase is over
    int m_itemsSeen = 0;
    int m_itemsSnapped = 0;
    int m_importPercent = 0;
    int m_snapPercent = 0;

    Q_DISABLE_COPY(ImportSession)
};
