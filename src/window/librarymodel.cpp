// SPDX-License-Identifier: GPL-2.0-or-later
#include "librarymodel.h"

#include "facts/itemtext.h"
#include "picturecache.h"
#include "plaintip.h"

#include <QtCore/QMimeData>
#include <QtCore/QSet>
#include <QtCore/QUrl>

#include <algorithm>
#include <numeric>

using facts::Item;

namespace {

/// Indexes of items point to nothing, those of parts to their item's node, those of pieces to their
/// part's.
const LibraryRow::Node* parentNode(const QModelIndex& index)
{
    return static_cast<const LibraryRow::Node*>(index.internalPointer());
}

} // namespace

const char* const LibraryModel::columnNames[ColumnCount] = {
    QT_TR_NOOP("Name"),      QT_TR_NOOP("Kind"),      QT_TR_NOOP("Duration"),
    QT_TR_NOOP("Size"),      QT_TR_NOOP("Rate"),      QT_TR_NOOP("Codecs"),
    QT_TR_NOOP("Languages"), QT_TR_NOOP("File size"), QT_TR_NOOP("Folder")};

LibraryModel::LibraryModel(PictureCache& pictures, QObject* parent)
    : QAbstractItemModel(parent)
    , m_pictures(pictures)
{
    connect(&m_pictures, &PictureCache::loaded, this, &LibraryModel::onPictureLoaded);
}

LibraryModel::~LibraryModel() = default;

void LibraryModel::put(const std::vector<Entry>& entries)
{
    std::vector<Entry> added;
    for (const Entry& entry : entries) {
        if (LibraryRow* row = m_byKey.value(entry.key))
            update(*row, entry.item);
        else
            added.push_back(entry);
    }
    append(added);
}

void LibraryModel::append(const std::vector<Entry>& entries)
{
    if (entries.empty())
        return;
    std::vector<std::unique_ptr<LibraryRow>> rows;
    for (const Entry& entry : entries) {
        LibraryRow*& known = m_byKey[entry.key];
        auto row = std::make_unique<LibraryRow>(entry.key, entry.item);
        const auto same = std::find_if(rows.begin(), rows.end(), [known](const auto& other) {
            return known && other.get() == known;
        });
        known = row.get();
        if (same != rows.end()) // twice among these
            *same = std::move(row);
        else
            rows.push_back(std::move(row));
    }
    const int first = itemCount();
    beginInsertRows({}, first, first + int(rows.size()) - 1);
    std::vector<LibraryRow*> added;
    for (auto& row : rows) {
        added.push_back(row.get());
        row->place = itemCount();
        m_rows.push_back(std::move(row));
    }
    m_names.add(std::move(added));
    endInsertRows();
}

void LibraryModel::update(LibraryRow& row, const std::shared_ptr<const Item>& item)
{
    for (const QString& file : item->pictureFiles())
        m_pictures.forget(file);
    if (!row.hasShapeOf(*item)) {
        const Entry entry{row.key(), item}; // which outlives the row
        removeKeys({entry.key});
        append({entry});
        return;
    }
    const QString name = row.text(NameColumn);
    row.update(item);
    if (row.text(NameColumn) != name) {
        m_names.remove({&row});
        m_names.add({&row});
    }
    const QModelIndex changed = itemIndex(row);
    emit dataChanged(changed, itemIndex(row, ColumnCount - 1));
    const auto emitChildren = [this](const QModelIndex& parent, int count) {
        if (count > 0)
            emit dataChanged(index(0, 0, parent), index(count - 1, ColumnCount - 1, parent));
    };
    emitChildren(changed, row.partCount());
    for (int part = 0; part < row.partCount(); ++part) {
        const QModelIndex partIndex = index(part, 0, changed);
        emitChildren(partIndex, rowCount(partIndex));
    }
}

void LibraryModel::removeKeys(const QStringList& keys)
{
    std::vector<int> places = placesOf(keys);
    for (const QString& key : keys)
        m_byKey.remove(key);
    std::vector<LibraryRow*> removed;
    removed.reserve(places.size());
    for (const int place : places)
        removed.push_back(m_rows[std::size_t(place)].get());
    m_names.remove(removed);
    gather(places);
    while (!places.empty()) { // in a row as many as lie so, the last first
        const int last = places.back();
        int first = last + 1;
        for (; !places.empty() && places.back() == first - 1; places.pop_back())
            --first;
        beginRemoveRows({}, first, last);
        m_rows.erase(m_rows.begin() + first, m_rows.begin() + last + 1);
        for (int i = first; i < itemCount(); ++i)
            m_rows[std::size_t(i)]->place = i;
        endRemoveRows();
    }
}

/// Those that lie here and there go behind the others: views take long over each gap of thousands.
void LibraryModel::gather(std::vector<int>& places)
{
    const std::size_t mostScattered = 20;
    if (places.size() <= mostScattered || places.back() - places.front() < int(places.size()))
        return;
    std::vector<int> order(m_rows.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_partition(order.begin(), order.end(), [&places](int row) {
        return !std::binary_search(places.begin(), places.end(), row);
    });
    reorder(order);
    std::iota(places.begin(), places.end(), itemCount() - int(places.size()));
}

std::vector<int> LibraryModel::placesOf(const QStringList& keys) const
{
    std::vector<int> places;
    for (const QString& key : keys) {
        if (const LibraryRow* row = m_byKey.value(key))
            places.push_back(row->place);
    }
    std::sort(places.begin(), places.end());
    places.erase(std::unique(places.begin(), places.end()), places.end());
    return places;
}

/// Those that have come to the end of the list stay there, with those that follow.
void LibraryModel::moveKeys(const QStringList& keys, bool isUp)
{
    std::vector<int> places = placesOf(keys);
    if (!isUp)
        std::reverse(places.begin(), places.end());
    int end = isUp ? 0 : itemCount() - 1;
    std::vector<int> order(m_rows.size()); // where each was
    std::iota(order.begin(), order.end(), 0);
    for (const int from : places) {
        const int to = isUp ? from - 1 : from + 1;
        if (from == end)
            end += isUp ? 1 : -1;
        else
            std::swap(order[std::size_t(from)], order[std::size_t(to)]);
    }
    if (!std::is_sorted(order.begin(), order.end()))
        reorder(order);
}

/// All at once: views take long over each move of thousands.
void LibraryModel::reorder(const std::vector<int>& order)
{
    emit layoutAboutToBeChanged();
    std::vector<std::unique_ptr<LibraryRow>> rows;
    std::vector<int> places(order.size());
    for (const int from : order) {
        places[std::size_t(from)] = int(rows.size());
        rows.push_back(std::move(m_rows[std::size_t(from)]));
        rows.back()->place = places[std::size_t(from)];
    }
    m_rows.swap(rows);
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    for (const QModelIndex& index : before) {
        const bool isMoved = isItem(index);
        after.append(isMoved ? createIndex(places[std::size_t(index.row())], index.column())
                             : index);
    }
    changePersistentIndexList(before, after);
    emit layoutChanged();
}

QModelIndex LibraryModel::itemIndex(const LibraryRow& row, int column) const
{
    return createIndex(row.place, column);
}

QModelIndex LibraryModel::indexOf(const QString& key) const
{
    const LibraryRow* row = m_byKey.value(key);
    return row ? itemIndex(*row) : QModelIndex();
}

QString LibraryModel::key(const QModelIndex& index) const
{
    return index.isValid() ? row(index).key() : QString();
}

const LibraryRow& LibraryModel::row(const QModelIndex& index) const
{
    const LibraryRow::Node* node = parentNode(index);
    return node ? *node->row : *m_rows[std::size_t(index.row())];
}

LibraryModel::Spot LibraryModel::spot(const QModelIndex& index) const
{
    const LibraryRow::Node* node = parentNode(index);
    if (!node)
        return {m_rows[std::size_t(index.row())].get(), -1, -1};
    if (node->part < 0)
        return {node->row, node->row->partNode(index.row())->part, -1};
    return {node->row, node->part, index.row()};
}

Place LibraryModel::place(const QModelIndex& index) const
{
    if (!index.isValid())
        return {};
    const Spot spot = this->spot(index);
    return {spot.row->sharedItem(), spot.part, spot.piece};
}

QModelIndex LibraryModel::index(int row, int column, const QModelIndex& parent) const
{
    if (row < 0 || column < 0 || column >= ColumnCount || row >= rowCount(parent))
        return {};
    if (!parent.isValid())
        return createIndex(row, column);
    const LibraryRow& owner = this->row(parent);
    const LibraryRow::Node* node =
        parentNode(parent) ? owner.partNode(parent.row()) : owner.itemNode();
    return createIndex(row, column, const_cast<LibraryRow::Node*>(node));
}

QModelIndex LibraryModel::parent(const QModelIndex& child) const
{
    const LibraryRow::Node* node = child.isValid() ? parentNode(child) : nullptr;
    if (!node)
        return {};
    if (node->part < 0)
        return itemIndex(*node->row);
    return createIndex(node->row->placeOf(node->part), 0,
                       const_cast<LibraryRow::Node*>(node->row->itemNode()));
}

int LibraryModel::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid())
        return itemCount();
    if (parent.column() != 0)
        return 0;
    const Spot above = spot(parent);
    if (above.part < 0)
        return above.row->partCount();
    return above.piece < 0 ? ItemParts::pieceCount(above.row->item(), above.part) : 0;
}

int LibraryModel::columnCount(const QModelIndex&) const
{
    return ColumnCount;
}

QVariant LibraryModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return displayText(index);
    case Qt::ToolTipRole:
        return plainTip(index.column() == NameColumn ? row(index).item().sourcePath()
                                                     : displayText(index));
    case Qt::AccessibleTextRole:
        return index.column() == NameColumn ? accessibleText(index) : displayText(index);
    case Qt::TextAlignmentRole:
        return int(index.column() == DurationColumn || index.column() == BytesColumn
                       ? Qt::AlignRight | Qt::AlignVCenter
                       : Qt::AlignLeft | Qt::AlignVCenter);
    case PictureRole:
        return picture(index);
    case KindRole:
        return parentNode(index) ? QVariant() : int(row(index).item().kind);
    case DurationRole: {
        const Place shown = place(index);
        if (shown.piece < 0)
            return displayText(index.siblingAtColumn(DurationColumn));
        const ItemParts::Span span = ItemParts::span(shown);
        const bool isFirst = span.isChapter && !(span.start > 0.0);
        return isFirst ? QStringLiteral("0:00:00") : facts::durationText(span.start);
    }
    default:
        return {};
    }
}

QString LibraryModel::displayText(const QModelIndex& index) const
{
    const auto column = Column(index.column());
    return parentNode(index) ? ItemParts::text(place(index), column) : row(index).text(column);
}

/// What a picture says to those who see it.
QString LibraryModel::accessibleText(const QModelIndex& index) const
{
    QStringList texts;
    for (const int column : {NameColumn, KindColumn, DurationColumn}) {
        const QString text = displayText(index.siblingAtColumn(column));
        if (!text.isEmpty())
            texts.append(text);
    }
    return texts.join(QStringLiteral(", "));
}

QVariant LibraryModel::picture(const QModelIndex& index) const
{
    const Place shown = place(index);
    const QString file = shown.isItem() ? row(index).pictureFile() : ItemParts::pictureFile(shown);
    if (file.isEmpty())
        return {};
    const QPixmap picture = m_pictures.picture(file);
    if (picture.isNull() && m_pictures.isAwaited(file) && !m_awaited.contains(file, index))
        m_awaited.insert(file, index);
    return picture;
}

void LibraryModel::onPictureLoaded(const QString& file)
{
    const QList<QPersistentModelIndex> indexes = m_awaited.values(file);
    m_awaited.remove(file);
    for (const QModelIndex index : indexes) {
        if (index.isValid())
            emit dataChanged(index, index, {PictureRole});
    }
}

QVariant LibraryModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    const bool isName = orientation == Qt::Horizontal && role == Qt::DisplayRole;
    return isName && section >= 0 && section < ColumnCount ? tr(columnNames[section]) : QVariant();
}

Qt::ItemFlags LibraryModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags flags = QAbstractItemModel::flags(index);
    if (!index.isValid())
        return flags;
    const Spot spot = this->spot(index);
    if (spot.part < 0)
        flags |= Qt::ItemIsDragEnabled;
    if (spot.piece >= 0 || !spot.row->item().isDisc())
        flags |= Qt::ItemNeverHasChildren;
    return flags;
}

/// The sources of items, for file managers and players.
QMimeData* LibraryModel::mimeData(const QModelIndexList& indexes) const
{
    QList<QUrl> urls;
    for (const QModelIndex& index : indexes) {
        if (index.column() == NameColumn && place(index).isItem())
            urls.append(QUrl::fromLocalFile(row(index).item().sourcePath()));
    }
    auto* data = new QMimeData;
    data->setUrls(urls);
    return data;
}
