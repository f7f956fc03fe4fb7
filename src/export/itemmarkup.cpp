// SPDX-License-Identifier: GPL-2.0-or-later
#include "itemmarkup.h"

#include "facts/itemtext.h"
#include "markup.h"
#include "pagetext.h"

#include <QtCore/QFileInfo>

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

QString countText(std::size_t count, const QString& one, const QString& many)
{
    return count == 1 ? one : many;
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
        const std::size_t count = title.chapters.size();
        beginTitle({i,
                    &title == main,
                    main->movie.duration,
                    title.movie.duration,
                    &title.movie,
                    {countText(count, Page::tr("1 chapter"), Page::tr("%1 chapters").arg(count))}});
        for (std::size_t j = 0; j < std::min(count, mostPictures); ++j) {
            const QString start = facts::durationText(title.chapters[j].start);
            writeFigure(title.chapters[j].pictureFile, Page::tr("Chapter %1").arg(j + 1),
                        start.isEmpty() ? QStringLiteral("0:00:00") : start);
        }
        endTitle(mostPictures, count);
    }
}

void ItemMarkup::writeBluray(const facts::Bluray& disc)
{
    const facts::BlurayTitle* main = disc.mainTitle();
    for (std::size_t i = 0; i < std::min(disc.titles.size(), mostTitles); ++i) {
        const facts::BlurayTitle& title = disc.titles[i];
        const std::size_t count = title.clips.size();
        const std::size_t chapters = title.chapters.size();
        beginTitle(
            {i,
             &title == main,
             main->duration,
             title.duration,
             disc.movieOf(title),
             {countText(chapters, Page::tr("1 chapter"), Page::tr("%1 chapters").arg(chapters)),
              countText(count, Page::tr("1 clip"), Page::tr("%1 clips").arg(count))}});
        for (std::size_t j = 0; j < std::min(count, mostPictures); ++j) {
            const std::size_t file = std::size_t(title.clips[j].file);
            const std::size_t clip = std::size_t(title.clips[j].clip);
            if (file < disc.files.size() && clip < disc.files[file].clips.size()) {
                writeFigure(disc.files[file].clips[clip].file, Page::tr("Clip %1").arg(j + 1),
                            QFileInfo(disc.files[file].path).fileName());
            }
        }
        endTitle(mostPictures, count);
    }
}

/// Open, when it may be what the disc is about.
void ItemMarkup::beginTitle(const TitleHead& head)
{
    const bool isOpen = head.isMain || head.duration * 2 >= head.mainDuration;
    QByteArray line = "<span>" + markup(Page::tr("Title %1").arg(head.place + 1)) + "</span> ";
    if (head.isMain)
        line += "<strong>" + markup(Page::tr("Main title")) + "</strong> ";
    QStringList facts{facts::durationText(head.duration)};
    if (head.movie)
        facts << facts::sizeText(*head.movie);
    facts += head.more;
    if (head.movie) {
        facts << facts::codecs(*head.movie).join(QStringLiteral(", "))
              << languagesOf(*head.movie).join(QStringLiteral(", "));
    }
    facts.removeAll(QString());
    for (const QString& fact : facts)
        line += "<span>" + nameMarkup(fact) + "</span> ";
    m_page.write(QByteArray(isOpen ? "<details open>" : "<details>") + "<summary>" + line +
                 "</summary>\n<ul class=\"pictures\">\n");
}

void ItemMarkup::endTitle(std::size_t shown, std::size_t all)
{
    if (all > shown)
        m_page.write("<li>" + markup(Page::tr("… and %1 more").arg(all - shown)) + "</li>\n");
    m_page.write("</ul></details>\n");
}

/// A clip that several titles of a disc play has its picture in the page once; for the others the
/// page's script takes it from there.
void ItemMarkup::writeFigure(const QString& file, const QString& caption, const QString& more)
{
    m_page.write("<li><figure><div class=\"picture\">");
    const QByteArray known = m_shown.value(file);
    const QByteArray id = "picture-" + QByteArray::number(m_ids + 1);
    if (!known.isEmpty()) {
        m_page.write("<span data-again=\"" + known + "\">" + markup(Page::tr("As above")) +
                     "</span>");
    } else if (m_pictures.write(m_page, file, "id=\"" + id + "\" alt=\"" + markup(caption) + '"')) {
        m_shown.insert(file, id);
        ++m_ids;
    } else {
        m_page.write(markup(Page::tr("No picture")));
    }
    m_page.write("</div> <figcaption>" + markup(caption) + " · " + nameMarkup(more) +
                 "</figcaption></figure></li>\n");
}
