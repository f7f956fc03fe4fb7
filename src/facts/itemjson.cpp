// SPDX-License-Identifier: GPL-2.0-or-later
#include "itemjson.h"

#include <QtCore/QJsonArray>

namespace facts {

namespace {

template <typename Kind, std::size_t Count>
QString nameOf(Kind kind, const char* const (&names)[Count])
{
    return QLatin1String(names[std::size_t(kind)]);
}

const char* const streamTypes[] = {"StreamUnknown", "StreamVideo", "StreamAudio", "StreamSubtitle"};
const char* const taskTypes[] = {"VideoTask", "AudioTask", "BdTask", "DvdTask"};

template <typename Values, typename Convert>
QJsonArray arrayOf(const Values& values, Convert convert)
{
    QJsonArray array;
    for (const auto& value : values)
        array.append(convert(value));
    return array;
}

QJsonObject streamToJson(const Stream& stream)
{
    return {{QStringLiteral("streamType"), nameOf(stream.kind, streamTypes)},
            {QStringLiteral("streamName"), stream.name},
            {QStringLiteral("streamId"), stream.id},
            {QStringLiteral("language"), stream.language},
            {QStringLiteral("codecName"), stream.codec},
            {QStringLiteral("duration"), stream.duration},
            {QStringLiteral("bitrate"), stream.bitrate},
            {QStringLiteral("fourcc"), stream.fourcc},
            {QStringLiteral("height"), stream.height},
            {QStringLiteral("width"), stream.width},
            {QStringLiteral("framerate"), stream.framerate},
            {QStringLiteral("rawFramerate"), QString::number(stream.rawFramerate)},
            {QStringLiteral("aspectRatio"), stream.aspectRatio},
            {QStringLiteral("rawAspectRatio"), QString::number(stream.rawAspectRatio)},
            {QStringLiteral("channels"), stream.channels},
            {QStringLiteral("channelLayout"), QString::number(stream.channelLayout)},
            {QStringLiteral("samplerate"), stream.samplerate},
            {QStringLiteral("checked"), stream.checked}};
}

QJsonObject tagToJson(const std::pair<QString, QString>& tag)
{
    return {{QStringLiteral("key"), tag.first}, {QStringLiteral("value"), tag.second}};
}

QJsonObject movieToJson(const Movie& movie)
{
    return {{QStringLiteral("movieName"), movie.name},
            {QStringLiteral("fileName"), movie.fileName},
            {QStringLiteral("movieFormat"), movie.format},
            {QStringLiteral("movieId"), movie.id},
            {QStringLiteral("duration"), movie.duration},
            {QStringLiteral("imageUrl"), movie.picture.url},
            {QStringLiteral("imageFile"), movie.picture.file},
            {QStringLiteral("streams"), arrayOf(movie.streams, streamToJson)},
            {QStringLiteral("metadata"), arrayOf(movie.tags, tagToJson)}};
}

QJsonObject subtitleToJson(const DvdSubtitle& subtitle)
{
    return {{QStringLiteral("name"), subtitle.language},
            {QStringLiteral("streamId"), double(subtitle.streamId)}};
}

QJsonObject dvdChapterToJson(const DvdChapter& chapter)
{
    return {{QStringLiteral("timeStart"), chapter.start},
            {QStringLiteral("timeEnd"), chapter.end},
            {QStringLiteral("duration"), chapter.duration},
            {QStringLiteral("imageFile"), chapter.pictureFile}};
}

QJsonObject dvdTitleToJson(const DvdTitle& title)
{
    return {{QStringLiteral("isMainTitle"), title.isMain},
            {QStringLiteral("angles"), title.angles},
            {QStringLiteral("duration"), title.duration},
            {QStringLiteral("movieInfo"), movieToJson(title.movie)},
            {QStringLiteral("trackCount"), title.trackCount},
            {QStringLiteral("subtitles"), arrayOf(title.subtitles, subtitleToJson)},
            {QStringLiteral("chapters"), arrayOf(title.chapters, dvdChapterToJson)}};
}

QJsonObject dvdToJson(const Dvd& dvd)
{
    return {{QStringLiteral("dvdName"), dvd.name},
            {QStringLiteral("url"), dvd.path},
            {QStringLiteral("isScrambled"), dvd.isScrambled},
            {QStringLiteral("titles"), arrayOf(dvd.titles, dvdTitleToJson)}};
}

QJsonArray placeToJson(ClipPlace place)
{
    return {place.file, place.clip};
}

QJsonObject clipToJson(const Picture& clip)
{
    return {{QStringLiteral("imageUrl"), clip.url}, {QStringLiteral("imageFile"), clip.file}};
}

QJsonObject fileToJson(const BlurayFile& file)
{
    const auto place = [](int clip) { return clip; };
    return {{QStringLiteral("url"), file.path},
            {QStringLiteral("movieInfo"), movieToJson(file.movie)},
            {QStringLiteral("clips"), arrayOf(file.clips, clipToJson)},
            {QStringLiteral("snapClips"), arrayOf(file.picturedClips, place)}};
}

QJsonObject blurayChapterToJson(const BlurayChapter& chapter)
{
    return {{QStringLiteral("timeStamp"), chapter.start},
            {QStringLiteral("duration"), chapter.duration},
            {QStringLiteral("clips"), arrayOf(chapter.clips, placeToJson)}};
}

QJsonObject blurayTitleToJson(const BlurayTitle& title)
{
    return {{QStringLiteral("titleId"), title.id},
            {QStringLiteral("duration"), title.duration},
            {QStringLiteral("clips"), arrayOf(title.clips, placeToJson)},
            {QStringLiteral("chapters"), arrayOf(title.chapters, blurayChapterToJson)}};
}

QJsonObject blurayToJson(const Bluray& disc)
{
    return {{QStringLiteral("bdName"), disc.name},
            {QStringLiteral("url"), disc.path},
            {QStringLiteral("files"), arrayOf(disc.files, fileToJson)},
            {QStringLiteral("titles"), arrayOf(disc.titles, blurayTitleToJson)}};
}

} // namespace

QJsonObject toJson(const Item& item)
{
    QJsonObject json{{QStringLiteral("taskType"), nameOf(item.kind, taskTypes)},
                     {QStringLiteral("url"), item.path},
                     {QStringLiteral("size"), item.sizeText}};
    switch (item.kind) {
    case ItemKind::Video:
    case ItemKind::Audio:
        json.insert(QStringLiteral("movieInfo"), movieToJson(item.movie));
        break;
    case ItemKind::Dvd:
        json.insert(QStringLiteral("dvdInfo"), dvdToJson(item.dvd));
        break;
    case ItemKind::Bluray:
        json.insert(QStringLiteral("bdInfo"), blurayToJson(item.bluray));
        break;
    }
    return json;
}

} // namespace facts
