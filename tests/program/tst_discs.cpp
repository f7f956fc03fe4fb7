// SPDX-License-Identifier: GPL-2.0-or-later
//
// The program from end to end, on discs: as folders, images and IFO files, alone and below folders.
#include "programrun.h"

#include <QtTest/QtTest>

namespace {

/// Of each title the duration in seconds and how many chapters, tracks and subtitles it has.
QString titlesOf(const QJsonValue& dvd)
{
    QStringList texts;
    for (const QJsonValue& title : at(dvd, "titles").toArray()) {
        texts << QString("%1 %2 %3 %4")
                     .arg(at(title, "movieInfo/duration").toDouble(), 0, 'f', 1)
                     .arg(at(title, "chapters").toArray().size())
                     .arg(at(title, "trackCount").toInt())
                     .arg(at(title, "subtitles").toArray().size());
        texts.last() += at(title, "isMainTitle").toBool() ? " main" : "";
    }
    return texts.join(", ");
}

/// The second that a picture shows; -1 when there is none.
double secondShown(const QString& path, double lumaStep)
{
    const QImage picture(path);
    return picture.isNull() ? -1.0 : secondOf(picture, lumaStep);
}

} // namespace

class DiscsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// `seconds` are the middles of all chapters, in the order of their pictures' names.
    void dvds()
    {
        const auto expect = [](const QString& source, const QString& name, const QString& titles,
                               const QList<double>& seconds) {
            ProgramRun program;
            const QJsonValue task = at(program.import({fixturePath(source)}), "tasks/0");
            QCOMPARE(program.status, 0);
            QCOMPARE(textAt(task, "taskType") + ' ' + textAt(task, "dvdInfo/dvdName") + ": " +
                         titlesOf(at(task, "dvdInfo")),
                     "DvdTask " + name + ": " + titles);
            QCOMPARE(at(task, "dvdInfo/isScrambled"), QJsonValue(false));
            const QStringList pictures = program.pictures();
            QCOMPARE(pictures.size(), seconds.size());
            QCOMPARE(pictures[0], name + '/' + name + " _1-title-1-chapter-1.jpg");
            for (int i = 0; i < pictures.size(); ++i) {
                const double step = pictures[i].contains(" _4-") ? 20.0 : 10.0;
                const double shown = secondShown(program.path("pictures/" + pictures[i]), step);
                QVERIFY2(qAbs(shown - seconds[i]) < 0.6, qPrintable(pictures[i]));
            }
        };
        // The second title is shorter than two seconds; it keeps its number.
        const QString film = "20.0 3 2 2, 21.2 2 2 2 main, 10.0 3 2 0";
        const QList<double> middles = {2.4, 9.2, 16.0, 5.0, 15.0, 1.4, 4.4, 8.0};
        expect("dvd/PAL_FILM", "PAL_FILM", film, middles);
        expect("dvd/PAL_FILM/VIDEO_TS/VIDEO_TS.IFO", "PAL_FILM", film, middles);
        expect("dvd/PAL_FILM/VIDEO_TS/", "PAL_FILM", film, middles);
        expect("dvd/pal.iso", "PAL_VOLUME", film, middles);
        expect("dvd/NTSC_FILM", "NTSC_FILM", "20.0 4 2 0 main", {2.5, 7.4, 12.4, 17.5});
    }

    /// A small IFO file is found through its folder; one above ten megabytes the import takes by
    /// itself.
    void largeIfoFilesStandForTheirTitleSet()
    {
        ProgramRun program;
        copyFolder(fixturePath("dvd/PAL_FILM"), program.path("DISC"));
        const QString set = program.path("DISC/VIDEO_TS/VTS_02_0.IFO");
        QVERIFY(QFile::resize(set, 11 * 1024 * 1024));
        const QJsonValue task = at(program.import({set}), "tasks/0");
        QCOMPARE(textAt(task, "url"), set + '/');
        QCOMPARE(titlesOf(at(task, "dvdInfo")), QString("10.0 3 2 0 main"));
        QCOMPARE(program.pictures().size(), 3);
        QCOMPARE(program.pictures().first(), QString("DISC/DISC _4-title-1-chapter-1.jpg"));
    }

    void blurays()
    {
        for (const char* source : {"bluray/disc", "bluray/disc/BDMV/index.bdmv",
                                   "bluray/disc-250.iso", "bluray/disc-102.iso"}) {
            ProgramRun program;
            const QJsonValue disc = at(program.import({fixturePath(source)}), "tasks/0/bdInfo");
            QCOMPARE(program.status, 0);
            QCOMPARE(textAt(disc, "bdName"), QString("Clock & Corner"));
            QStringList titles;
            for (const QJsonValue& title : at(disc, "titles").toArray()) {
                QStringList stamps;
                for (const QJsonValue& chapter : at(title, "chapters").toArray())
                    stamps << QString::number(at(chapter, "timeStamp").toDouble(), 'f', 1);
                titles << QString("%1: %2 %3 at %4")
                              .arg(at(title, "titleId").toInt())
                              .arg(at(title, "duration").toDouble(), 0, 'f', 2)
                              .arg(at(title, "clips").toArray().size())
                              .arg(stamps.join(' '));
            }
            QCOMPARE(titles, QStringList({"0: 25.00 2 at 0.0 6.0 14.0", "1: 12.00 2 at 0.0 4.0",
                                          "2: 0.04 1 at 0.0"}));
            QCOMPARE(textAt(disc, "files/1/movieInfo/movieName"), QString("00002.m2ts"));
            QCOMPARE(at(disc, "files/0/snapClips").toArray(), QJsonArray({3, 0, 2, 4}));
            QVERIFY(QFile::exists(textAt(disc, "files/0/clips/3/imageFile")));

            // A tenth into the clip, which may be the title's or a chapter's that starts with it.
            const struct
            {
                const char* name;
                double earliest;
                double latest;
            } expected[] = {{"clip-0-file-00001", 0.4, 0.4},   {"clip-1-file-00001", 5.4, 6.5},
                            {"clip-2-file-00001", 10.1, 10.1}, {"clip-3-file-00001", 10.8, 10.8},
                            {"clip-0-file-00002", 0.6, 1.0},   {"clip-1-file-00002", 6.4, 6.4},
                            {"clip-0-file-00003", 0.0, 0.0}};
            QCOMPARE(program.pictures().size(), int(std::size(expected)));
            for (const auto& picture : expected) {
                const QString path =
                    program.path(QString("pictures/Clock & Corner/%1.jpg").arg(picture.name));
                const double shown = secondShown(path, 10.0);
                QVERIFY2(shown > picture.earliest - 0.6 && shown < picture.latest + 0.6,
                         qPrintable(QString("%1: %2").arg(picture.name).arg(shown)));
                // The corner tells the stream file: black, white, grey.
                const int corner = qGray(QImage(path).pixel(10, 6));
                const char file = corner < 40 ? '1' : corner > 215 ? '2' : '3';
                QCOMPARE(file, QByteArray(picture.name).back());
            }
            QCOMPARE(program.leftBehind(), QStringList());
        }
    }

    /// Some are whole, some have lost their video, and others are none: for these there is one
    /// error each, and nothing else.
    void discsBelowAFolder()
    {
        ProgramRun program;
        const QString folder = program.path("library/");
        copyFolder(fixturePath("dvd/NTSC_FILM"), folder + "a/NTSC");
        copyFolder(fixturePath("dvd/NTSC_FILM"), folder + "a/no-video");
        QVERIFY(QFile::remove(folder + "a/no-video/VIDEO_TS/VTS_01_1.VOB"));
        copyFolder(fixturePath("bluray/disc"), folder + "b/c/Blu");
        copyFolder(fixturePath("bluray/disc"), folder + "b/no-video");
        QVERIFY(QDir(folder + "b/no-video/BDMV/STREAM").removeRecursively());
        QVERIFY(QFile::copy(fixturePath("dvd/pal.iso"), folder + "pal.ISO"));
        QVERIFY(QFile::copy(fixturePath("dvd/data.iso"), folder + "none-data.iso"));
        writeFile(folder + "none-1/VIDEO_TS", "a file");
        writeFile(folder + "none-2/BDMV", "a file");
        QVERIFY(QDir().mkpath(folder + "none-3/VIDEO_TS"));
        copyFolder(fixturePath("bluray/disc/BDMV/PLAYLIST"), folder + "none-4/BDMV/META");

        const QJsonObject result = program.import({folder});
        QCOMPARE(ProgramRun::taskUrls(result),
                 QStringList({folder + "a/NTSC/", folder + "a/no-video/", folder + "b/c/Blu",
                              folder + "b/no-video", folder + "pal.ISO"}));
        QStringList errors;
        for (const char* name : {"none-1", "none-2", "none-3", "none-4", "none-data.iso"})
            errors << "ErrorImportFalsed " + folder + name;
        QCOMPARE(ProgramRun::errors(result), errors);
        const QJsonValue disc = at(ProgramRun::task(result, folder + "b/no-video"), "bdInfo");
        QCOMPARE(at(disc, "titles").toArray().size(), 3);
        QCOMPARE(at(disc, "files").toArray().size(), 3);
        QCOMPARE(program.pictures().filter("no-video"), QStringList());
        QVERIFY(program.output.contains("main title"));
        QCOMPARE(program.errorOutput, QByteArray());
    }

    /// What the import does not say: that there was no room for them on the disk, or in memory.
    void saysWhyPicturesAreLost()
    {
        ProgramRun program;
        program.shell("TMPDIR=/proc $vspimport " + fixturePath("bluray/disc"));
        QCOMPARE(program.errorOutput.count("/proc cannot be written to"), 1);
        QCOMPARE(program.pictures(), QStringList());
        for (int kib = 180000; kib < 240000; kib += 2000) {
            ProgramRun limited;
            limited.shell(
                QString("ulimit -v %1; $vspimport %2").arg(kib).arg(fixturePath("dvd/PAL_FILM")));
            QVERIFY2(limited.status != 0 || limited.pictures().size() == 8,
                     qPrintable(QString::number(kib)));
        }
    }

    void namesFromDiscsStayInTheFolder()
    {
        ProgramRun program;
        copyFolder(fixturePath("dvd/NTSC_FILM"), program.path("%1%2 back\\slash _1"));
        copyFolder(fixturePath("bluray/disc"), program.path("blu"));
        program.file(
            "blu/BDMV/META/DL/bdmt_eng.xml",
            "<?xml version=\"1.0\"?><disclib xmlns:di=\"urn:BDA:bdmv;discinfo\"><di:discinfo>"
            "<di:title><di:name>../../%3/out</di:name></di:title></di:discinfo></disclib>");
        program.import({program.path("%1%2 back\\slash _1"), program.path("blu")});
        const QStringList pictures = program.pictures();
        QCOMPARE(pictures.filter("%1%2 back_slash _1/").size(), 4);
        QCOMPARE(pictures.filter("___.._%3_out/").size(), 7);
        QCOMPARE(pictures.size(), 11);
    }
};

QTEST_GUILESS_MAIN(DiscsTest)
#include "tst_discs.moc"
