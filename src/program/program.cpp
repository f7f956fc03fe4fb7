// SPDX-License-Identifier: GPL-2.0-or-later
#include "program.h"

#include "commandlibrary.h"
#include "options.h"
#include "reportcommand.h"
#include "session/moduleplugin.h"
#include "vspavbased/enginecontrol.h"

#include <QtCore/QCoreApplication>

#include <cstdio>

namespace {

enum ExitStatus
{
    Done = 0,
    Unusable = 2
};

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
    ModulePlugin plugin;
    CommandLibrary command;
    QString error;
    return plugin.load(error) && command.load(error) ? command.import(options) : unusable(error);
}

} // namespace

int vspimportMain(int argc, char** argv)
{
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
