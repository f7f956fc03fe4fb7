// SPDX-License-Identifier: GPL-2.0-or-later
#include "libraryview.h"

#include "gridview.h"
#include "librarymodel.h"
#include "tabledelegate.h"

#include <QShortcut>
#include <QtCore/QSettings>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QTreeView>

#include <algorithm>

LibraryView::LibraryView(LibraryModel& model, QSize pictureSize, QWidget* parent)
    : QStackedWidget(parent)
    , m_model(model)
    , m_filter(model)
    , m_grid(new GridView(GridView::Sheet, pictureSize, this))
    , m_table(new QTreeView(this))
{
    m_grid->setObjectName(QStringLiteral("grid"));
    setUpTable();
    for (QAbstractItemView* view : std::initializer_list<QAbstractItemView*>{m_grid, m_table})
        setUpView(*view);
    m_grid->setSelectionModel(m_table->selectionModel());
    for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto* shortcut = new QShortcut(QKeySequence(key), this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, &LibraryView::activated);
    }
    connect(m_table->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& index) { emit currentChanged(m_filter.mapToSource(index)); });
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &LibraryView::selectionChanged);
}

void LibraryView::setUpTable()
{
    m_table->setItemDelegateForColumn(NameColumn, new TableDelegate(m_table));
    m_table->setUniformRowHeights(true);
    m_table->setAlternatingRowColors(true);
    m_table->setTextElideMode(Qt::ElideMiddle);
    m_table->setAllColumnsShowFocus(true);
    m_table->setDragEnabled(true);
    m_table->setExpandsOnDoubleClick(false);
    connect(m_table, &QTreeView::expanded, this, &LibraryView::onExpanded);
}

void LibraryView::setUpView(QAbstractItemView& view)
{
    view.setModel(&m_filter);
    view.setSelectionMode(QAbstractItemView::ExtendedSelection);
    view.setSelectionBehavior(QAbstractItemView::SelectRows);
    view.setContextMenuPolicy(Qt::CustomContextMenu);
    view.setAccessibleName(tr("Items"));
    addWidget(&view);
    connect(&view, &QAbstractItemView::doubleClicked, this, &LibraryView::activated);
    connect(&view, &QWidget::customContextMenuRequested, this, [this, &view](const QPoint& place) {
        emit menuRequested(view.viewport()->mapToGlobal(place));
    });
    if (&view != m_table)
        return;
    QHeaderView* header = m_table->header();
    header->setSortIndicator(-1, Qt::AscendingOrder);
    m_table->setSortingEnabled(true);
    const int widths[ColumnCount] = {280, 96, 80, 90, 80, 120, 100, 80, 300};
    for (int column = 0; column < ColumnCount; ++column)
        header->resizeSection(column, widths[column]);
    header->setSectionsMovable(true);
    connect(header, &QHeaderView::sortIndicatorChanged, this, &LibraryView::sortChanged);
}

QAbstractItemView* LibraryView::currentView() const
{
    return static_cast<QAbstractItemView*>(currentWidget());
}

void LibraryView::setLook(Look look)
{
    setCurrentIndex(look);
    setFocusProxy(currentWidget());
    currentView()->scrollTo(currentView()->currentIndex());
}

void LibraryView::setWords(const QString& words)
{
    dropLargeSelection();
    m_filter.setWords(words);
}

void LibraryView::setKind(int kind)
{
    dropLargeSelection();
    m_filter.setKind(kind);
}

/// It would take a second to split into what is shown and what is not.
void LibraryView::dropLargeSelection()
{
    const int mostRows = 1000;
    int rows = 0;
    for (const QItemSelectionRange& range : m_table->selectionModel()->selection())
        rows += range.height();
    if (rows > mostRows)
        m_table->selectionModel()->clearSelection();
}

void LibraryView::sort(int column, Qt::SortOrder order)
{
    m_table->header()->setSortIndicator(column, order);
    if (column < 0)
        m_filter.sort(-1, Qt::AscendingOrder);
}

QStringList LibraryView::selectedKeys() const
{
    QStringList keys;
    QSet<QString> known;
    for (const QModelIndex& index : m_table->selectionModel()->selectedRows()) {
        const QString key = m_model.key(m_filter.mapToSource(index));
        if (!known.contains(key))
            keys.append(key);
        known.insert(key);
    }
    return keys;
}

std::vector<std::shared_ptr<const facts::Item>> LibraryView::selectedItems() const
{
    std::vector<std::shared_ptr<const facts::Item>> items;
    for (const QString& key : selectedKeys())
        items.push_back(m_model.place(m_model.indexOf(key)).item);
    return items;
}

void LibraryView::showItems(const QStringList& keys)
{
    std::vector<int> rows;
    for (const QString& key : keys) {
        const QModelIndex index = m_filter.mapFromSource(m_model.indexOf(key));
        if (index.isValid())
            rows.push_back(index.row());
    }
    if (rows.empty())
        return;
    const QModelIndex first = m_filter.index(rows.front(), NameColumn);
    std::sort(rows.begin(), rows.end());
    QItemSelection selection; // a range for as many as lie in a row
    for (std::size_t i = 0, begin = 0; i < rows.size(); ++i) {
        if (i + 1 < rows.size() && rows[i + 1] <= rows[i] + 1)
            continue;
        selection.append(QItemSelectionRange(m_filter.index(rows[begin], 0),
                                             m_filter.index(rows[i], ColumnCount - 1)));
        begin = i + 1;
    }
    QItemSelectionModel* selected = m_table->selectionModel();
    selected->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
    selected->select(selection, QItemSelectionModel::ClearAndSelect);
    currentView()->scrollTo(first);
}

void LibraryView::selectAllItems()
{
    currentView()->selectAll();
}

void LibraryView::clearSelection()
{
    m_table->selectionModel()->clearSelection();
}

/// People look for the film: of a disc its main title is open too, unless it is made of pieces by
/// the hundreds.
void LibraryView::onExpanded(const QModelIndex& index)
{
    const int mostPieces = 100;
    const QModelIndex main = m_filter.index(0, 0, index);
    if (!index.parent().isValid() && m_filter.rowCount(main) <= mostPieces)
        m_table->expand(main);
}

void LibraryView::saveState(QSettings& settings) const
{
    settings.setValue(QStringLiteral("look"), look() == Table ? "table" : "grid");
    settings.setValue(QStringLiteral("columns"), m_table->header()->saveState());
    settings.setValue(QStringLiteral("sortColumn"), sortColumn());
    settings.setValue(QStringLiteral("sortOrder"), int(sortOrder()));
}

void LibraryView::restoreState(const QSettings& settings)
{
    m_table->header()->restoreState(settings.value(QStringLiteral("columns")).toByteArray());
    const int column = settings.value(QStringLiteral("sortColumn"), -1).toInt();
    const bool isDescending = settings.value(QStringLiteral("sortOrder")).toInt() != 0;
    sort(column < ColumnCount ? column : -1,
         isDescending ? Qt::DescendingOrder : Qt::AscendingOrder);
    setLook(settings.value(QStringLiteral("look")).toString() == QLatin1String("table") ? Table
                                                                                        : Grid);
}
