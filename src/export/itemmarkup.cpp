// SPDX-License-Identifier: GPL-2.0-or-later
#include "itemmarkup.h"

#include "facts/itemtext.h"
#include "markup.h"
#include "pagetext.h"

#include <QtCore/QFileInfo>
#include <QtCore/QSet>

#include <algorithm>

using facts::Item;
using facts::ItemKind;
using facts::Movie;

namespace {

/// Discs are made to have hundreds of titles, or a title thousands of clips, against copying.
const std::size_t mostTitles = 200;
const std::size_t mostPictures = 300;

const char note[] =
    "<svg viewBox=\"0 0 24 24\" aria-hidden=\"true\"><path d=\"M9 4v10.6A3.5 3.5 0 1 "
    "0 11 17.5V8h8v6.6a3.5 3.5 0 1 0 2 2.9V4z\"/></svg>";
const char disc[] = "<svg viewBox=\"0 0 24 24\" aria-hidden=\"true\"><path fill-rule=\"evenodd\" "
                    "d=\"M12 2a10 10 0 1 0 0 20 10 10 0 1 0 0-20zm0 7a3 3 0 1 1 0 6 3 3 0 1 1 "
                    "0-6z\"/></svg>";

QByteArray nameMarkup(const QString& name)
{
    return "<bdi>" + markup(name) + "</bdi>";
}

/// What a stream that says nothing of its language says.
QStringList languagesOf(const Movie& movie)
{
    QStringList languages = facts::languages(movie);
    languages.removeAll(QStringLiteral("und"));
    return languages;
}

QString frameRateOf(const Movie& movie)
{
    const facts::Stream* video = movie.first(facts::StreamKind::Video);
    return video ? video->framerate : QString();
}

QString chaptersText(std::size_t count)
{
    return count == 1 ? Page::tr("1 chapter") : Page::tr("%1 chapters").arg(count);
}

/// Of a place in a title, which may be its begin.
QString timeText(double seconds)
{
    const QString text = facts::durationText(seconds);
    return text.isEmpty() ? QStringLiteral("0:00:00") : text;
}

} // namespace

QString kindText(ItemKind kind)
{
    switch (kind) {
    case ItemKind::Audio:
        return Page::tr("Audio");
    case ItemKind::Bluray:
        return Page::tr("Blu-ray disc");
    case ItemKind::Dvd:
        return Page::tr("DVD");
    case ItemKind::Video:
        break;
    }
    return Page::tr("Video");
}

ItemMarkup::ItemMarkup(QIODevice& page, PagePictures& pictures)
    : m_page(page)
    , m_pictures(pictures)
{}

void ItemMarkup::write(const Item& item)
{
    m_shown.clear();
    if (item.isDisc())
        writeDisc(item);
    else
        writeMedia(item);
    m_page.write("</article>\n");
}

void ItemMarkup::writeMedia(const Item& item)
{
    const QString alt = Page::tr("Picture of %1").arg(item.name());
    m_page.write("<article><div class=\"picture\">");
    if (item.kind == ItemKind::Audio)
        m_page.write(note);
    else if (!m_pictures.write(m_page, item.movie.picture.file, "alt=\"" + markup(alt) + '"'))
        m_page.write(markup(Page::tr("No picture")));
    m_page.write("</div>\n<h3>" + nameMarkup(item.name()) + "</h3>\n");
    const QString title = item.movie.name;
    if (!title.isEmpty() && title != item.name() && title != QFileInfo(item.name()).baseName() &&
        title != QFileInfo(item.name()).completeBaseName())
        m_page.write("<p>" + nameMarkup(title) + "</p>\n");
    writeFacts({kindText(item.kind), facts::durationText(item.movie.duration),
                facts::sizeText(item.movie), frameRateOf(item.movie)});
    writeStreams(item);
    writeTags(item.movie);
}

void ItemMarkup::writeDisc(const Item& item)
{
    const Movie& movie = facts::mainMovie(item);
    const QString folder = QFileInfo(item.sourcePath()).fileName();
    m_page.write("<article class=\"disc\"><h3>" + QByteArray(disc) + nameMarkup(item.name()));
    if (folder != item.name())
        m_page.write(" <span class=\"quiet\">" + nameMarkup(folder) + "</span>");
    m_page.write("</h3>\n");
    const QString scrambled = item.dvd.isScrambled ? Page::tr("scrambled") : QString();
    writeFacts({kindText(item.kind), facts::durationText(item.duration()), facts::sizeText(movie),
                frameRateOf(movie), scrambled});
    writeStreams(item);
    const std::size_t titles = std::max(item.dvd.titles.size(), item.bluray.titles.size());
    writeDvd(item.dvd);
    writeBluray(item.bluray);
    if (titles > mostTitles) {
        m_page.write("<p>" + markup(Page::tr("… and %1 more titles").arg(titles - mostTitles)) +
                     "</p>\n");
    }
}

/// Those that are known.
void ItemMarkup::writeFacts(const QStringList& facts)
{
    QByteArray list;
    for (const QString& fact : facts) {
        if (!fact.isEmpty())
            list += "<li>" + nameMarkup(fact) + "</li> ";
    }
    m_page.write("<ul class=\"facts\">" + list + "</ul>\n");
}

void ItemMarkup::writeStreams(const Item& item)
{
    const Movie& movie = facts::mainMovie(item);
    QStringList languages = languagesOf(movie);
    if (const facts::DvdTitle* title = item.dvd.mainTitle()) {
        for (const facts::DvdSubtitle& subtitle : title->subtitles)
            languages.append(subtitle.language);
        languages.removeAll(QString());
        languages.removeDuplicates();
    }
    QByteArray list;
    const auto add = [&list](const QString& label, const QString& fact) {
        if (!fact.isEmpty()) {
            list += "<li><span class=\"label\">" + markup(label) + " </span>" + nameMarkup(fact) +
                    "</li> ";
        }
    };
    add(Page::tr("Codecs:"), facts::codecs(movie).join(QStringLiteral(", ")));
    add(Page::tr("Languages:"), languages.join(QStringLiteral(", ")));
    if (item.bytes > 0)
        add(Page::tr("Size:"), facts::bytesText(item.bytes));
    m_page.write("<ul class=\"facts\">" + list + "</ul>\n");
}

void ItemMarkup::writeTags(const Movie& movie)
{
    if (movie.tags.empty())
        return;
    const QString summary = Page::tr("Tags (%1)").arg(movie.tags.size());
    m_page.write("<details><summary>" + markup(summary) + "</summary><dl>\n");
    for (const auto& tag : movie.tags) {
        m_page.write("<dt>" + nameMarkup(tag.first) + "</dt> <dd><bdi>" +
                     markup(tag.second, Lines::Kept) + "</bdi></dd>\n");
    }
    m_page.write("</dl></details>\n");
}

void ItemMarkup::writeDvd(const facts::Dvd& disc)
{
    const facts::DvdTitle* main = disc.mainTitle();
    for (std::size_t i = 0; i < std::min(disc.titles.size(), mostTitles); ++i) {
        const facts::DvdTitle& title = disc.titles[i];
        std::vector<Figure> figures;
        for (const facts::DvdChapter& chapter : title.chapters) {
            figures.push_back({chapter.pictureFile, Page::tr("Chapter %1").arg(figures.size() + 1),
                               timeText(chapter.start)});
        }
        writeTitle({i,
                    &title == main,
                    main->movie.duration,
                    title.movie.duration,
                    &title.movie,
                    {chaptersText(title.chapters.size())}},
                   figures);
    }
}

void ItemMarkup::writeBluray(const facts::Bluray& disc)
{
    const facts::BlurayTitle* main = disc.mainTitle();
    for (std::size_t i = 0; i < std::min(disc.titles.size(), mostTitles); ++i) {
        const facts::BlurayTitle& title = disc.titles[i];
        const std::size_t clips = title.clips.size();
        writeTitle({i,
                    &title == main,
                    main->duration,
                    title.duration,
                    disc.movieOf(title),
                    {chaptersText(title.chapters.size()),
                     clips == 1 ? Page::tr("1 clip") : Page::tr("%1 clips").arg(clips)}},
                   figuresOf(disc, title));
    }
}

/// Clips have pictures where a title or a chapter begins, one where several do. Chapters go first:
/// a clip alone says little.
std::vector<ItemMarkup::Figure> ItemMarkup::figuresOf(const facts::Bluray& disc,
                                                      const facts::BlurayTitle& title)
{
    std::vector<Figure> figures;
    QSet<QString> files;
    const auto add = [&](facts::ClipPlace place, const QString& caption, const QString& time) {
        const QString picture = disc.pictureFile(place);
        if (picture.isEmpty() || files.contains(picture))
            return;
        const facts::BlurayFile& file = disc.files[std::size_t(place.file)];
        files.insert(picture);
        const QString more = time.isEmpty() ? time : time + QStringLiteral(" · ");
        figures.push_back({picture, caption, more + QFileInfo(file.path).fileName()});
    };
    for (std::size_t i = 0; i < title.chapters.size(); ++i) {
        for (const facts::ClipPlace place : title.chapters[i].clips)
            add(place, Page::tr("Chapter %1").arg(i + 1), timeText(title.chapters[i].start));
    }
    for (std::size_t i = 0; i < title.clips.size(); ++i)
        add(title.clips[i], Page::tr("Clip %1").arg(i + 1), QString());
    return figures;
}

/// Open, when it may be what the disc is about.
void ItemMarkup::writeTitle(const TitleHead& head, const std::vector<Figure>& figures)
{
    const bool isOpen = head.isMain || head.duration * 2 >= head.mainDuration;
    QByteArray line = "<span>" + markup(Page::tr("Title %1").arg(head.place + 1));
    if (head.isMain)
        line += " <strong>" + markup(Page::tr("Main title")) + "</strong>";
    line += "</span> ";
    static const Movie none;
    const Movie& movie = head.movie ? *head.movie : none;
    QStringList facts{facts::durationText(head.duration), facts::sizeText(movie)};
    facts << head.more << facts::codecs(movie).join(QStringLiteral(", "))
          << languagesOf(movie).join(QStringLiteral(", "));
    facts.removeAll(QString());
    for (const QString& fact : facts)
        line += "<span>" + nameMarkup(fact) + "</span> ";
    m_page.write(QByteArray(isOpen ? "<details open>" : "<details>") + "<summary>" + line +
                 "</summary>\n<ul class=\"pictures\">\n");
    const std::size_t shown = std::min(figures.size(), mostPictures);
    for (std::size_t i = 0; i < shown; ++i)
        writeFigure(figures[i]);
    if (figures.size() > shown) {
        m_page.write("<li>" + markup(Page::tr("… and %1 more").arg(figures.size() - shown)) +
                     "</li>\n");
    }
    m_page.write("</ul></details>\n");
}

/// A clip that several titles of a disc play has its picture in the page once; for the others the
/// page's script takes it from there.
void ItemMarkup::writeFigure(const Figure& figure)
{
    m_page.write("<li><figure><div class=\"picture\">");
    const QByteArray known = m_shown.value(figure.file);
    const QByteArray id = "picture-" + QByteArray::number(m_ids + 1);
    if (!known.isEmpty()) {
        m_page.write("<span data-again=\"" + known + "\">" + markup(Page::tr("As above")) +
                     "</span>");
    } else if (m_pictures.write(m_page, figure.file,
                                "id=\"" + id + "\" alt=\"" + markup(figure.caption) + '"')) {
        m_shown.insert(figure.file, id);
        ++m_ids;
    } else {
        m_page.write(markup(Page::tr("No picture")));
    }
    m_page.write("</div> <figcaption>" + markup(figure.caption) + " · " + nameMarkup(figure.more) +
                 "</figcaption></figure></li>\n");
}
