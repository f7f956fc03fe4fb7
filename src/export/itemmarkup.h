// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "facts/item.h"
#include "pagepictures.h"

#include <QtCore/QHash>
#include <QtCore/QIODevice>
#include <QtCore/QStringList>

/// What a page calls a kind of items.
QString kindText(facts::ItemKind kind);

/// Writes items of a page as HTML, piece by piece: what one of them holds is unbounded.
class ItemMarkup
{
public:
    ItemMarkup(QIODevice& page, PagePictures& pictures);

    void write(const facts::Item& item);

private:
    void writeMedia(const facts::Item& item);
    void writeDisc(const facts::Item& item);
    void writeFacts(const QStringList& facts);
    void writeStreams(const facts::Item& item);
    void writeTags(const facts::Movie& movie);
    void writeDvd(const facts::Dvd& disc);
    void writeBluray(const facts::Bluray& disc);

    /// What a title begins with, to its list of pictures.
    struct TitleHead
    {
        std::size_t place;
        bool isMain;
        double mainDuration;
        double duration;
        const facts::Movie* movie; ///< null when it plays none
        QStringList more;
    };
    void beginTitle(const TitleHead& head);
    void endTitle(std::size_t shown, std::size_t all);
    void writeFigure(const QString& file, const QString& caption, const QString& more);

    QIODevice& m_page;
    PagePictures& m_pictures;
    QHash<QString, QByteArray> m_shown; ///< ids of the pictures of the disc at hand, by file
    int m_ids = 0;
};
