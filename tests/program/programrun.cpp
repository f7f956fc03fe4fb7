// SPDX-License-Identifier: GPL-2.0-or-later
#include "programrun.h"

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>

namespace {

const int longestRunMs = 120000;

}

int ProgramRun::run(const QStringList& arguments)
{
    QProcess process;
    process.setProcessEnvironment(environment());
    process.start(PROGRAM, QStringList({"--config-dir", path("pictures")}) + arguments);
    return finish(process);
}

int ProgramRun::shell(const QString& script)
{
    QProcess process;
    process.setProcessEnvironment(environment());
    process.setWorkingDirectory(m_folder.path());
    process.start("/bin/sh", {"-c", script});
    return finish(process);
}

/// With a temporary folder of its own, so that what is left behind there can be told.
QProcessEnvironment ProgramRun::environment() const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    QDir().mkpath(path("temporary"));
    environment.insert("TMPDIR", path("temporary"));
    environment.insert("vspimport", PROGRAM " --config-dir " + path("pictures"));
    return environment;
}

int ProgramRun::finish(QProcess& process)
{
    const bool finished =
        process.waitForFinished(longestRunMs) && process.exitStatus() == QProcess::NormalExit;
    output = process.readAllStandardOutput();
    errorOutput = process.readAllStandardError();
    status = finished ? process.exitCode() : -1;
    return status;
}

QJsonObject ProgramRun::import(const QStringList& arguments)
{
    run(QStringList({"--json", path("result.json")}) + arguments);
    QFile file(path("result.json"));
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object()
                                          : QJsonObject();
}

QStringList ProgramRun::taskUrls(const QJsonObject& result)
{
    QStringList urls;
    for (const QJsonValue& task : result.value("tasks").toArray())
        urls.append(task.toObject().value("url").toString());
    urls.sort();
    return urls;
}

QStringList ProgramRun::errors(const QJsonObject& result)
{
    QStringList texts;
    for (const QJsonValue& error : result.value("errors").toArray()) {
        texts.append(error.toObject().value("type").toString() + ' ' +
                     error.toObject().value("url").toString());
    }
    texts.sort();
    return texts;
}

QJsonObject ProgramRun::task(const QJsonObject& result, const QString& path)
{
    for (const QJsonValue& task : result.value("tasks").toArray()) {
        if (task.toObject().value("url").toString() == path)
            return task.toObject();
    }
    return QJsonObject();
}

QString ProgramRun::file(const QString& name, const QByteArray& content) const
{
    QDir().mkpath(QFileInfo(path(name)).absolutePath());
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write a file of the test");
    return path(name);
}

QStringList ProgramRun::leftBehind() const
{
    return QDir(path("temporary"))
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

QStringList ProgramRun::pictures() const
{
    QStringList names;
    QDirIterator it(path("pictures"), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext())
        names.append(QDir(path("pictures")).relativeFilePath(it.next()));
    names.sort();
    return names;
}
