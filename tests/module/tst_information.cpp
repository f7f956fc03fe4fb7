// SPDX-License-Identifier: GPL-2.0-or-later
//
// The objects that describe what was found, and the lists of formats.
#include "cbdfileclip.h"
#include "cbdinformation.h"
#include "cdvdinformation.h"
#include "cdvdtrack.h"
#include "cdvdvideo.h"
#include "cimportcontext.h"
#include "cimportmodel.h"
#include "cimportreply.h"
#include "cimporttask.h"
#include "cmovieinfomation.h"
#include "importrun.h"

#include <QtCore/QMetaMethod>
#include <QtCore/QPointer>
#include <QtTest/QtTest>

#include <limits>
#include <memory>

using namespace Vesk;

namespace {

template <typename Information, typename Resize>
void expectSharing(Resize resize)
{
    auto original = std::make_unique<Information>();
    Information copy(*original);
    QVERIFY(!copy.parent());
    Information assigned;
    assigned = *original;
    assigned = assigned;
    const QPointer<QObject> child(resize(assigned));
    QCOMPARE(resize(*original), child.data());
    QCOMPARE(resize(copy), child.data());
    original.reset();
    QVERIFY(child);
}

/// The properties that an object's own class declares.
QList<QMetaProperty> propertiesOf(const QMetaObject& meta)
{
    QList<QMetaProperty> properties;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        properties << meta.property(i);
    return properties;
}

/// Their values, with a blank between.
QString valuesOf(const QObject& object)
{
    QStringList values;
    for (const QMetaProperty& property : propertiesOf(*object.metaObject()))
        values << property.read(&object).toString();
    return values.join(' ');
}

/// A value of its own for each property, of as many bits as its type has.
QVariant distinctValue(const QMetaProperty& property)
{
    const int i = property.propertyIndex();
    if (property.type() == QVariant::ULongLong)
        return quint64(i) << 40 | quint64(i) << 28;
    return property.isEnumType()                 ? QVariant(2)
           : property.type() == QVariant::Bool   ? QVariant(true)
           : property.type() == QVariant::Double ? QVariant(i + 0.5)
                                                 : QVariant(i);
}

} // namespace

class InformationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// Hosts that were built before reach them by their numbers: properties, with the number of
    /// their change signal, then methods.
    void propertiesAndMethodsKeepTheirOrder()
    {
        const auto textOf = [](const QMetaObject& meta) {
            QString text;
            for (const QMetaProperty& property : propertiesOf(meta)) {
                text += property.name() +
                        QString::number(property.notifySignalIndex() - meta.methodOffset()) + ' ';
            }
            for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
                text += meta.method(i).methodSignature() + ' ';
            return text;
        };
        QCOMPARE(textOf(CStreamInfomation::staticMetaObject),
                 QString("streamType0 streamName0 streamId0 language0 codecName0 duration0 "
                         "bitrate0 fourcc0 height0 width0 framerate0 rawFramerate0 aspectRatio0 "
                         "rawAspectRatio0 channels0 channelLayout0 samplerate0 checked0 "
                         "nullChanged() "));
        QCOMPARE(textOf(CMovieMetaData::staticMetaObject),
                 QString("key0 value1 keyChanged() valueChanged() "));
        QCOMPARE(textOf(CMovieInfomation::staticMetaObject),
                 QString("movieName0 fileName7 movieFormat1 movieId2 streamCount3 metadataCount4 "
                         "duration6 imageUrl5 movieNameChanged() movieFormatChanged() "
                         "movieIdChanged() streamCountChanged() metadataCountChanged() "
                         "imageUrlChanged() durationChanged() nullChanged() stream(int) "));
        QCOMPARE(textOf(CBDFileClip::staticMetaObject), QString("imageUrl0 imageUrlChanged() "));
        QCOMPARE(textOf(CDVDInformation::staticMetaObject), QString("url() "));
        QCOMPARE(textOf(CImportTask::staticMetaObject),
                 QString("movieInfo0 bdInfo0 dvdInfo0 url0 taskType0 size0 nullChanged() "
                         "aboutToDestory() "));
        QCOMPARE(textOf(CImportModel::staticMetaObject),
                 QString("importError(int,QString) open(CImportSource&) "
                         "importErrorProc(CImportModel::ErrorType,QString) "));
        QCOMPARE(
            textOf(CImportReply::staticMetaObject),
            QString("importPercent5 tasks8 finished() terminated() importFinished() snapFinished() "
                    "taskProcess(Vesk::CImportTask*,Vesk::CImportReply::ProcessType) "
                    "importPercentChanged() importUrl(QString) snapPercentChanged() "
                    "tasksChanged() resultsChanged() exit(int) exit() "));
    }

    void defaults()
    {
        CImportContext* context = CImportContext::instance();
        QCOMPARE(context->snapSize(), QSize(50, 50));
        QCOMPARE(context->configDir() + context->fileFormats() + context->forbidFormats(),
                 QString());
        QVERIFY(context->limitFileFormat());
        using Switch = std::pair<bool (CImportContext::*)() const, void (CImportContext::*)(bool)>;
        for (const auto& [get, set] :
             {Switch(&CImportContext::dvdSupport, &CImportContext::setDvdSupport),
              Switch(&CImportContext::dvdSupportScrambled, &CImportContext::setDvdSupportScrambled),
              Switch(&CImportContext::bdSupport, &CImportContext::setBdSupport),
              Switch(&CImportContext::bdSupportScrambled, &CImportContext::setBdSupportScrambled),
              Switch(&CImportContext::drmSupport, &CImportContext::setDrmSupport)}) {
            QVERIFY(!(context->*get)());
            (context->*set)(true);
            QVERIFY((context->*get)());
        }

        QCOMPARE(valuesOf(CStreamInfomation()), QString("0  -1   0 0  0 0  0  0 0 0 0 false"));
        QCOMPARE(valuesOf(CMovieInfomation()), QString("   -1 0 0 -1 "));
        QCOMPARE(CBDTitle().titleId(), -1);
        QCOMPARE(CDVDSubtitle().streamId(), 0xFFFFFFFFU);
        const CDVDTrack track;
        QCOMPARE(QList<int>({track.number1(), track.number2(), track.number3(), track.number4()}),
                 QList<int>({-1, 0, 0, -1}));
    }

    void propertiesKeepWhatTheyAreGiven()
    {
        CStreamInfomation stream;
        CMovieInfomation movie;
        CMovieMetaData tag;
        CBDFileClip clip;
        for (QObject* object : {static_cast<QObject*>(&stream), static_cast<QObject*>(&movie),
                                static_cast<QObject*>(&tag), static_cast<QObject*>(&clip)}) {
            const auto properties = propertiesOf(*object->metaObject());
            for (const QMetaProperty& property : properties)
                QVERIFY(property.write(object, distinctValue(property)));
            for (const QMetaProperty& property : properties) {
                QVariant expected = distinctValue(property);
                if (property.name() == QString("rawAspectRatio")) // is kept in 32 bits
                    expected = quint32(expected.toULongLong());
                QVERIFY2(property.read(object).toString() == expected.toString(), property.name());
            }
        }

        // Called by its name, with the return type as the class writes it.
        CStreamInfomation* first = nullptr;
        QVERIFY(QMetaObject::invokeMethod(&movie, "stream", Q_RETURN_ARG(CStreamInfomation*, first),
                                          Q_ARG(int, 0)));
        QVERIFY(first && first == movie.stream(0));
    }

    void dvdTitles()
    {
        CDVDTitle title;
        {
            CDVDVideo video;
            CMovieInfomation movie;
            title.setVideo(&video);
            title.setMovieInfo(&movie);
            video.setNumber1(3);
            movie.setMovieId(4);
        }
        QCOMPARE(title.video()->number1(), 3);
        QCOMPARE(title.movieInfo()->movieId(), 4);
        CDVDChapter chapter;
        chapter.setTimeStart(10.0);
        chapter.setTimeEnd(4.0);
        QCOMPARE(chapter.duration(), -6.0);
    }

    void countsResizeFromTheEnd()
    {
        CMovieInfomation movie;
        movie.setStreamCount(3);
        const QPointer<CStreamInfomation> first(movie.stream(0));
        const QPointer<CStreamInfomation> last(movie.stream(2));
        movie.setStreamCount(1);
        QVERIFY(last.isNull());
        QCOMPARE(movie.stream(0), first.data());
        QVERIFY(!movie.stream(-1) && !movie.stream(1) && !movie.metadata(0));
        movie.setStreamCount(-5);
        QCOMPARE(movie.streamCount(), 0);
        QVERIFY(first.isNull());

        CDVDTitle title;
        title.setSubtitleCount(2);
        for (int count = 1; count <= 5; ++count)
            title.setChapterCount(count);
        CDVDChapter* second = title.chapter(1);
        title.setChapterCount(2);
        QCOMPARE(title.chapter(1), second);
        QVERIFY(!title.chapter(2) && !second->parent());
        QCOMPARE(title.subtitle(1)->parent(), &title);
        title.setSubtitleCount(1);
        QCOMPARE(title.children().count(), 1);
    }

    void copiesShareOneRecord()
    {
        expectSharing<CMovieInfomation>([](CMovieInfomation& movie) {
            movie.setStreamCount(2);
            return movie.stream(1);
        });
        expectSharing<CDVDInformation>([](CDVDInformation& dvd) {
            dvd.setTitleCount(3);
            return dvd.title(0);
        });
        expectSharing<CBDInformation>([](CBDInformation& disc) {
            disc.setFileCount(2);
            return disc.file(1);
        });
    }

    void onlySomeSettersSignal()
    {
        CMovieInfomation movie;
        QSignalSpy name(&movie, SIGNAL(movieNameChanged()));
        QSignalSpy duration(&movie, SIGNAL(durationChanged()));
        QSignalSpy image(&movie, SIGNAL(imageUrlChanged()));
        movie.setMovieName("name");
        for (const double seconds : {-1.0, 0.0, 0.0, 5.0, 5.0 + 1e-13})
            movie.setDuration(seconds);
        for (const char* url : {"", "a", "a"})
            movie.setImageUrl(url);
        QCOMPARE(name.count(), 0);
        QCOMPARE(duration.count(), 2);
        QCOMPARE(image.count(), 1);

        CMovieMetaData tag;
        QSignalSpy key(&tag, SIGNAL(keyChanged()));
        QSignalSpy value(&tag, SIGNAL(valueChanged()));
        for (const char* text : {"a", "a", "b"})
            tag.setKey(text);
        QCOMPARE(key.count(), 2);
        QCOMPARE(value.count(), 0);
        tag.setValue("a");
        QCOMPARE(value.count(), 1);
    }

    void findsTheFirstStreams()
    {
        CMovieInfomation movie;
        const auto add = [&movie](CStreamInfomation::StreamType type, int id) {
            movie.setStreamCount(movie.streamCount() + 1);
            movie.stream(movie.streamCount() - 1)->setStreamType(type);
            movie.stream(movie.streamCount() - 1)->setStreamId(id);
        };
        int audio = 0;
        int video = 0;
        int subtitle = 0;
        CStreamInfomation* found = nullptr;
        add(CStreamInfomation::StreamSubtitle, 11);
        QVERIFY(!movie.findFirstStreamID(audio, video, &subtitle));
        QCOMPARE(QList<int>({audio, video, subtitle}), QList<int>({-1, -1, 11}));
        QVERIFY(!movie.findFirstStreamInfo(CStreamInfomation::StreamVideo, &found) && !found);

        for (const int id : {-1, 5, 9})
            add(CStreamInfomation::StreamAudio, id);
        add(CStreamInfomation::StreamVideo, 7);
        QVERIFY(movie.findFirstStreamID(audio, video));
        QCOMPARE(QList<int>({audio, video}), QList<int>({5, 7}));
        QVERIFY(movie.findFirstStreamInfo(CStreamInfomation::StreamAudio, &found));
        QCOMPARE(found, movie.stream(1));
    }

    void travelsThroughMaps()
    {
        CMovieInfomation movie;
        movie.setMovieName("name");
        movie.setStreamCount(2);
        movie.setDuration(3.5);
        QMap<QString, QVariant> map;
        movie >> map;
        QCOMPARE(map.keys().join(' '),
                 QString("duration fileName imageUrl metadataCount movieFormat "
                         "movieId movieName streamCount"));
        map.insert("unknown", 1);
        CMovieInfomation other;
        other << map;
        QCOMPARE(other.movieName(), QString("name"));
        QCOMPARE(other.streamCount(), 2);
        QCOMPARE(other.duration(), 3.5);
        QVERIFY(other.dynamicPropertyNames().isEmpty());
    }

    void clipsOfOneRangeAreOne()
    {
        CBDFile file;
        QVERIFY(file.empty());
        CBDFileClip* clip = file.appendClip(10.0, 20.0);
        QCOMPARE(file.appendClip(10.0 + 1e-12, 20.0 - 1e-12), clip);
        QVERIFY(file.appendClip(10.0, 20.1) != clip);
        // Nothing but zero itself is fuzzily equal to zero.
        QVERIFY(file.appendClip(0.0, 5.0) != file.appendClip(1e-13, 5.0));
        const double nan = std::numeric_limits<double>::quiet_NaN();
        QVERIFY(file.appendClip(nan, 5.0) != file.appendClip(nan, 5.0));
        QCOMPARE(file.clips().count(), 6);
        QCOMPARE(file.appendClip(10.0, 20.0), clip);
        clip->setTimeStart(11.0);
        QCOMPARE(file.appendClip(11.0, 20.0), clip);
        QVERIFY(file.appendClip(10.0, 20.0) != clip);

        QSignalSpy changed(clip, SIGNAL(imageUrlChanged()));
        clip->setImageUrl("a");
        clip->setImageUrl("a");
        QCOMPARE(changed.count(), 1);
        QCOMPARE(CBDFile::clipObject(clip)->property("imageUrl").toString(), QString("a"));
    }

    void snapClipsAreSortedWithOneAStart()
    {
        CBDFile file;
        QVERIFY(file.snapClips().isEmpty());
        for (const auto& range : {std::pair(30, 31), {10, 11}, {20, 21}, {10, 15}})
            file.appendClip(range.first, range.second);
        const QList<CBDFileClip*>& list = file.snapClips();
        QCOMPARE(list.count(), 3);
        for (int i = 0; i < 3; ++i)
            QCOMPARE(list.at(i)->timeStart(), 10.0 * (i + 1));

        // Made anew only when clips have joined.
        list.at(0)->setTimeStart(99.0);
        QCOMPARE(&file.snapClips(), &list);
        QCOMPARE(list.at(0)->timeStart(), 99.0);
        file.appendClip(40.0, 50.0);
        file.snapClips();
        QCOMPARE(list.last()->timeStart(), 99.0);
        QCOMPARE(list.count(), 5);
    }

    /// Tens of thousands of ranges in one file come from discs made to confuse players. A walk
    /// through the list for each would take minutes, and the test its time limit.
    void manyClipsAreFoundQuickly()
    {
        CBDFile file;
        const int count = 100000;
        for (int i = 0; i < 2 * count; ++i)
            file.appendClip(1.0, 2.0 + i % count);
        QCOMPARE(file.clips().count(), count);
    }

    void recordsGoInOrder()
    {
        QStringList order;
        const auto watch = [&order](QObject* object, const char* name) {
            connect(object, &QObject::destroyed, [&order, name] { order.append(name); });
        };
        {
            CBDInformation disc;
            disc.setFileCount(1);
            CBDFileClip* clip = disc.file(0)->appendClip(0.0, 1.0);
            watch(clip, "clip");
            for (int pass = 0; pass < 2; ++pass) {
                disc.setTitleCount(0);
                disc.setTitleCount(1);
                disc.title(0)->appendClip(clip);
                disc.title(0)->setChapterCount(1);
                disc.title(0)->chapter(0)->appendClip(clip);
                watch(disc.title(0), "title");
            }
            QVERIFY(!disc.title(0)->clip(1) && !disc.title(0)->chapter(1) && !disc.file(1));
        }
        QCOMPARE(order.join(' '), QString("title title clip"));

        order.clear();
        {
            CImportTask task;
            task.movieInfo()->setStreamCount(2);
            task.movieInfo()->setMetadataCount(1);
            task.bdInfo()->setFileCount(1);
            task.dvdInfo()->setTitleCount(1);
            CDVDTitle* title = task.dvdInfo()->title(0);
            title->setSubtitleCount(1);
            title->setTrackCount(1);
            title->setChapterCount(1);
            watch(task.movieInfo()->stream(0), "stream0");
            watch(task.movieInfo()->stream(1), "stream1");
            watch(task.movieInfo()->metadata(0), "tag");
            watch(task.bdInfo()->file(0), "file");
            watch(title->subtitle(0), "subtitle");
            watch(title->track(0), "track");
            watch(title->chapter(0), "chapter");
        }
        QCOMPARE(order.join(' '), QString("chapter track subtitle file tag stream0 stream1"));
    }

    void formatsLeaveTheOtherList()
    {
        CImportContext* context = CImportContext::instance();
        const auto adding = [context](const char* added, const char* list, const char* other) {
            context->setFileFormats(list);
            context->setForbidFormats(other);
            context->addFileFormat(added);
            const QString result = context->fileFormats() + '|' + context->forbidFormats();
            context->setForbidFormats(list);
            context->setFileFormats(other);
            context->addForbidFormat(added);
            const QString opposite = context->forbidFormats() + '|' + context->fileFormats();
            return result == opposite ? result : "not the same";
        };
        QCOMPARE(adding("*.mkv;", "*.avi;", ""), QString("*.avi;*.mkv;|"));
        QCOMPARE(adding("*.mp4;", "*.MP4;", "*.avi;*.Mp4;"), QString("*.MP4;|*.avi;"));
        QCOMPARE(adding("*.mp", "*.mp4;", ""), QString("*.mp4;|"));
        QCOMPARE(adding("*.avi;", "", "*.avi;*.AVI;*.mkv;"), QString("*.avi;|*.mkv;"));
    }
};

QTEST_GUILESS_MAIN(InformationTest)
#include "tst_information.moc"
