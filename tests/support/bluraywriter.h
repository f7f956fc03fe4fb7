// SPDX-License-Identifier: GPL-2.0-or-later
//
// Writes the navigation of Blu-ray discs: playlists, clip information, index and movie objects.
// Times are in units of 1/45000 s.
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>

namespace authoring {

constexpr quint32 second = 45000;

struct Sequence
{
    quint32 firstPacket;
    quint32 start;
    quint32 end;
};

struct Stream
{
    quint16 pid;
    quint8 coding;
    quint8 formatAndRate;
    QByteArray language; ///< three letters, where the coding has a language
    quint8 aspect = 3;   ///< where it has a picture
};

struct EntryPoint
{
    quint32 time; ///< of the picture, 1/90000 s; the table holds it in steps of 5.7 ms
    quint32 packet;
};

struct Clip
{
    QList<Sequence> sequences;
    QList<Stream> streams;
    QList<EntryPoint> entryPoints;
};

/// What playlists and menus of authored discs have: 720p at 25 frames, stereo AC-3 in English.
QList<Stream> usualStreams();

struct Item
{
    QByteArray clip;
    quint32 in;
    quint32 out;
    quint8 sequence = 0;
    QByteArray secondAngle = {}; ///< the clip that a second angle plays
    QList<Stream> streams = usualStreams();
};

struct Mark
{
    quint16 item;
    quint32 time;
    quint8 kind = 1; ///< 1 begins a chapter, 2 is for menus
};

QByteArray clipInformation(const Clip& clip);
QByteArray playlist(const QList<Item>& items, const QList<Mark>& marks);

/// The clip of a stream file that FFmpeg has made: one sequence, with the times and the entry
/// points that its packets have.
Clip scanStream(const QString& path);

/// A disc's folder, with everything but clips, streams and playlists.
class Disc
{
public:
    explicit Disc(const QString& root);

    QString root() const { return m_root; }
    QString path(const QString& name) const { return m_root + QLatin1Char('/') + name; }

    void write(const QString& name, const QByteArray& content) const;
    void addClip(const QString& name, const Clip& clip) const;
    void addPlaylist(const QString& name, const QList<Item>& items, const QList<Mark>& marks) const;

    /// Copies the stream file at `source` and describes it; what it was described as.
    Clip addStream(const QString& name, const QString& source) const;

    void setName(const QByteArray& name, const QString& language = QStringLiteral("eng")) const;

private:
    QString m_root;
};

} // namespace authoring
