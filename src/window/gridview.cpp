// SPDX-License-Identifier: GPL-2.0-or-later
#include "gridview.h"

#include "griddelegate.h"

#include <QtCore/QEvent>
#include <QtWidgets/QScrollBar>

GridView::GridView(Shape shape, QSize size, QWidget* parent)
    : QListView(parent)
    , m_shape(shape)
{
    setItemDelegate(new GridDelegate(size, this));
    setUniformItemSizes(true);
    setFlow(QListView::LeftToRight);
    setWrapping(shape == Sheet);
    setResizeMode(QListView::Adjust);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    if (shape == Sheet)
        setSelectionMode(ExtendedSelection);
    setDragEnabled(shape == Sheet);
    adjustGrid();
}

void GridView::adjustGrid()
{
    QStyleOptionViewItem option;
    option.fontMetrics = fontMetrics();
    const QSize cell = itemDelegate()->sizeHint(option, QModelIndex());
    setGridSize(cell + QSize(4, 4));
    verticalScrollBar()->setSingleStep(cell.height() / 3);
    horizontalScrollBar()->setSingleStep(cell.width() / 3);
    if (m_shape == Strip)
        setFixedHeight(cell.height() + 12 + horizontalScrollBar()->sizeHint().height());
}

void GridView::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QListView::currentChanged(current, previous);
    emit currentMoved(current);
}

void GridView::changeEvent(QEvent* event)
{
    QListView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        adjustGrid();
}
