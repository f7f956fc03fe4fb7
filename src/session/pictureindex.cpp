// SPDX-License-Identifier: GPL-2.0-or-later
#include "pictureindex.h"

#include "facts/item.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

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

/// Whether an index that answers so is none, and is better begun anew. Others are busy or out of
/// space.
bool isDamage(int result)
{
    switch (result) {
    case SQLITE_ERROR: // other tables
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_CANTOPEN:
    case SQLITE_READONLY:
        return true;
    default:
        return false;
    }
}

QString indexFile(const QString& folder)
{
    return folder + QLatin1String(folderName) + QLatin1String(fileName);
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
    const QString path = indexFile(m_folder);
    QDir().mkpath(QFileInfo(path).path());
    const QFileInfo file(path);
    if (file.exists() && !file.isFile())
        QFile::remove(path);
    int result = open(QFile::encodeName(path));
    if (isDamage(result) && QFile::remove(path))
        result = open(QFile::encodeName(path));
    if (result != SQLITE_OK)
        beginAlone(result);
}

PictureIndex::~PictureIndex() = default;

int PictureIndex::open(const QByteArray& path)
{
    for (Statement* statement : {&m_find, &m_claim, &m_begin, &m_commit})
        statement->reset();
    sqlite3* opened = nullptr;
    int result = sqlite3_open_v2(path.constData(), &opened,
                                 SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    m_database.reset(opened);
    if (result != SQLITE_OK)
        return result;
    sqlite3_busy_timeout(opened, mostWaitMs);
    result = sqlite3_exec(opened, setUp, nullptr, nullptr, nullptr);
    const auto prepare = [&result, opened](Statement& statement, const char* sql) {
        sqlite3_stmt* prepared = nullptr;
        if (result == SQLITE_OK)
            result = sqlite3_prepare_v2(opened, sql, -1, &prepared, nullptr);
        statement.reset(prepared);
    };
    prepare(m_find, "SELECT source, written FROM pictures WHERE name = ?1");
    prepare(m_claim, "INSERT OR REPLACE INTO pictures VALUES (?1, ?2, ?3)");
    prepare(m_begin, "BEGIN IMMEDIATE");
    prepare(m_commit, "COMMIT");
    return result;
}

void PictureIndex::beginAlone(int result)
{
    if (isDamage(result))
        QFile::remove(indexFile(m_folder)); // the next process begins anew
    m_isShared = false;
    open(":memory:");
}

QByteArray PictureIndex::nameOf(const QString& picture) const
{
    return QFile::encodeName(QDir(m_folder).relativeFilePath(picture));
}

PictureIndex::Entry PictureIndex::find(const QString& picture)
{
    Entry entry;
    sqlite3_stmt* statement = m_find.get();
    bind(statement, 1, nameOf(picture));
    const int result = sqlite3_step(statement);
    if (result == SQLITE_ROW) {
        const auto* source = static_cast<const char*>(sqlite3_column_blob(statement, 0));
        entry.source = QByteArray(source, sqlite3_column_bytes(statement, 0));
        entry.written = sqlite3_column_int64(statement, 1);
    }
    sqlite3_reset(statement);
    if (result != SQLITE_ROW && result != SQLITE_DONE)
        beginAlone(result);
    return entry;
}

/// Of what gives nothing back.
void PictureIndex::step(const Statement& statement)
{
    const int result = sqlite3_step(statement.get());
    sqlite3_reset(statement.get());
    if (result != SQLITE_DONE)
        beginAlone(result);
}

void PictureIndex::claim(const std::vector<Written>& pictures, const QByteArray& source)
{
    const bool areMany = pictures.size() > 1;
    if (areMany)
        step(m_begin);
    for (const Written& picture : pictures) {
        bind(m_claim.get(), 1, nameOf(picture.first));
        bind(m_claim.get(), 2, source);
        sqlite3_bind_int64(m_claim.get(), 3, picture.second);
        step(m_claim);
    }
    if (areMany && !sqlite3_get_autocommit(m_database.get()))
        step(m_commit);
}

PictureIndex::Verdict PictureIndex::check(const facts::Item& item, FileTime since)
{
    const bool wasShared = m_isShared;
    const QByteArray source = identityOf(item);
    Verdict verdict = Own;
    std::vector<Written> claimed;
    for (const QString& picture : item.pictureFiles()) {
        const FileTime written = fileTime(picture);
        if (written == 0) { // none could be taken
            m_untaken.insert(picture, source);
            continue;
        }
        const Entry entry = find(picture);
        // One that was deleted and taken anew is not what the entry says.
        const bool isKnown = !entry.source.isEmpty() && entry.written == written;
        const bool isShownAlready = m_untaken.value(picture, source) != source;
        if (isKnown ? entry.source != source : isShownAlready)
            verdict = Anothers;
        else if (!isKnown && written >= since)
            claimed.emplace_back(picture, written);
        else if (!isKnown)
            verdict = std::max(verdict, Unknown);
    }
    if (verdict == Own)
        claim(claimed, source);
    if (wasShared && !m_isShared)
        return Anothers; // perhaps
    if (verdict != Own)
        removeUnknown(item);
    return verdict;
}

QString PictureIndex::clockFile(const QString& folder)
{
    return folder + QLatin1String(folderName) + QStringLiteral("/clock");
}

QString PictureIndex::folderOf(const QString& path) const
{
    const QByteArray name = QFile::encodeName(QDir::cleanPath(path));
    const QByteArray code = QCryptographicHash::hash(name, QCryptographicHash::Sha1).toHex();
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
    QDirIterator pictures(folderOf(item.sourcePath()), {QStringLiteral("*.jpg")}, QDir::Files,
                          QDirIterator::Subdirectories);
    while (pictures.hasNext()) {
        const QString picture = pictures.next();
        const Entry entry = find(picture);
        if (entry.source != source || entry.written != fileTime(picture))
            QFile::remove(picture);
    }
}
