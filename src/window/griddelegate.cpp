// SPDX-License-Identifier: GPL-2.0-or-later
#include "griddelegate.h"

#include "kindpainter.h"
#include "librarymodel.h"

#include <QtGui/QPainter>
#include <QtGui/QPixmap>
#include <QtWidgets/QApplication>

using facts::ItemKind;

namespace {

const int margin = 6;

void drawPicture(QPainter& painter, const QRect& place, const QModelIndex& index,
                 const QPalette& palette)
{
    const auto picture = index.data(LibraryModel::PictureRole).value<QPixmap>();
    const QVariant kind = index.data(LibraryModel::KindRole);
    painter.fillRect(place, palette.color(QPalette::AlternateBase));
    if (picture.isNull()) {
        drawKind(painter, place, kind.isValid() ? ItemKind(kind.toInt()) : ItemKind::Video,
                 palette);
        return;
    }
    const QSize size =
        (picture.size() / picture.devicePixelRatioF()).scaled(place.size(), Qt::KeepAspectRatio);
    QRect target(QPoint(), size);
    target.moveCenter(place.center());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(target, picture);
}

/// What kind of disc it is, in a corner of the picture.
void drawBadge(QPainter& painter, const QRect& place, const QModelIndex& index,
               const QPalette& palette)
{
    const QVariant kind = index.data(LibraryModel::KindRole);
    const bool isDisc = kind.isValid() && (ItemKind(kind.toInt()) == ItemKind::Dvd ||
                                           ItemKind(kind.toInt()) == ItemKind::Bluray);
    if (!isDisc)
        return;
    const QString text = ItemParts::kindName(ItemKind(kind.toInt()));
    QRect badge = painter.fontMetrics().boundingRect(text).adjusted(-5, -2, 5, 2);
    badge.moveTopRight(place.topRight() + QPoint(-4, 4));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette.color(QPalette::Highlight));
    painter.drawRoundedRect(badge, 4, 4);
    painter.setPen(palette.color(QPalette::HighlightedText));
    painter.drawText(badge, Qt::AlignCenter, text);
}

} // namespace

GridDelegate::GridDelegate(QSize size, QObject* parent)
    : QStyledItemDelegate(parent)
    , m_size(size)
{}

void GridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const
{
    QStyleOptionViewItem shown = option;
    initStyleOption(&shown, index);
    const QWidget* widget = shown.widget;
    const QStyle* style = widget ? widget->style() : QApplication::style();
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &shown, painter, widget);

    painter->save();
    painter->setClipRect(shown.rect);
    const QRect inside = shown.rect.adjusted(margin, margin, -margin, -margin);
    QRect picture(inside.topLeft(), m_size);
    picture.moveLeft(inside.left() + (inside.width() - m_size.width()) / 2);
    drawPicture(*painter, picture, index, shown.palette);
    drawBadge(*painter, picture, index, shown.palette);

    const int lineHeight = shown.fontMetrics.height();
    QRect line(inside.left(), picture.bottom() + 3, inside.width(), lineHeight);
    const bool isSelected = shown.state & QStyle::State_Selected;
    QColor color = shown.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text);
    painter->setPen(color);
    painter->drawText(line, Qt::AlignHCenter | Qt::AlignVCenter,
                      shown.fontMetrics.elidedText(shown.text, Qt::ElideMiddle, line.width()));
    line.translate(0, lineHeight);
    color.setAlphaF(0.75);
    painter->setPen(color);
    painter->drawText(line, Qt::AlignHCenter | Qt::AlignVCenter,
                      index.data(LibraryModel::DurationRole).toString());
    painter->restore();

    if (shown.state & QStyle::State_HasFocus) {
        QStyleOptionFocusRect focus;
        focus.QStyleOption::operator=(shown);
        focus.rect = shown.rect.adjusted(1, 1, -1, -1);
        focus.backgroundColor = shown.palette.color(QPalette::Base);
        style->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, painter, widget);
    }
}

QSize GridDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const
{
    return m_size + QSize(2 * margin + 8, 2 * margin + 4 + 2 * option.fontMetrics.height());
}
