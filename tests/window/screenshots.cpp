// SPDX-License-Identifier: GPL-2.0-or-later
//
// window-screenshots FOLDER [--dark] PATH…
// Pictures of the window with what lies at the paths, for documents and for looking at: empty, the
// grid, the table, a DVD and a Blu-ray disc open, what could not be imported.
#include "context.h"
#include "itemparts.h"
#include "moduleplugin.h"
#include "translation.h"
#include "windowdriver.h"

#include <cstdio>

namespace {

QPalette darkPalette()
{
    QPalette palette(QColor(45, 45, 48));
    palette.setColor(QPalette::Base, QColor(30, 30, 32));
    palette.setColor(QPalette::AlternateBase, QColor(40, 40, 43));
    palette.setColor(QPalette::Highlight, QColor(58, 110, 165));
    return palette;
}

void grab(WindowDriver& driver, const QString& folder, const char* name)
{
    QTest::qWait(600); // for pictures that are being loaded
    const QString file = folder + '/' + name + ".png";
    if (!driver.window.grab().save(file))
        qFatal("%s cannot be written", qPrintable(file));
}

/// The first item of that kind, with its parts open; an invalid index when there is none.
QModelIndex openFirst(WindowDriver& driver, const QString& kind)
{
    const int row = driver.column(KindColumn).indexOf(kind);
    if (row < 0)
        return {};
    const QModelIndex index = driver.model()->index(row, 0);
    driver.table()->expand(index);
    driver.select(index);
    driver.table()->scrollTo(index, QAbstractItemView::PositionAtTop);
    return index;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("window-screenshots"));
    QApplication::setStyle(QStringLiteral("fusion"));
    installTranslations();
    QStringList arguments = application.arguments().mid(1);
    if (arguments.removeAll(QStringLiteral("--dark")) > 0)
        QApplication::setPalette(darkPalette());
    ModulePlugin plugin;
    QString error;
    if (arguments.size() < 2 || !plugin.load(error)) {
        std::fprintf(stderr, "use: window-screenshots FOLDER [--dark] PATH…\n%s",
                     qPrintable(error));
        return 2;
    }
    const QString folder = arguments.takeFirst();
    QDir().mkpath(folder);
    setUpContext(application.devicePixelRatio());
    QSettings().clear();

    WindowDriver driver;
    grab(driver, folder, "empty");
    if (!driver.import(arguments))
        return 1;
    driver.select(driver.model()->index(driver.model()->rowCount() / 2, 0));
    grab(driver, folder, "grid");
    driver.trigger("table");
    grab(driver, folder, "table");
    if (openFirst(driver, QStringLiteral("DVD")).isValid())
        grab(driver, folder, "dvd");
    if (openFirst(driver, QStringLiteral("Blu-ray")).isValid())
        grab(driver, folder, "bluray");
    driver.trigger("grid");
    QTest::mouseClick(driver.child<QToolButton>("showFailures"), Qt::LeftButton);
    grab(driver, folder, "failures");
    return 0;
}
