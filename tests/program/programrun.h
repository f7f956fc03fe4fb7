// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QList>
#include <QtCore/QProcess>
#include <QtCore/QProcessEnvironment>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

/// Runs the program with pictures and JSON in a folder of its own.
class ProgramRun
{
public:
    /// Runs `vspimport --config-dir … arguments` to its end; the exit status, -1 when it crashed or
    /// did not end.
    int run(const QStringList& arguments);
    /// The same by /bin/sh, which sees "$vspimport" as the program with its --config-dir.
    int shell(const QString& script);

    /// Runs it with --json and reads that; a null object when there is none.
    QJsonObject import(const QStringList& arguments);

    /// Paths of the tasks of `result`, sorted; of its errors, as "type path".
    static QStringList taskUrls(const QJsonObject& result);
    static QStringList errors(const QJsonObject& result);
    /// The one task for `path`.
    static QJsonObject task(const QJsonObject& result, const QString& path);

    QString path(const QString& name) const { return m_folder.filePath(name); }
    /// Makes a file in the folder; its path.
    QString file(const QString& name, const QByteArray& content) const;
    /// What the last run has left in its temporary folder.
    QStringList leftBehind() const;
    /// Names of the pictures, sorted.
    QStringList pictures() const;

    QByteArray output; ///< of the last run
    QByteArray errorOutput;
    int status = 0;

private:
    QProcessEnvironment environment() const;
    int finish(QProcess& process);

    QTemporaryDir m_folder;
};
