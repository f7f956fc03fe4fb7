// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtWidgets/QWidget>

class QAction;

/// What an empty window shows: what to do, and the buttons for it.
class StartPage : public QWidget
{
    Q_OBJECT

public:
    StartPage(const QList<QAction*>& actions, QWidget* parent = nullptr);
};
