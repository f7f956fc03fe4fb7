// SPDX-License-Identifier: GPL-2.0-or-later
#include "itemparts.h"

#include "facts/itemtext.h"

#include <QtCore/QFileInfo>

#include <algorithm>
#include <numeric>

using facts::BlurayFile;
using facts::BlurayTitle;
using facts::DvdTitle;
using facts::Item;
using facts::ItemKind;

namespace {

const DvdTitle* dvdTitle(const Item& item, int part)
{
    return item.kind == ItemKind::Dvd ? &item.dvd.titles[std::size_t(part)] : nullptr;
}

const BlurayTitle* blurayTitle(const Item& item, int part)
{
    const bool isTitle =
        item.kind == ItemKind::Bluray && std::size_t(part) < item.bluray.titles.size();
    return isTitle ? &item.bluray.titles[std::size_t(part)] : nullptr;
}

const BlurayFile* blurayFile(const Item& item, int part)
{
    const std::size_t titles = item.bluray.titles.size();
    const bool isFile = item.kind == ItemKind::Bluray && std::size_t(part) >= titles;
    return isFile ? &item.bluray.files[std::size_t(part) - titles] : nullptr;
}

QString firstPicture(const BlurayFile& file)
{
    for (const facts::Picture& clip : file.clips) {
        if (!clip.file.isEmpty())
            return clip.file;
    }
    return QString();
}

QString piecePicture(const Item& item, int part, int piece)
{
    const auto place = std::size_t(piece);
    if (const DvdTitle* title = dvdTitle(item, part))
        return title->chapters[place].pictureFile;
    if (const BlurayTitle* title = blurayTitle(item, part)) {
        return title->chapters.empty() ? item.bluray.pictureFile(title->clips[place])
                                       : item.bluray.pictureFile(title->chapters[place]);
    }
    return blurayFile(item, part)->clips[place].file;
}

QString partPicture(const Item& item, int part)
{
    if (const BlurayFile* file = blurayFile(item, part))
        return firstPicture(*file);
    // The first pieces are logos and warnings: of many the picture is taken further inside.
    const int count = ItemParts::pieceCount(item, part);
    for (int piece = count / 3; piece < count; ++piece) {
        QString file = piecePicture(item, part, piece);
        if (!file.isEmpty())
            return file;
    }
    return QString();
}

int mainPart(const Item& item)
{
    if (item.kind == ItemKind::Dvd && !item.dvd.titles.empty())
        return int(item.dvd.mainTitle() - item.dvd.titles.data());
    if (item.kind == ItemKind::Bluray && !item.bluray.titles.empty())
        return int(item.bluray.mainTitle() - item.bluray.titles.data());
    return -1;
}

QString movieText(const facts::Movie& movie, Column column)
{
    const facts::Stream* video = movie.first(facts::StreamKind::Video);
    switch (column) {
    case SizeColumn:
        return facts::sizeText(movie);
    case RateColumn:
        return video ? video->framerate : QString();
    case CodecsColumn:
        return facts::codecs(movie).join(QStringLiteral(", "));
    case LanguagesColumn:
        return facts::languages(movie).join(QStringLiteral(", "));
    default:
        return QString();
    }
}

} // namespace

int ItemParts::partCount(const Item& item)
{
    switch (item.kind) {
    case ItemKind::Dvd:
        return int(item.dvd.titles.size());
    case ItemKind::Bluray:
        return int(item.bluray.titles.size() + item.bluray.files.size());
    default:
        return 0;
    }
}

int ItemParts::pieceCount(const Item& item, int part)
{
    if (const DvdTitle* title = dvdTitle(item, part))
        return int(title->chapters.size());
    if (const BlurayTitle* title = blurayTitle(item, part))
        return int(title->chapters.empty() ? title->clips.size() : title->chapters.size());
    const BlurayFile* file = blurayFile(item, part);
    return file ? int(file->clips.size()) : 0;
}

std::vector<int> ItemParts::shownOrder(const Item& item)
{
    std::vector<int> order(std::size_t(partCount(item)));
    std::iota(order.begin(), order.end(), 0);
    const int main = mainPart(item);
    if (main > 0)
        std::rotate(order.begin(), order.begin() + main, order.begin() + main + 1);
    return order;
}

bool ItemParts::isMainTitle(const Item& item, int part)
{
    return part >= 0 && part == mainPart(item);
}

QString ItemParts::text(const Place& place, Column column)
{
    const Item& item = *place.item;
    const BlurayTitle* bluray = blurayTitle(item, place.part);
    const BlurayFile* file = blurayFile(item, place.part);
    if (!place.isPart())
        return pieceText(place, column);
    const facts::Movie* facts = movie(place);
    switch (column) {
    case NameColumn:
        if (file)
            return QFileInfo(file->path).fileName();
        return (isMainTitle(item, place.part) ? tr("Title %1 (main title)") : tr("Title %1"))
            .arg(place.part + 1);
    case KindColumn:
        return file ? tr("Stream file") : tr("Title");
    case DurationColumn:
        return facts::durationText(bluray ? bluray->duration : facts ? facts->duration : 0.0);
    default:
        return facts ? movieText(*facts, column) : QString();
    }
}

QString ItemParts::pieceText(const Place& place, Column column)
{
    const ItemParts::Span span = ItemParts::span(place);
    if (column == NameColumn)
        return (span.isChapter ? tr("Chapter %1") : tr("Clip %1")).arg(place.piece + 1);
    return column == DurationColumn ? facts::durationText(span.duration) : QString();
}

ItemParts::Span ItemParts::span(const Place& place)
{
    const auto piece = std::size_t(place.piece);
    const DvdTitle* dvd = dvdTitle(*place.item, place.part);
    if (dvd)
        return {true, dvd->chapters[piece].start, dvd->chapters[piece].duration};
    const BlurayTitle* bluray = blurayTitle(*place.item, place.part);
    if (bluray && !bluray->chapters.empty())
        return {true, bluray->chapters[piece].start, bluray->chapters[piece].duration};
    return {};
}

const facts::Movie* ItemParts::movie(const Place& place)
{
    if (place.isItem())
        return &facts::mainMovie(*place.item);
    if (const DvdTitle* title = dvdTitle(*place.item, place.part))
        return &title->movie;
    if (const BlurayTitle* title = blurayTitle(*place.item, place.part))
        return place.item->bluray.movieOf(*title);
    return &blurayFile(*place.item, place.part)->movie;
}

QString ItemParts::pictureFile(const Place& place)
{
    const Item& item = *place.item;
    if (place.piece >= 0)
        return piecePicture(item, place.part, place.piece);
    if (place.part >= 0)
        return partPicture(item, place.part);
    if (!item.isDisc())
        return item.movie.picture.file;
    for (const int part : shownOrder(item)) {
        QString file = partPicture(item, part);
        if (!file.isEmpty())
            return file;
    }
    return QString();
}

QString ItemParts::kindName(ItemKind kind)
{
    switch (kind) {
    case ItemKind::Audio:
        return tr("Audio");
    case ItemKind::Bluray:
        return tr("Blu-ray");
    case ItemKind::Dvd:
        return tr("DVD");
    default:
        return tr("Video");
    }
}
