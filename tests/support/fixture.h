// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QString>
#include <QtGui/QImage>

/// Path of a file that the fixture scripts have made, as "media/one-frame.mp4".
inline QString fixturePath(const QString& name)
{
    return FIXTURES_DIR "/" + name;
}

/// The second that a picture tells by its brightness, when luma is 16 + `step` a second.
inline double secondOf(const QImage& picture, double step)
{
    const int grey = qGray(picture.pixel(picture.width() * 5 / 8, picture.height() * 5 / 8));
    return grey * 219.0 / 255.0 / step;
}
