// SPDX-License-Identifier: GPL-2.0-or-later
#include "failurebar.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyle>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QTreeView>
#include <QtWidgets/QVBoxLayout>

FailureBar::FailureBar(QWidget* parent)
    : QFrame(parent)
    , m_text(new QLabel(this))
    , m_open(new QToolButton(this))
    , m_list(new QTreeView(this))
{
    setFrameShape(QFrame::StyledPanel);
    auto* icon = new QLabel(this);
    const int side = style()->pixelMetric(QStyle::PM_SmallIconSize);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(side, side));
    auto* again = new QPushButton(tr("&Try Again"), this);
    auto* save = new QPushButton(tr("Save &Report…"), this);
    auto* dismiss = new QToolButton(this);
    dismiss->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    dismiss->setAutoRaise(true);
    dismiss->setToolTip(tr("Forget what could not be imported"));
    dismiss->setAccessibleName(dismiss->toolTip());
    again->setObjectName(QStringLiteral("tryAgain"));
    save->setObjectName(QStringLiteral("saveReport"));
    save->setToolTip(tr("Saves the errors for those who look into them; the command-line program "
                        "shows them with “vspimport report”"));
    m_open->setObjectName(QStringLiteral("showFailures"));
    m_open->setCheckable(true);
    m_open->setArrowType(Qt::RightArrow);
    m_open->setText(tr("Show"));
    m_open->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_open->setToolTip(tr("Shows each with the reason"));

    auto* line = new QHBoxLayout;
    for (QWidget* widget : std::initializer_list<QWidget*>{icon, m_text})
        line->addWidget(widget);
    line->addStretch();
    for (QWidget* widget : std::initializer_list<QWidget*>{m_open, again, save, dismiss})
        line->addWidget(widget);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 3, 6, 3);
    layout->addLayout(line);
    layout->addWidget(m_list);

    m_list->setModel(&m_model);
    m_list->setAccessibleName(tr("What could not be imported"));
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setTextElideMode(Qt::ElideMiddle);
    m_list->header()->resizeSection(0, 480);
    m_list->setMaximumHeight(180);
    m_list->hide();
    m_list->installEventFilter(this);
    connect(m_open, &QToolButton::toggled, this, [this](bool isOpen) {
        m_list->setVisible(isOpen);
        m_open->setArrowType(isOpen ? Qt::DownArrow : Qt::RightArrow);
    });
    connect(again, &QPushButton::clicked, this, &FailureBar::tryAgainClicked);
    connect(save, &QPushButton::clicked, this, &FailureBar::saveReportClicked);
    connect(dismiss, &QToolButton::clicked, this, &FailureBar::dismissed);
    hide();
}

void FailureBar::setFailures(const std::vector<ImportResult::Failure>& failures)
{
    m_model.setFailures(failures);
    m_text->setText(tr("%n could not be imported.", "", int(failures.size())));
    setVisible(!failures.empty());
}

/// Copy takes the selected lines. These keys are the window's for its list otherwise.
bool FailureBar::eventFilter(QObject* watched, QEvent* event)
{
    const bool isKey =
        event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    auto* key = isKey ? static_cast<QKeyEvent*>(event) : nullptr;
    const bool isCopy = key && key->matches(QKeySequence::Copy);
    const bool isOurs =
        isCopy ||
        (key && (key->matches(QKeySequence::SelectAll) || key->matches(QKeySequence::Delete)));
    if (!isOurs || (!isCopy && event->type() == QEvent::KeyPress))
        return QFrame::eventFilter(watched, event);
    event->accept();
    if (event->type() == QEvent::KeyPress)
        copySelected();
    return true;
}

void FailureBar::copySelected()
{
    QStringList lines;
    for (const QModelIndex& index : m_list->selectionModel()->selectedRows()) {
        lines.append(index.data().toString() + QStringLiteral(": ") +
                     index.siblingAtColumn(1).data().toString());
    }
    QGuiApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}
