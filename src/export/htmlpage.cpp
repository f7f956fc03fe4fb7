// SPDX-License-Identifier: GPL-2.0-or-later
#include "htmlpage.h"

#include "facts/itemtext.h"
#include "itemmarkup.h"
#include "markup.h"
#include "outputfile.h"
#include "pageassets.h"
#include "pagepictures.h"
#include "pagetext.h"

#include <QtCore/QCollator>
#include <QtCore/QCryptographicHash>
#include <QtCore/QDate>
#include <QtCore/QFileInfo>
#include <QtCore/QLocale>

#include <algorithm>

using facts::Item;

namespace {

/// With more than these the pictures are beside the page: browsers take it in as a whole.
const std::size_t mostItemsWithin = 500;
const std::size_t mostPicturesWithin = 5000;

bool hasMany(const PageContent& content)
{
    std::size_t pictures = 0;
    for (const auto& item : content.items) {
        if (content.items.size() <= mostItemsWithin && pictures <= mostPicturesWithin)
            pictures += item->pictureFiles().size();
    }
    return content.items.size() > mostItemsWithin || pictures > mostPicturesWithin;
}

/// An item at its place in the page: by folder, and there by name, numbers in names by their value.
struct Placed
{
    QString folder;
    QCollatorSortKey folderKey;
    QCollatorSortKey nameKey;
    const Item* item;

    bool operator<(const Placed& other) const
    {
        const int order = folderKey.compare(other.folderKey);
        if (order != 0 || folder != other.folder)
            return order != 0 ? order < 0 : folder < other.folder;
        return nameKey.compare(other.nameKey) < 0;
    }
};

std::vector<Placed> placed(const PageContent& content)
{
    QCollator collator{QLocale(QLocale::English)}; // that of the C locale knows no numbers
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::vector<Placed> items;
    items.reserve(content.items.size());
    for (const auto& item : content.items) {
        const QFileInfo source(item->sourcePath());
        items.push_back({source.path(), collator.sortKey(source.path()),
                         collator.sortKey(source.fileName()), item.get()});
    }
    std::stable_sort(items.begin(), items.end());
    return items;
}

/// A source of a Content-Security-Policy: this very text.
QByteArray hashSource(const char* text)
{
    const QByteArray hash = QCryptographicHash::hash(text, QCryptographicHash::Sha256);
    return "'sha256-" + hash.toBase64() + "'";
}

/// Whatever finds its way into the page can load nothing and run nothing. Browsers differ in
/// whether a page in a file is of the same origin as a picture in a file.
QByteArray securityPolicy(bool hasFolder)
{
    return QByteArray("default-src 'none'; base-uri 'none'; form-action 'none'; img-src data:") +
           (hasFolder ? " 'self' file:" : "") + "; style-src " + hashSource(pageStyle) +
           "; script-src " + hashSource(pageScript);
}

QString itemsText(std::size_t count)
{
    return count == 1 ? Page::tr("1 item") : Page::tr("%1 items").arg(count);
}

/// "3 items: 2 Video, 1 DVD · 1:02:03 · 4.5 GB".
QString sumsText(const PageContent& content)
{
    int byKind[4] = {};
    double duration = 0.0;
    qint64 bytes = 0;
    for (const auto& item : content.items) {
        ++byKind[int(item->kind)];
        duration += item->duration();
        bytes += item->bytes;
    }
    QStringList kinds;
    for (const facts::ItemKind kind : {facts::ItemKind::Video, facts::ItemKind::Audio,
                                       facts::ItemKind::Bluray, facts::ItemKind::Dvd}) {
        if (byKind[int(kind)] > 0)
            kinds << kindText(kind) + QStringLiteral(": %1").arg(byKind[int(kind)]);
    }
    QStringList parts{itemsText(content.items.size())};
    parts << kinds << facts::durationText(duration)
          << (bytes > 0 ? facts::bytesText(bytes) : QString());
    parts.removeAll(QString());
    return parts.join(QStringLiteral(" · "));
}

QString failuresText(std::size_t count)
{
    return count == 1 ? Page::tr("1 could not be imported")
                      : Page::tr("%1 could not be imported").arg(count);
}

QByteArray headMarkup(bool hasFolder)
{
    const QString language =
        Page::tr("en", "the code of the language of these texts, as in lang=\"en\"");
    return "<!DOCTYPE html>\n<html lang=\"" + markup(language) +
           "\">\n<head>\n<meta charset=\"utf-8\">\n<meta http-equiv=\"Content-Security-Policy\" "
           "content=\"" +
           securityPolicy(hasFolder) +
           "\">\n<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
           "<meta name=\"referrer\" content=\"no-referrer\">\n<meta name=\"generator\" "
           "content=\"vspimport\">\n<title>" +
           markup(Page::tr("Films, music and discs")) + "</title>\n<style>" + pageStyle +
           "</style>\n</head>\n";
}

/// The field shows when its script runs.
QByteArray filterMarkup(std::size_t count)
{
    const QByteArray number = QByteArray::number(qulonglong(count));
    const QString form = Page::tr("%1 of %2", "items that are left by the filter");
    return "<form role=\"search\" hidden><label for=\"filter\">" + markup(Page::tr("Filter")) +
           "</label> <input type=\"search\" id=\"filter\" autocomplete=\"off\" "
           "spellcheck=\"false\" placeholder=\"" +
           markup(Page::tr("Name, folder, codec, language, tag …")) +
           "\"> <output id=\"count\" for=\"filter\" data-form=\"" + markup(form) + "\">" +
           markup(form.arg(QString::fromLatin1(number), QString::fromLatin1(number))) +
           "</output></form>\n";
}

QByteArray headerMarkup(const PageContent& content)
{
    const QString date = QDate::currentDate().toString(Qt::ISODate);
    QByteArray header = "<header>\n<h1>" + markup(Page::tr("Films, music and discs")) +
                        "</h1>\n<p>" + markup(sumsText(content)) +
                        " <span class=\"quiet\">· <time>" + markup(date) + "</time></span></p>\n";
    if (content.isStopped) {
        header +=
            "<p>" +
            markup(Page::tr("The import was stopped before it was over: there may be more.")) +
            "</p>\n";
    }
    if (!content.failures.empty()) {
        header += "<p><a href=\"#failures\">" + markup(failuresText(content.failures.size())) +
                  "</a></p>\n";
    }
    return header + "</header>\n";
}

void writeItems(QIODevice& page, const PageContent& content, PagePictures& pictures)
{
    ItemMarkup writer(page, pictures);
    const std::vector<Placed> items = placed(content);
    for (auto begin = items.cbegin(); begin != items.cend();) {
        const auto end = std::find_if(begin, items.cend(), [begin](const Placed& other) {
            return other.folder != begin->folder;
        });
        page.write("<section class=\"folder\">\n<h2><bdi>" + markup(begin->folder) +
                   "</bdi> <span class=\"quiet\">" + markup(itemsText(std::size_t(end - begin))) +
                   "</span></h2>\n<div class=\"sheet\">\n");
        for (; begin != end && pictures.error().isEmpty(); ++begin)
            writer.write(*begin->item);
        page.write("</div>\n</section>\n");
        begin = end;
    }
}

void writeFailures(QIODevice& page, const std::vector<ImportResult::Failure>& failures)
{
    if (failures.empty())
        return;
    page.write("<section class=\"failures\" id=\"failures\">\n<h2>" +
               markup(Page::tr("Not imported")) + "</h2>\n<dl>\n");
    for (const ImportResult::Failure& failure : failures) {
        page.write("<dt><bdi>" + markup(failure.path) + "</bdi></dt> <dd><bdi>" +
                   markup(failure.reason) + "</bdi></dd>\n");
    }
    page.write("</dl>\n</section>\n");
}

} // namespace

bool writeHtmlPage(const QString& fileName, const PageContent& content, QString& error)
{
    OutputFile file;
    return file.open(fileName, OutputFile::Replacing, error) &&
           writeHtmlPage(file.device(), pagePictureFolder(fileName), content, error) &&
           file.commit(error);
}

bool writeHtmlPage(QIODevice& page, const QString& pictureFolder, const PageContent& content,
                   QString& error)
{
    const bool isLarge = hasMany(content);
    const QString folder = isLarge ? pictureFolder : QString();
    const QString reason = folder.isEmpty() ? QString() : reasonAgainstWriting(folder);
    if (!reason.isEmpty()) {
        error = QStringLiteral("cannot write %1: %2").arg(folder, reason);
        return false;
    }
    PagePictures pictures(folder);
    page.write(headMarkup(!folder.isEmpty()) + (isLarge ? "<body class=\"many\">\n" : "<body>\n") +
               headerMarkup(content) + filterMarkup(content.items.size()) + "<main>\n");
    writeItems(page, content, pictures);
    page.write("<p id=\"none\" hidden>" + markup(Page::tr("No item has these words.")) + "</p>\n");
    writeFailures(page, content.failures);
    page.write(QByteArray("</main>\n<script>") + pageScript + "</script>\n</body>\n</html>\n");
    if (!pictures.error().isEmpty())
        error = QStringLiteral("cannot write %1").arg(pictures.error());
    return pictures.error().isEmpty();
}

QString pagePictureFolder(const QString& fileName)
{
    const QFileInfo file(fileName);
    if (fileName == QLatin1String("-") || (file.exists() && !file.isFile()))
        return QString();
    return file.absolutePath() + QLatin1Char('/') + file.completeBaseName() +
           QStringLiteral("_files");
}
