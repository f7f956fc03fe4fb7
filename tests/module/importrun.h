// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "cimportmodel.h"
#include "cimportreply.h"
#include "cimportsource.h"
#include "cimporttask.h"
#include "comparetext.h"
#include "fakeengine.h"
#include "files.h"

#include <QtCore/QMutex>
#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

#include <memory>
#include <vector>

using TaskPtr = std::unique_ptr<Vesk::CImportTask>;

/// A file with a video stream, 3, and an audio stream, 4.
FakeMovie videoMovie(double duration = 10.0, int id = 0, const QByteArray& name = {});
FakeItem videoItem(double duration = 10.0);
/// Puts a video into the engine at each path; the paths.
QStringList withVideos(const QStringList& paths);

/// The task for what the engine finds at a path; null when the module makes none.
TaskPtr probeFile(const QString& path, const FakeItem& item);
TaskPtr probeDvd(const FakeItem& item, const QString& path = "/disc/");
TaskPtr probeBluray(const FakeDisc& disc, const QString& path = "/d");

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

    Vesk::CImportModel model;
    Vesk::CImportSource source; ///< for import, until a test says otherwise
    std::unique_ptr<Vesk::CImportReply> reply;
    std::vector<TaskPtr> tasks;

private:
    void note(const QString& event);

    mutable QMutex m_mutex;
    QStringList m_events;
    QStringList m_log;
};

/// A test with the scripted engine: anew for each function, and nothing of it left at the end.
class EngineTest : public QObject
{
    Q_OBJECT

protected:
    FakeEngine& engine = FakeEngine::instance();

private Q_SLOTS:
    void init() { engine.reset(); }
    void cleanup();
};

/// What `text` makes of each value, with ", " between.
template <typename T, typename Text>
QString joined(const std::initializer_list<T>& values, Text text)
{
    QStringList texts;
    for (const T& value : values)
        texts << text(value);
    return texts.join(", ");
}

/// A folder for a test with files in it, and the import context set to it and to defaults: pictures
/// go to "pictures" below it, "*.mp4;*.avi;" are imported.
class ImportFolder
{
public:
    ImportFolder();

    /// Path of `name` in the folder.
    QString path(const QString& name) const { return m_dir.path() + '/' + name; }
    /// Makes a file and its folders; its path.
    QString file(const QString& name, const QByteArray& content = "x") const
    {
        return writeFile(path(name), content);
    }
    /// Pictures there are, by their path below "pictures".
    QStringList pictureNames() const { return filesBelow(path("pictures")); }

private:
    QTemporaryDir m_dir;
};
