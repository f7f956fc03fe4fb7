// SPDX-License-Identifier: LGPL-2.1-or-later
#include "replacingfile.h"

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QUuid>

#include <fcntl.h>

#ifdef Q_OS_WIN
#include <io.h>
#include <qt_windows.h>
#include <sys/stat.h>
#else
#include <cstdio>
#endif

namespace Vesk {

namespace {

const char namePattern[] = ".vspimport-%1.part";
const int randomDigits = 32;
const int leftoverAgeDays = 1;

QString temporaryName()
{
    QString random = QUuid::createUuid().toString();
    random.remove(QLatin1Char('-')).remove(QLatin1Char('{')).remove(QLatin1Char('}'));
    return QString::fromLatin1(namePattern).arg(random);
}

bool isTemporaryName(const QString& name)
{
    const QString random = name.section(QLatin1Char('-'), 1).section(QLatin1Char('.'), 0, 0);
    if (random.size() != randomDigits || name != QString::fromLatin1(namePattern).arg(random))
        return false;
    for (int i = 0; i < random.size(); ++i) {
        if (!QString::fromLatin1("0123456789abcdef").contains(random.at(i)))
            return false;
    }
    return true;
}

/// A handle of the new file, -1 when there is something at `path` or it cannot be made.
int createExclusively(const QString& path)
{
#ifdef Q_OS_WIN
    return _wopen(reinterpret_cast<const wchar_t*>(path.utf16()),
                  _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY | _O_NOINHERIT, _S_IREAD | _S_IWRITE);
#else
    const mode_t asTheProcessMakesFiles = 0666;
    return ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                  asTheProcessMakesFiles);
#endif
}

/// QFile::rename() does not replace a file.
bool renameOver(const QString& from, const QString& to)
{
#ifdef Q_OS_WIN
    return MoveFileExW(reinterpret_cast<const wchar_t*>(from.utf16()),
                       reinterpret_cast<const wchar_t*>(to.utf16()), MOVEFILE_REPLACE_EXISTING);
#else
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
#endif
}

} // namespace

ReplacingFile::ReplacingFile(const QString& folder)
{
    const QString path = QDir(folder).filePath(temporaryName());
    const int handle = createExclusively(path);
    if (handle == -1)
        return;
    m_path = path;
    m_file.open(handle, QIODevice::WriteOnly | QIODevice::Unbuffered, QFile::AutoCloseHandle);
}

ReplacingFile::~ReplacingFile()
{
    m_file.close();
    if (!m_path.isEmpty())
        QFile::remove(m_path);
}

bool ReplacingFile::write(const QByteArray& content)
{
    return m_file.isOpen() && m_file.write(content) == content.size();
}

bool ReplacingFile::moveTo(const QString& path)
{
    m_file.close();
    if (m_path.isEmpty() || m_file.error() != QFile::NoError || !renameOver(m_path, path))
        return false;
    m_path.clear();
    return true;
}

void ReplacingFile::removeLeftovers(const QString& folder)
{
    const QStringList pattern(QString::fromLatin1(namePattern).arg(QLatin1Char('*')));
    const QDir::Filters filters = QDir::Files | QDir::Hidden | QDir::NoSymLinks;
    const QFileInfoList files = QDir(folder).entryInfoList(pattern, filters, QDir::Unsorted);
    const QDateTime newest = QDateTime::currentDateTime().addDays(-leftoverAgeDays);
    for (int i = 0; i < files.count(); ++i) {
        if (isTemporaryName(files.at(i).fileName()) && files.at(i).lastModified() < newest)
            QFile::remove(files.at(i).filePath());
    }
}

} // namespace Vesk
