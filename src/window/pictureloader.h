// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QMutex>
#include <QtCore/QSize>
#include <QtCore/QStringList>
#include <QtCore/QThread>
#include <QtCore/QWaitCondition>
#include <QtGui/QImage>

/// The thread that reads pictures, the one that was asked for last first.
class PictureLoader : public QThread
{
    Q_OBJECT

public:
    /// They are made to fit into `size`.
    explicit PictureLoader(QSize size);
    ~PictureLoader() override;

    /// Callable from any thread.
    void load(const QString& file);

Q_SIGNALS:
    /// On this thread. Null when it cannot be read.
    void loaded(const QString& file, const QImage& image);
    /// `file` will not be loaded, since too many have been asked for later.
    void dropped(const QString& file);

protected:
    void run() override;

private:
    QString next();
    QImage read(const QString& file) const;

    const QSize m_size;
    QMutex m_mutex;
    QWaitCondition m_isAsked;
    QStringList m_files;
    bool m_isEnding = false;
};
