// SPDX-License-Identifier: GPL-2.0-or-later
#include "picturecache.h"

#include "pictureloader.h"

#include <QtGui/QImage>

namespace {

int kilobytesOf(const QPixmap& picture)
{
    return 1 + picture.width() * picture.height() / 256; // of 4 bytes a pixel
}

} // namespace

PictureCache::PictureCache(QSize size, qreal ratio, int megabytes, QObject* parent)
    : QObject(parent)
    , m_ratio(ratio)
    , m_pictures(megabytes * 1024)
    , m_loader(std::make_unique<PictureLoader>(size * ratio))
{
    connect(m_loader.get(), &PictureLoader::loaded, this, &PictureCache::onLoaded);
    // Not from within picture(), which views call while they paint.
    connect(m_loader.get(), &PictureLoader::dropped, this, &PictureCache::onDropped,
            Qt::QueuedConnection);
}

PictureCache::~PictureCache() = default;

QPixmap PictureCache::picture(const QString& file)
{
    if (const QPixmap* known = m_pictures.object(file))
        return *known;
    if (!m_awaited.contains(file)) {
        m_awaited.insert(file);
        m_loader->load(file);
    }
    return QPixmap();
}

void PictureCache::forget(const QString& file)
{
    m_pictures.remove(file);
    if (m_awaited.contains(file))
        m_outdated.insert(file);
}

/// One that cannot be read is kept too: it will not be there the next time either.
void PictureCache::onLoaded(const QString& file, const QImage& image)
{
    m_awaited.remove(file);
    if (m_outdated.remove(file)) { // it is asked for again
        emit loaded(file);
        return;
    }
    auto picture = std::make_unique<QPixmap>(QPixmap::fromImage(image));
    picture->setDevicePixelRatio(m_ratio);
    const int cost = kilobytesOf(*picture);
    m_pictures.insert(file, picture.release(), cost);
    emit loaded(file);
}

void PictureCache::onDropped(const QString& file)
{
    m_awaited.remove(file);
    m_outdated.remove(file);
    emit loaded(file);
}
