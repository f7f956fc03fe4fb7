// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "itemparts.h"

#include <QtCore/QCollator>
#include <QtCore/QString>

#include <vector>

/// An item of the list with what it is shown, sorted and searched by, made once.
class LibraryRow
{
public:
    /// What a part is found again by: the row, and the part's place in the item.
    struct Node
    {
        LibraryRow* row;
        int part; ///< -1 for the item itself
    };

    /// `key` is the item's own among all of the list.
    LibraryRow(QString key, std::shared_ptr<const facts::Item> item);

    /// Whether `item` has as many parts as this row's, with as many pieces, in the same order.
    bool hasShapeOf(const facts::Item& item) const;
    /// The same item, in the same shape, of which more is known now.
    void update(std::shared_ptr<const facts::Item> item);

    const QString& key() const { return m_key; }
    const facts::Item& item() const { return *m_item; }
    const std::shared_ptr<const facts::Item>& sharedItem() const { return m_item; }
    const QString& text(Column column) const { return m_texts[column]; }
    const QString& pictureFile() const { return m_pictureFile; }

    /// The words of what a person has typed, for contains().
    static QStringList searchedWords(const QString& text);
    /// Whether each of `words` occurs in one of the item's texts.
    bool contains(const QStringList& words) const;

    /// Below 0 when this goes before `other`, above when behind.
    int compare(const LibraryRow& other, Column column) const;

    int partCount() const { return int(m_parts.size()); }
    const Node* itemNode() const { return &m_itemNode; }
    /// In the order shown.
    const Node* partNode(int place) const { return &m_parts[std::size_t(place)]; }
    int placeOf(int part) const { return m_places[std::size_t(part)]; }

    int place = 0; ///< in the list
    /// Among all by name, which are compared by it where both have one; -1 for none.
    int nameRank = -1;

private:
    void describe();

    const QString m_key;
    std::shared_ptr<const facts::Item> m_item;
    QString m_texts[ColumnCount];
    QString m_pictureFile;
    QString m_searched;
    QCollatorSortKey m_nameKey;
    QCollatorSortKey m_folderKey;
    double m_numbers[ColumnCount] = {}; ///< of columns that are sorted by numbers
    Node m_itemNode{this, -1};
    std::vector<Node> m_parts;
    std::vector<int> m_places; ///< of the parts in m_parts

    Q_DISABLE_COPY(LibraryRow)
};
