// SPDX-License-Identifier: GPL-2.0-or-later
//
// vspimport-window [PATH…]: the desktop window. library.h tells what it is made of.
#include "context.h"
#include "mainwindow.h"
#include "moduleplugin.h"
#include "translation.h"
#include "vspavbased/enginecontrol.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QDir>
#include <QtGui/QIcon>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>

#include <cstring>

namespace {

class Program
{
    Q_DECLARE_TR_FUNCTIONS(Program)

public:
    /// Paths of the command line, absolute. Ends the process for --help and the like.
    static QStringList parse(QCoreApplication& application)
    {
        QCommandLineParser parser;
        parser.setApplicationDescription(
            tr("Shows what is in media files, folders, disc images, DVDs and Blu-ray discs."));
        parser.addHelpOption();
        parser.addVersionOption();
        parser.addPositionalArgument(QStringLiteral("PATH"), tr("What to import."),
                                     QStringLiteral("[PATH...]"));
        parser.process(application);
        QStringList paths;
        for (const QString& path : parser.positionalArguments())
            paths.append(QDir::cleanPath(QDir::current().absoluteFilePath(path)));
        return paths;
    }

    static QString noPictures() { return tr("No pictures can be taken: %1"); }
    static QString cannotStart() { return tr("vspimport cannot start"); }
};

void identify()
{
    QCoreApplication::setApplicationName(QStringLiteral("vspimport-window"));
    QCoreApplication::setOrganizationName(QStringLiteral("vspimport"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VSPIMPORT_VERSION));
}

/// Help is for those without a screen, too.
bool asksForHelp(int argc, char** argv)
{
    for (int i = 1; i < argc && std::strcmp(argv[i], "--") != 0; ++i) {
        for (const char* word : {"-h", "--help", "--help-all", "-v", "--version"}) {
            if (std::strcmp(argv[i], word) == 0)
                return true;
        }
    }
    return false;
}

} // namespace

int main(int argc, char** argv)
{
    identify();
    if (asksForHelp(argc, argv)) {
        QCoreApplication application(argc, argv);
        installTranslations();
        Program::parse(application);
        return 0;
    }
    if (argc > 1)
        AVBased::startEngine(); // which takes longest; the import says when it cannot be
#if QT_VERSION_MAJOR < 6
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
#endif
    QApplication application(argc, argv);
    QGuiApplication::setDesktopFileName(QStringLiteral("vspimport-window"));
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/vspimport-window.svg")));
    installTranslations();
    const QStringList paths = Program::parse(application);

    ModulePlugin plugin;
    QString error;
    if (!plugin.load(error)) {
        QMessageBox::critical(nullptr, Program::cannotStart(), error);
        return 2;
    }
    error = setUpContext(application.devicePixelRatio());
    MainWindow window;
    window.show();
    if (!error.isEmpty())
        window.warn(Program::noPictures().arg(error));
    window.import(paths);
    return QApplication::exec();
}
