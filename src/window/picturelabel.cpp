// SPDX-License-Identifier: GPL-2.0-or-later
#include "picturelabel.h"

#include <QtGui/QPainter>

PictureLabel::PictureLabel(QWidget* parent)
    : QWidget(parent)
{
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void PictureLabel::setPicture(const QPixmap& picture)
{
    m_picture = picture;
    update();
}

void PictureLabel::paintEvent(QPaintEvent*)
{
    if (m_picture.isNull())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    QRect target(QPoint(), m_picture.size().scaled(size(), Qt::KeepAspectRatio));
    target.moveCenter(rect().center());
    painter.drawPixmap(target, m_picture);
}
