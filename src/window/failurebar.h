// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "failuremodel.h"

#include <QtWidgets/QFrame>

class QLabel;
class QToolButton;
class QTreeView;

/// Says how many could not be imported, and opens to a list of them. Hidden when there are none.
class FailureBar : public QFrame
{
    Q_OBJECT

public:
    explicit FailureBar(QWidget* parent = nullptr);

    void setFailures(const std::vector<ImportResult::Failure>& failures);

Q_SIGNALS:
    void tryAgainClicked();
    void saveReportClicked();
    void dismissed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void copySelected();

    FailureModel m_model;
    QLabel* m_text;
    QToolButton* m_open;
    QTreeView* m_list;
};
