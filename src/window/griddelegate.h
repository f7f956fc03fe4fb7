// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtWidgets/QStyledItemDelegate>

/// Draws an item, or a chapter or clip, as a picture with its name and a time below. All are of one
/// size, so that nothing moves when a picture arrives.
class GridDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// Pictures get `size`, in pixels of the window.
    GridDelegate(QSize size, QObject* parent);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    const QSize m_size;
};
