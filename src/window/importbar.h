// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "library.h"

#include <QtWidgets/QWidget>

class QLabel;
class QProgressBar;
class QPushButton;

/// Says how far the imports are, with a button to stop them.
class ImportBar : public QWidget
{
    Q_OBJECT

public:
    explicit ImportBar(QWidget* parent = nullptr);

    void show(const ImportProgress& progress, int otherKinds);

Q_SIGNALS:
    void stopClicked();

private:
    static QString stateText(const ImportProgress& progress, int otherKinds);
    void showPath(const QString& path);

    QLabel* m_state;
    QLabel* m_path;
    QProgressBar* m_bar;
    QPushButton* m_stop;
};
