// SPDX-License-Identifier: GPL-2.0-or-later
//
// The program from end to end, on what people have: sources of the same name, folders with all
// kinds of files, and more than one import takes.
#include "programrun.h"

#include <QtTest/QtTest>

#include <QtCore/QDateTime>
#include <QtCore/QJsonDocument>

namespace {

/// An MP4 file with zeros in the place of all that could be decoded.
QByteArray withoutSamples(QByteArray film)
{
    const int start = film.indexOf("mdat") + 4;
    const int end = film.indexOf("moov") - 4;
    return film.replace(start, end - start, QByteArray(end - start, '\0'));
}

QByteArray asItIs(QByteArray film)
{
    return film;
}

/// A copy of a fixture, of a time that is always the same: pictures' names hold it.
QString copyOf(const QString& fixture, const QString& path,
               QByteArray (*change)(QByteArray) = asItIs)
{
    writeFile(path, change(contentOf(fixturePath(fixture))));
    QFile file(path);
    const bool isSet = file.open(QIODevice::ReadWrite) &&
                       file.setFileTime(QDateTime::fromSecsSinceEpoch(1600000000),
                                        QFileDevice::FileModificationTime);
    return isSet ? path : QString();
}

QRgb colourAt(const QString& picture, int x, int y)
{
    const QImage image(picture);
    return image.isNull() ? 0 : image.pixel(x, y) & 0x00808080; // what compression leaves of it
}

/// All values in `output`, a line of JSON each, by their paths.
QMap<QString, QJsonObject> linesByPath(const QByteArray& output)
{
    QMap<QString, QJsonObject> lines;
    for (const QByteArray& line : output.split('\n')) {
        const QJsonObject object = QJsonDocument::fromJson(line).object();
        if (!object.isEmpty())
            lines.insert(textAt(object, "url"), object);
    }
    return lines;
}

} // namespace

class LibrariesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// The module calls pictures by names and times, so that these have the same.
    void nobodyIsShownAnothersPicture()
    {
        ProgramRun program;
        const QString turned = copyOf("media/quarters-turned-180.mp4", program.path("a/x.mp4"));
        const QString upright = copyOf("media/quarters-upright.mp4", program.path("b/x.mp4"));
        const auto pictureOf = [&program](const QString& path) {
            const QJsonValue task = ProgramRun::task(program.result(), path);
            return textAt(task, "movieInfo/imageFile");
        };
        // In one run, and in each order in runs of their own, whether or not the index is there.
        for (const QStringList& sources :
             {QStringList({turned, upright}), {upright}, {turned}, {upright, turned}}) {
            program.import(sources);
            QCOMPARE(program.status, 0);
            for (const QString& source : sources) {
                const QRgb expected = source == turned ? 0x00808080 : 0x00800000;
                QCOMPARE(colourAt(pictureOf(source), 60, 45), expected);
            }
            QCOMPARE(program.pictures().size(), 2);
        }
        // What cannot be had of one stays away when another has it; without the index, or with one
        // that is none, nobody knows whose the pictures are.
        copyOf("media/quarters-upright.mp4", program.path("0/x.mp4"), withoutSamples);
        for (const char* prepare : {"rm -r pictures", "rm -r pictures/.index",
                                    "echo no index > pictures/.index/pictures.sqlite",
                                    "cd pictures/.index; rm *.sqlite; mkfifo pictures.sqlite",
                                    "sqlite3 pictures/.index/pictures.sqlite 'drop table pictures; "
                                    "create table pictures(a)'",
                                    "rm -r pictures/.index; touch pictures/.index"}) {
            QCOMPARE(program.shell(prepare), 0);
            program.import({program.path("0/x.mp4"), turned, upright});
            const QString none = pictureOf(program.path("0/x.mp4"));
            QVERIFY2(!none.isEmpty() && !QFile::exists(none), prepare);
            for (const QString& source : {turned, upright}) {
                const QRgb expected = source == turned ? 0x00808080 : 0x00800000;
                QVERIFY2(colourAt(pictureOf(source), 60, 45) == expected, prepare);
            }
        }
        QCOMPARE(program.shell("rm -r pictures/.index; cp a/x.mp4 b/x.mp4"), 0);
        copyOf("media/quarters-turned-180.mp4", upright); // at its path, now other content
        program.import({upright});
        QCOMPARE(colourAt(pictureOf(upright), 60, 45), QRgb(0x00808080));
        QCOMPARE(program.errorOutput, QByteArray());

        QCOMPARE(program.shell("rm -r pictures; mkdir -p pictures/x-1600000000.jpg/x;"
                               "$vspimport --json result.json a"),
                 0);
        QVERIFY(program.errorOutput.contains("no pictures could be made of"));
        QCOMPARE(pictureOf(turned), QString());

        // Nor in processes at once.
        for (int i = 0; i < 10; ++i) {
            copyOf("media/quarters-turned-180.mp4", program.path(QString("c/%1.mp4").arg(i)));
            copyOf("media/quarters-upright.mp4", program.path(QString("d/%1.mp4").arg(i)));
        }
        for (int run = 0; run < 3; ++run) {
            program.shell(
                "rm -r pictures; for d in c d; do $vspimport --json $d.json $d & done; wait");
            for (const char* folder : {"c", "d"}) {
                const QByteArray json = contentOf(program.path(folder) + ".json");
                const QJsonArray tasks =
                    at(QJsonDocument::fromJson(json).object(), "tasks").toArray();
                QCOMPARE(tasks.size(), 10);
                for (const QJsonValue& task : tasks) {
                    QCOMPARE(colourAt(textAt(task, "movieInfo/imageFile"), 60, 45),
                             QRgb(*folder == 'c' ? 0x00808080 : 0x00800000));
                }
            }
        }
    }

    void discsOfOneNameHavePicturesOfTheirOwn()
    {
        ProgramRun program;
        copyFolder(fixturePath("dvd/PAL_FILM"), program.path("a/DVD"));
        copyFolder(fixturePath("dvd/NTSC_FILM"), program.path("b/DVD"));
        for (int run = 0; run < 2; ++run) {
            const QJsonObject result = program.import({program.path("a"), program.path("b")});
            QSet<QString> pictures;
            for (const QJsonValue& task : at(result, "tasks").toArray()) {
                for (const QJsonValue& title : at(task, "dvdInfo/titles").toArray()) {
                    for (const QJsonValue& chapter : at(title, "chapters").toArray())
                        pictures << textAt(chapter, "imageFile");
                }
            }
            QCOMPARE(pictures.size(), 8 + 4);
            for (const QString& picture : pictures)
                QVERIFY2(QFile::exists(picture), qPrintable(picture));
            QCOMPARE(program.pictures().size(), pictures.size());
        }
        QCOMPARE(program.output.count("main title"), 2);
    }

    void filesOfOtherKindsAreOneLine()
    {
        ProgramRun program;
        copyOf("media/one-frame.mp4", program.path("films/b/film.mp4"));
        copyOf("media/quarters-turned-90.mp4", program.path("films/a.mp4"));
        for (const char* name : {"film.nfo", "film.JPG", "b/film.jpg", "README"})
            program.file(QString("films/") + name, "text");
        program.run({program.path("films")});
        QCOMPARE(program.status, 0);
        QCOMPARE(QString(program.output).replace(QRegularExpression(", 0:00:0.*"), ""),
                 QString("video     0:00:00  180x320    h264                a.mp4\n"
                         "video     0:00:00  320x180    h264                b/film.mp4\n\n"
                         "4 of other kinds: .jpg 2, without suffix 1, .nfo 1\n\n"
                         "2 imported (2 video)\nPictures: ") +
                     program.path("pictures") + '\n');
        program.run({program.path("films/film.nfo")});
        QCOMPARE(program.status, 1);
        QVERIFY(program.output.contains("film.nfo: not among the formats to import\n"));
    }

    /// The same items come as one document, as lines, and shared between three.
    void itemsComeAsLinesAndInParts()
    {
        ProgramRun program;
        copyFolder(fixturePath("bluray/disc"), program.path("all/discs/Blu"));
        copyFolder(fixturePath("dvd/NTSC_FILM"), program.path("all/discs/NTSC"));
        for (int i = 0; i < 12; ++i)
            copyOf("media/one-frame.mp4", program.path(QString("all/%1.mp4").arg(i)));
        program.file("all/.hidden.mp4", "text");
        program.shell("cd all; touch $(printf '\\351.nfo \\351.mp4')");
        program.file("all/bad.mp4", "text");
        program.file("all/film.nfo", "text");
        QVERIFY(QFile::link("..", program.path("all/discs/loop")));

        const QJsonObject whole = program.import({"all"});
        QMap<QString, QJsonObject> expected;
        for (const QJsonValue& task : at(whole, "tasks").toArray())
            expected.insert(textAt(task, "url"), task.toObject());
        for (const QJsonValue& error : at(whole, "errors").toArray()) {
            if (!textAt(error, "url").endsWith(".nfo"))
                expected.insert(textAt(error, "url"), error.toObject());
        }
        QCOMPARE(expected.size(), 16);

        for (const char* script :
             {"$vspimport --json-lines - all",
              "find all -name '*.mp4' -o -name Blu -o -name NTSC | "
              "$vspimport --files-from - --json-lines - --formats .MP4,mkv",
              "printf 'all\\0' | $vspimport --quiet --files0-from - --json-lines lines; cat lines",
              "for i in 1 2 3; do $vspimport --quiet --shard $i/3 --json-lines - all > $i; done;"
              "for i in 1 2 3; do test -s $i || echo {}; done; cat 1 2 3"}) {
            program.shell(script);
            const int lines = program.output.count('\n');
            QMap<QString, QJsonObject> found = linesByPath(program.output);
            found.remove(program.path("all/.hidden.mp4")); // when it is named, it counts
            QVERIFY2(lines - 16 <= 1 && found == expected, qPrintable(script + program.output));
        }
        // Where nobody takes them the import ends.
        QCOMPARE(program.shell("$vspimport --json-lines /dev/full all"), 2);
    }

    /// All that a machine reads is as its schema says.
    void outputIsAsItsSchemaSays()
    {
        ProgramRun program;
        const QString fixtures = fixturePath("");
        for (const char* script :
             {"$vspimport --quiet --report report --json json FIXTURES; CHECK document json",
              "$vspimport --json-lines lines FIXTURES > /dev/null; CHECK 'item|failure' lines",
              "$vspimport --events FIXTURES > events; CHECK event events",
              "PROGRAM report --json report > errors; CHECK report errors"}) {
            QCOMPARE(program.shell(QString(script)
                                       .replace("FIXTURES", fixtures)
                                       .replace("PROGRAM", PROGRAM)
                                       .replace("CHECK", CHECK_OUTPUT " " SCHEMA)),
                     0);
            QCOMPARE(program.output, QByteArray());
        }
    }
};

QTEST_GUILESS_MAIN(LibrariesTest)
#include "tst_libraries.moc"
