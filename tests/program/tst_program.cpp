// SPDX-License-Identifier: GPL-2.0-or-later
//
// The program from end to end, on media files.
#include "fixture.h"
#include "programrun.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QUrl>
#include <QtGui/QImage>
#include <QtTest/QtTest>

#include <csignal>

namespace {

QByteArray smallVideo()
{
    QFile file(fixturePath("media/one-frame.mp4"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Fills `folder` with links to one video, so that a large library costs nothing.
void makeLibrary(const QString& folder, int count)
{
    QVERIFY(QDir().mkpath(folder));
    QVERIFY(QFile::copy(fixturePath("media/one-frame.mp4"), folder + "/0.mp4"));
    for (int i = 1; i < count; ++i)
        QVERIFY(QFile::link(folder + "/0.mp4", QStringLiteral("%1/%2.mp4").arg(folder).arg(i)));
}

} // namespace

class ProgramTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void importsAFolder();
    void secondImportReusesPictures();
    void exitStatus_data();
    void exitStatus();
    void writesOnlyWhatIsAskedFor();
    void eventsComeInOrder();
    void savesAndShowsReports();
    void oddNames();
    void namesThatAreNoText();
    void worksWithoutALocale();
    void fewDescriptorsSuffice();
    void interruptStopsInOrder_data();
    void interruptStopsInOrder();
    void discsAreFoundFromWithin();
    void saysThatThePluginIsMissing();
};

void ProgramTest::importsAFolder()
{
    ProgramRun program;
    const QJsonObject result = program.import({fixturePath("media")});
    QCOMPARE(program.status, 1);
    QCOMPARE(result.value("sources").toArray(), QJsonArray({fixturePath("media")}));
    QCOMPARE(result.value("stopped").toBool(), false);
    QCOMPARE(result.value("importPercent").toInt(), 100);
    QCOMPARE(result.value("snapPercent").toInt(), 100);
    QVERIFY(
        ProgramRun::errors(result).contains("ErrorImportFalsed " + fixturePath("media/text.mp4")));

    const QJsonObject audio = ProgramRun::task(result, fixturePath("media/cover.mp3"));
    QCOMPARE(audio.value("taskType").toString(), QString("AudioTask"));
    QCOMPARE(audio.value("movieInfo").toObject().value("imageUrl").toString(), QString());
    const QJsonObject video = ProgramRun::task(result, fixturePath("media/several.mkv"));
    QCOMPARE(video.value("taskType").toString(), QString("VideoTask"));
    const QJsonObject movie = video.value("movieInfo").toObject();
    QCOMPARE(movie.value("fileName").toString(), QString("several.mkv"));
    QCOMPARE(movie.value("streams").toArray().size(), 3);
    const QJsonObject stream = movie.value("streams").toArray().first().toObject();
    QCOMPARE(stream.size(), 18);
    QCOMPARE(stream.value("streamType").toString(), QString("StreamVideo"));
    QCOMPARE(stream.value("framerate").toString(), QString("23.976 fps"));
    QCOMPARE(stream.value("rawFramerate").toString(), QString::number(quint64(24000) << 32 | 1001));
    QCOMPARE(stream.value("aspectRatio").toString(), QString("4:3"));

    // A picture for every video, of the default size, and nothing else in the folder.
    int videos = 0;
    for (const QJsonValue& task : result.value("tasks").toArray()) {
        const QJsonObject info = task.toObject().value("movieInfo").toObject();
        if (task.toObject().value("taskType").toString() != "VideoTask")
            continue;
        ++videos;
        const QImage picture(QUrl(info.value("imageUrl").toString()).toLocalFile(), "JPG");
        QVERIFY2(picture.size() == QSize(320, 180), qPrintable(info.value("fileName").toString()));
    }
    QVERIFY(videos > 15);
    QCOMPARE(program.pictures().size(), videos);
}

void ProgramTest::secondImportReusesPictures()
{
    ProgramRun program;
    const QString clip = program.file("clip.mp4", smallVideo());
    program.import({clip});
    QCOMPARE(program.pictures().size(), 1);
    const QString picture = program.path("pictures/" + program.pictures().first());
    QFile file(picture);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("kept");
    file.close();
    const QJsonObject result = program.import({clip});
    QCOMPARE(QFileInfo(picture).size(), 4);
    const QJsonObject movie = ProgramRun::task(result, clip).value("movieInfo").toObject();
    QCOMPARE(QUrl(movie.value("imageUrl").toString()).toLocalFile(), picture);
}

void ProgramTest::exitStatus_data()
{
    QTest::addColumn<QStringList>("arguments"); ///< $f is the folder of the fixtures
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("said"); ///< on standard error, in one line

    QTest::newRow("all imported") << QStringList("$f/one-frame.mp4") << 0 << "";
    QTest::newRow("one not") << QStringList({"$f/one-frame.mp4", "$f/text.mp4"}) << 1 << "";
    QTest::newRow("forbidden") << QStringList({"--forbid", "*.mp4;", "$f/one-frame.mp4"}) << 1
                               << "";
    QTest::newRow("other formats")
        << QStringList({"--formats", "*.avi", "$f/one-frame.mp4"}) << 1 << "";
    QTest::newRow("all files") << QStringList(
                                      {"--formats", "*.avi", "--all-files", "$f/one-frame.mp4"})
                               << 0 << "";
    QTest::newRow("for conversion") << QStringList({"--for", "convert", "$f/text.mp4"}) << 0 << "";
    QTest::newRow("protected") << QStringList("$f/encrypted.mp4") << 1 << "";
    QTest::newRow("protected, allowed")
        << QStringList({"--allow-drm", "$f/encrypted.mp4"}) << 0 << "";
    QTest::newRow("missing") << QStringList({"$f/one-frame.mp4", "/no/such"}) << 1 << "/no/such";
    QTest::newRow("device") << QStringList("/dev/null") << 1 << "/dev/null";
    QTest::newRow("nothing") << QStringList() << 2 << "PATH";
    QTest::newRow("unknown option") << QStringList({"--no-such", "$f"}) << 2 << "no-such";
    QTest::newRow("bad size") << QStringList({"--snap-size", "0x5", "$f"}) << 2 << "0x5";
    QTest::newRow("bad purpose") << QStringList({"--for", "fun", "$f"}) << 2 << "fun";
    QTest::newRow("value missing") << QStringList({"$f", "--json"}) << 2 << "json";
    QTest::newRow("help") << QStringList("--help") << 0 << "";
    QTest::newRow("version") << QStringList("--version") << 0 << "";
}

void ProgramTest::exitStatus()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, said);
    arguments.replaceInStrings("$f", fixturePath("media"));
    ProgramRun program;
    program.run(arguments);
    QTEST(program.status, "status");
    QCOMPARE(program.errorOutput.count('\n'), said.isEmpty() ? 0 : 1);
    QVERIFY2(program.errorOutput.contains(said.toUtf8()), program.errorOutput.constData());
}

void ProgramTest::writesOnlyWhatIsAskedFor()
{
    ProgramRun program;
    const QString clip = program.file("clip.mp4", smallVideo());
    program.run({clip});
    QVERIFY(program.output.contains("clip.mp4") && program.output.contains("1 imported"));
    QVERIFY(program.errorOutput.isEmpty());
    program.run({"--quiet", clip});
    QVERIFY(program.output.isEmpty() && program.errorOutput.isEmpty());
    program.run({"--json", "-", clip});
    QVERIFY(QJsonDocument::fromJson(program.output).isObject());
    program.run({"--verbose", clip});
    QVERIFY(program.errorOutput.contains("thread start:"));
    program.run({"--snap-size", "64x48", "--config-dir", program.path("other"), clip});
    const QStringList other = QDir(program.path("other")).entryList(QDir::Files);
    QCOMPARE(other.size(), 1);
    QCOMPARE(QImage(program.path("other/" + other.first())).size(), QSize(64, 48));
    QCOMPARE(program.run({"--json", "/no/such/folder/x.json", clip}), 2);
    QCOMPARE(program.shell("$vspimport --quiet --json /dev/stdout clip.mp4 | cat"), 0);
    QVERIFY(QJsonDocument::fromJson(program.output).isObject());
    QCOMPARE(program.shell("$vspimport clip.mp4 > /dev/full"), 2);
    QVERIFY(program.errorOutput.contains("cannot write"));
}

void ProgramTest::eventsComeInOrder()
{
    ProgramRun program;
    const QString a = program.file("a.mp4", smallVideo());
    const QString b = program.file("b.mp4", "text");
    program.run({"--events", a, b});
    const QString expected =
        QStringLiteral("{\"signal\":\"taskProcess\",\"type\":\"ImportDone\",\"url\":\"%1\"}\n"
                       "{\"signal\":\"importUrl\",\"url\":\"%1\"}\n"
                       "{\"signal\":\"importPercentChanged\",\"value\":50}\n"
                       "{\"signal\":\"importError\",\"type\":2,\"url\":\"%2\"}\n"
                       "{\"signal\":\"importUrl\",\"url\":\"%2\"}\n"
                       "{\"signal\":\"importPercentChanged\",\"value\":100}\n"
                       "{\"signal\":\"importFinished\"}\n"
                       "{\"signal\":\"snapPercentChanged\",\"value\":100}\n"
                       "{\"signal\":\"taskProcess\",\"type\":\"SnapDone\",\"url\":\"%1\"}\n"
                       "{\"signal\":\"snapFinished\"}\n"
                       "{\"signal\":\"finished\"}\n")
            .arg(a, b);
    QCOMPARE(QString::fromUtf8(program.output), expected);
}

void ProgramTest::savesAndShowsReports()
{
    ProgramRun program;
    const QString bad = program.file("bad.mp4", "text");
    const QString other = program.file("other.xyz", "text");
    const QString report = program.path("errors.bin");
    QCOMPARE(program.run({"--report", report, program.file("good.mp4", smallVideo())}), 0);
    QVERIFY(!QFile::exists(report));
    QCOMPARE(program.run({"--report", report, bad, other}), 1);

    QCOMPARE(program.shell(QString("%1 report %2").arg(PROGRAM, report)), 0);
    QCOMPARE(program.output.count('\n'), 2);
    QVERIFY(program.output.contains(bad.toUtf8()));
    QCOMPARE(program.shell(QString("%1 report --json %2").arg(PROGRAM, report)), 0);
    const QJsonObject result = QJsonDocument::fromJson(program.output).object();
    QCOMPARE(ProgramRun::errors(result),
             QStringList({"ErrorImportFalsed " + bad, "ErrorUnKnownSource " + other}));
    QCOMPARE(program.shell(QString("%1 report %2").arg(PROGRAM, bad)), 2);
    // What a report that was cut still holds is shown.
    const int cut = int(QFileInfo(report).size()) - 10;
    QCOMPARE(program.shell(QString("head -c %3 %2 > cut; %1 report cut")
                               .arg(PROGRAM, report, QString::number(cut))),
             2);
    QVERIFY(program.output.contains(bad.toUtf8()) && !program.output.contains(other.toUtf8()));
    QCOMPARE(program.shell(QString("%1 report /no/such").arg(PROGRAM)), 2);
}

void ProgramTest::oddNames()
{
    ProgramRun program;
    QStringList files;
    for (const char* name : {"with space", "a#b", "50%41", "what?", "quo\"te's", "new\nline",
                             "back\\slash", "*.mp4;", "%1%2", "-dash", "caf\xc3\xa9\xe6\x98\xa0"})
        files.append(program.file(QString("odd/") + name + ".mp4", smallVideo()));
    files.sort();
    const QJsonObject result = program.import({program.path("odd")});
    QCOMPARE(program.status, 0);
    QCOMPARE(ProgramRun::taskUrls(result), files);
    QCOMPARE(program.pictures().size(), files.size());
    for (const QString& file : files) {
        const QJsonObject movie = ProgramRun::task(result, file).value("movieInfo").toObject();
        QVERIFY(QFile::exists(QUrl(movie.value("imageUrl").toString()).toLocalFile()));
    }
    // A name does not break the line that it is shown on.
    QCOMPARE(program.output.count('\n'), files.size() + 2);
}

void ProgramTest::namesThatAreNoText()
{
    ProgramRun program;
    program.file("good.mp4", smallVideo());
    QCOMPARE(program.shell("mkdir d; cp good.mp4 d/; cp good.mp4 d/$(printf 'caf\\351.mp4');"
                           "$vspimport --json result.json d $(printf 'd/caf\\351.mp4')"),
             1);
    QFile file(program.path("result.json"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QJsonObject result = QJsonDocument::fromJson(file.readAll()).object();
    QCOMPARE(ProgramRun::taskUrls(result).size(), 1);
    const QString named = "ErrorImportFalsed " + program.path(QStringLiteral("d/caf\ufffd.mp4"));
    QCOMPARE(ProgramRun::errors(result), QStringList({named, named}));
    QVERIFY(program.output.contains("caf"));
    // An import for conversion reports no errors; the person is told all the same.
    QCOMPARE(program.shell("$vspimport --for convert d"), 0);
    QVERIFY(program.output.contains("caf"));
    program.shell("rm -r d"); // Qt cannot
}

void ProgramTest::worksWithoutALocale()
{
    ProgramRun program;
    program.file("\u00e9\u6620.mp4", smallVideo());
    QCOMPARE(program.shell("env -u LANG -u LC_ALL -u LC_CTYPE $vspimport *.mp4"), 0);
    QCOMPARE(program.shell("env LC_ALL=C $vspimport *.mp4"), 0);
    QCOMPARE(program.pictures().size(), 1);
}

void ProgramTest::fewDescriptorsSuffice()
{
    ProgramRun program;
    makeLibrary(program.path("library"), 300);
    QCOMPARE(program.shell("ulimit -n 64; $vspimport library | tail -1"), 0);
    QCOMPARE(program.output, QByteArray("300 imported (300 video)\n"));
    QCOMPARE(program.pictures().size(), 300);
}

void ProgramTest::interruptStopsInOrder_data()
{
    QTest::addColumn<bool>("asFolder");
    QTest::newRow("a folder") << true;
    QTest::newRow("many paths") << false;
}

void ProgramTest::interruptStopsInOrder()
{
    QFETCH(bool, asFolder);
    ProgramRun program;
    const int count = 3000;
    makeLibrary(program.path("library"), count);
    QStringList arguments({"--events", "--config-dir", program.path("pictures"), "--json",
                           program.path("result.json")});
    if (asFolder)
        arguments.append(program.path("library"));
    for (int i = 0; !asFolder && i < count; ++i)
        arguments.append(program.path(QStringLiteral("library/%1.mp4").arg(i)));

    QProcess process;
    process.start(PROGRAM, arguments);
    QVERIFY(process.waitForReadyRead(60000));
    ::kill(pid_t(process.processId()), SIGINT);
    QVERIFY(process.waitForFinished(60000));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 130);
    QVERIFY(process.readAllStandardOutput().endsWith("{\"signal\":\"finished\"}\n"));
    QFile file(program.path("result.json"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QJsonObject result = QJsonDocument::fromJson(file.readAll()).object();
    QCOMPARE(result.value("stopped").toBool(), true);
    const int imported = result.value("tasks").toArray().size();
    QVERIFY2(imported > 0 && imported < count, qPrintable(QString::number(imported)));
}

/// The discs are empty, so that they cannot be imported; what counts is what was tried.
void ProgramTest::discsAreFoundFromWithin()
{
    ProgramRun program;
    const QString ifo = program.file("dvd/VIDEO_TS/VIDEO_TS.IFO", "x");
    const QString index = program.file("bluray/BDMV/index.bdmv", "x");
    const QString stray = program.file("stray.ifo", "x");
    const QJsonObject result =
        program.import({ifo, QFileInfo(ifo).absolutePath() + '/', index, stray});
    const QString dvd = "ErrorImportFalsed " + program.path("dvd");
    QCOMPARE(ProgramRun::errors(result), QStringList({"ErrorImportFalsed " + program.path("bluray"),
                                                      dvd, dvd, "ErrorUnKnownSource " + stray}));
    QCOMPARE(result.value("sources").toArray().first().toString(), ifo);
}

void ProgramTest::saysThatThePluginIsMissing()
{
    // The program, with all but the plug-in where it looks for it.
    ProgramRun program;
    QVERIFY(QDir().mkpath(program.path("bin")) && QDir().mkpath(program.path("lib")));
    QVERIFY(QFile::copy(PROGRAM, program.path("bin/vspimport")));
    const QFileInfo plugin(PLUGIN);
    for (const QFileInfo& library : plugin.dir().entryInfoList(QDir::Files)) {
        if (library.fileName() != plugin.fileName())
            QVERIFY(QFile::copy(library.filePath(), program.path("lib/" + library.fileName())));
    }
    for (const char* content : {"", "no library"}) {
        if (*content)
            program.file("lib/" + plugin.fileName(), content);
        QCOMPARE(program.shell("bin/vspimport ."), 2);
        QCOMPARE(program.errorOutput.count('\n'), 1);
        QVERIFY2(program.errorOutput.contains("plug-in"), program.errorOutput.constData());
        QVERIFY(program.output.isEmpty());
    }
    QCOMPARE(program.shell("bin/vspimport --version"), 0);
}

QTEST_GUILESS_MAIN(ProgramTest)
#include "tst_program.moc"
