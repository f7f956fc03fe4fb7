// SPDX-License-Identifier: GPL-2.0-or-later
//
// windowimport PATH…
// The real window importing what lies at the paths, with pictures in a fresh folder (or in that of
// XDG_CACHE_HOME): how long it takes, and how long the window does not answer meanwhile.
#include "context.h"
#include "mainwindow.h"
#include "moduleplugin.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTimer>
#include <QtWidgets/QApplication>

#include <algorithm>
#include <cstdio>
#include <vector>

int main(int argc, char** argv)
{
    const QTemporaryDir home;
    for (const char* name : {"XDG_CACHE_HOME", "XDG_CONFIG_HOME"}) {
        if (!qEnvironmentVariableIsSet(name))
            qputenv(name, QFile::encodeName(home.path()));
    }
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("windowimport"));
    ModulePlugin plugin;
    QString error;
    if (argc < 2 || !plugin.load(error)) {
        std::fprintf(stderr, "use: windowimport PATH…\n%s\n", qPrintable(error));
        return 2;
    }
    setUpContext(1.0);
    MainWindow window;
    window.show();
    QApplication::processEvents();

    // Each time that the event loop comes round to the timer it could have answered a key.
    std::vector<double> gaps;
    QElapsedTimer sinceTick;
    QTimer tick;
    QObject::connect(&tick, &QTimer::timeout, &application, [&] {
        gaps.push_back(double(sinceTick.nsecsElapsed()) / 1e6);
        sinceTick.start();
    });
    QObject::connect(&window.library(), &Library::progressChanged, &application, [&window] {
        if (!window.library().progress().isBusy)
            QCoreApplication::quit();
    });
    QElapsedTimer whole;
    whole.start();
    sinceTick.start();
    tick.start(1);
    window.import(application.arguments().mid(1));
    QApplication::exec();
    const double seconds = double(whole.elapsed()) / 1000.0;
    std::sort(gaps.begin(), gaps.end());
    const ImportProgress& progress = window.library().progress();
    std::printf("%d items of %d in %.2f s, %d pictures\n", progress.imported, progress.listed,
                seconds, progress.picturesTaken);
    std::printf("between answers: median %.1f ms, of 1000 the slowest %.1f ms, slowest %.1f ms\n",
                gaps[gaps.size() / 2], gaps[gaps.size() - 1 - gaps.size() / 1000], gaps.back());
    return 0;
}
