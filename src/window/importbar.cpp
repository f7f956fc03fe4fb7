// SPDX-License-Identifier: GPL-2.0-or-later
#include "importbar.h"

#include "plaintip.h"

#include <QtCore/QLocale>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QPushButton>

namespace {

const int steps = 1000;

} // namespace

ImportBar::ImportBar(QWidget* parent)
    : QWidget(parent)
    , m_state(new QLabel(this))
    , m_path(new QLabel(this))
    , m_bar(new QProgressBar(this))
    , m_stop(new QPushButton(tr("&Stop"), this))
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(6, 3, 6, 3);
    layout->addWidget(m_state);
    layout->addWidget(m_path, 1);
    layout->addWidget(m_bar);
    layout->addWidget(m_stop);
    m_state->setTextFormat(Qt::PlainText);
    m_path->setTextFormat(Qt::PlainText);
    m_path->setMinimumWidth(40);
    m_path->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_path->setForegroundRole(QPalette::PlaceholderText);
    m_bar->setRange(0, steps);
    m_bar->setFixedWidth(180);
    m_bar->setAccessibleName(tr("Progress"));
    m_stop->setObjectName(QStringLiteral("stop"));
    m_stop->setToolTip(tr("Ends the import; what has been found stays"));
    connect(m_stop, &QPushButton::clicked, this, &ImportBar::stopClicked);
}

void ImportBar::show(const ImportProgress& progress, int otherKinds)
{
    m_state->setText(stateText(progress, otherKinds));
    showPath(progress.isBusy ? progress.path : QString());
    m_bar->setValue(int(progress.fraction * steps));
    m_bar->setVisible(progress.isBusy);
    m_stop->setVisible(progress.isBusy);
}

QString ImportBar::stateText(const ImportProgress& progress, int otherKinds)
{
    const QLocale locale;
    QStringList parts;
    if (progress.listed > 0 || progress.isBusy)
        parts << tr("%1 imported of %2 found")
                     .arg(locale.toString(progress.imported), locale.toString(progress.listed));
    if (progress.pictures > 0)
        parts << tr("%1 pictures taken of %2")
                     .arg(locale.toString(progress.picturesTaken),
                          locale.toString(progress.pictures));
    if (otherKinds > 0)
        parts << tr("%n of other kinds passed over", "", otherKinds);
    return parts.join(QStringLiteral(" · "));
}

void ImportBar::showPath(const QString& path)
{
    m_path->setText(fontMetrics().elidedText(path, Qt::ElideMiddle, m_path->width()));
    m_path->setToolTip(plainTip(path));
}
