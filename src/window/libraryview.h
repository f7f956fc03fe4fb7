// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "libraryfilter.h"

#include <QtWidgets/QStackedWidget>

class GridView;
class QAbstractItemView;
class QSettings;
class QTreeView;

/// The two looks at the list, pictures and a table, with one selection and one order.
class LibraryView : public QStackedWidget
{
    Q_OBJECT

public:
    enum Look
    {
        Grid,
        Table
    };

    /// `model` outlives this. Pictures in the grid get `pictureSize`, in pixels of the window.
    LibraryView(LibraryModel& model, QSize pictureSize, QWidget* parent = nullptr);

    const LibraryFilter& filter() const { return m_filter; }

    void setLook(Look look);
    Look look() const { return Look(currentIndex()); }

    /// As LibraryFilter's. A large selection goes: it would be that of hidden items.
    void setWords(const QString& words);
    void setKind(int kind);

    /// By a Column, or as imported: -1.
    void sort(int column, Qt::SortOrder order);
    int sortColumn() const { return m_filter.sortColumn(); }
    Qt::SortOrder sortOrder() const { return m_filter.sortOrder(); }

    /// Keys of items that are selected, or of which a part is.
    QStringList selectedKeys() const;
    std::vector<std::shared_ptr<const facts::Item>> selectedItems() const;
    /// Selects the items and brings the first into sight.
    void showItems(const QStringList& keys);
    void selectAllItems();
    /// Before many of it are removed: it would take long to shrink bit by bit.
    void clearSelection();

    void saveState(QSettings& settings) const;
    void restoreState(const QSettings& settings);

Q_SIGNALS:
    /// To an index of the model, or to an invalid one.
    void currentChanged(const QModelIndex& current);
    void selectionChanged();
    void sortChanged();
    void activated();
    void menuRequested(const QPoint& place); ///< on the screen

private:
    QAbstractItemView* currentView() const;
    void setUpTable();
    void setUpView(QAbstractItemView& view);
    void dropLargeSelection();
    void onExpanded(const QModelIndex& index);

    LibraryModel& m_model;
    LibraryFilter m_filter;
    GridView* m_grid;
    QTreeView* m_table;
};
