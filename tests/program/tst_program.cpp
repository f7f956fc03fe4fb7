// SPDX-License-Identifier: GPL-2.0-or-later
//
// The program from end to end, on media files.
#include "programrun.h"

#include <QtCore/QJsonDocument>

#include <csignal>

namespace {

QByteArray smallVideo()
{
    return contentOf(fixturePath("media/one-frame.mp4"));
}

/// The picture of a video task; its URL is the path behind a prefix.
QString pictureOf(const QJsonValue& task)
{
    const QString path = textAt(task, "movieInfo/imageFile");
    return textAt(task, "movieInfo/imageUrl") == "file://" + path ? path : QString();
}

QStringList textsAt(const QJsonValue& value, const QString& paths)
{
    QStringList texts;
    for (const QString& path : paths.split(' '))
        texts << textAt(value, path);
    return texts;
}

/// Fills `folder` with links to one video, so that a large library costs nothing.
void makeLibrary(const QString& folder, int count)
{
    const QString video = writeFile(folder + "/0.mp4", smallVideo());
    for (int i = 1; i < count; ++i)
        QVERIFY(QFile::link(video, QString("%1/%2.mp4").arg(folder).arg(i)));
}

} // namespace

class ProgramTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void importsAFolder()
    {
        ProgramRun program;
        const QJsonObject result = program.import({fixturePath("media")});
        QCOMPARE(program.status, 1);
        QCOMPARE(textsAt(result, "sources/0 stopped importPercent snapPercent"),
                 fixturePath("media") + ", false, 100, 100");
        QVERIFY(ProgramRun::errors(result).contains("ErrorImportFalsed " +
                                                    fixturePath("media/text.mp4")));

        const QJsonValue audio = ProgramRun::task(result, fixturePath("media/cover.mp3"));
        QCOMPARE(textsAt(audio, "taskType movieInfo/imageUrl movieInfo/imageFile"),
                 "AudioTask, , ");
        const QJsonValue video = ProgramRun::task(result, fixturePath("media/several.mkv"));
        QCOMPARE(textsAt(video, "taskType movieInfo/fileName movieInfo/movieName "
                                "movieInfo/metadata/0/value"),
                 u8"VideoTask, several.mkv, Café Москва, Café Moskva");
        const auto stream = [&video](int index) {
            QJsonObject object = at(video, QString("movieInfo/streams/%1").arg(index)).toObject();
            object.remove("duration");
            return QJsonDocument(object).toJson(QJsonDocument::Compact).replace('"', "");
        };
        QCOMPARE(stream(0),
                 QByteArray("{aspectRatio:4:3,bitrate:0,channelLayout:0,channels:0,checked:false,"
                            "codecName:h264,fourcc:H264,framerate:23.976 fps,height:240,language:,"
                            "rawAspectRatio:262147,rawFramerate:103079215105001,samplerate:0,"
                            "streamId:0,streamName:,streamType:StreamVideo,width:320}"));
        QCOMPARE(stream(1),
                 QByteArray("{aspectRatio:,bitrate:0,channelLayout:4,channels:1,checked:false,"
                            "codecName:aac,fourcc:,framerate:,height:0,language:ger,"
                            "rawAspectRatio:0,rawFramerate:0,samplerate:48000,streamId:1,"
                            "streamName:Ton,streamType:StreamAudio,width:0}"));

        // A picture for every video, of the default size, and nothing else in the folder.
        int videos = 0;
        for (const QJsonValue& task : at(result, "tasks").toArray()) {
            if (textAt(task, "taskType") != "VideoTask")
                continue;
            ++videos;
            QVERIFY2(QImage(pictureOf(task), "JPG").size() == QSize(320, 180),
                     qPrintable(textAt(task, "url")));
        }
        QVERIFY(videos > 15);
        QCOMPARE(program.pictures().size(), videos);
    }

    void secondImportReusesPictures()
    {
        ProgramRun program;
        const QString clip = program.file("clip.mp4", smallVideo());
        program.import({clip});
        const QString picture = program.path("pictures/" + program.pictures().value(0));
        const QDateTime taken = QFileInfo(picture).lastModified();
        const QJsonObject result = program.import({clip});
        QCOMPARE(QFileInfo(picture).lastModified(), taken);
        QCOMPARE(pictureOf(ProgramRun::task(result, clip)), picture);
    }

    void commandLines()
    {
        ProgramRun program;
        program.file("good.mp4", smallVideo());
        program.file("bad.mp4", "text");
        program.file("other.xyz", "text");
        program.file("drm.mp4", contentOf(fixturePath("media/encrypted.mp4")));
        /// What is wrong is said on standard error, in one line.
        const auto expect = [&program](const char* script, int status, const char* said = "",
                                       const char* output = "") {
            program.shell(script);
            const QRegularExpression shown(output, QRegularExpression::DotMatchesEverythingOption);
            const bool isAsExpected = program.status == status &&
                                      program.errorOutput.contains(said) &&
                                      program.errorOutput.count('\n') == (*said ? 1 : 0) &&
                                      shown.match(program.output).hasMatch();
            QVERIFY2(isAsExpected, qPrintable(script + program.output + program.errorOutput));
        };
        expect("$vspimport good.mp4", 0, "", "good.mp4.*1 imported");
        expect("$vspimport good.mp4 bad.mp4", 1);
        expect("$vspimport --forbid '*.mp4;' good.mp4", 1);
        expect("$vspimport --formats '*.avi' good.mp4", 1);
        expect("$vspimport --formats '*.avi' --all-files good.mp4", 0);
        expect("$vspimport --formats 'avi, .MP4' good.mp4", 0);
        expect("$vspimport --formats avi --formats '*.{mkv,mp4}' good.mp4", 0);
        expect("$vspimport --formats '*.*' good.mp4", 2, "--all-files", "^$");
        expect("$vspimport --for convert bad.mp4", 0);
        expect("$vspimport drm.mp4", 1, "", "drm.mp4: protected[^\n]* --allow-drm");
        expect("$vspimport bad.mp4", 1, "", "bad.mp4: not a media file");
        expect("$vspimport --allow-drm drm.mp4", 0);
        expect("$vspimport good.mp4 /no/such", 1, "/no/such");
        expect("$vspimport /dev/null", 1, "/dev/null");
        expect("$vspimport", 2, "PATH", "^$");
        expect("$vspimport --no-such good.mp4", 2, "no-such", "^$");
        expect("$vspimport --snap-size 0x5 good.mp4", 2, "0x5", "^$");
        expect("$vspimport --jobs 5 good.mp4", 2, "--jobs", "^$");
        expect("$vspimport --jobs 1 good.mp4", 0, "", "1 imported");
        expect("$vspimport --for fun good.mp4", 2, "fun", "^$");
        expect("$vspimport good.mp4 --json", 2, "json", "^$");
        expect("$vspimport --help", 0, "", "--json.*mkv");
        expect("$vspimport --shard 4/3 good.mp4", 2, "4/3", "^$");
        expect("$vspimport --events --json - good.mp4", 2, "standard output", "^$");
        expect("$vspimport --files-from /no/such", 2, "/no/such", "^$");
        expect("$vspimport --version", 0);
        expect("$vspimport --quiet good.mp4", 0, "", "^$");
        expect("$vspimport --json - good.mp4", 0, "", "^\\{.*\\}\n$");
        expect("$vspimport --json /dev/stdout good.mp4 > it; cat it", 0, "", "^\\{.*\\}\n$");
        expect("$vspimport --json good.mp4 bad.mp4", 2, "good.mp4 is a media file", "^$");
        expect("$vspimport --json it --json-lines ./it good.mp4", 2, "more than one output", "^$");
        expect("$vspimport --html it --json ./it good.mp4", 2, "more than one output", "^$");
        expect("$vspimport --html good.mp4 bad.mp4", 2, "good.mp4 is a media file", "^$");
        expect("$vspimport --html - --json - good.mp4", 2, "standard output", "^$");
        expect("$vspimport --html - good.mp4", 0, "", "^<!DOCTYPE.*</html>\n$");
        expect("$vspimport --html /dev/full good.mp4", 2, "cannot write", "good.mp4");
        // Found out before the import, with the reason.
        for (const char* option : {"json", "json-lines", "html", "report"}) {
            expect(qPrintable(QString("$vspimport --%1 /no/such/x good.mp4").arg(option)), 2,
                   "/no/such/x: No such file or directory", "^$");
        }
        expect("$vspimport --config-dir good.mp4/x good.mp4", 2, "x: Not a directory", "^$");
        expect("$vspimport good.mp4 > /dev/full", 2, "cannot write", "^$");
        expect("$vspimport --verbose good.mp4 2>&1", 0, "", "thread start:");
        expect("$vspimport --report errors.bin good.mp4; ls", 0, "", "^((?!errors.bin).)*$");
        expect("$vspimport --report errors.bin bad.mp4 other.xyz", 1);
        expect(PROGRAM " report errors.bin", 0, "", "^[^\n]*/bad.mp4[^\n]*\n[^\n]*/other.xyz.*\n$");
        expect(PROGRAM " report --json errors.bin", 0, "",
               "\"ErrorImportFalsed\"[^}]*/bad.mp4.*\"ErrorUnKnownSource\"[^}]*/other.xyz");
        // What a report that was cut still holds is shown.
        expect("head -c -10 errors.bin > cut; " PROGRAM " report cut", 2, "cut",
               "^((?!other).)*bad.mp4((?!other).)*$");
        expect(PROGRAM " report bad.mp4", 2, "bad.mp4", "^$");
        expect(PROGRAM " report /no/such", 2, "/no/such", "^$");
        expect("$vspimport --snap-size 64x48 --config-dir other good.mp4; mv other/*.jpg it", 0);
        QCOMPARE(QImage(program.path("it"), "JPG").size(), QSize(64, 48));
    }

    void eventsComeInOrder()
    {
        ProgramRun program;
        const QString a = program.file("a.mp4", smallVideo());
        const QString b = program.file("b.mp4", "text");
        program.run({"--events", a, b});
        QCOMPARE(program.output.replace('"', ""),
                 QString("{signal:taskProcess,type:ImportDone,url:%1}\n"
                         "{signal:importUrl,url:%1}\n{signal:importPercentChanged,value:50}\n"
                         "{signal:importError,type:2,url:%2}\n"
                         "{signal:importUrl,url:%2}\n{signal:importPercentChanged,value:100}\n"
                         "{signal:importFinished}\n{signal:snapPercentChanged,value:100}\n"
                         "{signal:taskProcess,type:SnapDone,url:%1}\n"
                         "{signal:snapFinished}\n{signal:finished}\n")
                     .arg(a, b)
                     .toUtf8());
    }

    void oddNames()
    {
        ProgramRun program;
        QStringList files;
        for (const char* name :
             {"with space", "a#b", "50%41", "what?", "quo\"te's", "new\nline", "back\\slash",
              "*.mp4;", "%1%2", "-dash", "caf\xc3\xa9\xe6\x98\xa0"})
            files.append(program.file(QString("odd/") + name + ".mp4", smallVideo()));
        files.sort();
        const QJsonObject result = program.import({program.path("odd")});
        QCOMPARE(program.status, 0);
        QCOMPARE(ProgramRun::taskUrls(result), files);
        QCOMPARE(program.pictures().size(), files.size());
        for (const QString& file : files)
            QVERIFY(QFile::exists(pictureOf(ProgramRun::task(result, file))));
        // A name does not break the line that it is shown on.
        QCOMPARE(program.output.count('\n'), files.size() + 3);

        // Some are no text.
        program.file("good.mp4", smallVideo());
        QCOMPARE(program.shell("mkdir d; cp good.mp4 d/; cp good.mp4 d/$(printf 'caf\\351.mp4');"
                               "$vspimport --json result.json d $(printf 'd/caf\\351.mp4')"),
                 1);
        QCOMPARE(ProgramRun::taskUrls(program.result()).size(), 1);
        const QString named = "ErrorImportFalsed " + program.path(u8"d/caf\ufffd.mp4");
        QCOMPARE(ProgramRun::errors(program.result()), QStringList({named, named}));
        QVERIFY(program.output.contains("caf"));
        // An import for conversion reports no errors; the person is told all the same.
        QCOMPARE(program.shell("$vspimport --for convert d"), 0);
        QVERIFY(program.output.contains("caf"));

        // Folders that cannot be read the module passes over without a word.
        QCOMPARE(program.shell("(cd d; n=$(printf %0250d 0); for i in $(seq 20); do mkdir $n; "
                               "cd $n; done); $vspimport d"),
                 1);
        QVERIFY(program.errorOutput.contains("cannot be read"));
        program.shell("rm -r d"); // Qt cannot
    }

    void worksInBareSurroundings()
    {
        ProgramRun program;
        program.file("\u00e9\u6620.mp4", smallVideo());
        for (const char* script :
             {"env -u LANG -u LC_ALL -u LC_CTYPE $vspimport *.mp4", "env LC_ALL=C $vspimport *.mp4",
              "$vspimport --verbose --json result.json *.mp4 <&- 2>&- >&-"})
            QCOMPARE(program.shell(script), 0);
        QCOMPARE(ProgramRun::taskUrls(program.result()).size(), 1);
        QCOMPARE(program.pictures().size(), 1);

        makeLibrary(program.path("library"), 300);
        QCOMPARE(program.shell("ulimit -n 64; $vspimport library | grep imported"), 0);
        QVERIFY(program.output.startsWith("300 imported (300 video), "));
        QCOMPARE(program.pictures().size(), 301);
    }

    /// In a large folder, and with many paths.
    void interruptStopsInOrder()
    {
        ProgramRun program;
        const int count = 3000;
        makeLibrary(program.path("library"), count);
        QStringList files;
        for (int i = 0; i < count; ++i)
            files << program.path(QString("library/%1.mp4").arg(i));
        for (const QStringList& paths : {files, QStringList(program.path("library"))}) {
            QProcess process;
            process.start(
                PROGRAM,
                QStringList({"--events", "--config-dir", program.path("pictures"), "--json",
                             program.path("result.json"), "--html", program.path("page.html")}) +
                    paths);
            QVERIFY(process.waitForReadyRead(60000));
            // Twice, as to a process and its group.
            ::kill(pid_t(process.processId()), SIGINT);
            ::kill(pid_t(process.processId()), SIGINT);
            QVERIFY(process.waitForFinished(60000));
            QVERIFY(process.exitStatus() == QProcess::NormalExit && process.exitCode() == 130);
            QVERIFY(process.readAllStandardOutput().endsWith("{\"signal\":\"finished\"}\n"));
            QCOMPARE(at(program.result(), "stopped"), QJsonValue(true));
            QVERIFY(contentOf(program.path("page.html")).contains("The import was stopped"));
            const int imported = at(program.result(), "tasks").toArray().size();
            QVERIFY2(imported > 0 && imported < count, qPrintable(QString::number(imported)));
        }
    }

    /// However the program goes, its engine goes with it.
    void leavesNoProcessBehind()
    {
        ProgramRun program;
        makeLibrary(program.path("library"), 3000);
        QProcess process;
        process.start(PROGRAM, {"--events", "--config-dir", program.path("pictures"),
                                program.path("library")});
        QVERIFY(process.waitForReadyRead(60000));
        // The programs are told who has started them.
        const QString engine = QString("vspimport-engine %1$").arg(process.processId());
        QCOMPARE(QProcess::execute("pgrep", {"-f", engine}), 0);
        process.kill();
        QVERIFY(process.waitForFinished(60000));
        QTRY_COMPARE(QProcess::execute("pgrep", {"-f", engine}), 1);
    }

    /// The discs are empty, so that they cannot be imported; what counts is what was tried.
    void discsAreFoundFromWithin()
    {
        ProgramRun program;
        const QString ifo = program.file("dvd/VIDEO_TS/VIDEO_TS.IFO", "x");
        const QString index = program.file("bluray/BDMV/index.bdmv", "x");
        const QString stray = program.file("stray.ifo", "x");
        const QJsonObject result =
            program.import({ifo, QFileInfo(ifo).absolutePath() + '/', index, stray});
        const QString dvd = "ErrorImportFalsed " + program.path("dvd");
        QCOMPARE(ProgramRun::errors(result),
                 QStringList({"ErrorImportFalsed " + program.path("bluray"), dvd, dvd,
                              "ErrorUnKnownSource " + stray}));
        QCOMPARE(textAt(result, "sources/0"), ifo);
    }

    void saysWhatIsMissing()
    {
        // The program, with all but the plug-in where it looks for it.
        ProgramRun program;
        copyFolder(LIBRARIES, program.path("lib"));
        QVERIFY(QDir().mkpath(program.path("bin")));
        QVERIFY(QFile::copy(PROGRAM, program.path("bin/vspimport")));
        const QString copy = program.path("lib/" PLUGIN);
        QVERIFY(QFile::remove(copy));
        for (const char* content : {"", "no library"}) {
            if (*content)
                writeFile(copy, content);
            QCOMPARE(program.shell("bin/vspimport ."), 2);
            QCOMPARE(program.errorOutput.count('\n'), 1);
            QVERIFY2(program.errorOutput.contains("plug-in"), program.errorOutput.constData());
            QVERIFY(program.output.isEmpty());
        }
        QCOMPARE(program.shell("bin/vspimport --version"), 0);

        // And with the plug-in, but nothing where it looks for the engine, or what does not run.
        QVERIFY(QFile::remove(copy) && QFile::link(LIBRARIES "/" PLUGIN, copy));
        program.file("film.mp4", smallVideo());
        for (const char* prepare :
             {"", "mkdir -p $libexec; cp /bin/false $libexec/vspimport-engine; "}) {
            QCOMPARE(
                program.shell("libexec=libexec/vspimport-1; " + QString(prepare) +
                              QString("LD_LIBRARY_PATH=lib bin/vspimport --config-dir . film.mp4")),
                2);
            QCOMPARE(program.errorOutput.count('\n'), 1);
            QVERIFY2(program.errorOutput.contains("/libexec/vspimport-1/vspimport-engine"),
                     program.errorOutput.constData());
        }
    }
};

QTEST_GUILESS_MAIN(ProgramTest)
#include "tst_program.moc"
