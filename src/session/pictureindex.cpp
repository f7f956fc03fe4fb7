// SPDX-License-Identifier: GPL-2.0-or-later
#include "pictureindex.h"

#include "facts/item.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>

#include <algorithm>
#include <sqlite3.h>

namespace {

const char* const folderName = "/.index";
const char* const fileName = "/pictures.sqlite";

/// Another process has the index for less than that.
const int mostWaitMs = 5000;

const int folderNameDigits = 16;

/// No flushing to the disk: what a power failure costs is made again.
const char* const setUp = "PRAGMA journal_mode = TRUNCATE; PRAGMA synchronous = OFF;"
                          "CREATE TABLE IF NOT EXISTS pictures "
                          "(name BLOB PRIMARY KEY, source BLOB NOT NULL, written INTEGER NOT NULL)"
                          " WITHOUT ROWID;";

/// What changes a disc changes one of these.
FileTime newest(const QString& path)
{
    FileTime time = fileTime(path);
    for (const char* part : {"/VIDEO_TS", "/BDMV", "/BDMV/PLAYLIST", "/BDMV/STREAM", "/BDAV"})
        time = std::max(time, fileTime(path + QLatin1String(part)));
    return time;
}

/// What a source is known by: its path, size and time.
QByteArray identityOf(const facts::Item& item)
{
    const QString path = item.sourcePath();
    return QByteArray::number(item.bytes) + ' ' +
           QByteArray::number(qlonglong(item.isDisc() ? newest(path) : fileTime(path))) + ' ' +
           QFile::encodeName(path);
}

void bind(sqlite3_stmt* statement, int place, const QByteArray& bytes)
{
    sqlite3_bind_blob(statement, place, bytes.constData(), int(bytes.size()), SQLITE_TRANSIENT);
}

/// Of what gives nothing back. What fails is missing in the index, and made again.
void step(sqlite3_stmt* statement)
{
    sqlite3_step(statement);
    sqlite3_reset(statement);
}

} // namespace

void PictureIndex::Close::operator()(sqlite3* database) const
{
    sqlite3_close(database);
}

void PictureIndex::Close::operator()(sqlite3_stmt* statement) const
{
    sqlite3_finalize(statement);
}

PictureIndex::PictureIndex(const QString& folder)
    : m_folder(QDir::cleanPath(folder))
{
    QDir(m_folder).mkpath(m_folder + QLatin1String(folderName));
    const QByteArray path = QFile::encodeName(m_folder) + folderName + fileName;
    if (!open(path)) {
        QFile::remove(QFile::decodeName(path));
        if (!open(path))
            open(":memory:");
    }
    m_find = prepare("SELECT source, written FROM pictures WHERE name = ?1");
    m_claim = prepare("INSERT OR REPLACE INTO pictures VALUES (?1, ?2, ?3)");
    m_begin = prepare("BEGIN IMMEDIATE");
    m_commit = prepare("COMMIT");
}

PictureIndex::~PictureIndex() = default;

bool PictureIndex::open(const QByteArray& path)
{
    sqlite3* opened = nullptr;
    const int result = sqlite3_open_v2(path.constData(), &opened,
                                       SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    m_database.reset(opened);
    if (result != SQLITE_OK)
        return false;
    sqlite3_busy_timeout(opened, mostWaitMs);
    return sqlite3_exec(opened, setUp, nullptr, nullptr, nullptr) == SQLITE_OK;
}

PictureIndex::Statement PictureIndex::prepare(const char* sql) const
{
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(m_database.get(), sql, -1, &statement, nullptr);
    return Statement(statement);
}

QByteArray PictureIndex::nameOf(const QString& picture) const
{
    return QFile::encodeName(QDir(m_folder).relativeFilePath(picture));
}

PictureIndex::Entry PictureIndex::find(const QString& picture) const
{
    Entry entry;
    sqlite3_stmt* statement = m_find.get();
    bind(statement, 1, nameOf(picture));
    if (statement && sqlite3_step(statement) == SQLITE_ROW) {
        const auto* source = static_cast<const char*>(sqlite3_column_blob(statement, 0));
        entry.source = QByteArray(source, sqlite3_column_bytes(statement, 0));
        entry.written = sqlite3_column_int64(statement, 1);
    }
    sqlite3_reset(statement);
    return entry;
}

void PictureIndex::claim(const std::vector<Written>& pictures, const QByteArray& source)
{
    sqlite3_stmt* statement = m_claim.get();
    const bool areMany = pictures.size() > 1;
    if (areMany)
        step(m_begin.get());
    for (const Written& picture : pictures) {
        bind(statement, 1, nameOf(picture.first));
        bind(statement, 2, source);
        sqlite3_bind_int64(statement, 3, picture.second);
        step(statement);
    }
    if (areMany)
        step(m_commit.get());
}

PictureIndex::Verdict PictureIndex::check(const facts::Item& item, FileTime since)
{
    const QByteArray source = identityOf(item);
    Verdict verdict = Own;
    std::vector<Written> claimed;
    for (const QString& picture : item.pictureFiles()) {
        const FileTime written = fileTime(picture);
        if (written == 0)
            continue; // none could be taken
        const Entry entry = find(picture);
        // One that was deleted and taken anew is not what the entry says.
        const bool isKnown = !entry.source.isEmpty() && entry.written == written;
        if (isKnown && entry.source != source)
            verdict = Anothers;
        else if (!isKnown && written >= since)
            claimed.emplace_back(picture, written);
        else if (!isKnown)
            verdict = std::max(verdict, Unknown);
    }
    if (verdict == Own)
        claim(claimed, source);
    return verdict;
}

QString PictureIndex::clockFile(const QString& folder)
{
    return folder + QLatin1String(folderName) + QStringLiteral("/clock");
}

QString PictureIndex::folderOf(const facts::Item& item) const
{
    const QByteArray path = QFile::encodeName(item.sourcePath());
    const QByteArray code = QCryptographicHash::hash(path, QCryptographicHash::Sha1).toHex();
    return m_folder + QLatin1Char('/') + QString::fromLatin1(code.left(folderNameDigits));
}

void PictureIndex::removeUnknown(const facts::Item& item)
{
    for (const QString& picture : item.pictureFiles()) {
        const Entry entry = find(picture);
        if (entry.source.isEmpty() || entry.written != fileTime(picture))
            QFile::remove(picture);
    }
}

void PictureIndex::removeOutdated(const facts::Item& item)
{
    const QByteArray source = identityOf(item);
    QDirIterator pictures(folderOf(item), {QStringLiteral("*.jpg")}, QDir::Files,
                          QDirIterator::Subdirectories);
    while (pictures.hasNext()) {
        const QString picture = pictures.next();
        const Entry entry = find(picture);
        if (entry.source != source || entry.written != fileTime(picture))
            QFile::remove(picture);
    }
}
