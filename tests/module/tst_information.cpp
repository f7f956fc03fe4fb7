// SPDX-License-Identifier: GPL-2.0-or-later
//
// The objects that describe what was found, and the lists of formats.
#include "cbdfileclip.h"
#include "cdvdtrack.h"
#include "cdvdvideo.h"
#include "cimportcontext.h"
#include "importrun.h"
#include "vspbased/veskqt.h"

#include <QtCore/QMetaMethod>
#include <QtCore/QPair>
#include <QtCore/QPointer>

#include <algorithm>
#include <limits>
#include <random>

using namespace Vesk;

namespace {

/// `resize` gives one of the children that it makes.
template <typename Information, typename Child>
void expectSharing(Child* (*resize)(Information&))
{
    auto original = std::make_unique<Information>();
    Information copy(*original);
    QVERIFY(!copy.parent());
    Information assigned;
    assigned = *original;
    assigned = assigned;
    const QPointer<Child> child(resize(assigned));
    QVERIFY(resize(*original) == child && resize(copy) == child);
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

/// A property's value; of an enum, which Qt 6 has no text for, the number.
QString valueOf(const QObject& object, const QMetaProperty& property)
{
    const QVariant value = property.read(&object);
    return property.isEnumType() ? QString::number(value.toInt()) : value.toString();
}

/// Their values, with a blank between.
QString valuesOf(const QObject& object)
{
    QStringList values;
    for (const QMetaProperty& property : propertiesOf(*object.metaObject()))
        values << valueOf(object, property);
    return values.join(' ');
}

/// A value of its own for each property, of as many bits as its type has.
QVariant distinctValue(const QMetaProperty& property)
{
    const int i = property.propertyIndex();
    if (property.userType() == QMetaType::ULongLong)
        return quint64(i) << 40 | quint64(i) << 28;
    return property.isEnumType()                      ? QVariant(2)
           : property.userType() == QMetaType::Bool   ? QVariant(true)
           : property.userType() == QMetaType::Double ? QVariant(i + 0.5)
                                                      : QVariant(i);
}

} // namespace

class InformationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// Equal elements too end where Qt's own function, which Qt 6 has no more, puts them.
    void sortsAsQtDid()
    {
        typedef QPair<int, int> Numbered;
        const auto less = [](const Numbered& a, const Numbered& b) { return a.first < b.first; };
        std::mt19937 random(1);
        for (int pass = 0; pass < 3000; ++pass) {
            QList<Numbered> list;
            for (int i = 0, size = int(random() % 40); i < size; ++i)
                list << Numbered(int(random() % (1 + pass % 30)), i);
            QList<Numbered> sorted = list;
            quickSort(sorted, less);
            QVERIFY(std::is_sorted(sorted.begin(), sorted.end(), less));
#if QT_VERSION < 0x060000
            QT_WARNING_PUSH
            QT_WARNING_DISABLE_DEPRECATED
            qSort(list.begin(), list.end(), less);
            QT_WARNING_POP
            QCOMPARE(sorted, list);
#endif
        }
    }

    /// Hosts that were built before reach them by their numbers: properties, with the number of
    /// their change signal, then methods.
    void propertiesAndMethodsKeepTheirOrder()
    {
        const auto expect = [](const QMetaObject& meta, const char* expected) {
            QString text;
            for (const QMetaProperty& property : propertiesOf(meta)) {
                text += property.name() +
                        QString::number(property.notifySignalIndex() - meta.methodOffset()) + ' ';
            }
            for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
                text += meta.method(i).methodSignature() + ' ';
            QCOMPARE(text.trimmed(), QString(expected));
        };
        expect(CStreamInfomation::staticMetaObject,
               "streamType0 streamName0 streamId0 language0 codecName0 duration0 bitrate0 fourcc0 "
               "height0 width0 framerate0 rawFramerate0 aspectRatio0 rawAspectRatio0 channels0 "
               "channelLayout0 samplerate0 checked0 nullChanged()");
        expect(CMovieMetaData::staticMetaObject, "key0 value1 keyChanged() valueChanged()");
        expect(CMovieInfomation::staticMetaObject,
               "movieName0 fileName7 movieFormat1 movieId2 streamCount3 metadataCount4 duration6 "
               "imageUrl5 movieNameChanged() movieFormatChanged() movieIdChanged() "
               "streamCountChanged() metadataCountChanged() imageUrlChanged() durationChanged() "
               "nullChanged() stream(int)");
        expect(CBDFileClip::staticMetaObject, "imageUrl0 imageUrlChanged()");
        expect(CDVDInformation::staticMetaObject, "url()");
        expect(CImportTask::staticMetaObject,
               "movieInfo0 bdInfo0 dvdInfo0 url0 taskType0 size0 nullChanged() aboutToDestory()");
        expect(CImportModel::staticMetaObject, "importError(int,QString) open(CImportSource&) "
                                               "importErrorProc(CImportModel::ErrorType,QString)");
        expect(CImportReply::staticMetaObject,
               "importPercent5 tasks8 finished() terminated() importFinished() snapFinished() "
               "taskProcess(Vesk::CImportTask*,Vesk::CImportReply::ProcessType) "
               "importPercentChanged() importUrl(QString) snapPercentChanged() tasksChanged() "
               "resultsChanged() exit(int) exit()");
    }

    void defaults()
    {
        CImportContext* context = CImportContext::instance();
        QCOMPARE(context->snapSize(), QSize(50, 50));
        QCOMPARE(context->configDir() + context->fileFormats() + context->forbidFormats(), "");
        QVERIFY(context->limitFileFormat());
        const auto expectSwitch = [context](auto get, auto set) {
            QVERIFY(!(context->*get)());
            (context->*set)(true);
            QVERIFY((context->*get)());
        };
        expectSwitch(&CImportContext::dvdSupport, &CImportContext::setDvdSupport);
        expectSwitch(&CImportContext::dvdSupportScrambled, &CImportContext::setDvdSupportScrambled);
        expectSwitch(&CImportContext::bdSupport, &CImportContext::setBdSupport);
        expectSwitch(&CImportContext::bdSupportScrambled, &CImportContext::setBdSupportScrambled);
        expectSwitch(&CImportContext::drmSupport, &CImportContext::setDrmSupport);

        QCOMPARE(valuesOf(CStreamInfomation()), "0  -1   0 0  0 0  0  0 0 0 0 false");
        QCOMPARE(valuesOf(CMovieInfomation()), "   -1 0 0 -1 ");
        QCOMPARE(CBDTitle().titleId(), -1);
        QCOMPARE(CDVDSubtitle().streamId(), 0xFFFFFFFFU);
        const CDVDTrack t;
        QCOMPARE(QList<int>({t.number1(), t.number2(), t.number3(), t.number4()}),
                 QList<int>({-1, 0, 0, -1}));
    }

    /// Written twice, the second time without a change; `expected` signals are heard.
    void propertiesKeepWhatTheyAreGiven()
    {
        const auto expect = [](QObject& object, const char* expected) {
            const QMetaObject& meta = *object.metaObject();
            std::vector<std::unique_ptr<QSignalSpy>> spies;
            for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
                if (meta.method(i).methodType() == QMetaMethod::Signal)
                    spies.push_back(std::make_unique<QSignalSpy>(&object, meta.method(i)));
            }
            for (const QMetaProperty& property : propertiesOf(meta) + propertiesOf(meta))
                QVERIFY(property.write(&object, distinctValue(property)));
            for (const QMetaProperty& property : propertiesOf(meta)) {
                QVariant kept = distinctValue(property);
                if (property.name() == QString("rawAspectRatio")) // in 32 bits
                    kept = quint32(kept.toULongLong());
                QVERIFY2(valueOf(object, property) == kept.toString(), property.name());
            }
            QString heard;
            for (const auto& spy : spies)
                heard += QString(spy->signal()).repeated(spy->count());
            QCOMPARE(heard, QString(expected));
        };
        CStreamInfomation stream;
        expect(stream, "");
        CMovieMetaData tag;
        expect(tag, "keyChanged()valueChanged()");
        CBDFile file;
        expect(*CBDFile::clipObject(file.appendClip(0.0, 1.0)), "imageUrlChanged()");
        CMovieInfomation movie;
        expect(movie, "imageUrlChanged()durationChanged()");

        // Through maps; what is none of them is passed over.
        QMap<QString, QVariant> map = {{"unknown", 1}};
        movie >> map;
        QCOMPARE(map.size(), 9);
        CMovieInfomation other;
        other << map;
        QCOMPARE(valuesOf(other), valuesOf(movie));
        QVERIFY(other.dynamicPropertyNames().isEmpty());

        // Called by its name, with the return type as the class writes it.
        CStreamInfomation* first = nullptr;
        QVERIFY(QMetaObject::invokeMethod(&movie, "stream", Q_RETURN_ARG(CStreamInfomation*, first),
                                          Q_ARG(int, 0)));
        QVERIFY(first && first == movie.stream(0));

        QSignalSpy duration(&other, SIGNAL(durationChanged()));
        for (const double seconds : {0.0, 0.0, 5.0, 5.0 + 1e-13})
            other.setDuration(seconds);
        QCOMPARE(duration.count(), 2);
    }

    void recordsAreShared()
    {
        expectSharing<CMovieInfomation, CStreamInfomation>([](CMovieInfomation& movie) {
            movie.setStreamCount(2);
            return movie.stream(1);
        });
        expectSharing<CDVDInformation, CDVDTitle>([](CDVDInformation& dvd) {
            dvd.setTitleCount(3);
            return dvd.title(0);
        });
        expectSharing<CBDInformation, CBDFile>([](CBDInformation& disc) {
            disc.setFileCount(2);
            return disc.file(1);
        });
        CDVDTitle title;
        CDVDVideo video;
        CMovieInfomation movie;
        title.setVideo(&video);
        title.setMovieInfo(&movie);
        video.setNumber1(3);
        movie.setMovieId(4);
        QVERIFY(title.video()->number1() == 3 && title.movieInfo()->movieId() == 4);
    }

    void countsResizeFromTheEnd()
    {
        CMovieInfomation movie;
        movie.setStreamCount(3);
        const QPointer<CStreamInfomation> first(movie.stream(0));
        const QPointer<CStreamInfomation> last(movie.stream(2));
        movie.setStreamCount(1);
        QVERIFY(!last && movie.stream(0) == first);
        QVERIFY(!movie.stream(-1) && !movie.stream(1) && !movie.metadata(0));
        movie.setStreamCount(-5);
        QVERIFY(!first && movie.streamCount() == 0);

        CDVDTitle title;
        title.setSubtitleCount(2);
        for (int count = 1; count <= 5; ++count)
            title.setChapterCount(count);
        CDVDChapter* second = title.chapter(1);
        title.setChapterCount(2);
        QVERIFY(title.chapter(1) == second && !title.chapter(2) && !second->parent());
        QCOMPARE(title.subtitle(1)->parent(), &title);
        title.setSubtitleCount(1);
        QCOMPARE(title.children().count(), 1);
        second->setTimeStart(10.0);
        second->setTimeEnd(4.0);
        QCOMPARE(second->duration(), -6.0);
    }

    void findsTheFirstStreams()
    {
        CMovieInfomation movie;
        const auto add = [&movie](CStreamInfomation::StreamType type, int id) {
            movie.setStreamCount(movie.streamCount() + 1);
            movie.stream(movie.streamCount() - 1)->setStreamType(type);
            movie.stream(movie.streamCount() - 1)->setStreamId(id);
        };
        int ids[3] = {};
        CStreamInfomation* found = nullptr;
        add(CStreamInfomation::StreamSubtitle, 11);
        QVERIFY(!movie.findFirstStreamID(ids[0], ids[1], &ids[2]));
        QVERIFY(ids[0] == -1 && ids[1] == -1 && ids[2] == 11);
        QVERIFY(!movie.findFirstStreamInfo(CStreamInfomation::StreamVideo, &found) && !found);

        for (const int id : {-1, 5, 9})
            add(CStreamInfomation::StreamAudio, id);
        add(CStreamInfomation::StreamVideo, 7);
        QVERIFY(movie.findFirstStreamID(ids[0], ids[1]) && ids[0] == 5 && ids[1] == 7);
        QVERIFY(movie.findFirstStreamInfo(CStreamInfomation::StreamAudio, &found));
        QCOMPARE(found, movie.stream(1));
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
        QVERIFY(file.appendClip(11.0, 20.0) == clip && file.appendClip(10.0, 20.0) != clip);

        // Tens of thousands of ranges in one file come from discs made to confuse players. A walk
        // through the list for each would take minutes, and the test its time limit.
        CBDFile large;
        const int count = 100000;
        for (int i = 0; i < 2 * count; ++i)
            large.appendClip(1.0, 2.0 + i % count);
        QCOMPARE(large.clips().count(), count);
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

    void recordsGoInOrder()
    {
        QStringList order;
        const auto watch = [&order](QObject* object, const char* name) {
            connect(object, &QObject::destroyed, [&order, name] { order.append(name); });
        };
        {
            CImportTask task;
            task.movieInfo()->setStreamCount(1);
            task.movieInfo()->setMetadataCount(1);
            watch(task.movieInfo()->stream(0), "stream");
            watch(task.movieInfo()->metadata(0), "tag");

            CBDInformation* disc = task.bdInfo();
            disc->setFileCount(1);
            CBDFileClip* clip = disc->file(0)->appendClip(0.0, 1.0);
            watch(clip, "clip");
            for (int pass = 0; pass < 2; ++pass) {
                disc->setTitleCount(0);
                disc->setTitleCount(1);
                disc->title(0)->appendClip(clip);
                disc->title(0)->setChapterCount(1);
                disc->title(0)->chapter(0)->appendClip(clip);
                watch(disc->title(0), "title");
            }
            QVERIFY(!disc->title(0)->clip(1) && !disc->title(0)->chapter(1) && !disc->file(1));

            task.dvdInfo()->setTitleCount(1);
            CDVDTitle* title = task.dvdInfo()->title(0);
            title->setSubtitleCount(1);
            title->setTrackCount(1);
            title->setChapterCount(1);
            watch(title->subtitle(0), "subtitle");
            watch(title->track(0), "track");
            watch(title->chapter(0), "chapter");
            connect(&task, &CImportTask::aboutToDestory, [&] { order.append("task"); });
        }
        QCOMPARE(order.join(' '), "title task chapter track subtitle title clip tag stream");
    }

    void formatsLeaveTheOtherList()
    {
        CImportContext* context = CImportContext::instance();
        const auto expect = [context](const char* added, const char* list, const char* other,
                                      const char* listThen, const char* otherThen = "") {
            context->setFileFormats(list);
            context->setForbidFormats(other);
            context->addFileFormat(added);
            QCOMPARE(context->fileFormats(), QString(listThen));
            QCOMPARE(context->forbidFormats(), QString(otherThen));
            context->setForbidFormats(list);
            context->setFileFormats(other);
            context->addForbidFormat(added);
            QCOMPARE(context->forbidFormats(), QString(listThen));
            QCOMPARE(context->fileFormats(), QString(otherThen));
        };
        expect("*.mkv;", "*.avi;", "", "*.avi;*.mkv;");
        expect("*.mp4;", "*.MP4;", "*.avi;*.Mp4;", "*.MP4;", "*.avi;");
        expect("*.mp", "*.mp4;", "", "*.mp4;");
        expect("*.avi;", "", "*.avi;*.AVI;*.mkv;", "*.avi;", "*.mkv;");
    }
};

QTEST_GUILESS_MAIN(InformationTest)
#include "tst_information.moc"
