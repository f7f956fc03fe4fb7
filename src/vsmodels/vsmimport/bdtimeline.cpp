// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bdtimeline.h"

#include "cbdfile.h"
#include "engineposition.h"
#include "vspavbased/isimpleedittimeline.h"

#include <QtCore/QByteArray>
#include <QtCore/QDir>

namespace Vesk {

namespace {

/// The timeline's own number for "no such stream".
int timelineStreamId(int id)
{
    return id == -1 ? -2 : id;
}

QString sourceUrl(CBDFile* file)
{
    const CMovieInfomation* movie = file->movieInfo();
    int audioId;
    int videoId;
    int subtitleId;
    movie->findFirstStreamID(audioId, videoId, &subtitleId);
    return QString::fromLatin1("%1?movieid=%2&vstreamid=%3&astreamid=%4&subtitleid=%5")
        .arg(QDir::toNativeSeparators(file->url()), QString::number(movie->movieId()),
             QString::number(timelineStreamId(videoId)), QString::number(timelineStreamId(audioId)),
             QString::number(timelineStreamId(subtitleId)));
}

} // namespace

BdTimeline::BdTimeline()
    : m_importer(engineManager()->createNamedImporter("SimpleEditImporter"))
    , m_timeline(0)
    , m_source()
    , m_format()
{
    if (!m_importer)
        return;
    m_timeline = static_cast<AVBased::ISimpleEditTimeLine*>(
        m_importer->queryExtension("ISimpleEditTimeLine"));
    if (m_timeline)
        m_timeline->reset();
}

void BdTimeline::append(CBDFile* file)
{
    const QByteArray url = sourceUrl(file).toUtf8();
    const int durationMs = enginePosition(file->movieInfo()->duration() * 1000.0);
    m_source.url = url.constData();
    m_source.inPointMs = 0;
    m_source.outPointMs = durationMs;
    setFormat(file->movieInfo());
    m_format.durationMs = durationMs;
    m_timeline->insertSource(-1, &m_source);
    m_timeline->selectItem(m_timeline->applyFormat(&m_format) - 1);
}

/// Frame rate and aspect ratio are the video's, whatever the audio stream's record holds there.
void BdTimeline::setFormat(CMovieInfomation* movie)
{
    CStreamInfomation* stream;
    if (movie->findFirstStreamInfo(CStreamInfomation::StreamVideo, &stream)) {
        m_format.width = stream->width();
        m_format.height = stream->height();
        m_format.frameRate = stream->rawFramerate();
        m_format.aspectRatio = stream->rawAspectRatio();
    }
    if (movie->findFirstStreamInfo(CStreamInfomation::StreamAudio, &stream)) {
        m_format.sampleRate = stream->samplerate();
        m_format.channels = stream->channels();
    }
}

void BdTimeline::save(const QString& path)
{
    m_timeline->saveToFile(path.toUtf8().constData());
}

} // namespace Vesk
