// SPDX-License-Identifier: GPL-2.0-or-later
#include "programrun.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QProcessEnvironment>

QJsonValue at(const QJsonValue& value, const QString& path)
{
    QJsonValue found = value;
    for (const QString& key : path.split('/'))
        found = found.isArray() ? found.toArray().at(key.toInt()) : found.toObject().value(key);
    return found;
}

QString textAt(const QJsonValue& value, const QString& path)
{
    return at(value, path).toVariant().toString();
}

int ProgramRun::run(const QStringList& arguments)
{
    return finish(PROGRAM, QStringList({"--config-dir", path("pictures")}) + arguments);
}

int ProgramRun::shell(const QString& script)
{
    return finish("/bin/sh", {"-c", script});
}

/// With a temporary folder of its own, so that what is left behind there can be told.
int ProgramRun::finish(const QString& program, const QStringList& arguments)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    QDir().mkpath(path("temporary"));
    environment.insert("TMPDIR", path("temporary"));
    environment.insert("vspimport", PROGRAM " --config-dir " + path("pictures"));
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(m_folder.path());
    process.start(program, arguments);
    const bool finished =
        process.waitForFinished(120000) && process.exitStatus() == QProcess::NormalExit;
    output = process.readAllStandardOutput();
    errorOutput = process.readAllStandardError();
    status = finished ? process.exitCode() : -1;
    return status;
}

QJsonObject ProgramRun::import(const QStringList& arguments)
{
    run(QStringList({"--json", path("result.json")}) + arguments);
    return result();
}

QJsonObject ProgramRun::result() const
{
    return QJsonDocument::fromJson(contentOf(path("result.json"))).object();
}

QStringList ProgramRun::taskUrls(const QJsonObject& result)
{
    QStringList urls;
    for (const QJsonValue& task : result.value("tasks").toArray())
        urls << textAt(task, "url");
    urls.sort();
    return urls;
}

QStringList ProgramRun::errors(const QJsonObject& result)
{
    QStringList texts;
    for (const QJsonValue& error : result.value("errors").toArray())
        texts << textAt(error, "type") + ' ' + textAt(error, "url");
    texts.sort();
    return texts;
}

QJsonValue ProgramRun::task(const QJsonObject& result, const QString& path)
{
    for (const QJsonValue& task : result.value("tasks").toArray()) {
        if (textAt(task, "url") == path)
            return task;
    }
    return {};
}
