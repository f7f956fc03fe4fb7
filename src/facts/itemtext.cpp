// SPDX-License-Identifier: GPL-2.0-or-later
#include "itemtext.h"

#include "vspbased/cbasicutils.h"

#include <algorithm>
#include <cmath>

namespace facts {

namespace {

/// What `textOf` says of the movie's streams.
template <typename TextOf>
QStringList eachOnce(const Movie& movie, TextOf textOf)
{
    QStringList texts;
    for (const Stream& stream : movie.streams) {
        const QString text = textOf(stream);
        if (!text.isEmpty() && !texts.contains(text))
            texts.append(text);
    }
    return texts;
}

} // namespace

QString kindName(ItemKind kind)
{
    static const char* const names[] = {"video", "audio", "Blu-ray", "DVD"};
    return QLatin1String(names[int(kind)]);
}

QString durationText(double seconds)
{
    if (!(seconds > 0.0)) // or no number at all
        return QString();
    const qint64 whole = std::llround(std::min(seconds, 1e9));
    return QStringLiteral("%1:%2:%3")
        .arg(whole / 3600)
        .arg(whole / 60 % 60, 2, 10, QLatin1Char('0'))
        .arg(whole % 60, 2, 10, QLatin1Char('0'));
}

QString bytesText(qint64 bytes)
{
    return CBasicUtils::fileSizeToString(quint64(std::max<qint64>(bytes, 0)));
}

PictureSize pictureSize(const Movie& movie)
{
    const Stream* video = movie.first(StreamKind::Video);
    if (!video)
        return {};
    const QStringList ratio = video->aspectRatio.split(QLatin1Char(':'));
    const bool isShownUpright = ratio.value(0).toDouble() < ratio.value(1).toDouble();
    if (isShownUpright && video->width > video->height)
        return {video->height, video->width};
    return {video->width, video->height};
}

QString sizeText(const Movie& movie)
{
    if (!movie.first(StreamKind::Video))
        return QString();
    const PictureSize size = pictureSize(movie);
    return QStringLiteral("%1x%2").arg(size.width).arg(size.height);
}

QStringList codecs(const Movie& movie)
{
    return eachOnce(movie, [](const Stream& stream) {
        const bool counts = stream.kind == StreamKind::Video || stream.kind == StreamKind::Audio;
        return counts ? stream.codec : QString();
    });
}

QStringList languages(const Movie& movie)
{
    return eachOnce(movie, [](const Stream& stream) { return stream.language; });
}

const Movie& mainMovie(const Item& item)
{
    if (item.kind == ItemKind::Dvd) {
        const DvdTitle* title = item.dvd.mainTitle();
        return title ? title->movie : item.movie;
    }
    if (item.kind == ItemKind::Bluray) {
        const BlurayTitle* title = item.bluray.mainTitle();
        const Movie* movie = title ? item.bluray.movieOf(*title) : nullptr;
        return movie ? *movie : item.movie;
    }
    return item.movie;
}

} // namespace facts
