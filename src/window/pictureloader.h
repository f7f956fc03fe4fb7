// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QObject>
#include <QtCore/QSize>
#include <QtCore/QStringList>
#include <QtGui/QImage>

#include <condition_variable>
#include <mutex>
#include <thread>

/// Reads pictures in a thread of its own, the one that was asked for last first.
class PictureLoader : public QObject
{
    Q_OBJECT

public:
    /// They are made to fit into `size`.
    explicit PictureLoader(QSize size);
    ~PictureLoader() override;

    /// Callable from any thread.
    void load(const QString& file);

Q_SIGNALS:
    /// On the loader's thread. Null when it cannot be read.
    void loaded(const QString& file, const QImage& image);
    /// `file` will not be loaded, since too many have been asked for later. On the thread that
    /// asks.
    void dropped(const QString& file);

private:
    void run();
    QString next();
    QImage read(const QString& file) const;

    const QSize m_size;
    std::mutex m_mutex;
    std::condition_variable m_isAsked;
    QStringList m_files;
    bool m_isEnding = false;
    std::thread m_thread; ///< begins when all else is there
};
