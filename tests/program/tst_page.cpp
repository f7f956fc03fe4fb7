// SPDX-License-Identifier: GPL-2.0-or-later
//
// What the program writes for people to keep: the page, in a browser, and lists for spreadsheets.
#include "csvoutput.h"
#include "programrun.h"

#include <QtTest/QtTest>

#include <QtCore/QBuffer>
#include <QtCore/QJsonDocument>

using facts::Item;
using facts::ItemKind;
using facts::StreamKind;

namespace {

/// What a browser makes of a page with `words` typed into its filter, as the script has it.
QJsonObject browse(const QString& page, const QStringList& words = {})
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(BROWSE, QStringList(page) + words);
    process.waitForFinished(60000);
    return QJsonDocument::fromJson(process.readAllStandardOutput()).object();
}

QStringList listAt(const QJsonValue& value, const QString& path)
{
    return at(value, path).toVariant().toStringList();
}

/// Makes films of one name each, a text that is no film, and a film with tags, in `folder`.
void makeFilms(ProgramRun& program, const QString& folder, const QStringList& names,
               const QString& failing, const QString& tag)
{
    const QByteArray video = contentOf(fixturePath("media/one-frame.mp4"));
    for (const QString& name : names)
        program.file(folder + '/' + name, video);
    program.file(folder + '/' + failing, "text");
    QCOMPARE(QProcess::execute("ffmpeg", {"-nostdin", "-loglevel", "error", "-i",
                                          fixturePath("media/one-frame.mp4"), "-c", "copy",
                                          "-metadata", "title=" + tag, "-metadata",
                                          "comment=" + tag, program.path(folder + "/tags.mp4")}),
             0);
}

std::shared_ptr<Item> makeItem(ItemKind kind, const QString& path)
{
    auto item = std::make_shared<Item>();
    item->kind = kind;
    item->path = path;
    return item;
}

} // namespace

class PageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// Of what files, folders and tags are called nothing becomes more than text. The pictures are
    /// in the page: those of the cache may go.
    void namesStayNames()
    {
        ProgramRun program;
        makeFilms(program, "plain", {"film.mp4"}, "bad.mp4", "text");
        QCOMPARE(program.shell("$vspimport --quiet --html plain.html plain"), 1);

        const QStringList names{"\"><script>alert(1)<'.mp4",
                                u8"&lt;%1%2\u200D.mp4",
                                "'onmouseover=alert(2) x='.mp4",
                                "<img src=x onerror=alert(3)>.mp4",
                                "a\n\x01z.mp4",
                                u8"a\u202Ez.mp4",
                                u8"Größe 📼.mp4"};
        QStringList shown = names;
        shown.replace(4, u8"a␊␁z.mp4");
        shown.replace(5, u8"a�z.mp4");
        makeFilms(program, "<h2 onclick=\"'alert(4)&quot;", names, "<i>.mp4",
                  "</title></style></script><script>alert(5)</script><img src=//localhost/x>");
        QCOMPARE(program.shell("$vspimport --json-lines lines --quiet --html page.html '<'*; "
                               "rm -r pictures"),
                 0);

        const QJsonObject seen =
            browse(program.path("page.html"),
                   {"GROSSE", "alert(3)", "alert(5) h264 320x180", "nowhere", "ALERT(4)&QUOT;"});
        QCOMPARE(listAt(seen, "complaints"), QStringList());
        QCOMPARE(at(seen, "broken"), QJsonValue(0));
        QCOMPARE(seen.value("tags"), browse(program.path("plain.html")).value("tags"));
        QStringList found = listAt(seen, "names");
        found.sort();
        shown << "tags.mp4";
        shown.sort();
        QCOMPARE(found, shown);
        QCOMPARE(listAt(seen, "failures").size(), 1);
        QVERIFY(listAt(seen, "failures").first().contains("/<i>.mp4: not a media file"));

        QStringList filtered;
        for (const QJsonValue& filter : seen.value("filters").toArray())
            filtered << listAt(filter, "names").join(' ') + ": " + textAt(filter, "count");
        const QString all = listAt(seen, "names").join(' ');
        QCOMPARE(filtered, QStringList({u8"Größe 📼.mp4: 1 of 8", names.at(3) + ": 1 of 8",
                                        "tags.mp4: 1 of 8", ": 0 of 8", all + ": 8 of 8"}));
    }

    void discsShowTheirTitles()
    {
        ProgramRun program;
        program.run({"--html", program.path("page.html"), fixturePath("dvd/PAL_FILM"),
                     fixturePath("bluray/disc"), "/gone"});
        const QJsonObject seen = browse(program.path("page.html"));
        QCOMPARE(listAt(seen, "complaints"), QStringList());
        QCOMPARE(at(seen, "broken"), QJsonValue(0));
        const QString dvd = "720x576 %1 chapters mpeg2video, %2: %1";
        QCOMPARE(listAt(seen, "titles"),
                 QStringList(
                     {"+ Title 1 Main title 0:00:25 1280x720 3 chapters 2 clips h264, ac3 eng: 4",
                      "- Title 2 0:00:12 1280x720 2 chapters 2 clips h264, ac3 eng: 2",
                      "- Title 3 0:00:00 1280x720 1 chapter 1 clip h264, ac3 eng: 1",
                      "+ Title 1 0:00:20 " + dvd.arg("3", "ac3 en, de, fr"),
                      "+ Title 2 Main title 0:00:21 " + dvd.arg("2", "ac3 en, de, fr"),
                      "- Title 3 0:00:10 " + dvd.arg("3", "mp2 fr, es")}));
        QCOMPARE(listAt(seen, "failures"), QStringList("/gone: no such file or folder"));
    }

    void picturesOfManyItemsAreBesideThePage()
    {
        ProgramRun program;
        program.file("in/0.mp4", contentOf(fixturePath("media/quarters-upright.mp4")));
        QCOMPARE(program.shell("cd in; for i in $(seq 500); do ln 0.mp4 $i.mp4; done; cd ..;"
                               "echo > 'a&\"#%41_files'; $vspimport --html 'a&\"#%41.html' in"),
                 2);
        QVERIFY(program.errorOutput.endsWith("a&\"#%41_files: Not a directory\n"));
        QVERIFY(!QFile::exists(program.path("a&\"#%41.html")));
        QCOMPARE(program.shell("rm *_files; $vspimport --html - in; rm -r in/500.mp4;"
                               "$vspimport --quiet --html 500.html in; test -e 500_files && exit "
                               "9; ln in/0.mp4 in/x.mp4;"
                               "$vspimport --quiet --html 'a&\"#%41.html' in; rm -r pictures"),
                 0);
        QCOMPARE(program.output.count("<img src=\"data:image/jpeg"), 501);
        const QJsonObject seen = browse(program.path("a&\"#%41.html"), {"499"});
        QCOMPARE(listAt(seen, "complaints"), QStringList());
        QCOMPARE(listAt(seen, "names").size(), 501);
        QCOMPARE(at(seen, "broken"), QJsonValue(0));
        QCOMPARE(textAt(seen, "filters/0/count"), "1 of 501");
        QVERIFY(!filesBelow(program.path("a&\"#%41_files")).isEmpty());
    }

    /// As RFC 4180 has it, and no cell is a formula.
    void listsAreForSpreadsheets()
    {
        const auto film = makeItem(ItemKind::Video, "/f/a, \"b\"\n.mp4");
        film->bytes = 5000000000;
        film->movie.duration = 1.5;
        film->movie.streams.resize(2);
        film->movie.streams[0].kind = StreamKind::Video;
        film->movie.streams[0].codec = "=cmd|' /C calc'!A0";
        film->movie.streams[0].framerate = "23.976 fps";
        film->movie.streams[0].width = 1920;
        film->movie.streams[0].height = 1080;
        film->movie.streams[1].language = "-1";
        const auto disc = makeItem(ItemKind::Dvd, u8"+disc/");
        disc->dvd.name = u8"@Ä";
        disc->dvd.titles.resize(2);
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        QVERIFY(writeCsv(buffer, {film, disc}));
        QCOMPARE(
            QString::fromUtf8(buffer.data()),
            u8"kind,name,path,duration,width,height,frameRate,codecs,languages,bytes,titles\r\n"
            "video,\"a, \"\"b\"\"\n.mp4\",\"/f/a, \"\"b\"\"\n.mp4\",1.5,1920,1080,23.976,"
            "'=cmd|' /C calc'!A0,'-1,5000000000,\r\n"
            u8"DVD,'@Ä,'+disc,,,,,,,,2\r\n");
    }
};

QTEST_GUILESS_MAIN(PageTest)
#include "tst_page.moc"
