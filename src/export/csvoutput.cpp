// SPDX-License-Identifier: GPL-2.0-or-later
#include "csvoutput.h"

#include "facts/itemtext.h"

#include <QtCore/QStringList>

#include <algorithm>

using facts::Item;

namespace {

const char* const header = "kind,name,path,duration,width,height,frameRate,codecs,languages,bytes,"
                           "titles\r\n";

/// Begun with one of these, a cell is a formula to spreadsheets, and may do more than count.
bool beginsFormula(QChar c)
{
    return QStringLiteral("=+-@\t\r").contains(c);
}

QString cell(QString text)
{
    if (!text.isEmpty() && beginsFormula(text.at(0)))
        text.prepend(QLatin1Char('\''));
    const bool isQuoted = std::any_of(
        text.cbegin(), text.cend(), [](QChar c) { return QStringLiteral(",\"\r\n").contains(c); });
    return isQuoted ? '"' + text.replace(QLatin1Char('"'), QStringLiteral("\"\"")) + '"' : text;
}

template <typename Number>
QString known(Number number)
{
    return number > 0 ? QString::number(number) : QString();
}

QByteArray lineOf(const Item& item)
{
    const facts::Movie& movie = facts::mainMovie(item);
    const facts::Stream* video = movie.first(facts::StreamKind::Video);
    const facts::PictureSize size = facts::pictureSize(movie);
    QStringList cells{facts::kindName(item.kind), item.name(),       item.sourcePath(),
                      known(item.duration()),     known(size.width), known(size.height)};
    cells << (video ? video->framerate.section(QLatin1Char(' '), 0, 0) : QString())
          << facts::codecs(movie).join(QLatin1Char(' '))
          << facts::languages(movie).join(QLatin1Char(' ')) << known(item.bytes)
          << known(std::max(item.dvd.titles.size(), item.bluray.titles.size()));
    for (QString& text : cells)
        text = cell(text);
    return cells.join(QLatin1Char(',')).toUtf8() + "\r\n";
}

} // namespace

bool writeCsv(QIODevice& device, const std::vector<std::shared_ptr<const facts::Item>>& items)
{
    bool isWritten = device.write(header) == qint64(qstrlen(header));
    for (const auto& item : items) {
        const QByteArray line = lineOf(*item);
        isWritten = isWritten && device.write(line) == line.size();
    }
    return isWritten;
}
