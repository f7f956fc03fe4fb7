// SPDX-License-Identifier: GPL-2.0-or-later
#include "jsonmodel.h"

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
#include <QtCore/QHash>
#include <QtCore/QJsonArray>
#include <QtCore/QMetaProperty>
#include <QtCore/QPair>

using namespace Vesk;

namespace {

QJsonValue propertyToJson(const QMetaProperty& property, const QObject* object)
{
    const QVariant value = property.read(object);
    if (property.isEnumType())
        return QString::fromLatin1(property.enumerator().valueToKey(value.toInt()));
    if (property.userType() == QMetaType::ULongLong)
        return QString::number(value.toULongLong());
    return QJsonValue::fromVariant(value);
}

/// The properties that the object's classes below QObject declare.
QJsonObject propertiesToJson(const QObject* object)
{
    QJsonObject json;
    const QMetaObject* meta = object->metaObject();
    for (int i = QObject::staticMetaObject.propertyCount(); i < meta->propertyCount(); ++i) {
        const QMetaProperty property = meta->property(i);
        json.insert(QString::fromLatin1(property.name()), propertyToJson(property, object));
    }
    return json;
}

/// The path that `url`, of the module's making, has behind its prefix. The program's folder of
/// pictures is an absolute path, which brings one of the slashes.
QString imageFileOf(const QString& url)
{
    const QString path = url.mid(int(qstrlen("file:///")));
    return path.isEmpty() || QDir::isAbsolutePath(path) ? path : QLatin1Char('/') + path;
}

/// The properties of an object that has an "imageUrl".
QJsonObject picturedToJson(const QObject* object)
{
    QJsonObject json = propertiesToJson(object);
    json.insert(QStringLiteral("imageFile"),
                imageFileOf(json.value(QStringLiteral("imageUrl")).toString()));
    return json;
}

/// An array of what `element` makes of 0 … count - 1.
template <typename Element>
QJsonArray arrayOf(int count, Element element)
{
    QJsonArray array;
    for (int i = 0; i < count; ++i)
        array.append(element(i));
    return array;
}

QJsonObject movieToJson(const CMovieInfomation* movie)
{
    QJsonObject json = picturedToJson(movie);
    json.remove(QStringLiteral("streamCount"));
    json.remove(QStringLiteral("metadataCount"));
    json.insert(QStringLiteral("streams"), arrayOf(movie->streamCount(), [movie](int i) {
                    return propertiesToJson(movie->stream(i));
                }));
    json.insert(QStringLiteral("metadata"), arrayOf(movie->metadataCount(), [movie](int i) {
                    return propertiesToJson(movie->metadata(i));
                }));
    return json;
}

QJsonObject chapterToJson(const CDVDChapter* chapter)
{
    return {{QStringLiteral("timeStart"), chapter->timeStart()},
            {QStringLiteral("timeEnd"), chapter->timeEnd()},
            {QStringLiteral("duration"), chapter->duration()}};
}

QJsonObject subtitleToJson(const CDVDSubtitle* subtitle)
{
    return {{QStringLiteral("name"), subtitle->name()},
            {QStringLiteral("streamId"), double(subtitle->streamId())}};
}

QJsonObject titleToJson(const CDVDTitle* title)
{
    const auto subtitle = [title](int i) { return subtitleToJson(title->subtitle(i)); };
    const auto chapter = [title](int i) { return chapterToJson(title->chapter(i)); };
    return {{QStringLiteral("isMainTitle"), title->isMainTitle()},
            {QStringLiteral("angles"), title->angles()},
            {QStringLiteral("duration"), title->duration()},
            {QStringLiteral("movieInfo"), movieToJson(title->movieInfo())},
            {QStringLiteral("trackCount"), title->trackCount()},
            {QStringLiteral("subtitles"), arrayOf(title->subtitleCount(), subtitle)},
            {QStringLiteral("chapters"), arrayOf(title->chapterCount(), chapter)}};
}

QJsonObject dvdToJson(const CDVDInformation* dvd)
{
    const auto title = [dvd](int i) { return titleToJson(dvd->title(i)); };
    return {{QStringLiteral("dvdName"), dvd->dvdName()},
            {QStringLiteral("url"), dvd->url()},
            {QStringLiteral("isScrambled"), dvd->isScrambled()},
            {QStringLiteral("titles"), arrayOf(dvd->titleCount(), title)}};
}

/// A Blu-ray disc; clips are referred to by their places in the files' lists.
class DiscToJson
{
public:
    explicit DiscToJson(const CBDInformation* disc)
        : m_disc(disc)
    {
        for (int i = 0; i < disc->fileCount(); ++i) {
            const QList<CBDFileClip*>& clips = disc->file(i)->clips();
            for (int j = 0; j < clips.size(); ++j)
                m_places.insert(clips.at(j), {i, j});
        }
    }

    QJsonObject convert() const
    {
        const auto file = [this](int i) { return fileToJson(m_disc->file(i)); };
        const auto title = [this](int i) { return titleToJson(m_disc->title(i)); };
        return {{QStringLiteral("bdName"), m_disc->bdName()},
                {QStringLiteral("url"), m_disc->url()},
                {QStringLiteral("files"), arrayOf(m_disc->fileCount(), file)},
                {QStringLiteral("titles"), arrayOf(m_disc->titleCount(), title)}};
    }

private:
    QJsonObject fileToJson(CBDFile* file) const
    {
        const QList<CBDFileClip*>& clips = file->clips();
        const QList<CBDFileClip*>& snapClips = file->snapClips();
        const auto clip = [&clips](int i) {
            return picturedToJson(CBDFile::clipObject(clips.at(i)));
        };
        const auto snapClip = [&](int i) { return m_places.value(snapClips.at(i)).second; };
        return {{QStringLiteral("url"), file->url()},
                {QStringLiteral("movieInfo"), movieToJson(file->movieInfo())},
                {QStringLiteral("clips"), arrayOf(clips.size(), clip)},
                {QStringLiteral("snapClips"), arrayOf(snapClips.size(), snapClip)}};
    }

    QJsonObject titleToJson(const CBDTitle* title) const
    {
        const auto chapter = [this, title](int i) { return chapterToJson(title->chapter(i)); };
        return {{QStringLiteral("titleId"), title->titleId()},
                {QStringLiteral("duration"), title->duration()},
                {QStringLiteral("clips"), clipsToJson(title)},
                {QStringLiteral("chapters"), arrayOf(title->chapterCount(), chapter)}};
    }

    QJsonObject chapterToJson(const CBDChapter* chapter) const
    {
        return {{QStringLiteral("timeStamp"), chapter->timeStamp()},
                {QStringLiteral("duration"), chapter->duration()},
                {QStringLiteral("clips"), clipsToJson(chapter)}};
    }

    template <typename Player>
    QJsonArray clipsToJson(const Player* player) const
    {
        return arrayOf(player->clipCount(), [this, player](int i) {
            const QPair<int, int> place = m_places.value(player->clip(i));
            return QJsonArray{place.first, place.second};
        });
    }

    const CBDInformation* m_disc;
    QHash<const CBDFileClip*, QPair<int, int>> m_places;
};

} // namespace

QJsonObject taskToJson(CImportTask* task)
{
    const QMetaObject& meta = CImportTask::staticMetaObject;
    const auto scalar = [&meta, task](const char* name) {
        return propertyToJson(meta.property(meta.indexOfProperty(name)), task);
    };
    QJsonObject json{{QStringLiteral("taskType"), scalar("taskType")},
                     {QStringLiteral("url"), scalar("url")},
                     {QStringLiteral("size"), scalar("size")}};
    switch (task->taskType()) {
    case CImportTask::VideoTask:
    case CImportTask::AudioTask:
        json.insert(QStringLiteral("movieInfo"), movieToJson(task->movieInfo()));
        break;
    case CImportTask::DvdTask:
        json.insert(QStringLiteral("dvdInfo"), dvdToJson(task->dvdInfo()));
        break;
    case CImportTask::BdTask:
        json.insert(QStringLiteral("bdInfo"), DiscToJson(task->bdInfo()).convert());
        break;
    }
    return json;
}
