// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "itemparts.h"

#include <QtCore/QSortFilterProxyModel>
#include <QtCore/QStringList>

class LibraryModel;

/// The list as it is shown: sorted, and without what a person does not want to see now.
class LibraryFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    /// `model` outlives this.
    explicit LibraryFilter(LibraryModel& model, QObject* parent = nullptr);

    /// Only items of that kind, as a facts::ItemKind; -1 for all.
    void setKind(int kind);
    int kind() const { return m_kind; }
    /// Only items of whose texts one contains each of the words.
    void setWords(const QString& words);

    Place place(const QModelIndex& index) const;
    /// As the list shows them.
    std::vector<std::shared_ptr<const facts::Item>> shownItems() const;

    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    LibraryModel& m_model;
    int m_kind = -1;
    QStringList m_words;
};
