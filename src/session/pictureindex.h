// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "filetime.h"

#include <QtCore/QByteArray>
#include <QtCore/QHash>
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
/// the pictures are: where it is damaged it begins anew, and where it cannot be had it lasts as
/// long as the object. On one thread at a time.
class PictureIndex
{
public:
    /// The index of the pictures in `folder`, which exists.
    explicit PictureIndex(const QString& folder);
    ~PictureIndex();

    /// For a FileClock and a NameLock of the pictures in `folder`.
    static QString clockFile(const QString& folder);

    /// Whether other processes know what this one remembers.
    bool isShared() const { return m_isShared; }

    enum Verdict
    {
        Own,      ///< all pictures that are there are of this very source
        Unknown,  ///< nobody knows of what one of them is
        Anothers, ///< one is of another source, or of what was at the source's path before
    };

    /// Whose pictures `item` has come with. If all are its own they are remembered, otherwise those
    /// that are of nobody deleted. What was written since `since` is its own, so that nobody else
    /// may take pictures of these names from then on to the end of this.
    Verdict check(const facts::Item& item, FileTime since);

    /// Folder, below the index's, for the pictures of the source at `path` alone.
    QString folderOf(const QString& path) const;

    /// Deletes the pictures in the item's own folder that are of something else.
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

    /// With what the database results in.
    int open(const QByteArray& path);
    /// Without the others, since the index has resulted in that.
    void beginAlone(int result);
    void step(const Statement& statement);
    Entry find(const QString& picture);
    void removeUnknown(const facts::Item& item);
    void claim(const std::vector<Written>& pictures, const QByteArray& source);
    QByteArray nameOf(const QString& picture) const;

    const QString m_folder;
    bool m_isShared = true;
    QHash<QString, QByteArray> m_untaken; ///< missing pictures, and what was shown with them
    Database m_database;
    Statement m_find; ///< go before the database
    Statement m_claim;
    Statement m_begin;
    Statement m_commit;

    Q_DISABLE_COPY(PictureIndex)
};
