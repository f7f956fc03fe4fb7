// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "facts/item.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QString>

#include <memory>
#include <vector>

/// Columns of the list.
enum Column
{
    NameColumn,
    KindColumn,
    DurationColumn,
    SizeColumn, ///< pixels
    RateColumn,
    CodecsColumn,
    LanguagesColumn,
    BytesColumn,
    FolderColumn,
    ColumnCount
};

/// An item, a part of it, or what lies in that: the parts of a DVD are its titles, with chapters
/// in them; those of a Blu-ray disc its titles, with chapters (or clips, where it has none), and
/// then its stream files, with clips.
struct Place
{
    std::shared_ptr<const facts::Item> item; ///< null for no place
    int part = -1;                           ///< -1 for the item itself
    int piece = -1;                          ///< in the part; -1 for that itself

    bool isItem() const { return item && part < 0; }
    bool isPart() const { return part >= 0 && piece < 0; }
};

/// What is at a place, as people read it. Each place is one of the item's.
class ItemParts
{
    Q_DECLARE_TR_FUNCTIONS(ItemParts)

public:
    static int partCount(const facts::Item& item);
    static int pieceCount(const facts::Item& item, int part);

    /// The parts in the order in which they are shown: the main title first.
    static std::vector<int> shownOrder(const facts::Item& item);
    static bool isMainTitle(const facts::Item& item, int part);

    /// Of a part, or a piece of one.
    static QString text(const Place& place, Column column);

    /// Of a piece, in seconds.
    struct Span
    {
        bool isChapter = false; ///< else a clip, of which nothing is known
        double start = 0.0;
        double duration = 0.0;
    };
    static Span span(const Place& place);

    /// The movie that the place's facts are of; null where there is none.
    static const facts::Movie* movie(const Place& place);
    /// The picture that stands for the place; empty without one.
    static QString pictureFile(const Place& place);

    static QString kindName(facts::ItemKind kind);

private:
    static QString pieceText(const Place& place, Column column);
};
