// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "comparetext.h"
#include "files.h"
#include "fixture.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

/// The value at a path as in "tasks/0/url".
QJsonValue at(const QJsonValue& value, const QString& path);
QString textAt(const QJsonValue& value, const QString& path);

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
    QJsonObject result() const;

    /// Paths of the tasks of `result`, sorted; of its errors, as "type path".
    static QStringList taskUrls(const QJsonObject& result);
    static QStringList errors(const QJsonObject& result);
    /// The one task for `path`.
    static QJsonValue task(const QJsonObject& result, const QString& path);

    QString path(const QString& name) const { return m_folder.filePath(name); }
    /// Makes a file in the folder; its path.
    QString file(const QString& name, const QByteArray& content) const
    {
        return writeFile(path(name), content);
    }
    /// What is left in the temporary folder.
    QStringList leftBehind() const { return filesBelow(path("temporary")); }
    /// Names of the pictures, sorted.
    QStringList pictures() const { return filesBelow(path("pictures")).filter(".jpg"); }

    QByteArray output; ///< of the last run
    QByteArray errorOutput;
    int status = 0;

private:
    int finish(const QString& program, const QStringList& arguments);

    QTemporaryDir m_folder;
};
