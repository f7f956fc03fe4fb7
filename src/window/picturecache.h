// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QCache>
#include <QtCore/QObject>
#include <QtCore/QSet>
#include <QtCore/QSize>
#include <QtGui/QPixmap>

#include <memory>

class PictureLoader;

/// Pictures that views show, as many as take a given memory. What is asked for and not there is
/// loaded in a thread of its own, what was asked for last first: it is what is in sight.
class PictureCache : public QObject
{
    Q_OBJECT

public:
    /// Pictures are made to fit into `size`, in pixels of the screen, of which each of the
    /// window's has `ratio` a side.
    PictureCache(QSize size, qreal ratio, int megabytes, QObject* parent = nullptr);
    ~PictureCache() override;

    /// Null while the picture in `file` is not there.
    QPixmap picture(const QString& file);
    /// Whether loaded() will tell of it.
    bool isAwaited(const QString& file) const { return m_awaited.contains(file); }
    /// `file` has been written since, or may have been.
    void forget(const QString& file);

Q_SIGNALS:
    /// The picture is there, or cannot be read, or is to be asked for once more if it is still in
    /// sight.
    void loaded(const QString& file);

private Q_SLOTS:
    void onLoaded(const QString& file, const QImage& image);
    /// Too many are asked for at once.
    void onDropped(const QString& file);

private:
    const qreal m_ratio;
    QCache<QString, QPixmap> m_pictures;
    QSet<QString> m_awaited;
    QSet<QString> m_outdated; ///< of those that are awaited: written since they were asked for
    std::unique_ptr<PictureLoader> m_loader;
};
