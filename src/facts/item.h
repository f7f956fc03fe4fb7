// SPDX-License-Identifier: GPL-2.0-or-later
//
// What an import found, as plain values: what every view of it shows (JSON, summary, page).
//
//   Item      one source: a media file with its movie, or a disc
//   Movie     streams and tags of a media file, a DVD title or a Blu-ray stream file
//   Dvd       titles with their chapters
//   Bluray    stream files with their clips, and titles that play them
//
// readItem() makes an Item from a task, on the import's thread, while it is safe to read that one;
// from then on it belongs to whoever holds it, on any thread. Times are in seconds; what is unknown
// is as the module says it (a duration of 0, an empty text).
#pragma once

#include <QtCore/QString>

#include <utility>
#include <vector>

namespace facts {

enum class StreamKind
{
    Unknown,
    Video,
    Audio,
    Subtitle
};

struct Stream
{
    StreamKind kind = StreamKind::Unknown;
    QString name;
    int id = -1;
    QString language;
    QString codec;
    double duration = 0.0;
    int bitrate = 0;
    QString fourcc;
    int width = 0; ///< pixels, as coded
    int height = 0;
    QString framerate;
    quint64 rawFramerate = 0;
    QString aspectRatio; ///< as shown
    quint64 rawAspectRatio = 0;
    int channels = 0;
    quint64 channelLayout = 0;
    int samplerate = 0;
    bool checked = false;
};

struct Picture
{
    QString url;  ///< as the module has it; empty where none was to be taken
    QString file; ///< the path in it; the file may be missing
};

struct Movie
{
    QString name;
    QString fileName;
    QString format;
    int id = -1;
    double duration = 0.0;
    Picture picture;
    std::vector<Stream> streams;
    std::vector<std::pair<QString, QString>> tags;

    /// The first stream of that kind, null without one.
    const Stream* first(StreamKind kind) const;
};

struct DvdChapter
{
    double start = 0.0;
    double end = 0.0;
    double duration = 0.0;
    QString pictureFile;
};

struct DvdSubtitle
{
    QString language;
    unsigned int streamId = 0;
};

struct DvdTitle
{
    bool isMain = false;
    int angles = 0;
    double duration = 0.0;
    int trackCount = 0;
    Movie movie;
    std::vector<DvdSubtitle> subtitles;
    std::vector<DvdChapter> chapters;
};

struct Dvd
{
    QString name;
    QString path;
    bool isScrambled = false;
    std::vector<DvdTitle> titles;

    /// The one that is marked, else the longest; null without titles.
    const DvdTitle* mainTitle() const;
};

/// A clip by its places: that of its file on the disc, and its own in the file.
struct ClipPlace
{
    int file = 0;
    int clip = 0;
};

struct BlurayFile
{
    QString path;
    Movie movie;
    std::vector<Picture> clips;
    std::vector<int> picturedClips; ///< places in `clips` of those that get a picture
};

struct BlurayChapter
{
    double start = 0.0;
    double duration = 0.0;
    std::vector<ClipPlace> clips;
};

struct BlurayTitle
{
    int id = -1;
    double duration = 0.0;
    std::vector<ClipPlace> clips;
    std::vector<BlurayChapter> chapters;
};

struct Bluray
{
    QString name;
    QString path;
    std::vector<BlurayFile> files;
    std::vector<BlurayTitle> titles;

    /// The longest; null without titles.
    const BlurayTitle* mainTitle() const;
    /// The movie of the first file that `title` plays; null when it plays none.
    const Movie* movieOf(const BlurayTitle& title) const;
    /// The path of the clip's picture; empty where it has none, or the disc no such clip.
    QString pictureFile(ClipPlace place) const;
    /// Of the clip that the chapter begins in: the last of its clips that has one.
    QString pictureFile(const BlurayChapter& chapter) const;
};

enum class ItemKind
{
    Video,
    Audio,
    Bluray,
    Dvd
};

struct Item
{
    ItemKind kind = ItemKind::Video;
    QString path;     ///< of the source, as the module has it: a DVD's ends with a separator
    QString sizeText; ///< for people
    qint64 bytes = 0; ///< of the file, or of all files of the disc
    Movie movie;      ///< of a media file
    Dvd dvd;
    Bluray bluray;

    /// The path without what the module puts behind it.
    QString sourcePath() const;
    bool isDisc() const { return kind == ItemKind::Bluray || kind == ItemKind::Dvd; }
    /// What a person calls it by: the disc's name, or the name of the file or folder.
    QString name() const;
    /// Of the movie, or of the disc's main (or else longest) title.
    double duration() const;

    /// Files of all pictures that were to be taken, each once, whether or not they are there.
    std::vector<QString> pictureFiles() const;
    /// How many pictures are to be taken of it.
    int pictureCount() const;
    /// Leaves the item without pictures.
    void dropPictures();
};

} // namespace facts
