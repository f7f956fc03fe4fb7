// SPDX-License-Identifier: GPL-2.0-or-later
#include "detailstext.h"

#include "facts/itemtext.h"

#include <QtCore/QFileInfo>
#include <QtCore/QStringList>

using facts::Item;
using facts::ItemKind;
using facts::Movie;
using facts::StreamKind;

namespace {

const std::size_t mostRows = 200;

QString escaped(const QString& text)
{
    return text.toHtmlEscaped();
}

QString heading(const QString& text)
{
    return QStringLiteral("<h3>%1</h3>").arg(escaped(text));
}

/// Short facts are read in one line, lists in as many as they take.
bool isShort(const QString& text)
{
    const int mostLetters = 24;
    return text.length() <= mostLetters;
}

/// What is unknown is left out.
QString fact(const QString& name, const QString& value)
{
    if (value.isEmpty())
        return QString();
    return QStringLiteral("<tr><td style='white-space:nowrap'>%1&nbsp;</td><td>%2</td></tr>")
        .arg(escaped(name), escaped(value));
}

QString row(const QStringList& cells, const char* tag = "td")
{
    QString line;
    for (const QString& cell : cells)
        line += QStringLiteral("<%1 style='white-space:%2'>%3</%1>")
                    .arg(QLatin1String(tag), QLatin1String(isShort(cell) ? "nowrap" : "normal"),
                         escaped(cell));
    return QStringLiteral("<tr>%1</tr>").arg(line);
}

QString table(const QString& rows)
{
    return rows.isEmpty()
               ? rows
               : QStringLiteral("<table cellspacing=0 cellpadding=3>%1</table>").arg(rows);
}

QString numbered(int number, const char* unit)
{
    return number > 0 ? QStringLiteral("%1 %2").arg(number).arg(QLatin1String(unit)) : QString();
}

QString bitrateText(int bitrate)
{
    return bitrate > 0 ? numbered(qMax(1, bitrate / 1000), "kbit/s") : QString();
}

} // namespace

QString DetailsText::text(const Place& place)
{
    if (!place.item)
        return QString();
    const Item& item = *place.item;
    const Movie* movie = ItemParts::movie(place);
    QString text = place.isItem()
                       ? QStringLiteral("<h2>%1</h2>").arg(escaped(item.name())) + itemFacts(item)
                       : placeFacts(place);
    if (item.isDisc() && place.isItem())
        text += titles(place) + blurayFiles(place);
    if (movie)
        text += streams(*movie);
    if (item.kind == ItemKind::Dvd && !place.isItem())
        text += subtitles(item.dvd.titles[std::size_t(place.part)]);
    return movie ? text + tags(*movie) : text;
}

QString DetailsText::itemFacts(const Item& item)
{
    const Movie& movie = facts::mainMovie(item);
    const facts::Stream* video = movie.first(StreamKind::Video);
    QString rows = fact(tr("Kind"), ItemParts::kindName(item.kind)) +
                   fact(tr("Title"), item.isDisc() ? QString() : item.movie.name) +
                   fact(tr("Duration"), facts::durationText(item.duration())) +
                   fact(tr("Size"), facts::sizeText(movie));
    if (video)
        rows += fact(tr("Shown as"), video->aspectRatio) + fact(tr("Rate"), video->framerate);
    rows += fact(tr("Format"), item.movie.format) +
            fact(tr("File size"), item.bytes > 0 ? facts::bytesText(item.bytes) : QString());
    if (item.dvd.isScrambled)
        rows += fact(tr("Protection"), tr("scrambled"));
    return table(rows + fact(tr("Path"), item.sourcePath()));
}

QString DetailsText::placeFacts(const Place& place)
{
    QString rows;
    const std::pair<QString, Column> columns[] = {{tr("Kind"), KindColumn},
                                                  {tr("Duration"), DurationColumn},
                                                  {tr("Size"), SizeColumn},
                                                  {tr("Rate"), RateColumn}};
    for (const auto& column : columns)
        rows += fact(column.first, ItemParts::text(place, column.second));
    if (place.piece >= 0)
        rows += fact(tr("Begins at"), facts::durationText(ItemParts::span(place).start));
    const int pieces = place.isPart() ? ItemParts::pieceCount(*place.item, place.part) : 0;
    if (pieces > 0) {
        const bool hasChapters = ItemParts::span({place.item, place.part, 0}).isChapter;
        rows += fact(hasChapters ? tr("Chapters") : tr("Clips"), QString::number(pieces));
    }
    return QStringLiteral("<h2>%1</h2>").arg(escaped(ItemParts::text(place, NameColumn))) +
           table(rows + fact(tr("Disc"), place.item->name()));
}

QString DetailsText::streams(const Movie& movie)
{
    const QString kinds[] = {tr("Other"), tr("Video"), tr("Audio"), tr("Subtitle")};
    QString rows;
    for (const facts::Stream& stream : movie.streams) {
        if (&stream - movie.streams.data() == mostRows)
            break;
        const QString size = stream.width > 0 && stream.height > 0
                                 ? QStringLiteral("%1x%2").arg(stream.width).arg(stream.height)
                                 : QString();
        const QString facts[] = {size,
                                 stream.framerate,
                                 numbered(stream.samplerate, "Hz"),
                                 stream.channels > 0 ? tr("%n channel(s)", "", stream.channels)
                                                     : QString(),
                                 bitrateText(stream.bitrate),
                                 stream.name};
        QStringList known;
        for (const QString& text : facts) {
            if (!text.isEmpty())
                known.append(text);
        }
        rows += row({QString::number(stream.id), kinds[int(stream.kind)], stream.codec,
                     stream.language, known.join(QStringLiteral(", "))});
    }
    if (rows.isEmpty())
        return rows;
    return heading(tr("Streams")) +
           table(row({tr("Id"), tr("Kind"), tr("Codec"), tr("Language"), QString()}, "th") + rows) +
           more(movie.streams.size());
}

QString DetailsText::tags(const Movie& movie)
{
    QString rows;
    for (std::size_t i = 0; i < qMin(movie.tags.size(), mostRows); ++i)
        rows += fact(movie.tags[i].first, movie.tags[i].second);
    return rows.isEmpty() ? rows : heading(tr("Tags")) + table(rows) + more(movie.tags.size());
}

QString DetailsText::subtitles(const facts::DvdTitle& title)
{
    QStringList languages;
    for (const facts::DvdSubtitle& subtitle : title.subtitles) {
        if (!subtitle.language.isEmpty() && !languages.contains(subtitle.language))
            languages.append(subtitle.language);
    }
    return languages.isEmpty() ? QString()
                               : table(fact(tr("Subtitles"), languages.join(QStringLiteral(", "))));
}

QString DetailsText::titles(const Place& place)
{
    const Item& item = *place.item;
    const std::size_t count = qMax(item.dvd.titles.size(), item.bluray.titles.size());
    QString rows;
    std::size_t shown = 0;
    for (const int part : ItemParts::shownOrder(item)) {
        if (std::size_t(part) >= count) // a stream file
            continue;
        if (shown++ == mostRows)
            break;
        const Place title{place.item, part};
        const bool isBluray = item.kind == ItemKind::Bluray;
        const auto at = std::size_t(part);
        const std::size_t chapters =
            isBluray ? item.bluray.titles[at].chapters.size() : item.dvd.titles[at].chapters.size();
        rows += row({ItemParts::text(title, NameColumn), ItemParts::text(title, DurationColumn),
                     tr("%n chapter(s)", "", int(chapters)),
                     isBluray ? clipNames(item.bluray, item.bluray.titles[at])
                              : ItemParts::text(title, LanguagesColumn)});
    }
    return rows.isEmpty() ? rows : heading(tr("Titles")) + table(rows) + more(count);
}

/// The files that it plays, in their order.
QString DetailsText::clipNames(const facts::Bluray& disc, const facts::BlurayTitle& title)
{
    const std::size_t mostNames = 10;
    QStringList names;
    for (const facts::ClipPlace& clip : title.clips) {
        if (std::size_t(names.size()) == mostNames)
            break;
        if (clip.file >= 0 && std::size_t(clip.file) < disc.files.size())
            names.append(QFileInfo(disc.files[std::size_t(clip.file)].path).fileName());
    }
    const QString text = names.join(QStringLiteral(", "));
    return title.clips.size() > mostNames ? text + QStringLiteral(" …") : text;
}

QString DetailsText::blurayFiles(const Place& place)
{
    const facts::Bluray& disc = place.item->bluray;
    QString rows;
    for (std::size_t i = 0; i < qMin(disc.files.size(), mostRows); ++i) {
        const Place file{place.item, int(disc.titles.size() + i)};
        rows += row({ItemParts::text(file, NameColumn), ItemParts::text(file, DurationColumn),
                     tr("%n clip(s)", "", int(disc.files[i].clips.size())),
                     ItemParts::text(file, LanguagesColumn)});
    }
    return rows.isEmpty() ? rows
                          : heading(tr("Stream files")) + table(rows) + more(disc.files.size());
}

QString DetailsText::more(std::size_t count)
{
    if (count <= mostRows)
        return QString();
    return QStringLiteral("<p>%1</p>").arg(tr("… and %n more", "", int(count - mostRows)));
}
