// SPDX-License-Identifier: GPL-2.0-or-later
#include "summary.h"

#include "facts/itemtext.h"
#include "shownpaths.h"
#include "terminaltext.h"

#include <QtCore/QFileInfo>

#include <algorithm>

using facts::Item;
using facts::ItemKind;
using facts::Movie;

namespace {

/// Discs made of hundreds of small titles would push everything else off the screen.
const std::size_t mostTitlesShown = 50;

/// So would more items than that.
const int mostItemsShown = 200;

const ItemKind itemKinds[] = {ItemKind::Video, ItemKind::Audio, ItemKind::Bluray, ItemKind::Dvd};

QString orDash(const QString& text)
{
    return text.isEmpty() ? QStringLiteral("-") : text;
}

QString codecsText(const Movie& movie)
{
    return facts::codecs(movie).join(QLatin1Char(','));
}

QString columns(const QString& kind, double duration, const QString& size, const QString& codecs,
                const QString& name)
{
    return QStringLiteral("%1  %2  %3  %4  %5\n")
        .arg(kind.leftJustified(7), orDash(facts::durationText(duration)).rightJustified(8),
             orDash(size).leftJustified(9), orDash(codecs).leftJustified(18), terminalText(name));
}

QString titleLine(const Movie* movie, double duration, std::size_t place, std::size_t chapters,
                  const char* more)
{
    const QString name = QStringLiteral("%1, %2 chapter%3%4")
                             .arg(place + 1)
                             .arg(chapters)
                             .arg(QLatin1String(chapters == 1 ? "" : "s"), QLatin1String(more));
    static const Movie none;
    return columns(QStringLiteral(" title"), duration, facts::sizeText(movie ? *movie : none),
                   codecsText(movie ? *movie : none), name);
}

QString titleLines(const Item& item)
{
    QString lines;
    const std::size_t count = std::max(item.dvd.titles.size(), item.bluray.titles.size());
    for (std::size_t i = 0; i < std::min(count, mostTitlesShown); ++i) {
        if (item.kind == ItemKind::Dvd) {
            const facts::DvdTitle& title = item.dvd.titles[i];
            lines += titleLine(&title.movie, title.movie.duration, i, title.chapters.size(),
                               title.isMain ? ", main title" : "");
        } else {
            const facts::BlurayTitle& title = item.bluray.titles[i];
            lines +=
                titleLine(item.bluray.movieOf(title), title.duration, i, title.chapters.size(), "");
        }
    }
    if (count > mostTitlesShown)
        lines += QStringLiteral("           … and %1 more titles\n").arg(count - mostTitlesShown);
    return lines;
}

QString itemLines(const Item& item, const QString& path)
{
    if (!item.isDisc()) {
        return columns(facts::kindName(item.kind), item.movie.duration, facts::sizeText(item.movie),
                       codecsText(item.movie), path);
    }
    // The disc's own name, where that is another than the folder's.
    const QString name = item.name();
    const bool isShown = path.isEmpty() || QFileInfo(path).fileName() == name;
    const QString named = isShown ? path : QStringLiteral("%1 (%2)").arg(path, name);
    return columns(facts::kindName(item.kind), 0.0, QStringLiteral("-"),
                   QLatin1String(item.dvd.isScrambled ? "scrambled" : "-"),
                   path.isEmpty() ? name : named) +
           titleLines(item);
}

/// What a folder, or all of it, comes to: "3 video, 1 DVD".
QString countsText(const int (&counts)[4])
{
    QStringList parts;
    for (const ItemKind kind : itemKinds) {
        if (counts[int(kind)] > 0)
            parts.append(QStringLiteral("%1 %2").arg(counts[int(kind)]).arg(facts::kindName(kind)));
    }
    return parts.join(QStringLiteral(", "));
}

using ItemsByPath = std::vector<std::pair<QString, const Item*>>;

ItemsByPath sorted(const ImportResult& result, const ShownPaths& paths)
{
    ItemsByPath items;
    for (const auto& item : result.items())
        items.emplace_back(paths.shown(item->sourcePath()), item.get());
    std::sort(items.begin(), items.end(),
              [](const auto& a, const auto& b) { return a.first < b.first; });
    return items;
}

QString folderLines(const ItemsByPath& items)
{
    QMap<QString, ImportResult::Sums> folders;
    for (const auto& entry : items) {
        ImportResult::Sums& sums = folders[QFileInfo(entry.first).path()];
        ++sums.byKind[int(entry.second->kind)];
        sums.duration += std::max(0.0, entry.second->duration());
        sums.bytes += entry.second->bytes;
    }
    QString lines;
    for (auto it = folders.constBegin(); it != folders.constEnd(); ++it) {
        lines += QStringLiteral("%1  %2  %3  %4\n")
                     .arg(orDash(facts::durationText(it->duration)).rightJustified(9),
                          facts::bytesText(it->bytes).rightJustified(9),
                          countsText(it->byKind).leftJustified(22), terminalText(it.key()));
    }
    return lines;
}

QString failureLines(const ImportResult& result, const ShownPaths& paths)
{
    QStringList lines;
    for (const ImportResult::Failure& failure : result.failures()) {
        lines += QStringLiteral("  %1: %2\n")
                     .arg(terminalText(paths.shown(failure.path)), terminalText(failure.reason));
    }
    lines.sort();
    return lines.isEmpty() ? QString()
                           : QStringLiteral("\nNot imported:\n") + lines.join(QString());
}

/// "300 of other kinds: .jpg 200, .nfo 100", the many first.
QString otherKindsLine(const ImportResult& result)
{
    std::vector<std::pair<int, QString>> kinds;
    int all = 0;
    for (auto it = result.otherKinds().constBegin(); it != result.otherKinds().constEnd(); ++it) {
        kinds.emplace_back(-it.value(), it.key());
        all += it.value();
    }
    if (kinds.empty())
        return QString();
    std::sort(kinds.begin(), kinds.end());
    QStringList parts;
    for (const auto& kind : kinds) {
        const QString name =
            kind.second.isEmpty() ? QStringLiteral("without suffix") : '.' + kind.second;
        parts.append(QStringLiteral("%1 %2").arg(terminalText(name)).arg(-kind.first));
    }
    return QStringLiteral("\n%1 of other kinds: %2\n")
        .arg(all)
        .arg(parts.join(QStringLiteral(", ")));
}

QString sumsLine(const ImportResult& result)
{
    const ImportResult::Sums& sums = result.sums();
    QString line = QStringLiteral("\n%1 imported").arg(sums.items);
    if (sums.items > 0)
        line += QStringLiteral(" (%1)").arg(countsText(sums.byKind));
    const std::size_t failed = result.failures().size();
    if (failed > 0)
        line += QStringLiteral(", %1 not").arg(failed);
    if (sums.items > 0) {
        line += QStringLiteral(", %1, %2")
                    .arg(orDash(facts::durationText(sums.duration)), facts::bytesText(sums.bytes));
    }
    return line + QLatin1String(result.stopped ? ", stopped\n" : "\n");
}

} // namespace

QString summaryOf(const ImportResult& result, const QStringList& sources,
                  const QString& pictureFolder, bool mayGroup)
{
    const ShownPaths paths(sources);
    const ItemsByPath items = sorted(result, paths);
    QString text;
    if (mayGroup && result.items().size() > mostItemsShown) {
        text = folderLines(items);
    } else {
        for (const auto& item : items)
            text += itemLines(*item.second, item.first);
    }
    text += failureLines(result, paths) + otherKindsLine(result) + sumsLine(result);
    if (!pictureFolder.isEmpty())
        text += QStringLiteral("Pictures: %1\n").arg(terminalText(pictureFolder));
    return text.startsWith(QLatin1Char('\n')) ? text.mid(1) : text;
}
