// SPDX-License-Identifier: GPL-2.0-or-later
//
// The command-line host of the import plug-in:
//
//   main, options        the command line
//   plugin               loads the plug-in, and then what needs its classes:
//   importcommand        sets the context, opens the outputs, runs the import, writes the results
//   importrun            imports all at once or in parts; collects an ImportResult
//   jsonoutput, summary  show what was found; importprogress shows how far it is
//   reportcommand        shows a saved error report, without the plug-in
//
// Everything here runs on the main thread but the log's receivers.
#include "options.h"
#include "plugin.h"
#include "reportcommand.h"
#include "vspavbased/enginecontrol.h"

#include <QtCore/QCoreApplication>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <langinfo.h>
#include <pwd.h>
#include <unistd.h>

namespace {

enum ExitStatus
{
    Done = 0,
    Unusable = 2
};

/// Qt decodes file names by the locale. In a bare environment that would be ASCII, and most names
/// could not be opened.
void ensureUtf8FileNames()
{
    std::setlocale(LC_CTYPE, "");
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0)
        setenv("LC_ALL", "C.UTF-8", 1);
}

/// A standard stream that is closed would become the first file that is opened, and get our output.
void ensureStandardStreams()
{
    int file = 0;
    while (file >= 0 && file <= STDERR_FILENO)
        file = open("/dev/null", O_RDWR | O_CLOEXEC);
    if (file >= 0)
        close(file);
}

/// Services run without one, and the cache lies in it.
void ensureHome()
{
    const passwd* user = std::getenv("HOME") ? nullptr : getpwuid(getuid());
    if (user)
        setenv("HOME", user->pw_dir, 1);
}

void print(const QString& text, std::FILE* file)
{
    std::fputs(text.toLocal8Bit().constData(), file);
}

int unusable(const QString& reason)
{
    print(QStringLiteral("vspimport: %1\n").arg(reason), stderr);
    return Unusable;
}

void showVersion()
{
    print(QStringLiteral("vspimport " VSPIMPORT_VERSION "\n"), stdout);
    const QString protections = QString::fromUtf8(AVBased::engineProtections());
    print(protections.isEmpty()
              ? QString::fromUtf8(AVBased::engineFailure()) + QLatin1Char('\n')
              : QStringLiteral("The engine's processes have %1.\n").arg(protections),
          stdout);
}

int import(const Options& options)
{
    if (options.jobs > 0)
        AVBased::setEngineProcesses(unsigned(options.jobs));
    AVBased::startEngine(); // first, since it takes longest; the import says when it cannot be
    Plugin plugin;
    QString error;
    return plugin.load(error) ? plugin.import(options) : unusable(error);
}

} // namespace

int main(int argc, char** argv)
{
    ensureStandardStreams();
    ensureUtf8FileNames();
    ensureHome();
    const QCoreApplication application(argc, argv);
    Options options;
    QString error;
    if (!parseOptions(argc, argv, options, error))
        return unusable(error);
    switch (options.command) {
    case Options::Command::Help:
        print(helpText(), stdout);
        return Done;
    case Options::Command::Version:
        showVersion();
        return Done;
    case Options::Command::Report:
        return showReport(options.reportToRead, options.reportAsJson, error) ? Done
                                                                             : unusable(error);
    case Options::Command::Import:
        break;
    }
    return import(options);
}
