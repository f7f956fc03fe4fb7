// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "session/defaults.h"

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// What the command line asks for.
struct Options
{
    enum class Command
    {
        Import,
        Report,
        Help,
        Version
    };

    Command command = Command::Import;

    QList<QByteArray> paths; ///< as given, in the file system's bytes
    bool forImport = false;
    bool forPlay = false;
    bool forConvert = false;
    QString configDir;
    QSize snapSize = defaults::pictureSize;
    QString formats;
    QString forbidden;
    bool allFiles = false;
    bool allowDrm = false;
    int jobs = 0;       ///< engine processes at once; 0 for what suits the machine
    int shard = 1;      ///< which of the parts of the items
    int shardCount = 1; ///< how many there are
    QString jsonFile;   ///< "-" for standard output, empty for none, as the others
    QString jsonLinesFile;
    QString htmlFile;
    bool events = false;
    QString reportFile;
    bool quiet = false;
    bool verbose = false;

    QString reportToRead; ///< of the report command
    bool reportAsJson = false;

    bool takesPictures() const { return forImport || forConvert; }
    bool usesStandardOutput() const
    {
        const QLatin1String output("-");
        return events || jsonFile == output || jsonLinesFile == output || htmlFile == output;
    }
    bool showsSummary() const { return !quiet && !usesStandardOutput(); }
};

/// Reads the command line, and the files of paths that it names. False, with the reason in one line
/// in `error`, when it cannot be used.
bool parseOptions(int argc, char** argv, Options& options, QString& error);

/// The text of --help.
QString helpText();
