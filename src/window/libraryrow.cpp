// SPDX-License-Identifier: GPL-2.0-or-later
#include "libraryrow.h"

#include "facts/itemtext.h"

#include <QtCore/QFileInfo>
#include <QtCore/QHash>
#include <QtCore/QLocale>
#include <QtCore/QSet>

#include <algorithm>

using facts::Item;

namespace {

/// "2" goes before "10", also where no language is set.
const QCollator& collator()
{
    static const QCollator collator = [] {
        const bool hasLanguage = QLocale().language() != QLocale::C;
        QCollator made(hasLanguage ? QLocale() : QLocale(QLocale::English));
        made.setNumericMode(true);
        made.setCaseSensitivity(Qt::CaseInsensitive);
        return made;
    }();
    return collator;
}

/// Control characters as the signs for them.
QString inOneLine(QString text)
{
    for (QChar& c : text) {
        if (c.category() == QChar::Other_Control)
            c = QChar(c.unicode() < 0x20 ? 0x2400 + c.unicode() : 0xfffd);
    }
    return text;
}

/// As texts are compared that people type: capitals, accents and ß do not count.
QString folded(const QString& text)
{
    QString folded;
    for (const QChar c : text.normalized(QString::NormalizationForm_KD).toCaseFolded()) {
        if (c == QChar(0xdf))
            folded += QLatin1String("ss");
        else if (c.category() != QChar::Mark_NonSpacing)
            folded += c;
    }
    return folded;
}

/// Folders and most facts are the same for many items: the text is kept once.
const QString& shared(const QString& text)
{
    static QSet<QString> texts;
    return *texts.insert(text);
}

const QCollatorSortKey& folderKey(const QString& folder)
{
    static QHash<QString, QCollatorSortKey> keys;
    const auto known = keys.constFind(folder);
    return known != keys.constEnd() ? *known : *keys.insert(folder, collator().sortKey(folder));
}

int compared(double a, double b)
{
    return a < b ? -1 : b < a ? 1 : 0;
}

double rateOf(const facts::Movie& movie)
{
    const facts::Stream* video = movie.first(facts::StreamKind::Video);
    const double divisor = video ? double(video->rawFramerate & 0xffffffffU) : 0.0;
    return divisor > 0.0 ? double(video->rawFramerate >> 32) / divisor : 0.0;
}

void appendTexts(const facts::Movie& movie, QStringList& texts)
{
    texts << movie.name << movie.format;
    for (const auto& tag : movie.tags)
        texts << tag.second;
    for (const facts::Stream& stream : movie.streams)
        texts << stream.name;
}

} // namespace

LibraryRow::LibraryRow(QString key, std::shared_ptr<const Item> item)
    : m_key(std::move(key))
    , m_nameKey(collator().sortKey(QString()))
    , m_folderKey(m_nameKey)
    , m_places(std::size_t(ItemParts::partCount(*item)))
{
    for (const int part : ItemParts::shownOrder(*item)) {
        m_places[std::size_t(part)] = int(m_parts.size());
        m_parts.push_back({this, part});
    }
    update(std::move(item));
}

bool LibraryRow::hasShapeOf(const Item& item) const
{
    if (partCount() != ItemParts::partCount(item))
        return false;
    for (int part = 0; part < partCount(); ++part) {
        if (ItemParts::pieceCount(*m_item, part) != ItemParts::pieceCount(item, part))
            return false;
    }
    return partCount() == 0 || ItemParts::shownOrder(item).front() == m_parts.front().part;
}

void LibraryRow::update(std::shared_ptr<const Item> item)
{
    m_item = std::move(item);
    describe();
}

void LibraryRow::describe()
{
    const facts::Movie& movie = facts::mainMovie(*m_item);
    const facts::PictureSize size = facts::pictureSize(movie);
    const QFileInfo path(m_item->sourcePath()); // of which only the text is looked at
    const QString separator = QStringLiteral(", ");
    const facts::Stream* video = movie.first(facts::StreamKind::Video);

    m_texts[NameColumn] = inOneLine(m_item->name());
    m_texts[KindColumn] = ItemParts::kindName(m_item->kind);
    m_texts[DurationColumn] = facts::durationText(m_item->duration());
    m_texts[SizeColumn] = facts::sizeText(movie);
    m_texts[RateColumn] = video ? video->framerate : QString();
    m_texts[CodecsColumn] = facts::codecs(movie).join(separator);
    m_texts[LanguagesColumn] = facts::languages(movie).join(separator);
    m_texts[BytesColumn] = m_item->bytes > 0 ? facts::bytesText(m_item->bytes) : QString();
    m_texts[FolderColumn] = path.path();

    m_numbers[DurationColumn] = m_item->duration();
    m_numbers[SizeColumn] = double(size.width) * size.height;
    m_numbers[RateColumn] = rateOf(movie);
    m_numbers[BytesColumn] = double(m_item->bytes);
    m_nameKey = collator().sortKey(m_texts[NameColumn]);
    m_folderKey = folderKey(m_texts[FolderColumn]);
    for (const int column :
         {KindColumn, SizeColumn, RateColumn, CodecsColumn, LanguagesColumn, FolderColumn})
        m_texts[column] = shared(m_texts[column]);

    m_pictureFile = ItemParts::pictureFile({m_item, -1, -1});
    QStringList texts(path.fileName());
    std::copy(std::begin(m_texts), std::end(m_texts), std::back_inserter(texts));
    appendTexts(movie, texts);
    m_searched = folded(texts.join(QLatin1Char('\n')));
}

QStringList LibraryRow::searchedWords(const QString& text)
{
    return folded(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

bool LibraryRow::contains(const QStringList& words) const
{
    return std::all_of(words.begin(), words.end(),
                       [this](const QString& word) { return m_searched.contains(word); });
}

int LibraryRow::compare(const LibraryRow& other, Column column) const
{
    switch (column) {
    case NameColumn:
        if (nameRank >= 0 && other.nameRank >= 0)
            return nameRank - other.nameRank;
        return m_nameKey.compare(other.m_nameKey);
    case FolderColumn:
        return m_folderKey.compare(other.m_folderKey);
    case DurationColumn:
    case SizeColumn:
    case RateColumn:
    case BytesColumn:
        return compared(m_numbers[column], other.m_numbers[column]);
    default:
        if (m_texts[column].constData() == other.m_texts[column].constData())
            return 0; // kept once
        return QString::compare(m_texts[column], other.m_texts[column]);
    }
}
