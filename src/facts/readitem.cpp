// SPDX-License-Identifier: GPL-2.0-or-later
#include "readitem.h"

#include "cbdchapter.h"
#include "cbdfile.h"
#include "cbdinformation.h"
#include "cbdtitle.h"
#include "cdvdchapter.h"
#include "cdvdinformation.h"
#include "cdvdsubtitle.h"
#include "cdvdtitle.h"
#include "cimporttask.h"
#include "cmovieinfomation.h"

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFileInfo>
#include <QtCore/QHash>
#include <QtCore/QVariant>

using namespace Vesk;

namespace facts {

namespace {

/// The path that `url`, of the module's making, has behind its prefix. The programs' folder of
/// pictures is an absolute path, which brings one of the slashes.
QString fileOf(const QString& url)
{
    const QString path = url.mid(int(qstrlen("file:///")));
    return path.isEmpty() || QDir::isAbsolutePath(path) ? path : QLatin1Char('/') + path;
}

Picture pictureOf(const QString& url)
{
    return {url, fileOf(url)};
}

StreamKind kindOf(CStreamInfomation::StreamType type)
{
    switch (type) {
    case CStreamInfomation::StreamVideo:
        return StreamKind::Video;
    case CStreamInfomation::StreamAudio:
        return StreamKind::Audio;
    case CStreamInfomation::StreamSubtitle:
        return StreamKind::Subtitle;
    case CStreamInfomation::StreamUnknown:
        break;
    }
    return StreamKind::Unknown;
}

Stream readStream(const CStreamInfomation* stream)
{
    Stream read;
    read.kind = kindOf(stream->streamType());
    read.name = stream->streamName();
    read.id = stream->streamId();
    read.language = stream->language();
    read.codec = stream->codecName();
    read.duration = stream->duration();
    read.bitrate = stream->bitrate();
    read.fourcc = stream->fourcc();
    read.width = stream->width();
    read.height = stream->height();
    read.framerate = stream->framerate();
    read.rawFramerate = stream->rawFramerate();
    read.aspectRatio = stream->aspectRatio();
    read.rawAspectRatio = stream->rawAspectRatio();
    read.channels = stream->channels();
    read.channelLayout = stream->channelLayout();
    read.samplerate = stream->samplerate();
    read.checked = stream->checked();
    return read;
}

Movie readMovie(const CMovieInfomation* movie)
{
    Movie read;
    read.name = movie->movieName();
    read.fileName = movie->fileName();
    read.format = movie->movieFormat();
    read.id = movie->movieId();
    read.duration = movie->duration();
    read.picture = pictureOf(movie->imageUrl());
    for (int i = 0; i < movie->streamCount(); ++i)
        read.streams.push_back(readStream(movie->stream(i)));
    for (int i = 0; i < movie->metadataCount(); ++i)
        read.tags.emplace_back(movie->metadata(i)->key(), movie->metadata(i)->value());
    return read;
}

/// A title's picture is that of its last chapter; the others' names differ in the number alone.
QString chapterPicture(const QString& lastPicture, int number, int count)
{
    const QString end = QStringLiteral("-chapter-%1.jpg");
    const QString lastEnd = end.arg(count);
    if (!lastPicture.endsWith(lastEnd))
        return QString();
    return lastPicture.chopped(lastEnd.length()) + end.arg(number);
}

DvdTitle readTitle(const CDVDTitle* title)
{
    DvdTitle read;
    read.isMain = title->isMainTitle();
    read.angles = title->angles();
    read.duration = title->duration();
    read.trackCount = title->trackCount();
    read.movie = readMovie(title->movieInfo());
    for (int i = 0; i < title->subtitleCount(); ++i)
        read.subtitles.push_back({title->subtitle(i)->name(), title->subtitle(i)->streamId()});
    const int count = title->chapterCount();
    for (int i = 0; i < count; ++i) {
        const CDVDChapter* chapter = title->chapter(i);
        read.chapters.push_back({chapter->timeStart(), chapter->timeEnd(), chapter->duration(),
                                 chapterPicture(read.movie.picture.file, i + 1, count)});
    }
    return read;
}

Dvd readDvd(const CDVDInformation* dvd)
{
    Dvd read;
    read.name = dvd->dvdName();
    read.path = dvd->url();
    read.isScrambled = dvd->isScrambled();
    for (int i = 0; i < dvd->titleCount(); ++i)
        read.titles.push_back(readTitle(dvd->title(i)));
    return read;
}

/// Reads a Blu-ray disc. Which file a clip is of, a host learns by looking for it.
class BlurayReader
{
public:
    explicit BlurayReader(const CBDInformation* disc)
        : m_disc(disc)
    {
        for (int i = 0; i < disc->fileCount(); ++i) {
            const QList<CBDFileClip*>& clips = disc->file(i)->clips();
            for (int j = 0; j < clips.size(); ++j)
                m_places.insert(clips.at(j), {i, j});
        }
    }

    Bluray read() const
    {
        Bluray disc;
        disc.name = m_disc->bdName();
        disc.path = m_disc->url();
        for (int i = 0; i < m_disc->fileCount(); ++i)
            disc.files.push_back(readFile(m_disc->file(i)));
        for (int i = 0; i < m_disc->titleCount(); ++i)
            disc.titles.push_back(readTitle(m_disc->title(i)));
        return disc;
    }

private:
    BlurayFile readFile(CBDFile* file) const
    {
        BlurayFile read;
        read.path = file->url();
        read.movie = readMovie(file->movieInfo());
        for (CBDFileClip* clip : file->clips())
            read.clips.push_back(
                pictureOf(CBDFile::clipObject(clip)->property("imageUrl").toString()));
        for (CBDFileClip* clip : file->snapClips())
            read.picturedClips.push_back(m_places.value(clip).clip);
        return read;
    }

    BlurayTitle readTitle(const CBDTitle* title) const
    {
        BlurayTitle read;
        read.id = title->titleId();
        read.duration = title->duration();
        read.clips = placesOf(title);
        for (int i = 0; i < title->chapterCount(); ++i) {
            const CBDChapter* chapter = title->chapter(i);
            read.chapters.push_back({chapter->timeStamp(), chapter->duration(), placesOf(chapter)});
        }
        return read;
    }

    template <typename Player>
    std::vector<ClipPlace> placesOf(const Player* player) const
    {
        std::vector<ClipPlace> places;
        places.reserve(std::size_t(player->clipCount()));
        for (int i = 0; i < player->clipCount(); ++i)
            places.push_back(m_places.value(player->clip(i)));
        return places;
    }

    const CBDInformation* m_disc;
    QHash<const CBDFileClip*, ClipPlace> m_places;
};

/// Of a disc's folder, what lies in it.
qint64 bytesOf(const QString& path)
{
    const QFileInfo info(path);
    if (!info.isDir())
        return info.size();
    qint64 bytes = 0;
    QDirIterator files(path, QDir::Files | QDir::Hidden | QDir::NoSymLinks,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        files.next();
        bytes += files.fileInfo().size();
    }
    return bytes;
}

} // namespace

/// Letters and digits up to the first dot, and not too many: of the rest the module replaces some,
/// and cuts.
QString pictureName(CImportTask* task)
{
    const int mostLetters = 60;
    QString name;
    if (task->taskType() == CImportTask::DvdTask)
        name = task->dvdInfo()->dvdName();
    else if (task->taskType() == CImportTask::BdTask)
        name = task->bdInfo()->bdName();
    if (name.isEmpty())
        name = QFileInfo(QDir::cleanPath(task->url())).fileName();
    while (name.startsWith(QLatin1Char('.')))
        name.remove(0, 1);
    QString letters;
    for (const QChar c : name.section(QLatin1Char('.'), 0, 0)) {
        if (c.isLetterOrNumber() && letters.length() < mostLetters)
            letters += c;
    }
    return letters;
}

Item readItem(CImportTask* task)
{
    Item item;
    item.path = task->url();
    item.sizeText = task->size();
    item.bytes = bytesOf(item.sourcePath());
    switch (task->taskType()) {
    case CImportTask::VideoTask:
        item.kind = ItemKind::Video;
        item.movie = readMovie(task->movieInfo());
        break;
    case CImportTask::AudioTask:
        item.kind = ItemKind::Audio;
        item.movie = readMovie(task->movieInfo());
        break;
    case CImportTask::DvdTask:
        item.kind = ItemKind::Dvd;
        item.dvd = readDvd(task->dvdInfo());
        break;
    case CImportTask::BdTask:
        item.kind = ItemKind::Bluray;
        item.bluray = BlurayReader(task->bdInfo()).read();
        break;
    }
    return item;
}

} // namespace facts
