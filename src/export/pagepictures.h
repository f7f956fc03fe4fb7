// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QIODevice>
#include <QtCore/QSize>
#include <QtCore/QString>

/// The pictures of a page: within it, or as files in a folder beside it. They are copied: those of
/// the cache may go at any time.
class PagePictures
{
public:
    /// Pictures go within the page while `folder` is empty; else in that folder, which is there.
    /// Files are called by a hash of what is in them, so that nothing that is there is
    /// written over, and a page that is already beside it keeps its pictures.
    explicit PagePictures(const QString& folder);

    /// Writes the <img> element of `file`, with `attributes` (in markup). False when there is no
    /// such picture, and nothing has been written.
    bool write(QIODevice& page, const QString& file, const QByteArray& attributes);

    /// Why pictures could not be written; empty when all could.
    const QString& error() const { return m_error; }

private:
    struct Jpeg
    {
        QByteArray data; ///< empty without one
        QSize size;
    };

    static Jpeg read(const QString& file);
    QByteArray copy(const QByteArray& data);

    const QString m_folder;
    QString m_error;
};
