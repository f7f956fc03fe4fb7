// SPDX-License-Identifier: LGPL-2.1-or-later
#include "mediaprobing.h"

#include "cimportcontext.h"
#include "cimportreply_p.h"
#include "cimporttask.h"
#include "cimporttask_p.h"
#include "cmovieinfomation.h"
#include "engineaccess.h"
#include "vspavbased/imovieinfoext.h"
#include "vspavbased/movierecords.h"
#include "vspbased/cbasicutils.h"
#include "vspbased/veskqt.h"

#include <QtCore/QFileInfo>
#include <QtCore/QVariant>

namespace Vesk {

namespace {

bool isProtected(AVBased::IAVImporter* importer)
{
    AVBased::IMovieInfoExt* extension =
        static_cast<AVBased::IMovieInfoExt*>(importer->queryExtension("IMovieInfoExt"));
    return extension && QVariant(fromAscii(extension->value("is_drm_encryption"))).toBool();
}

CStreamInfomation::StreamType streamTypeOf(int kind)
{
    switch (kind) {
    case AVBased::StreamKindVideo:
        return CStreamInfomation::StreamVideo;
    case AVBased::StreamKindAudio:
        return CStreamInfomation::StreamAudio;
    case AVBased::StreamKindSubtitle:
        return CStreamInfomation::StreamSubtitle;
    default:
        return CStreamInfomation::StreamUnknown;
    }
}

/// Fields of other kinds of stream keep what they held.
void copyStreamInfo(const AVBased::AVStreamInfo& record, CStreamInfomation* stream)
{
    stream->setStreamType(streamTypeOf(record.kind));
    stream->setStreamName(fromAscii(record.name));
    stream->setStreamId(record.id);
    stream->setLanguage(fromAscii(record.language));
    stream->setCodecName(fromAscii(record.codecName));
    stream->setDuration(record.duration);
    stream->setBitrate(record.bitRate);
    if (record.kind == AVBased::StreamKindVideo) {
        stream->setFourcc(fromAscii(record.fourcc, sizeof(record.fourcc)));
        stream->setHeight(record.height);
        stream->setWidth(record.width);
        stream->setFramerate(CBasicUtils::framerateToString(record.frameRate));
        stream->setRawFramerate(record.frameRate);
        stream->setAspectRatio(CBasicUtils::aspectRatioToString(record.aspectRatio));
        stream->setRawAspectRatio(record.aspectRatio);
    } else if (record.kind == AVBased::StreamKindAudio) {
        stream->setChannels(record.channels);
        stream->setChannelLayout(record.channelLayout);
        stream->setSamplerate(record.sampleRate);
    }
}

/// Several movies are written one over the other: the last one's values stand.
void copyMovies(AVBased::IAVImporter* importer, const QFileInfo& file, CMovieInfomation* info)
{
    for (quint32 i = 0; i < importer->movieCount(); ++i) {
        CImportReplyPrivate::fillMovieInfo(importer->movieInfo(i), info);
        if (info->movieName().isEmpty())
            info->setMovieName(file.baseName());
    }
}

} // namespace

bool copyMovieInfo(const AVBased::AVMovieInfo* record, CMovieInfomation* info)
{
    if (!record || !info)
        return false;
    info->setMovieName(QString::fromUtf8(record->name));
    info->setMovieId(record->id);
    info->setMovieFormat(fromAscii(record->format));
    const int streamCount = record->streams ? int(record->streamCount) : 0;
    info->setStreamCount(streamCount);

    double longest = 0.0;
    for (int i = 0; i < streamCount; ++i) {
        const AVBased::AVStreamInfo& stream = record->streams[i];
        copyStreamInfo(stream, info->stream(i));
        if (stream.duration > longest)
            longest = stream.duration;
    }
    info->setDuration(longest);

    const int metaCount = record->meta ? int(record->metaCount) : 0;
    info->setMetadataCount(metaCount);
    for (int i = 0; i < metaCount; ++i) {
        info->metadata(i)->setKey(fromAscii(record->meta[i].key));
        info->metadata(i)->setValue(fromAscii(record->meta[i].value));
    }
    return true;
}

CImportTask* probeMediaFile(const QString& path)
{
    const QByteArray utf8Path = path.toUtf8();
    ImporterPtr importer(engineManager()->createImporter(utf8Path.constData()));
    if (!importer)
        return 0;
    if (isProtected(importer.get()) && !CImportContext::instance()->drmSupport())
        return 0;

    CMovieInfomation info(0);
    const QFileInfo file(path);
    copyMovies(importer.get(), file, &info);
    info.setFileName(file.fileName());
    int audioId;
    int videoId;
    info.findFirstStreamID(audioId, videoId);

    std::unique_ptr<CImportTask> task(new CImportTask(0));
    CImportTaskPrivate* taskPrivate = CImportTaskPrivate::getImportTaskPrivate(task.get());
    taskPrivate->taskType = videoId == -1 ? CImportTask::AudioTask : CImportTask::VideoTask;
    taskPrivate->movieInfo = info;
    taskPrivate->setImporter(importer.release());
    taskPrivate->url = path;
    taskPrivate->fileSize = file.size();
    return task.release();
}

} // namespace Vesk
