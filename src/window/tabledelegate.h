// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtWidgets/QStyledItemDelegate>

/// Draws a small picture before the name.
class TableDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
