// SPDX-License-Identifier: LGPL-2.1-or-later
#include "cmovieinfomation.h"

#include "childlist.h"
#include "vspbased/cbasicutils.h"

#include <QtCore/QList>
#include <QtCore/QStringList>

namespace Vesk {

class CMovieInfomationPrivate : public QSharedData
{
public:
    ~CMovieInfomationPrivate()
    {
        clearChildList(metadata);
        clearChildList(streams);
    }

    QString movieName;
    QString fileName;
    int movieId = -1;
    QString movieFormat;
    QList<CStreamInfomation*> streams;
    QList<CMovieMetaData*> metadata;
    double duration = -1.0;
    QString imageUrl;
};

CMovieInfomation::CMovieInfomation(QObject* parent)
    : QObject(parent)
    , d(new CMovieInfomationPrivate)
{}

CMovieInfomation::CMovieInfomation(const CMovieInfomation& other)
    : QObject()
    , d(other.d)
{}

CMovieInfomation& CMovieInfomation::operator=(const CMovieInfomation& other)
{
    d = other.d;
    return *this;
}

CMovieInfomation::~CMovieInfomation() {}

QString CMovieInfomation::movieName() const
{
    return d->movieName;
}

void CMovieInfomation::setMovieName(const QString& name)
{
    d->movieName = name;
}

QString CMovieInfomation::fileName() const
{
    return d->fileName;
}

void CMovieInfomation::setFileName(const QString& name)
{
    d->fileName = name;
}

QString CMovieInfomation::movieFormat() const
{
    return d->movieFormat;
}

void CMovieInfomation::setMovieFormat(const QString& format)
{
    d->movieFormat = format;
}

int CMovieInfomation::movieId() const
{
    return d->movieId;
}

void CMovieInfomation::setMovieId(int id)
{
    d->movieId = id;
}

double CMovieInfomation::duration() const
{
    return d->duration;
}

void CMovieInfomation::setDuration(double seconds)
{
    if (qFuzzyCompare(d->duration, seconds))
        return;
    d->duration = seconds;
    Q_EMIT durationChanged();
}

QString CMovieInfomation::imageUrl() const
{
    return d->imageUrl;
}

void CMovieInfomation::setImageUrl(const QString& url)
{
    if (d->imageUrl == url)
        return;
    d->imageUrl = url;
    Q_EMIT imageUrlChanged();
}

int CMovieInfomation::streamCount() const
{
    return d->streams.count();
}

void CMovieInfomation::setStreamCount(int count)
{
    resizeChildList(d->streams, count);
}

int CMovieInfomation::metadataCount() const
{
    return d->metadata.count();
}

void CMovieInfomation::setMetadataCount(int count)
{
    resizeChildList(d->metadata, count);
}

CStreamInfomation* CMovieInfomation::stream(int index) const
{
    return childAt(d->streams, index);
}

CMovieMetaData* CMovieInfomation::metadata(int index) const
{
    return childAt(d->metadata, index);
}

bool CMovieInfomation::findFirstStreamID(int& audioId, int& videoId, int* subtitleId) const
{
    int unwanted;
    int& subtitle = subtitleId ? *subtitleId : unwanted;
    audioId = videoId = subtitle = -1;
    for (int i = 0; i < d->streams.count(); ++i) {
        const CStreamInfomation* stream = d->streams.at(i);
        if (audioId == -1 && stream->streamType() == CStreamInfomation::StreamAudio)
            audioId = stream->streamId();
        if (videoId == -1 && stream->streamType() == CStreamInfomation::StreamVideo)
            videoId = stream->streamId();
        if (subtitle == -1 && stream->streamType() == CStreamInfomation::StreamSubtitle)
            subtitle = stream->streamId();
    }
    return audioId != -1 || videoId != -1;
}

bool CMovieInfomation::findFirstStreamInfo(CStreamInfomation::StreamType type,
                                           CStreamInfomation** stream) const
{
    for (int i = 0; i < d->streams.count(); ++i) {
        if (d->streams.at(i)->streamType() == type) {
            *stream = d->streams.at(i);
            return true;
        }
    }
    return false;
}

void CMovieInfomation::operator<<(const QMap<QString, QVariant>& map)
{
    CBasicUtils::mapToObject(this, map);
}

void CMovieInfomation::operator>>(QMap<QString, QVariant>& map) const
{
    CBasicUtils::mapFromObject(this, map, QStringList());
}

} // namespace Vesk
