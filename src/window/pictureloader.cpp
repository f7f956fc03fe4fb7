// SPDX-License-Identifier: GPL-2.0-or-later
#include "pictureloader.h"

#include <QtGui/QImageReader>

namespace {

/// As many as several screens hold.
const int mostWaiting = 500;

/// Nothing that an import has written is larger.
const QSize largestPicture(16384, 16384);

} // namespace

PictureLoader::PictureLoader(QSize size)
    : m_size(size)
    , m_thread([this] { run(); })
{}

PictureLoader::~PictureLoader()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isEnding = true;
        m_isAsked.notify_one();
    }
    m_thread.join();
}

void PictureLoader::load(const QString& file)
{
    QString given;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_files.append(file);
        if (m_files.size() > mostWaiting)
            given = m_files.takeFirst();
        m_isAsked.notify_one();
    }
    if (!given.isEmpty())
        emit dropped(given);
}

void PictureLoader::run()
{
    for (QString file = next(); !file.isEmpty(); file = next())
        emit loaded(file, read(file));
}

/// Empty when the thread is to end.
QString PictureLoader::next()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_isAsked.wait(lock, [this] { return m_isEnding || !m_files.isEmpty(); });
    return m_isEnding ? QString() : m_files.takeLast();
}

QImage PictureLoader::read(const QString& file) const
{
    QImageReader reader(file);
    QSize size = reader.size();
    if (!size.isValid() || size.width() > largestPicture.width() ||
        size.height() > largestPicture.height())
        return QImage();
    if (size.width() > m_size.width() || size.height() > m_size.height())
        reader.setScaledSize(size.scaled(m_size, Qt::KeepAspectRatio));
    return reader.read();
}
