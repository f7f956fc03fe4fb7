// SPDX-License-Identifier: GPL-2.0-or-later
//
// The program from end to end, on discs: as folders, images and IFO files, alone and below folders.
#include "fixture.h"
#include "programrun.h"

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtGui/QImage>
#include <QtTest/QtTest>

namespace {

/// "name: duration in seconds, chapters, tracks, subtitles" of each title; "*" marks the main one.
QStringList titlesOf(const QJsonObject& dvd)
{
    QStringList texts;
    for (const QJsonValue& value : dvd.value("titles").toArray()) {
        const QJsonObject title = value.toObject();
        texts.append(
            QStringLiteral("%1%2: %3 %4 %5 %6")
                .arg(title.value("movieInfo").toObject().value("movieName").toString(),
                     title.value("isMainTitle").toBool() ? "*" : "")
                .arg(title.value("movieInfo").toObject().value("duration").toDouble(), 0, 'f', 1)
                .arg(title.value("chapters").toArray().size())
                .arg(title.value("trackCount").toInt())
                .arg(title.value("subtitles").toArray().size()));
    }
    return texts;
}

/// The second that a picture of the fixtures' clocks shows.
double secondShown(const QString& picture, double lumaStep)
{
    const QImage image(picture);
    if (image.isNull())
        return -1.0;
    return qGray(image.pixel(image.width() * 5 / 8, image.height() * 5 / 8)) * 219.0 / 255.0 /
           lumaStep;
}

void copyFolder(const QString& from, const QString& to)
{
    QVERIFY(QDir().mkpath(to));
    QDirIterator it(from, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        const QString copy = to + '/' + QDir(from).relativeFilePath(path);
        QVERIFY(QDir().mkpath(QFileInfo(copy).absolutePath()));
        QVERIFY(QFile::copy(path, copy));
    }
}

} // namespace

class DiscsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void dvds_data();
    void dvds();
    void dvdPicturesShowTheMiddleOfTheirChapters_data();
    void dvdPicturesShowTheMiddleOfTheirChapters();
    void largeIfoFilesStandForTheirTitleSet();
    void blurays_data();
    void blurays();
    void discsBelowAFolder();
    void discsWithoutTheirVideo();
    void namesFromDiscsStayInTheFolder();
    void damagedDiscsAreReported_data();
    void damagedDiscsAreReported();
};

void DiscsTest::dvds_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("name");
    QTest::newRow("folder") << "dvd/PAL_FILM"
                            << "PAL_FILM";
    QTest::newRow("image") << "dvd/pal.iso"
                           << "PAL_VOLUME";
    QTest::newRow("ifo file") << "dvd/PAL_FILM/VIDEO_TS/VIDEO_TS.IFO"
                              << "PAL_FILM";
    QTest::newRow("inner folder") << "dvd/PAL_FILM/VIDEO_TS/"
                                  << "PAL_FILM";
}

void DiscsTest::dvds()
{
    QFETCH(QString, source);
    QFETCH(QString, name);
    ProgramRun program;
    const QJsonObject result = program.import({"--for", "play", fixturePath(source)});
    QCOMPARE(program.status, 0);
    QCOMPARE(result.value("tasks").toArray().size(), 1);
    const QJsonObject task = result.value("tasks").toArray().first().toObject();
    QCOMPARE(task.value("taskType").toString(), QString("DvdTask"));
    const QJsonObject dvd = task.value("dvdInfo").toObject();
    QCOMPARE(dvd.value("dvdName").toString(), name);
    QCOMPARE(dvd.value("isScrambled").toBool(), false);
    // The second title is shorter than two seconds; it keeps its number.
    QCOMPARE(titlesOf(dvd), QStringList({name + " _1: 20.0 3 2 2", name + " _3*: 21.2 2 2 2",
                                         name + " _4: 10.0 3 2 0"}));
}

void DiscsTest::dvdPicturesShowTheMiddleOfTheirChapters_data()
{
    QTest::addColumn<QString>("source");
    QTest::newRow("folder") << "dvd/PAL_FILM";
    QTest::newRow("image") << "dvd/pal.iso";
    QTest::newRow("ntsc") << "dvd/NTSC_FILM";
}

void DiscsTest::dvdPicturesShowTheMiddleOfTheirChapters()
{
    QFETCH(QString, source);
    ProgramRun program;
    const QJsonObject result = program.import({fixturePath(source)});
    const QJsonObject dvd =
        result.value("tasks").toArray().first().toObject().value("dvdInfo").toObject();
    int pictures = 0;
    const QJsonArray titles = dvd.value("titles").toArray();
    for (int i = 0; i < titles.size(); ++i) {
        const QString name =
            titles.at(i).toObject().value("movieInfo").toObject().value("movieName").toString();
        const double step = name.endsWith("_4") ? 20.0 : 10.0;
        const QJsonArray chapters = titles.at(i).toObject().value("chapters").toArray();
        for (int j = 0; j < chapters.size(); ++j, ++pictures) {
            const QJsonObject chapter = chapters.at(j).toObject();
            const double middle =
                (chapter.value("timeStart").toDouble() + chapter.value("timeEnd").toDouble()) / 2;
            const QString picture = QStringLiteral("%1/%2-title-%3-chapter-%4.jpg")
                                        .arg(dvd.value("dvdName").toString(), name,
                                             QString::number(i + 1), QString::number(j + 1));
            const double shown = secondShown(program.path("pictures/" + picture), step);
            QVERIFY2(
                qAbs(shown - middle) < 0.6,
                qPrintable(QStringLiteral("%1: %2 for %3").arg(picture).arg(shown).arg(middle)));
        }
    }
    QVERIFY(pictures >= 4);
    QCOMPARE(program.pictures().size(), pictures);
}

/// A small IFO file is found through its folder; one above ten megabytes the import takes by
/// itself.
void DiscsTest::largeIfoFilesStandForTheirTitleSet()
{
    ProgramRun program;
    copyFolder(fixturePath("dvd/PAL_FILM"), program.path("DISC"));
    const QString set = program.path("DISC/VIDEO_TS/VTS_02_0.IFO");
    QVERIFY(QFile::setPermissions(set, QFile::ReadOwner | QFile::WriteOwner));
    QVERIFY(QFile::resize(set, 11 * 1024 * 1024));
    const QJsonObject result = program.import({set});
    const QJsonObject task = result.value("tasks").toArray().first().toObject();
    QCOMPARE(task.value("url").toString(), set + '/');
    QCOMPARE(titlesOf(task.value("dvdInfo").toObject()), QStringList("DISC _4*: 10.0 3 2 0"));
    QCOMPARE(program.pictures().size(), 3);
    QCOMPARE(program.pictures().first(), QString("DISC/DISC _4-title-1-chapter-1.jpg"));
}

void DiscsTest::blurays_data()
{
    QTest::addColumn<QString>("source");
    QTest::newRow("folder") << "bluray/disc";
    QTest::newRow("its index file") << "bluray/disc/BDMV/index.bdmv";
    QTest::newRow("image, UDF 2.50") << "bluray/disc-250.iso";
    QTest::newRow("image, UDF 1.02") << "bluray/disc-102.iso";
}

void DiscsTest::blurays()
{
    QFETCH(QString, source);
    ProgramRun program;
    const QJsonObject result = program.import({fixturePath(source)});
    QCOMPARE(program.status, 0);
    const QJsonObject disc =
        result.value("tasks").toArray().first().toObject().value("bdInfo").toObject();
    QCOMPARE(disc.value("bdName").toString(), QString("Clock & Corner"));

    QStringList titles;
    for (const QJsonValue& value : disc.value("titles").toArray()) {
        const QJsonObject title = value.toObject();
        QStringList stamps;
        for (const QJsonValue& chapter : title.value("chapters").toArray())
            stamps.append(
                QString::number(chapter.toObject().value("timeStamp").toDouble(), 'f', 1));
        titles.append(QStringLiteral("%1: %2 %3 at %4")
                          .arg(title.value("titleId").toInt())
                          .arg(title.value("duration").toDouble(), 0, 'f', 2)
                          .arg(title.value("clips").toArray().size())
                          .arg(stamps.join(' ')));
    }
    QCOMPARE(titles, QStringList({"0: 25.00 2 at 0.0 6.0 14.0", "1: 12.00 2 at 0.0 4.0",
                                  "2: 0.04 1 at 0.0"}));

    // A tenth into the clip, which may be the title's or a chapter's that starts with it.
    const struct
    {
        const char* picture;
        double earliest;
        double latest;
    } expected[] = {{"clip-0-file-00001", 0.4, 0.4},   {"clip-1-file-00001", 5.4, 6.5},
                    {"clip-2-file-00001", 10.1, 10.1}, {"clip-3-file-00001", 10.8, 10.8},
                    {"clip-0-file-00002", 0.6, 1.0},   {"clip-1-file-00002", 6.4, 6.4},
                    {"clip-0-file-00003", 0.0, 0.0}};
    QCOMPARE(program.pictures().size(), int(sizeof(expected) / sizeof(expected[0])));
    for (const auto& row : expected) {
        const QString path =
            program.path(QStringLiteral("pictures/Clock & Corner/%1.jpg").arg(row.picture));
        const double shown = secondShown(path, 10.0);
        QVERIFY2(shown > row.earliest - 0.6 && shown < row.latest + 0.6,
                 qPrintable(QStringLiteral("%1: %2").arg(row.picture).arg(shown)));
        // The corner tells the stream file: black, white, grey.
        const int corner = qGray(QImage(path).pixel(10, 6));
        const char file = row.picture[strlen(row.picture) - 1];
        QVERIFY(file == '1'   ? corner < 40
                : file == '2' ? corner > 215
                              : corner > 90 && corner < 170);
    }
    QCOMPARE(program.leftBehind(), QStringList());
}

void DiscsTest::discsBelowAFolder()
{
    ProgramRun program;
    copyFolder(fixturePath("dvd/NTSC_FILM"), program.path("library/a/NTSC"));
    copyFolder(fixturePath("bluray/disc"), program.path("library/b/c/Blu"));
    QVERIFY(QFile::copy(fixturePath("dvd/pal.iso"), program.path("library/pal.ISO")));
    QVERIFY(QFile::copy(fixturePath("dvd/data.iso"), program.path("library/data.iso")));
    const QJsonObject result = program.import({program.path("library")});
    QCOMPARE(ProgramRun::taskUrls(result),
             QStringList({program.path("library/a/NTSC/"), program.path("library/b/c/Blu"),
                          program.path("library/pal.ISO")}));
    QCOMPARE(ProgramRun::errors(result),
             QStringList("ErrorImportFalsed " + program.path("library/data.iso")));
    QVERIFY(program.output.contains("main title"));
    QVERIFY2(program.errorOutput.isEmpty(), program.errorOutput.constData());
}

void DiscsTest::discsWithoutTheirVideo()
{
    ProgramRun program;
    copyFolder(fixturePath("dvd/PAL_FILM"), program.path("dvd"));
    for (const QString& vob : QDir(program.path("dvd/VIDEO_TS")).entryList({"*.VOB"}))
        QVERIFY(QFile::remove(program.path("dvd/VIDEO_TS/" + vob)));
    copyFolder(fixturePath("bluray/disc"), program.path("bluray"));
    QVERIFY(QDir(program.path("bluray/BDMV/STREAM")).removeRecursively());
    const QJsonObject result = program.import({program.path("dvd"), program.path("bluray")});
    QCOMPARE(program.status, 0);
    QCOMPARE(titlesOf(result.value("tasks").toArray().at(0).toObject().value("dvdInfo").toObject())
                 .size(),
             3);
    const QJsonObject disc =
        result.value("tasks").toArray().at(1).toObject().value("bdInfo").toObject();
    QCOMPARE(disc.value("titles").toArray().size(), 3);
    QCOMPARE(disc.value("files").toArray().size(), 3);
    QCOMPARE(program.pictures(), QStringList());
}

void DiscsTest::namesFromDiscsStayInTheFolder()
{
    ProgramRun program;
    copyFolder(fixturePath("dvd/NTSC_FILM"), program.path("%1%2 back\\slash _1"));
    copyFolder(fixturePath("bluray/disc"), program.path("blu"));
    program.file("blu/BDMV/META/DL/bdmt_eng.xml",
                 "<?xml version=\"1.0\"?><disclib xmlns:di=\"urn:BDA:bdmv;discinfo\"><di:discinfo>"
                 "<di:title><di:name>../../%3/out</di:name></di:title></di:discinfo></disclib>");
    const QJsonObject result =
        program.import({program.path("%1%2 back\\slash _1"), program.path("blu")});
    QCOMPARE(result.value("tasks").toArray().size(), 2);
    const QStringList pictures = program.pictures();
    QCOMPARE(pictures.filter("%1%2 back_slash _1/").size(), 4);
    QCOMPARE(pictures.filter("___.._%3_out/").size(), 7);
    QCOMPARE(pictures.size(), 11);
}

void DiscsTest::damagedDiscsAreReported_data()
{
    QTest::addColumn<QString>("script"); ///< makes "disc" from $dvd or $bluray
    QTest::newRow("VIDEO_TS is a file") << "mkdir disc; echo x > disc/VIDEO_TS";
    QTest::newRow("BDMV is a file") << "mkdir disc; echo x > disc/BDMV";
    QTest::newRow("empty VIDEO_TS") << "mkdir -p disc/VIDEO_TS";
    QTest::newRow("no IFO at all") << "cp -r $dvd disc; rm disc/VIDEO_TS/*.IFO disc/VIDEO_TS/*.BUP";
    QTest::newRow("nothing but an index")
        << "mkdir -p disc/BDMV; cp $bluray/BDMV/index.bdmv disc/BDMV";
}

/// One error with the path, and nothing else.
void DiscsTest::damagedDiscsAreReported()
{
    QFETCH(QString, script);
    ProgramRun program;
    program.shell(QStringLiteral("dvd=%1; bluray=%2; %3; chmod -R u+w disc")
                      .arg(fixturePath("dvd/PAL_FILM"), fixturePath("bluray/disc"), script));
    QVERIFY(QFile::exists(program.path("disc")));
    const QJsonObject result = program.import({program.path("disc")});
    QCOMPARE(program.status, 1);
    QCOMPARE(ProgramRun::errors(result), QStringList("ErrorImportFalsed " + program.path("disc")));
    QVERIFY2(program.errorOutput.isEmpty(), program.errorOutput.constData());
    QCOMPARE(program.pictures(), QStringList());
}

QTEST_GUILESS_MAIN(DiscsTest)
#include "tst_discs.moc"
