// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "libraryrow.h"
#include "nameorder.h"

#include <QtCore/QAbstractItemModel>
#include <QtCore/QHash>
#include <QtCore/QMultiHash>
#include <QtCore/QSize>

class PictureCache;

/// The list of items with what is in them, as a tree for Qt's views: items, their parts, and the
/// pieces of those. On the window's thread; touches no file.
class LibraryModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Role
    {
        /// A QPixmap that fits into the cache's size; null while there is none. Asked for once, it
        /// is loaded, and dataChanged() tells of it.
        PictureRole = Qt::UserRole,
        KindRole,     ///< a facts::ItemKind as a number; of items alone
        DurationRole, ///< as text; for pieces when they begin
    };

    /// To be translated.
    static const char* const columnNames[ColumnCount];

    /// `pictures` outlives this.
    explicit LibraryModel(PictureCache& pictures, QObject* parent = nullptr);
    ~LibraryModel() override;

    struct Entry
    {
        QString key; ///< an item's own
        std::shared_ptr<const facts::Item> item;
    };
    /// Appends the items that are not there yet, and updates the others.
    void put(const std::vector<Entry>& entries);

    void removeKeys(const QStringList& keys);
    /// Moves the items by one place, as far as there is one: up, or else down.
    void moveKeys(const QStringList& keys, bool isUp);

    /// Makes comparing names quick, before they are sorted.
    void rankNames() { m_names.rank(); }

    bool contains(const QString& key) const { return m_byKey.contains(key); }
    /// Invalid where there is none.
    QModelIndex indexOf(const QString& key) const;
    QString key(const QModelIndex& index) const;
    Place place(const QModelIndex& index) const;
    /// Of one of the model's own indexes: an item, not something in one.
    static bool isItem(const QModelIndex& index)
    {
        return index.isValid() && !index.internalPointer();
    }
    int itemCount() const { return int(m_rows.size()); }
    const facts::Item& item(int row) const { return m_rows[std::size_t(row)]->item(); }
    /// Of an index of an item.
    const LibraryRow& row(const QModelIndex& index) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    Qt::DropActions supportedDragActions() const override { return Qt::CopyAction; }

private Q_SLOTS:
    void onPictureLoaded(const QString& file);

private:
    /// A Place without a share in the item, for what is asked for all the time.
    struct Spot
    {
        const LibraryRow* row;
        int part;
        int piece;
    };
    Spot spot(const QModelIndex& index) const;

    /// Of those that are there, in order.
    std::vector<int> placesOf(const QStringList& keys) const;
    void gather(std::vector<int>& places);
    /// `order` tells for each place which row is to be there.
    void reorder(const std::vector<int>& order);
    void append(const std::vector<Entry>& entries);
    void update(LibraryRow& row, const std::shared_ptr<const facts::Item>& item);
    QModelIndex itemIndex(const LibraryRow& row, int column = 0) const;
    QString displayText(const QModelIndex& index) const;
    QString accessibleText(const QModelIndex& index) const;
    QVariant picture(const QModelIndex& index) const;

    PictureCache& m_pictures;
    std::vector<std::unique_ptr<LibraryRow>> m_rows;
    QHash<QString, LibraryRow*> m_byKey;
    NameOrder m_names;
    /// Who waits for which picture to be loaded.
    mutable QMultiHash<QString, QPersistentModelIndex> m_awaited;
};
