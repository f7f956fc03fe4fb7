// SPDX-License-Identifier: LGPL-2.1-or-later
#include "dvdprobing.h"

#include "cdvdinformation.h"
#include "cdvdtrack.h"
#include "cimportcontext.h"
#include "cimportreply_p.h"
#include "cimporttask.h"
#include "cimporttask_p.h"
#include "discsize.h"
#include "engineaccess.h"
#include "vspavbased/idvdinfo.h"
#include "vspbased/veskqt.h"

#include <QtCore/QFileInfo>

namespace Vesk {

namespace {

/// Titles and chapters shorter than this are fillers that nobody wants to see listed.
const double shortestSeconds = 2.0;

AVBased::IDVDInfo* dvdExtension(AVBased::IAVImporter* importer)
{
    return static_cast<AVBased::IDVDInfo*>(importer->queryExtension("IDVDInfo"));
}

/// The engine names the disc's movies after the disc, with a blank, an underscore and the title's
/// number behind it: that of the first title is cut off.
void copyDiscName(AVBased::IAVImporter* importer, CDVDInformation* info)
{
    const AVBased::AVMovieInfo* first = importer->movieInfo(0);
    if (!first)
        return;
    QString name = fromAscii(first->name);
    if (name.endsWith(QLatin1String("_1")))
        name.chop(3);
    info->setDvdName(name);
}

void copyTracks(const AVBased::DVDTitleInfo& record, CDVDTitle* title)
{
    title->setTrackCount(
        int(qMin(record.audioCount, quint32(AVBased::DVDTitleInfo::MaxAudioTracks))));
    for (int i = 0; i < title->trackCount(); ++i) {
        const AVBased::DVDAudioInfo& audio = record.audio[i];
        CDVDTrack* track = title->track(i);
        track->setText1(fromAscii(audio.codec));
        track->setText2(fromAscii(audio.language));
        track->setText3(fromAscii(audio.kind));
        track->setNumber1(int(audio.streamId));
        track->setNumber2(int(audio.channels));
        track->setNumber3(int(audio.sampleRate));
        track->setNumber4(int(audio.codeExtension));
    }
}

void copySubtitles(const AVBased::DVDTitleInfo& record, CDVDTitle* title)
{
    title->setSubtitleCount(
        int(qMin(record.subpictureCount, quint32(AVBased::DVDTitleInfo::MaxSubpictures))));
    for (int i = 0; i < title->subtitleCount(); ++i) {
        title->subtitle(i)->setName(fromAscii(record.subpictures[i].name));
        title->subtitle(i)->setStreamId(record.subpictures[i].streamId);
    }
}

/// A chapter ends where the next one starts, the last one with the title. A span too short for a
/// chapter is left out, not added to its neighbour.
void copyChapters(const AVBased::DVDTitleInfo& record, CDVDTitle* title)
{
    if (record.chapterCount == 0 || !record.chapterStarts)
        return;
    const double titleEnd = record.chapterStarts[0] + record.duration;
    double start = record.chapterStarts[0];
    for (quint32 i = 0; i < record.chapterCount; ++i) {
        const bool isLast = i + 1 == record.chapterCount;
        const double end = isLast ? titleEnd : record.chapterStarts[i + 1];
        if (!(end - start < shortestSeconds)) {
            title->setChapterCount(title->chapterCount() + 1);
            CDVDChapter* chapter = title->chapter(title->chapterCount() - 1);
            chapter->setTimeStart(start);
            chapter->setTimeEnd(end);
            chapter->setTitle(title);
        }
        start = end;
    }
}

void copyMovie(AVBased::IAVImporter* importer, AVBased::IDVDInfo* dvd, quint32 movieIndex,
               CDVDTitle* title)
{
    const AVBased::AVMovieInfo* movie = importer->movieInfo(movieIndex);
    if (!movie)
        return;
    CMovieInfomation info(0);
    CImportReplyPrivate::fillMovieInfo(movie, &info);
    title->setMovieInfo(&info);
    if (dvd->isMainTitle(movie->id))
        title->setIsMainTitle(true);
}

/// `movieIndex` is the importer's movie for the first title of the set.
void copyTitles(AVBased::IAVImporter* importer, AVBased::IDVDInfo* dvd,
                const AVBased::DVDTitleSetInfo& set, quint32 movieIndex, CDVDInformation* info)
{
    for (quint32 i = 0; set.titles && i < set.titleCount; ++i) {
        const AVBased::DVDTitleInfo& record = set.titles[i];
        if (record.duration < shortestSeconds)
            continue;
        info->setTitleCount(info->titleCount() + 1);
        CDVDTitle* title = info->title(info->titleCount() - 1);
        copyMovie(importer, dvd, movieIndex + i, title);
        copyTracks(record, title);
        copySubtitles(record, title);
        copyChapters(record, title);
    }
}

} // namespace

bool copyDvdInfo(AVBased::IAVImporter* importer, CDVDInformation* info)
{
    if (!importer || !info)
        return false;
    AVBased::IDVDInfo* dvd = dvdExtension(importer);
    if (!dvd)
        return false;

    copyDiscName(importer, info);
    // The importer's movies run over all titles of all sets, skipped ones included.
    quint32 movieIndex = 0;
    const quint32 setCount = dvd->titleSetCount();
    for (quint32 i = 0; i < setCount; ++i) {
        const AVBased::DVDTitleSetInfo* set = dvd->titleSet(i);
        if (!set)
            continue;
        if (set->id != AVBased::DVDTitleSetInfo::UnusableId)
            copyTitles(importer, dvd, *set, movieIndex, info);
        movieIndex += set->titleCount;
    }
    return true;
}

CImportTask* probeDvd(const QString& path)
{
    const QByteArray utf8Path = path.toUtf8();
    ImporterPtr importer(engineManager()->createImporter(utf8Path.constData()));
    if (!importer)
        return 0;
    AVBased::IDVDInfo* dvd = dvdExtension(importer.get());
    if (!dvd)
        return 0;

    CDVDInformation info(0);
    info.setUrl(path);
    // Whatever the host's switch says, a scrambled disc is imported and marked: the host sees why
    // it has no pictures.
    if (dvd->isDiscScrambled(utf8Path.constData())) {
        CImportContext::instance()->dvdSupportScrambled();
        info.setIsScrambled(true);
    }
    CImportReplyPrivate::fillDvdInfo(importer.get(), &info);

    std::unique_ptr<CImportTask> task(new CImportTask(0));
    CImportTaskPrivate* taskPrivate = CImportTaskPrivate::getImportTaskPrivate(task.get());
    taskPrivate->dvdInfo = info;
    taskPrivate->setImporter(importer.release());
    taskPrivate->taskType = CImportTask::DvdTask;
    taskPrivate->url = path;
    taskPrivate->fileSize = discSize(path);
    return task.release();
}

} // namespace Vesk
