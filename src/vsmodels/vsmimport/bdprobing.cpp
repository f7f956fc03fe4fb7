// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bdprobing.h"

#include "cbdinformation.h"
#include "cimportcontext.h"
#include "cimportreply_p.h"
#include "cimporttask.h"
#include "cimporttask_p.h"
#include "discsize.h"
#include "engineaccess.h"
#include "vspbased/veskqt.h"

#include <QtCore/QByteArray>
#include <QtCore/QFileInfo>
#include <QtCore/QHash>
#include <QtCore/QList>

namespace Vesk {

namespace {

/// More clips than this in one title or chapter are a lie.
const quint32 largestClipCount = 9999999;

/// Builds the information tree of one disc.
class BdReader
{
public:
    BdReader(AVBased::IBDLoader* loader, CBDInformation* info)
        : m_loader(loader)
        , m_info(info)
    {}

    void readFiles(AVBased::IBDList* files);
    void readTitles(AVBased::IBDList* titles);

private:
    void readTitle(const char* name, int index);
    void readChapters(const char* titleName, const QList<CBDFile*>& titleFiles, CBDTitle* title);
    QList<CBDFile*> filesOf(const AVBased::BDPlayInfo& record) const;

    AVBased::IBDLoader* m_loader;
    CBDInformation* m_info;
    QHash<QByteArray, CBDFile*> m_filesByName; ///< by the engine's bytes
};

/// Never null.
const char* itemName(AVBased::IBDList* list, quint32 index)
{
    AVBased::IBDListItem* item = list->item(index);
    const char* name = item ? item->name() : 0;
    return name ? name : "";
}

void BdReader::readFiles(AVBased::IBDList* files)
{
    for (quint32 i = 0; i < files->count(); ++i) {
        const char* name = itemName(files, i);
        const QString url = QString::fromUtf8(name);
        m_info->setFileCount(m_info->fileCount() + 1);
        CBDFile* file = m_info->file(m_info->fileCount() - 1);

        CMovieInfomation movie(0);
        CImportReplyPrivate::fillMovieInfo(m_loader->fileMovieInfo(name), &movie);
        movie.setMovieName(QFileInfo(url).fileName());
        file->setMovieInfo(&movie);
        file->setUrl(url);
        m_filesByName.insert(QByteArray(name), file);
    }
}

void BdReader::readTitles(AVBased::IBDList* titles)
{
    m_info->setTitleCount(int(titles->count()));
    for (int i = 0; i < m_info->titleCount(); ++i)
        readTitle(itemName(titles, quint32(i)), i);
}

/// A title that cannot be read keeps its defaults, so that the others keep their places.
void BdReader::readTitle(const char* name, int index)
{
    const AVBased::BDPlayInfo* record = m_loader->titleInfo(name);
    if (!record || record->clipCount > largestClipCount)
        return;
    CBDTitle* title = m_info->title(index);
    title->setDuration(record->duration);
    title->setTitleId(index);
    const QList<CBDFile*> files = filesOf(*record);
    for (int i = 0; i < files.count() && quint32(i) < record->clipCount; ++i) {
        if (files.at(i))
            title->appendClip(files.at(i)->appendClip(record->inTimes[i], record->outTimes[i]));
    }
    readChapters(name, files, title);
}

/// Clip j of a chapter plays the file of item j of the title's list. Clips beyond it have no file.
void BdReader::readChapters(const char* titleName, const QList<CBDFile*>& titleFiles,
                            CBDTitle* title)
{
    quint32 count = 0;
    const AVBased::BDPlayInfo* records = m_loader->chapters(titleName, &count);
    for (quint32 i = 0; records && i < count; ++i) {
        const AVBased::BDPlayInfo& record = records[i];
        if (record.clipCount > largestClipCount)
            continue;
        title->setChapterCount(title->chapterCount() + 1);
        CBDChapter* chapter = title->chapter(title->chapterCount() - 1);
        for (int j = 0; j < titleFiles.count() && quint32(j) < record.clipCount; ++j) {
            if (titleFiles.at(j)) {
                chapter->appendClip(
                    titleFiles.at(j)->appendClip(record.inTimes[j], record.outTimes[j]));
            }
        }
        chapter->setTitle(title);
        chapter->setDuration(record.duration);
        chapter->setTimeStamp(record.timeStamp);
    }
}

/// The stream files of the title's list, null for one that the disc does not list.
QList<CBDFile*> BdReader::filesOf(const AVBased::BDPlayInfo& record) const
{
    QList<CBDFile*> files;
    for (quint32 i = 0; record.clips && i < record.clips->count() && i < largestClipCount; ++i)
        files.append(m_filesByName.value(QByteArray(itemName(record.clips, i)), 0));
    return files;
}

} // namespace

bool copyBdInfo(AVBased::IBDLoader* loader, CBDInformation* info)
{
    if (!loader || !info)
        return false;
    if (const AVBased::BDDiscInfo* disc = loader->discInfo(0))
        info->setBdName(fromAscii(disc->name));

    BdListPtr files(loader->fileList());
    if (!files)
        return false;
    BdReader reader(loader, info);
    reader.readFiles(files.get());

    BdListPtr titles(loader->titleList());
    if (!titles)
        return false;
    reader.readTitles(titles.get());
    return true;
}

CImportTask* probeBd(const QString& path)
{
    const QByteArray utf8Path = path.toUtf8();
    BdLoaderPtr loader(engineWrapper()->createBDLoader());
    if (!loader || !loader->open(utf8Path.constData()))
        return 0;
    const AVBased::BDDiscInfo* disc = loader->discInfo(0);
    if (!disc)
        return 0;
    // Whatever the host's switch says, the structure of a scrambled disc is imported; there are no
    // pictures.
    if (disc->scrambled)
        CImportContext::instance()->bdSupportScrambled();

    CBDInformation info(0);
    CImportReplyPrivate::fillBdInfo(loader.get(), &info);
    info.setUrl(path);

    std::unique_ptr<CImportTask> task(new CImportTask(0));
    CImportTaskPrivate* taskPrivate = CImportTaskPrivate::getImportTaskPrivate(task.get());
    taskPrivate->setBdLoader(loader.release());
    taskPrivate->bdInfo = info;
    taskPrivate->taskType = CImportTask::BdTask;
    taskPrivate->url = path;
    taskPrivate->fileSize = discSize(path);
    return task.release();
}

} // namespace Vesk
