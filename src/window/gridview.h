// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtWidgets/QListView>

/// Pictures in rows that fill the width, or in a single row.
class GridView : public QListView
{
    Q_OBJECT

public:
    enum Shape
    {
        Sheet,
        Strip
    };

    /// Pictures get `size`, in pixels of the window.
    GridView(Shape shape, QSize size, QWidget* parent = nullptr);

Q_SIGNALS:
    void currentMoved(const QModelIndex& current);

protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void measureCell();
    void adjustGrid();

    const Shape m_shape;
    QSize m_cell;
};
