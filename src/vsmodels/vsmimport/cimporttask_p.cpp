// SPDX-License-Identifier: LGPL-2.1-or-later
#include "cimporttask_p.h"

#include "bdtimeline.h"
#include "cbdfileclip.h"
#include "cimportcontext.h"
#include "engineaccess.h"
#include "engineposition.h"
#include "guard.h"
#include "imagestore.h"
#include "vspavbased/iavpicture.h"
#include "vspavbased/iimageconverter.h"
#include "vspbased/cbasicutils.h"
#include "vspbased/veskqt.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryFile>

namespace Vesk {

namespace {

/// Where a source is read for a picture: the fourth frame, since the first ones after a seek may be
/// damaged.
const int framesToRead = 4;
const int mostReads = 100;

/// The name of a media file's snapshot: a changed file gets a new one.
QString videoImageName(const QString& url)
{
    const QFileInfo file(url);
    return imageFileName(QString(), file.baseName(),
                         QLatin1Char('-') + QString::number(toTime_t(file.lastModified()), 10));
}

/// A disc's folder of pictures. Without a disc name it is called after the source; a separator at
/// the end of its path would leave nothing of that.
QString dvdFolderName(const CDVDInformation& info)
{
    if (!info.dvdName().isEmpty())
        return imageFolderName(info.dvdName());
    return imageFolderName(
        QFileInfo(CBasicUtils::excludePathSeparator(info.url(), true)).baseName());
}

QString bdFolderName(const CBDInformation& info)
{
    if (!info.bdName().isEmpty())
        return imageFolderName(info.bdName());
    return imageFolderName(
        QFileInfo(CBasicUtils::excludePathSeparator(info.url(), true)).completeBaseName());
}

double middleOf(const CDVDChapter& chapter)
{
    return chapter.timeStart() + chapter.duration() * 0.5;
}

/// A file name in the temporary folder that is nobody else's as long as the object lives.
class TimelineFileName
{
public:
    TimelineFileName()
        : m_isValid(m_file.open())
    {}

    bool isValid() const { return m_isValid; }
    QString path() const
    {
        return QDir::toNativeSeparators(m_file.fileName() + QLatin1String(".seix"));
    }

private:
    QTemporaryFile m_file;
    bool m_isValid;
};

} // namespace

CImportTaskPrivate::CImportTaskPrivate()
    : importer(0)
    , bdLoader(0)
    , taskType(CImportTask::VideoTask)
    , fileSize(0)
{}

CImportTaskPrivate::~CImportTaskPrivate()
{
    VESK_GUARDED_CALL(freeContext());
}

CImportTaskPrivate* CImportTaskPrivate::getImportTaskPrivate(CImportTask* task)
{
    return task ? task->d_func() : 0;
}

void CImportTaskPrivate::setImporter(AVBased::IAVImporter* newImporter)
{
    importer = newImporter;
    importerName = fromAscii(importer->descriptor()->name);
}

void CImportTaskPrivate::setBdLoader(AVBased::IBDLoader* loader)
{
    bdLoader = loader;
}

bool CImportTaskPrivate::createContext()
{
    if (!importer && taskType != CImportTask::BdTask)
        importer = engineManager()->createImporter(url.toUtf8().constData());
    return importer != 0;
}

/// Each object is let go of before it is ended, so that one that throws is not ended twice.
void CImportTaskPrivate::freeContext()
{
    const BdLoaderPtr loader(bdLoader);
    bdLoader = 0;
    const ImporterPtr current(importer);
    importer = 0;
    if (current)
        current->close();
}

AVBased::IAVSource* CImportTaskPrivate::createSource(int videoStreamId, int audioStreamId)
{
    if (!createContext())
        return 0;
    if (taskType != CImportTask::VideoTask && taskType != CImportTask::AudioTask)
        return 0;
    return importer->openSource(movieInfo.movieId(), videoStreamId, audioStreamId);
}

void CImportTaskPrivate::snap()
{
    switch (taskType) {
    case CImportTask::VideoTask: {
        const QString path = getImageUrl(videoImageName(url));
        if (!isWholeImageFile(path))
            snapVideo();
        movieInfo.setImageUrl(imageUrlOf(path));
        break;
    }
    case CImportTask::DvdTask:
        snapDVD();
        break;
    case CImportTask::BdTask:
        snapBD();
        break;
    case CImportTask::AudioTask:
        break;
    }
    freeContext();
}

void CImportTaskPrivate::snapVideo()
{
    int audioId;
    int videoId;
    if (!movieInfo.findFirstStreamID(audioId, videoId) || videoId == -1 || !importer)
        return;
    SourcePtr source(importer->openSource(movieInfo.movieId(), videoId, audioId));
    if (!source)
        return;
    source->seek(enginePosition(movieInfo.duration() * 1000.0 / 100.0));
    QImage image = snapFrame(source.get());
    saveImage(image, videoImageName(url));
}

void CImportTaskPrivate::snapDVD()
{
    if (!importer)
        return;
    const QString folder = dvdFolderName(dvdInfo);
    for (int i = 0; i < dvdInfo.titleCount(); ++i) {
        CDVDTitle* title = dvdInfo.title(i);
        CMovieInfomation* movie = title->movieInfo();
        int audioId;
        int videoId;
        if (!movie->findFirstStreamID(audioId, videoId) || videoId == -1)
            continue;
        SourcePtr source(importer->openSource(movie->movieId(), videoId, audioId));
        if (!source)
            continue;
        for (int j = 0; j < title->chapterCount(); ++j) {
            const CDVDChapter* chapter = title->chapter(j);
            const QString numbers = QString::fromLatin1("-title-%1-chapter-%2")
                                        .arg(QString::number(i + 1), QString::number(j + 1));
            const QString name =
                folder + QLatin1Char('/') + imageFileName(QString(), movie->movieName(), numbers);
            const QString path = getImageUrl(name);
            if (!isWholeImageFile(path)) {
                source->seek(enginePosition(middleOf(*chapter) * 1000.0));
                QImage image = snapFrame(source.get());
                saveImage(image, name);
            }
            movie->setImageUrl(imageUrlOf(path));
        }
    }
}

void CImportTaskPrivate::snapBD()
{
    const TimelineFileName timelineFile;
    {
        BdTimeline timeline;
        if (!timeline.isValid() || !timelineFile.isValid())
            return;
        for (int i = 0; i < bdInfo.fileCount(); ++i) {
            if (!bdInfo.file(i)->empty())
                timeline.append(bdInfo.file(i));
        }
        timeline.save(timelineFile.path());
    }

    importer = engineManager()->createImporter(timelineFile.path().toUtf8().constData());
    SourcePtr source(importer ? importer->openSource(0, 0, 0) : 0);
    if (!source)
        return;
    const QString folder = bdFolderName(bdInfo);
    double offset = 0.0; // of the file on the timeline, seconds
    for (int i = 0; i < bdInfo.fileCount(); ++i) {
        CBDFile* file = bdInfo.file(i);
        if (file->empty())
            continue;
        snapClips(file, offset, folder, source.get());
        offset += file->movieInfo()->duration();
    }
}

/// Each clip a tenth into its length.
void CImportTaskPrivate::snapClips(CBDFile* file, double offset, const QString& folder,
                                   AVBased::IAVSource* source)
{
    const QString fileName = QFileInfo(file->url()).completeBaseName();
    const QList<CBDFileClip*>& clips = file->snapClips();
    for (int i = 0; i < clips.count(); ++i) {
        CBDFileClip* clip = clips.at(i);
        const QString number = QString::fromLatin1("clip-%1-file-").arg(i);
        const QString name = folder + QLatin1Char('/') + imageFileName(number, fileName, QString());
        const QString path = getImageUrl(name);
        if (!isWholeImageFile(path)) {
            const double time = offset + clip->timeStart() + clip->duration() * 0.1;
            source->seek(enginePosition(time * 1000.0));
            QImage image = snapFrame(source);
            saveImage(image, name);
        }
        clip->setImageUrl(imageUrlOf(path));
    }
}

QImage CImportTaskPrivate::snapFrame(AVBased::IAVSource* source)
{
    AVBased::IAVFrame* frame = 0;
    int delivered = 0;
    for (int reads = 0; reads < mostReads && delivered < framesToRead; ++reads) {
        std::int64_t positionMs;
        std::int32_t flags;
        frame = 0;
        if (!source->readFrame(&positionMs, &frame, &flags, 1))
            break;
        if (frame)
            ++delivered;
    }
    AVBased::IImageConverter* converter = frame ? CImportContext::instance()->imageConvert() : 0;
    AVBased::IAVPicture* picture = converter ? converter->convert(frame) : 0;
    if (!picture || picture->pixelFormat() != AVBased::PixelFormatArgb32)
        return QImage();

    std::int32_t width = 0;
    std::int32_t height = 0;
    picture->dimensions(&width, &height);
    std::int32_t stride;
    std::int32_t rows;
    std::int32_t bytes;
    const void* pixels = picture->plane(0, &stride, &rows, &bytes);
    if (!pixels)
        return QImage();
    const QImage image(static_cast<const uchar*>(pixels), width, height, QImage::Format_ARGB32);
    return picture->isTopDown() ? image : image.mirrored(false, true);
}

QString CImportTaskPrivate::getImageUrl(QString name)
{
    const QString dir =
        CBasicUtils::includePathSeparator(CImportContext::instance()->configDir(), true);
    return CBasicUtils::excludePathSeparator(dir + name + QLatin1String(".jpg"), true);
}

void CImportTaskPrivate::saveImage(QImage& image, QString name)
{
    const QString path = getImageUrl(name);
    if (!QDir().mkpath(QFileInfo(path).absolutePath())) {
        throw CVeskException(ErrorCodeUnknown,
                             QLatin1String("import config dir not exits :") + path,
                             QString::fromLocal8Bit(__FILE__), __LINE__);
    }
    // A picture that cannot be written is missing, and the next import takes it anew.
    if (!image.isNull())
        writeImageFile(image, path);
}

} // namespace Vesk
