// SPDX-License-Identifier: GPL-2.0-or-later
//
// Imports through the module and the near half of the engine, and a look at the processes.
#pragma once

#include "cimportmodel.h"
#include "cimportreply.h"
#include "cimportsource.h"
#include "cimporttask.h"
#include "cmovieinfomation.h"

#include <QtCore/QDir>
#include <QtCore/QMultiHash>
#include <QtCore/QProcess>
#include <QtTest/QtTest>

#include <memory>
#include <unistd.h>
#include <vector>

/// Processes that this one has started, and those that they have, in this order.
inline QList<int> processesBelow()
{
    QProcess list;
    list.start("ps", {"-e", "-o", "pid=,ppid="});
    const qint64 own = list.processId();
    list.waitForFinished();
    QMultiHash<int, int> children;
    for (const QByteArray& line : list.readAllStandardOutput().split('\n')) {
        const QList<QByteArray> fields = line.simplified().split(' ');
        if (fields.size() == 2 && fields[0].toInt() != own)
            children.insert(fields[1].toInt(), fields[0].toInt());
    }
    QList<int> found = children.values(int(getpid()));
    for (int i = 0; i < found.size(); ++i)
        found += children.values(found[i]);
    return found;
}

/// Files, sockets and memory that this process has open.
inline int openDescriptors()
{
    return QDir("/proc/self/fd").entryList(QDir::AllEntries | QDir::System).size();
}

/// One import, its tasks and the paths that failed.
class ModuleImport
{
public:
    void open(const QStringList& paths)
    {
        qRegisterMetaType<Vesk::CImportTask*>("Vesk::CImportTask*");
        qRegisterMetaType<Vesk::CImportReply::ProcessType>("Vesk::CImportReply::ProcessType");
        Vesk::CImportSource source;
        source.setSources(paths);
        source.setForImport(true);
        QObject::connect(&model, &Vesk::CImportModel::importError, &model,
                         [this](int, const QString& url) { failed << url; });
        reply.reset(model.open(source));
        finished = std::make_unique<QSignalSpy>(reply.get(), SIGNAL(finished()));
    }

    void run(const QStringList& paths)
    {
        open(paths);
        wait();
    }

    void wait()
    {
        if (!reply->isFinished())
            QVERIFY(finished->wait(300000));
        QCoreApplication::processEvents();
        for (int i = 0; i < reply->tasks()->count(); ++i)
            tasks.emplace_back(static_cast<Vesk::CImportTask*>(reply->tasks()->item(i)));
    }

    /// Of a media file's task.
    QString picture(std::size_t index) const
    {
        return tasks[index]->movieInfo()->imageUrl().mid(int(strlen("file://")));
    }

    Vesk::CImportModel model;
    std::unique_ptr<Vesk::CImportReply> reply;
    std::unique_ptr<QSignalSpy> finished;
    std::vector<std::unique_ptr<Vesk::CImportTask>> tasks;
    QStringList failed;
};
