// SPDX-License-Identifier: GPL-2.0-or-later
#include "startpage.h"

#include <QAction>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

StartPage::StartPage(const QList<QAction*>& actions, QWidget* parent)
    : QWidget(parent)
{
    auto* text = new QLabel(tr("Drop films, folders and discs here to see what is in them."), this);
    text->setAlignment(Qt::AlignCenter);
    text->setWordWrap(true);
    QFont font = text->font();
    font.setPointSizeF(font.pointSizeF() * 1.3);
    text->setFont(font);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    for (QAction* action : actions) {
        auto* button = new QPushButton(action->icon(), action->text(), this);
        button->setToolTip(action->toolTip());
        connect(button, &QPushButton::clicked, action, &QAction::trigger);
        buttons->addWidget(button);
    }
    buttons->addStretch();

    auto* layout = new QVBoxLayout(this);
    layout->addStretch();
    layout->addWidget(text);
    layout->addSpacing(12);
    layout->addLayout(buttons);
    layout->addStretch();
}
