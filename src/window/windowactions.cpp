// SPDX-License-Identifier: GPL-2.0-or-later
#include "windowactions.h"

#include "librarymodel.h"

#include <QAction>
#include <QActionGroup>
#include <QtGui/QIcon>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>

WindowActions::WindowActions(QMainWindow& window)
    : m_window(window)
{
    makeFileActions();
    makeEditActions();
    makeViewActions();
    makeItemActions();
    makeMenus();
}

QList<QAction*> WindowActions::ofItems() const
{
    return {play, showInFolder, copyPath, copyJson, remove};
}

QList<QAction*> WindowActions::ofList() const
{
    return {saveList, exportJson, exportCsv, exportPage, selectAll};
}

QAction* WindowActions::make(const char* name, const QString& text, const QString& tip,
                             const char* icon)
{
    auto* action = new QAction(text, &m_window);
    action->setObjectName(QLatin1String(name));
    action->setToolTip(tip);
    action->setStatusTip(tip);
    action->setIcon(QIcon::fromTheme(QLatin1String(icon)));
    return action;
}

void WindowActions::makeFileActions()
{
    openFiles = make("openFiles", tr("&Open Files…"), tr("Imports media files and disc images"),
                     "document-open");
    openFolder = make("openFolder", tr("Open Fol&der…"), tr("Imports all that lies below a folder"),
                      "folder-open");
    openDisc =
        make("openDisc", tr("Open D&isc…"),
             tr("Imports a DVD or Blu-ray disc, in a drive or in a folder"), "media-optical");
    openList = make("openList", tr("Open &List…"), tr("Imports what a list has been saved of"));
    saveList =
        make("saveList", tr("&Save List…"), tr("Saves which items there are"), "document-save");
    exportJson = make("exportJson", tr("&JSON…"), tr("All facts, for programs"));
    exportCsv = make("exportCsv", tr("&CSV…"), tr("A line an item, for spreadsheets"));
    exportPage = make("exportPage", tr("&Page…"), tr("A page with all pictures, for browsers"));
    quit = make("quit", tr("&Quit"), tr("Closes the window"), "application-exit");
    openFiles->setShortcut(QKeySequence::Open);
    openFolder->setShortcut(tr("Ctrl+Shift+O"));
    openDisc->setShortcut(tr("Ctrl+D"));
    openList->setShortcut(tr("Ctrl+L"));
    saveList->setShortcut(QKeySequence::Save);
    exportPage->setShortcut(tr("Ctrl+E"));
    quit->setShortcut(QKeySequence::Quit);
}

void WindowActions::makeEditActions()
{
    paste = make("paste", tr("&Paste"), tr("Imports the files that were copied"), "edit-paste");
    copyPath =
        make("copyPath", tr("&Copy Path"), tr("Copies where the selected items lie"), "edit-copy");
    copyJson = make("copyJson", tr("Copy as &JSON"), tr("Copies all facts of the selected items"));
    selectAll =
        make("selectAll", tr("Select &All"), tr("Selects all that is shown"), "edit-select-all");
    remove = make("remove", tr("&Remove from List"), tr("Removes no file, only the items here"),
                  "list-remove");
    moveUp =
        make("moveUp", tr("Move &Up"), tr("Moves the selected items up in the own order"), "go-up");
    moveDown = make("moveDown", tr("Move Do&wn"),
                    tr("Moves the selected items down in the own order"), "go-down");
    moveUp->setShortcut(tr("Alt+Up"));
    moveDown->setShortcut(tr("Alt+Down"));
    find = make("find", tr("&Find"), tr("Shows only items with certain words"), "edit-find");
    paste->setShortcut(QKeySequence::Paste);
    copyPath->setShortcut(QKeySequence::Copy);
    copyJson->setShortcut(tr("Ctrl+Shift+C"));
    selectAll->setShortcut(QKeySequence::SelectAll);
    remove->setShortcut(QKeySequence::Delete);
    find->setShortcut(QKeySequence::Find);
}

void WindowActions::makeViewActions()
{
    grid = make("grid", tr("&Pictures"), tr("Shows the items as pictures"), "view-grid");
    table = make("table", tr("&Table"),
                 tr("Shows the items with their facts, and what is in discs"), "view-list-details");
    details = make("details", tr("&Details"), tr("Shows what is known of the selected item"));
    grid->setShortcut(tr("Ctrl+1"));
    table->setShortcut(tr("Ctrl+2"));
    details->setShortcut(tr("F9"));
    auto* looks = new QActionGroup(&m_window);
    for (QAction* look : {grid, table}) {
        looks->addAction(look);
        look->setCheckable(true);
    }
    grid->setChecked(true);
    details->setCheckable(true);
    details->setChecked(true);

    sortColumns = new QActionGroup(&m_window);
    for (int column = -1; column < ColumnCount; ++column) {
        const QString name =
            column < 0
                ? tr("&Own Order")
                : QCoreApplication::translate("LibraryModel", LibraryModel::columnNames[column]);
        QAction* action = sortColumns->addAction(name);
        action->setCheckable(true);
        action->setData(column);
        action->setChecked(column < 0);
    }
    sortDescending = make("sortDescending", tr("&Descending"), tr("The greatest first"));
    sortDescending->setCheckable(true);
}

void WindowActions::makeItemActions()
{
    play = make("play", tr("&Open with Player"),
                tr("Opens the selected items with the desktop's player"), "media-playback-start");
    showInFolder = make("showInFolder", tr("Show in &Folder"),
                        tr("Shows the selected items in the file manager"), "folder");
    stop = make("stopImport", tr("&Stop Import"), tr("Ends the import; what has been found stays"),
                "process-stop");
    about = make("about", tr("&About vspimport"), tr("Versions and licence"), "help-about");
    play->setShortcut(tr("Ctrl+Return"));
    showInFolder->setShortcut(tr("Ctrl+Shift+Return"));
    stop->setShortcut(tr("Ctrl+."));
}

void WindowActions::makeMenus()
{
    QMenuBar* bar = m_window.menuBar();
    QMenu* file = bar->addMenu(tr("&File"));
    file->addActions({openFiles, openFolder, openDisc});
    file->addSeparator();
    file->addActions({openList, saveList});
    file->addMenu(tr("&Export"))->addActions({exportJson, exportCsv, exportPage});
    file->addSeparator();
    file->addActions({stop, quit});

    QMenu* edit = bar->addMenu(tr("&Edit"));
    edit->addActions({paste, selectAll, find});

    QMenu* view = bar->addMenu(tr("&View"));
    view->addActions({grid, table, details});
    QMenu* sort = view->addMenu(tr("&Sort by"));
    sort->addActions(sortColumns->actions());
    sort->addSeparator();
    sort->addAction(sortDescending);

    itemMenu = bar->addMenu(tr("&Item"));
    itemMenu->addActions({play, showInFolder});
    itemMenu->addSeparator();
    itemMenu->addActions({copyPath, copyJson});
    itemMenu->addSeparator();
    itemMenu->addActions({moveUp, moveDown, remove});

    bar->addMenu(tr("&Help"))->addAction(about);
}
