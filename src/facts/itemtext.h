// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "item.h"

#include <QtCore/QStringList>

namespace facts {

/// Facts as people read them. What is unknown is an empty text.

/// "video", "audio", "Blu-ray", "DVD".
QString kindName(ItemKind kind);
/// "1:23:45", rounded to seconds.
QString durationText(double seconds);
QString bytesText(qint64 bytes);

/// Width and height as the picture is seen.
struct PictureSize
{
    int width = 0;
    int height = 0;
};

/// Of the first video stream: one that was turned on its side is coded lying.
PictureSize pictureSize(const Movie& movie);
/// The same as "1920x1080".
QString sizeText(const Movie& movie);

/// Each once, in the order of the streams.
QStringList codecs(const Movie& movie);
QStringList languages(const Movie& movie);

/// The movie that stands for the item: its own, or that of a disc's main (or else longest) title.
/// Lives as long as the item.
const Movie& mainMovie(const Item& item);

} // namespace facts
