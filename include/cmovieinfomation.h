// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "cmoviemetadata.h"
#include "cstreaminfomation.h"
#include "vspimportglobal.h"

#include <QtCore/QMap>
#include <QtCore/QObject>
#include <QtCore/QSharedData>
#include <QtCore/QString>
#include <QtCore/QVariant>

namespace Vesk {

class CMovieInfomationPrivate;

/// One probed item: a media file, a DVD title or a Blu-ray stream file, with its streams and tags.
///
/// Copies share one record and no write detaches it: what is set through one object is seen through
/// all of them, while signals come only from the object that was written to. The record owns the
/// streams and tags and goes with its last object. Objects that share a record are used from one
/// thread at a time.
class VSPIMPORT_EXPORT CMovieInfomation : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString movieName READ movieName WRITE setMovieName NOTIFY movieNameChanged)
    Q_PROPERTY(QString fileName READ fileName WRITE setFileName NOTIFY nullChanged)
    Q_PROPERTY(QString movieFormat READ movieFormat WRITE setMovieFormat NOTIFY movieFormatChanged)
    Q_PROPERTY(int movieId READ movieId WRITE setMovieId NOTIFY movieIdChanged)
    Q_PROPERTY(int streamCount READ streamCount WRITE setStreamCount NOTIFY streamCountChanged)
    Q_PROPERTY(
        int metadataCount READ metadataCount WRITE setMetadataCount NOTIFY metadataCountChanged)
    Q_PROPERTY(double duration READ duration WRITE setDuration NOTIFY durationChanged)
    Q_PROPERTY(QString imageUrl READ imageUrl WRITE setImageUrl NOTIFY imageUrlChanged)

public:
    /// With a record of its own, which is empty.
    CMovieInfomation(QObject* parent = 0);
    /// A new object without parent that shares the record of `other`.
    CMovieInfomation(const CMovieInfomation& other);
    /// Shares the record of `other` and lets go of this object's own.
    CMovieInfomation& operator=(const CMovieInfomation& other);
    virtual ~CMovieInfomation();

    /// Display name.
    QString movieName() const;
    void setMovieName(const QString& name);

    /// Name of the file without its folder; media files only.
    QString fileName() const;
    void setFileName(const QString& name);

    /// Short name of the container.
    QString movieFormat() const;
    void setMovieFormat(const QString& format);

    /// The engine's identifier; -1 means none.
    int movieId() const;
    void setMovieId(int id);

    /// Seconds: the longest stream, 0 when no stream's duration is known, -1 when never set. Emits
    /// durationChanged() when the new value is not fuzzily equal.
    double duration() const;
    void setDuration(double seconds);

    /// URL of the snapshot: "file:///" and its path below CImportContext::configDir() as it stands,
    /// the slash of an absolute path being the third. Nothing in it is written as codes ("%20"), so
    /// that a host takes the prefix off rather than have it decoded. The file may be missing when
    /// no picture could be made. Emits imageUrlChanged() when it changes.
    QString imageUrl() const;
    void setImageUrl(const QString& url);

    /// Streams of all kinds, in the file's order. Setting shrinks from the end, deleting what it
    /// removes, and grows by default objects; a negative count is 0.
    int streamCount() const;
    void setStreamCount(int count);
    /// Tags, in the file's order. Setting as with streams.
    int metadataCount() const;
    void setMetadataCount(int count);

    /// The stream at `index`, or null outside the list. Owned by the record. Through
    /// QMetaObject::invokeMethod() it answers to the return type as it is written here, with no
    /// namespace: `Q_RETURN_ARG(CStreamInfomation*, …)` under `using namespace Vesk`.
    Q_INVOKABLE CStreamInfomation* stream(int index) const;
    /// The tag at `index`, or null outside the list. Owned by the record.
    CMovieMetaData* metadata(int index) const;

    /// The ids of the first audio, video and subtitle stream, -1 where there is none. A stream
    /// whose own id is -1 does not count. `subtitleId` may be null. True when there is audio or
    /// video.
    bool findFirstStreamID(int& audioId, int& videoId, int* subtitleId = 0) const;

    /// The first stream of `type` in `*stream`, and true; false, with `*stream` untouched, when
    /// there is none.
    bool findFirstStreamInfo(CStreamInfomation::StreamType type, CStreamInfomation** stream) const;

    /// Sets the properties above from a map by their names. Streams and tags do not travel, but
    /// their counts do.
    void operator<<(const QMap<QString, QVariant>& map);
    /// Puts the properties above into a map by their names.
    void operator>>(QMap<QString, QVariant>& map) const;

Q_SIGNALS:
    void movieNameChanged();     ///< never emitted
    void movieFormatChanged();   ///< never emitted
    void movieIdChanged();       ///< never emitted
    void streamCountChanged();   ///< never emitted
    void metadataCountChanged(); ///< never emitted
    void imageUrlChanged();      ///< emitted by setImageUrl() with another URL
    void durationChanged();      ///< emitted by setDuration() with another duration
    void nullChanged();          ///< never emitted

private:
    QExplicitlySharedDataPointer<CMovieInfomationPrivate> d;
};

} // namespace Vesk
