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
    measureCell();
}

void GridView::measureCell()
{
    QStyleOptionViewItem option;
    option.fontMetrics = fontMetrics();
    m_cell = itemDelegate()->sizeHint(option, QModelIndex());
    verticalScrollBar()->setSingleStep(m_cell.height() / 3);
    horizontalScrollBar()->setSingleStep(m_cell.width() / 3);
    if (m_shape == Strip)
        setFixedHeight(m_cell.height() + 12 + horizontalScrollBar()->sizeHint().height());
    adjustGrid();
}

/// What is left of the width is shared by all. The view lays out as if the scroll bar were there.
void GridView::adjustGrid()
{
    int width = m_cell.width() + 4;
    const int room = maximumViewportSize().width() - verticalScrollBar()->sizeHint().width() - 2;
    if (m_shape == Sheet && room > width)
        width = room / (room / width);
    const QSize grid(width, m_cell.height() + 4);
    if (grid != gridSize())
        setGridSize(grid);
}

void GridView::resizeEvent(QResizeEvent* event)
{
    adjustGrid();
    QListView::resizeEvent(event);
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
        measureCell();
}
