// SPDX-License-Identifier: GPL-2.0-or-later
#include "kindpainter.h"

#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QPalette>

using facts::ItemKind;

namespace {

QPainterPath notePath()
{
    QPainterPath path;
    path.addEllipse(QPointF(0.30, 0.80), 0.15, 0.11);
    path.addEllipse(QPointF(0.75, 0.70), 0.15, 0.11);
    path.addRect(QRectF(0.39, 0.20, 0.06, 0.60));
    path.addRect(QRectF(0.84, 0.10, 0.06, 0.60));
    path.addPolygon(
        QPolygonF({{0.39, 0.20}, {0.90, 0.08}, {0.90, 0.22}, {0.39, 0.34}, {0.39, 0.20}}));
    path.setFillRule(Qt::WindingFill);
    return path;
}

QPainterPath discPath()
{
    QPainterPath path;
    path.addEllipse(QPointF(0.5, 0.5), 0.42, 0.42);
    path.addEllipse(QPointF(0.5, 0.5), 0.12, 0.12);
    return path;
}

QPainterPath filmPath()
{
    QPainterPath path;
    path.addRoundedRect(QRectF(0.08, 0.20, 0.84, 0.60), 0.06, 0.06);
    path.addPolygon(QPolygonF({{0.42, 0.37}, {0.64, 0.50}, {0.42, 0.63}, {0.42, 0.37}}));
    return path;
}

QPainterPath pathOf(ItemKind kind)
{
    switch (kind) {
    case ItemKind::Audio:
        return notePath();
    case ItemKind::Video:
        return filmPath();
    default:
        return discPath();
    }
}

} // namespace

void drawKind(QPainter& painter, const QRect& place, ItemKind kind, const QPalette& palette)
{
    const qreal side = qMin(place.width(), place.height()) * (place.height() > 40 ? 0.5 : 0.9);
    QColor color = palette.color(QPalette::Text);
    color.setAlphaF(0.45);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(QRectF(place).center() - QPointF(side / 2, side / 2));
    painter.scale(side, side);
    painter.fillPath(pathOf(kind), color);
    painter.restore();
}
