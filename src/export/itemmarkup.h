// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "facts/item.h"
#include "pagepictures.h"

#include <QtCore/QHash>
#include <QtCore/QIODevice>
#include <QtCore/QStringList>

#include <vector>

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

    struct TitleHead
    {
        std::size_t place;
        bool isMain;
        double mainDuration;
        double duration;
        const facts::Movie* movie; ///< null when it plays none
        QStringList more;
    };
    struct Figure
    {
        QString file;
        QString caption;
        QString more;
    };
    static std::vector<Figure> figuresOf(const facts::Bluray& disc,
                                         const facts::BlurayTitle& title);
    void writeTitle(const TitleHead& head, const std::vector<Figure>& figures);
    void writeFigure(const Figure& figure);

    QIODevice& m_page;
    PagePictures& m_pictures;
    QHash<QString, QByteArray> m_shown; ///< ids of the pictures of the disc at hand, by file
    int m_ids = 0;
};
