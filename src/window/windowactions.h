// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QCoreApplication>

class QAction;
class QActionGroup;
class QMainWindow;
class QMenu;
class QToolBar;

/// What can be done in the window: its actions with their texts and keys, in its menus. They belong
/// to the window; each has its name here as its object name.
struct WindowActions
{
    Q_DECLARE_TR_FUNCTIONS(WindowActions)

public:
    /// Makes the actions and the menus of `window`.
    explicit WindowActions(QMainWindow& window);

    /// Those that need a selected item.
    QList<QAction*> ofItems() const;
    /// Those that need something in the list.
    QList<QAction*> ofList() const;

    QAction* openFiles;
    QAction* openFolder;
    QAction* openDisc;
    QAction* openList;
    QAction* saveList;
    QAction* exportJson;
    QAction* exportCsv;
    QAction* exportPage;
    QAction* quit;

    QAction* paste;
    QAction* copyPath;
    QAction* copyJson;
    QAction* selectAll;
    QAction* moveUp;
    QAction* moveDown;
    QAction* remove;
    QAction* find;

    QAction* grid;
    QAction* table;
    QAction* details;
    QActionGroup* sortColumns; ///< an action a column, whose data it is; -1 for the own order
    QAction* sortDescending;

    QAction* play;
    QAction* showInFolder;
    QAction* stop;
    QAction* about;

    QMenu* itemMenu; ///< also for a right click

private:
    QAction* make(const char* name, const QString& text, const QString& tip, const char* icon = "");
    void makeFileActions();
    void makeEditActions();
    void makeViewActions();
    void makeItemActions();
    void makeMenus();

    QMainWindow& m_window;
};
