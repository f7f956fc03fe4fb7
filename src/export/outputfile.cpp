// SPDX-License-Identifier: GPL-2.0-or-later
#include "outputfile.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>
#include <QtCore/QTemporaryFile>

#include <cstdio>
#include <filesystem>

bool OutputFile::open(const QString& name, Mode mode, QString& error)
{
    m_name = name == QLatin1String("-") ? QStringLiteral("the output") : name;
    const QFileInfo target(name);
    const bool isSpecial = target.exists() && !target.isFile();
    bool isOpen = false;
    if (name == QLatin1String("-")) {
        auto file = std::make_unique<QFile>();
        isOpen = file->open(stdout, QIODevice::WriteOnly);
        m_file = std::move(file);
    } else if (mode == Growing || isSpecial) {
        m_file = std::make_unique<QFile>(name);
        isOpen = m_file->open(QIODevice::WriteOnly);
    } else {
        auto file = std::make_unique<QSaveFile>(name);
        file->setDirectWriteFallback(true); // into a file whose folder takes no others
        isOpen = file->open(QIODevice::WriteOnly);
        m_file = std::move(file);
    }
    if (!isOpen)
        error = QStringLiteral("cannot write %1: %2").arg(m_name, m_file->errorString());
    return isOpen;
}

bool OutputFile::write(const QByteArray& text)
{
    m_hasFailed = m_hasFailed || m_file->write(text) != text.size() || !m_file->flush();
    return !m_hasFailed;
}

bool OutputFile::commit(QString& error)
{
    auto* saved = qobject_cast<QSaveFile*>(m_file.get());
    const bool flushed = m_file->flush() && m_file->error() == QFileDevice::NoError;
    if (flushed && !m_hasFailed && (!saved || saved->commit()))
        return true;
    error = QStringLiteral("cannot write %1: %2").arg(m_name, m_file->errorString());
    return false;
}

QString reasonAgainstWriting(const QString& folder)
{
    std::error_code error;
    std::filesystem::create_directories(QFile::encodeName(folder).toStdString(), error);
    if (error)
        return QString::fromLocal8Bit(error.message().c_str());
    QTemporaryFile file(folder + QStringLiteral("/.vspimport-XXXXXX"));
    return file.open() ? QString() : file.errorString();
}
