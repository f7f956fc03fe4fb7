// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "cimportmodel.h"
#include "cimportreply.h"
#include "cimportsource.h"
#include "cimporttask.h"

#include <QtCore/QMutex>
#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

#include <atomic>
#include <memory>
#include <vector>

/// Runs imports and writes down what a host would hear, in the order in which it is emitted:
/// "taskProcess ImportDone /a.mp4", "importError 2 /b.mp4", "importUrl /a.mp4",
/// "importPercentChanged 50", "importFinished", "snapPercentChanged 100", "snapFinished",
/// "finished".
///
/// Owns the tasks. Also keeps what is flushed to the host's log meanwhile: "20030009 text file".
class ImportRun : public QObject
{
    Q_OBJECT

public:
    ImportRun();
    ~ImportRun() override;

    /// Opens an import of `paths` and listens to it.
    Vesk::CImportReply* open(const QStringList& paths);
    /// Opens one and waits until it has finished.
    void run(const QStringList& paths);
    void waitForFinished();

    QStringList events() const;
    QStringList log() const;
    Vesk::CImportTask* task(int index) const { return m_tasks.at(size_t(index)).get(); }
    int taskCount() const { return int(m_tasks.size()); }

    Vesk::CImportModel model;
    Vesk::CImportSource source; ///< for import, until a test says otherwise
    std::unique_ptr<Vesk::CImportReply> reply;
    std::atomic<Vesk::CImportReply*> running{nullptr}; ///< the same, for the import's thread

private:
    void note(const QString& event);

    mutable QMutex m_mutex;
    QStringList m_events;
    QStringList m_log;
    std::vector<std::unique_ptr<Vesk::CImportTask>> m_tasks;
    bool m_finished = false;
};

/// A folder for a test with files in it, and the import context set to it and to defaults: pictures
/// go to "pictures" below it, "*.mp4;*.avi;" are imported.
class ImportFolder
{
public:
    ImportFolder();

    /// Path of `name` in the folder.
    QString path(const QString& name) const;
    /// Makes a file and its folders; its path.
    QString file(const QString& name, const QByteArray& content = QByteArray("x")) const;
    QString folder(const QString& name) const;
    QString pictures() const { return path(QStringLiteral("pictures")); }
    /// Pictures there are, by their path below pictures().
    QStringList pictureNames() const;

private:
    QTemporaryDir m_dir;
};
