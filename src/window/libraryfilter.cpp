// SPDX-License-Identifier: GPL-2.0-or-later
#include "libraryfilter.h"

#include "librarymodel.h"

LibraryFilter::LibraryFilter(LibraryModel& model, QObject* parent)
    : QSortFilterProxyModel(parent)
    , m_model(model)
{
    setSourceModel(&m_model);
}

void LibraryFilter::setKind(int kind)
{
    m_kind = kind;
    invalidateFilter();
}

void LibraryFilter::setWords(const QString& words)
{
    m_words = LibraryRow::searchedWords(words);
    invalidateFilter();
}

Place LibraryFilter::place(const QModelIndex& index) const
{
    return m_model.place(mapToSource(index));
}

std::vector<std::shared_ptr<const facts::Item>> LibraryFilter::shownItems() const
{
    std::vector<std::shared_ptr<const facts::Item>> items;
    for (int row = 0; row < rowCount(); ++row)
        items.push_back(place(index(row, 0)).item);
    return items;
}

void LibraryFilter::sort(int column, Qt::SortOrder order)
{
    if (column == NameColumn)
        m_model.rankNames();
    QSortFilterProxyModel::sort(column, order);
}

/// Parts come with their item.
bool LibraryFilter::filterAcceptsRow(int row, const QModelIndex& parent) const
{
    if (parent.isValid())
        return true;
    const LibraryRow& shown = m_model.row(m_model.index(row, 0));
    return (m_kind < 0 || int(shown.item().kind) == m_kind) && shown.contains(m_words);
}

/// Parts keep their order, and so do items that are the same.
bool LibraryFilter::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    int difference = 0;
    if (LibraryModel::isItem(left))
        difference = m_model.row(left).compare(m_model.row(right), Column(left.column()));
    if (difference != 0)
        return difference < 0;
    return sortOrder() == Qt::AscendingOrder ? left.row() < right.row() : right.row() < left.row();
}
