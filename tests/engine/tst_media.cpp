// SPDX-License-Identifier: GPL-2.0-or-later
//
// Media files through the engine's boundary: what is media, what is said of it, where it is opened
// and how often, and which frames come.
#include "engineobjects.h"
#include "fixture.h"
#include "vspavbased/imovieinfoext.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <random>
#include <sys/stat.h>

using namespace AVBased;

namespace {

/// "kind codec language name" of a stream, with its measures.
QString textOf(const AVStreamInfo& stream)
{
    const QString head =
        QStringLiteral("%1 %2 %3 %4")
            .arg(stream.kind)
            .arg(stream.codecName, stream.language, QString::fromLatin1(stream.name));
    if (stream.kind == StreamKindVideo) {
        return head + QStringLiteral(" %1x%2 %3/%4 %5:%6 %7")
                          .arg(stream.width)
                          .arg(stream.height)
                          .arg(stream.frameRate >> 32)
                          .arg(stream.frameRate & 0xFFFFFFFF)
                          .arg(stream.aspectRatio >> 16)
                          .arg(stream.aspectRatio & 0xFFFF)
                          .arg(QString::fromLatin1(stream.fourcc, 4));
    }
    return head + QStringLiteral(" %1Hz %2ch %3")
                      .arg(stream.sampleRate)
                      .arg(stream.channels)
                      .arg(stream.channelLayout);
}

/// Files of this process that are open.
QStringList openFiles()
{
    QStringList names;
    const QDir descriptors("/proc/self/fd");
    for (const QFileInfo& entry : descriptors.entryInfoList(QDir::Files | QDir::System))
        names.append(entry.symLinkTarget());
    return names;
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class MediaTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void describesStreamsAndTags();
    void coversAreNoVideo();
    void tagsOfTheOnlyStreamAreTheMovies();
    void durations_data();
    void durations();
    void refuses_data();
    void refuses();
    void neverOpensPipes();
    void tellsProtectedFiles();
    void holdsNothingWhileIdle();

    void seeksToTheNearestKeyframe_data();
    void seeksToTheNearestKeyframe();
    void seeksWithoutAnIndex_data();
    void seeksWithoutAnIndex();
    void aMovieOfOneFrameHasAPicture();
    void onlyItsOwnStreamsCanBeOpened();
    void damagedFilesDoNoHarm();
};

void MediaTest::describesStreamsAndTags()
{
    const ImporterPtr importer = openItem(fixtureUtf8("media/several.mkv"));
    QVERIFY(importer);
    QCOMPARE(importer->movieCount(), 1U);
    QVERIFY(!importer->movieInfo(1));
    const AVMovieInfo* movie = importer->movieInfo(0);
    QCOMPARE(QString::fromUtf8(movie->name),
             QStringLiteral("Caf\u00e9 \u041c\u043e\u0441\u043a\u0432\u0430"));
    QCOMPARE(movie->id, 0);
    QCOMPARE(movie->format, "matroska,webm");
    QCOMPARE(movie->streamCount, 3U);
    QCOMPARE(textOf(movie->streams[0]), QString("1 h264   320x240 24000/1001 4:3 H264"));
    QCOMPARE(textOf(movie->streams[1]), QString("2 aac ger Ton 48000Hz 1ch 4"));
    QCOMPARE(textOf(movie->streams[2]), QString("2 ac3 fre  44100Hz 6ch 1551"));
    QCOMPARE(movie->streams[2].id, 2);
    QVERIFY(qAbs(movie->streams[0].duration - 3.0) < 0.1);
    // Tags are single bytes: what these cannot say is written with letters that they have.
    QStringList tags;
    for (unsigned i = 0; i < movie->metaCount; ++i)
        tags.append(QString::fromLatin1(movie->meta[i].key) + '=' +
                    QString::fromLatin1(movie->meta[i].value));
    QVERIFY(tags.contains(QStringLiteral("title=Caf\u00e9 Moskva")));
    QVERIFY2(
        !tags.filter(QRegularExpression("ARTIST=P.tr", QRegularExpression::CaseInsensitiveOption))
             .isEmpty(),
        qPrintable(tags.join(' ')));
}

void MediaTest::coversAreNoVideo()
{
    const ImporterPtr importer = openItem(fixtureUtf8("media/cover.mp3"));
    const AVMovieInfo* movie = importer->movieInfo(0);
    QCOMPARE(movie->streamCount, 2U);
    QCOMPARE(movie->streams[0].kind, int(StreamKindAudio));
    QCOMPARE(movie->streams[1].kind, 0);
    QVERIFY(!SourcePtr(importer->openSource(0, 1, 0)));
}

void MediaTest::tagsOfTheOnlyStreamAreTheMovies()
{
    const ImporterPtr importer = openItem(fixtureUtf8("media/tagged.ogg"));
    QCOMPARE(importer->movieInfo(0)->name, "In the stream");
}

void MediaTest::durations_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<double>("seconds");
    QTest::newRow("the stream's own") << "media/time-gop2s.mp4" << 20.0;
    QTest::newRow("the file's") << "media/time-matroska.mkv" << 20.0;
    QTest::newRow("starting late") << "media/time-starts-at-600.ts" << 20.0;
    QTest::newRow("program stream") << "media/time-program-stream.mpg" << 19.2;
}

void MediaTest::durations()
{
    QFETCH(QString, file);
    QFETCH(double, seconds);
    const ImporterPtr importer = openItem(fixtureUtf8(file));
    QVERIFY(importer);
    const double duration = importer->movieInfo(0)->streams[0].duration;
    QVERIFY2(qAbs(duration - seconds) < 0.9, qPrintable(QString::number(duration)));
}

void MediaTest::refuses_data()
{
    QTest::addColumn<QString>("file");
    for (const char* name : {"text.mp4", "zeros.avi", "empty.mp4", "picture.mp4", "subtitles.mkv",
                             "playlist.ts", "concat.mp4", "sparse.mp4", "sparse.mp3", "sparse.ts",
                             "missing.mp4", "", "one-frame.mp4/"})
        QTest::newRow(name) << QString("media/") + name;
}

void MediaTest::refuses()
{
    QFETCH(QString, file);
    QVERIFY(!openItem(fixtureUtf8(file)));
}

void MediaTest::neverOpensPipes()
{
    const QTemporaryDir folder;
    const QByteArray pipe = QFile::encodeName(folder.filePath("pipe.mp4"));
    QCOMPARE(mkfifo(pipe.constData(), 0600), 0);
    QVERIFY(!openItem(pipe));
    QVERIFY(!openItem("/dev/zero"));
}

void MediaTest::tellsProtectedFiles()
{
    const auto answer = [](const char* file) {
        const ImporterPtr importer = openItem(fixtureUtf8(file));
        if (!importer)
            return QByteArray("cannot be opened");
        auto* info = static_cast<IMovieInfoExt*>(importer->queryExtension("IMovieInfoExt"));
        return QByteArray(info->value("is_drm_encryption"));
    };
    QCOMPARE(answer("media/encrypted.mp4"), QByteArray("1"));
    QCOMPARE(answer("media/one-frame.mp4"), QByteArray("0"));
    QCOMPARE(answer("media/several.mkv"), QByteArray("0"));
    const ImporterPtr importer = openItem(fixtureUtf8("media/several.mkv"));
    QVERIFY(!importer->queryExtension("IDVDInfo"));
}

void MediaTest::holdsNothingWhileIdle()
{
    const int before = openFiles().size();
    const ImporterPtr importer = openItem(fixtureUtf8("media/time-gop2s.mp4"));
    QCOMPARE(openFiles().size(), before);
    SourcePtr source(importer->openSource(0, 0, -1));
    QVERIFY(openFiles().contains(fixturePath("media/time-gop2s.mp4")));
    source.reset();
    QCOMPARE(openFiles().size(), before);
}

void MediaTest::seeksToTheNearestKeyframe_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("position");
    QTest::addColumn<double>("keyframe");

    QTest::newRow("start") << "media/time-gop2s.mp4" << 0 << 0.0;
    QTest::newRow("before") << "media/time-gop2s.mp4" << 4900 << 4.0;
    QTest::newRow("behind") << "media/time-gop2s.mp4" << 5100 << 6.0;
    QTest::newRow("matroska, behind") << "media/time-matroska.mkv" << 5100 << 6.0;
    QTest::newRow("far behind the end") << "media/time-gop2s.mp4" << 500000 << 18.0;
    QTest::newRow("negative") << "media/time-gop2s.mp4" << -7 << 0.0;
}

void MediaTest::seeksToTheNearestKeyframe()
{
    QFETCH(QString, file);
    QFETCH(int, position);
    QFETCH(double, keyframe);

    const ImporterPtr importer = openItem(fixtureUtf8(file));
    QVERIFY(importer);
    const SourcePtr source(importer->openSource(0, 0, -1));
    QVERIFY(source);
    std::int64_t timeMs;
    IAVFrame* frame = frameAt(*source, position, 1, &timeMs);
    QVERIFY(frame);
    QCOMPARE(double(timeMs) / 1000.0, keyframe);
    QVERIFY(qAbs(secondOf(pictureOf(frame), 10.0) - keyframe) < 0.2);
}

void MediaTest::seeksWithoutAnIndex_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("position");
    for (const char* file : {"time-starts-at-600.ts", "time-program-stream.mpg", "time.flv"}) {
        for (const int position : {0, 200, 9000, 19500, 60000})
            QTest::addRow("%s at %d", file, position) << QString("media/") + file << position;
    }
}

/// A keyframe within its distance of the position, and the clock that goes with it.
void MediaTest::seeksWithoutAnIndex()
{
    QFETCH(QString, file);
    QFETCH(int, position);
    const ImporterPtr importer = openItem(fixtureUtf8(file));
    const SourcePtr source(importer->openSource(0, 0, -1));
    QVERIFY(source);
    std::int64_t timeMs;
    IAVFrame* frame = frameAt(*source, position, 4, &timeMs);
    QVERIFY(frame);
    const double shown = secondOf(pictureOf(frame), 10.0);
    const double wanted = std::min(position / 1000.0, 19.0);
    QVERIFY2(qAbs(shown - wanted) < 2.6, qPrintable(QString::number(shown)));
    // Not every frame of a program stream has a time.
    if (timeMs >= 0)
        QVERIFY(qAbs(shown - double(timeMs) / 1000.0) < 0.7);
}

void MediaTest::aMovieOfOneFrameHasAPicture()
{
    const ImporterPtr importer = openItem(fixtureUtf8("media/one-frame.mp4"));
    QVERIFY(importer);
    const SourcePtr source(importer->openSource(0, 0, -1));
    QVERIFY(source);
    QVERIFY(!pictureOf(frameAt(*source, 0)).isNull());
}

void MediaTest::onlyItsOwnStreamsCanBeOpened()
{
    const ImporterPtr importer = openItem(fixtureUtf8("media/several.mkv"));
    QVERIFY(SourcePtr(importer->openSource(0, 0, 1)));
    QVERIFY(!SourcePtr(importer->openSource(1, 0, 1)));
    QVERIFY(!SourcePtr(importer->openSource(0, 1, 1)));
    QVERIFY(!SourcePtr(importer->openSource(0, 3, -1)));
    QVERIFY(!SourcePtr(importer->openSource(0, -1, -1)));
}

/// Cut, overwritten and bit-flipped files are opened or not, give frames or not; they just end.
void MediaTest::damagedFilesDoNoHarm()
{
    const QTemporaryDir folder;
    std::mt19937 random(7);
    for (const char* name : {"time-gop2s.mp4", "several.mkv", "time-starts-at-600.ts", "time.flv",
                             "time-program-stream.mpg", "tagged.ogg", "cover.mp3",
                             "quarters-full-range.avi", "encrypted.mp4", "transparent.mov"}) {
        const QByteArray whole = contentOf(fixturePath(QString("media/") + name));
        QVERIFY(!whole.isEmpty());
        for (int round = 0; round < 12; ++round) {
            QByteArray damaged = whole.left(round % 3 == 0 ? int(random()) % whole.size() : -1);
            for (int i = 0; i < 20 * (round % 4) && !damaged.isEmpty(); ++i)
                damaged[int(random() % unsigned(damaged.size()))] = char(random());
            QFile file(folder.filePath(name));
            QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
            file.write(damaged);
            file.close();
            const ImporterPtr importer = openItem(QFile::encodeName(file.fileName()));
            const SourcePtr source(importer ? importer->openSource(0, 0, -1) : nullptr);
            if (source)
                pictureOf(frameAt(*source, 5000));
        }
    }
}

QTEST_GUILESS_MAIN(MediaTest)
#include "tst_media.moc"
