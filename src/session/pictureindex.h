// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "filetime.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <memory>
#include <utility>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace facts {
struct Item;
}

/// Which source a picture was made of, beside the pictures. Their names are made of names of
/// sources, so that two can share one, and the import takes the picture that it finds.
///
/// It lies in a hidden folder. Several processes may use the index of one folder. It is a cache as
/// the pictures are: where it is damaged or cannot be written, it begins anew or lasts as long as
/// the object.
class PictureIndex
{
public:
    /// The index of the pictures in `folder`, which exists.
    explicit PictureIndex(const QString& folder);
    ~PictureIndex();

    /// For a FileClock of the pictures in `folder`.
    static QString clockFile(const QString& folder);

    enum Verdict
    {
        Own,      ///< all pictures that are there are of this very source
        Unknown,  ///< nobody knows of what one of them is
        Anothers, ///< one is of another source, or of what was at the source's path before
    };

    /// Whose pictures `item` has come with, which are remembered if all are its own. Those without
    /// an owner are its own if they were written since `since`.
    Verdict check(const facts::Item& item, FileTime since);

    /// Folder, below the index's, for the pictures of `item` alone.
    QString folderOf(const facts::Item& item) const;

    /// Deletes the pictures at the places of the item's that are known of no source.
    void removeUnknown(const facts::Item& item);

    /// Deletes the pictures in folderOf(item) that are of something else.
    void removeOutdated(const facts::Item& item);

private:
    struct Close
    {
        void operator()(sqlite3* database) const;
        void operator()(sqlite3_stmt* statement) const;
    };
    using Database = std::unique_ptr<sqlite3, Close>;
    using Statement = std::unique_ptr<sqlite3_stmt, Close>;

    struct Entry
    {
        QByteArray source; ///< empty without one
        FileTime written = 0;
    };

    using Written = std::pair<QString, FileTime>;

    bool open(const QByteArray& path);
    Statement prepare(const char* sql) const;
    Entry find(const QString& picture) const;
    void claim(const std::vector<Written>& pictures, const QByteArray& source);
    QByteArray nameOf(const QString& picture) const;

    const QString m_folder;
    Database m_database;
    Statement m_find; ///< go before the database
    Statement m_claim;
    Statement m_begin;
    Statement m_commit;

    Q_DISABLE_COPY(PictureIndex)
};
