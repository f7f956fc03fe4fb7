// SPDX-License-Identifier: GPL-2.0-or-later
#include "tabledelegate.h"

#include "kindpainter.h"
#include "librarymodel.h"

#include <QtGui/QPainter>
#include <QtGui/QPixmap>
#include <QtWidgets/QApplication>

namespace {

const QSize pictureSize(48, 27);

} // namespace

void TableDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const
{
    QStyleOptionViewItem shown = option;
    initStyleOption(&shown, index);
    shown.features |= QStyleOptionViewItem::HasDecoration;
    shown.decorationSize = pictureSize; // its place is left empty
    const QStyle* style = shown.widget ? shown.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &shown, painter, shown.widget);

    const QRect place =
        style->subElementRect(QStyle::SE_ItemViewItemDecoration, &shown, shown.widget);
    const auto picture = index.data(LibraryModel::PictureRole).value<QPixmap>();
    const QVariant kind = index.data(LibraryModel::KindRole);
    if (!picture.isNull()) {
        const QSize size = (picture.size() / picture.devicePixelRatioF())
                               .scaled(place.size(), Qt::KeepAspectRatio);
        QRect target(QPoint(), size);
        target.moveCenter(place.center());
        painter->setRenderHint(QPainter::SmoothPixmapTransform);
        painter->drawPixmap(target, picture);
    } else if (kind.isValid()) {
        QPalette palette = shown.palette;
        if (shown.state & QStyle::State_Selected)
            palette.setColor(QPalette::Text, palette.color(QPalette::HighlightedText));
        drawKind(*painter, place, facts::ItemKind(kind.toInt()), palette);
    }
}

QSize TableDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const QSize size = QStyledItemDelegate::sizeHint(option, index);
    return QSize(size.width() + pictureSize.width(), qMax(size.height(), pictureSize.height() + 4));
}
