// SPDX-License-Identifier: GPL-2.0-or-later
#include "context.h"
#include "files.h"
#include "fixture.h"
#include "itemparts.h"
#include "moduleplugin.h"
#include "windowdriver.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>

#include <unistd.h>

namespace {

/// So many that they are not imported before something else is done.
#ifdef VSPIMPORT_SANITIZED
const int many = 120;
#else
const int many = 800;
#endif

} // namespace

/// The window from drop to export, with the module and its engine.
class TestWindow : public QObject
{
    Q_OBJECT

public:
    static void initMain();

private Q_SLOTS:
    void initTestCase();
    void init();
    void emptyWindow();
    void dropAnywhere_data();
    void dropAnywhere();
    void itemsArriveLive();
    void gridFillsRows();
    void sortAndFilter();
    void dvd();
    void bluray();
    void failures();
    void stop();
    void queue();
    void notTwice();
    void removed();
    void paste();
    void exports();
    void lists();
    void closeWhileImporting();
    void secondStart();

private:
    /// A folder with `count` names of one small film.
    QString manyFilms(int count) const;
    QString path(const QString& name) const { return m_folder->filePath(name); }

    ModulePlugin m_plugin;
    QScopedPointer<QTemporaryDir> m_folder;
};

/// Settings and pictures go to a folder of the test's.
void TestWindow::initMain()
{
    static const QTemporaryDir home;
    for (const char* name : {"XDG_CACHE_HOME", "XDG_CONFIG_HOME"})
        qputenv(name, QFile::encodeName(home.path()));
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QCoreApplication::setApplicationName(QStringLiteral("tst_window"));
}

void TestWindow::initTestCase()
{
    QString error;
    QVERIFY2(m_plugin.load(error), qPrintable(error));
    setUpContext(1.0);
}

void TestWindow::init()
{
    m_folder.reset(new QTemporaryDir);
    QSettings().clear();
}

QString TestWindow::manyFilms(int count) const
{
    const QByteArray film = QFile::encodeName(fixturePath("media/one-frame.mp4"));
    const QString folder = path("many");
    QDir().mkpath(folder);
    for (int i = 0; i < count; ++i) {
        const QString name = folder + QStringLiteral("/film %1.mp4").arg(i);
        if (::link(film.constData(), QFile::encodeName(name).constData()) != 0)
            writeFile(name, contentOf(fixturePath("media/one-frame.mp4")));
    }
    return folder;
}

void TestWindow::emptyWindow()
{
    WindowDriver driver;
    QCOMPARE(driver.window.windowTitle(), QString("vspimport"));
    QStringList buttons;
    for (const QPushButton* button : driver.window.findChildren<QPushButton*>()) {
        if (button->isVisible())
            buttons.append(button->text());
    }
    QCOMPARE(buttons, QStringList({"&Open Files…", "Open Fol&der…", "Open D&isc…"}));
    for (const char* name : {"play", "copyPath", "remove", "exportPage", "saveList", "stopImport"})
        QVERIFY2(!driver.child<QAction>(name)->isEnabled(), name);
    QMimeData text;
    text.setText("https://example.org/film.mp4\nno path");
    QDragEnterEvent enter(QPoint(9, 9), Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&driver.window, &enter);
    QVERIFY(!enter.isAccepted());
}

void TestWindow::dropAnywhere_data()
{
    QTest::addColumn<QString>("target");
    for (const char* target : {"window", "list", "details", "find", "folder in a folder"})
        QTest::newRow(target) << target;
}

void TestWindow::dropAnywhere()
{
    QFETCH(QString, target);
    WindowDriver driver;
    const QString film = fixturePath("media/quarters-square.mp4");
    QWidget* widget = &driver.window;
    if (target == "list")
        widget = driver.table()->viewport();
    else if (target == "details")
        widget = driver.details()->viewport();
    else if (target == "find")
        widget = driver.child<QLineEdit>("words");
    const QString deep = path("a/b/c/film.mp4");
    writeFile(deep, contentOf(film));
    const bool isFolder = target.startsWith("folder");
    QVERIFY(driver.drop({isFolder ? path("a") : film}, widget));
    QVERIFY(driver.wait());
    QCOMPARE(driver.column(NameColumn), QStringList(isFolder ? "film.mp4" : "quarters-square.mp4"));
    QCOMPARE(driver.column(KindColumn), QStringList("Video"));
    QCOMPARE(driver.column(FolderColumn), QStringList(QFileInfo(isFolder ? deep : film).path()));
    QVERIFY(driver.window.windowTitle().startsWith("1 "));
    QVERIFY(!driver.isBackwards);
}

void TestWindow::itemsArriveLive()
{
    WindowDriver driver;
    const QString folder = manyFilms(many / 4);
    int whileBusy = 0;
    bool sawNoPicture = false;
    connect(driver.model(), &QAbstractItemModel::rowsInserted, &driver.window, [&] {
        whileBusy += driver.window.library().progress().isBusy;
        const QModelIndex last = driver.model()->index(driver.model()->rowCount() - 1, 0);
        sawNoPicture = sawNoPicture || !last.data(LibraryModel::PictureRole).isValid();
    });
    QVERIFY(driver.import({folder}));
    QVERIFY(whileBusy > 0);
    QVERIFY(sawNoPicture);
    QVERIFY(!driver.isBackwards);
    QCOMPARE(driver.model()->rowCount(), many / 4);
    const ImportProgress& progress = driver.window.library().progress();
    QCOMPARE(progress.pictures, many / 4);
    QCOMPARE(progress.picturesTaken, many / 4);
    const QModelIndex first = driver.model()->index(0, 0);
    QTRY_VERIFY(!first.data(LibraryModel::PictureRole).value<QPixmap>().isNull());
}

void TestWindow::gridFillsRows()
{
    WindowDriver driver;
    QVERIFY(driver.import({manyFilms(9)}));
    auto* grid = driver.window.findChild<QListView*>("grid");
    const auto place = [&](int row) { return grid->visualRect(driver.model()->index(row, 0)); };
    for (const int width : {700, 850, 1000, 1100}) {
        driver.window.resize(width, width == 850 ? 500 : 1100);
        QTest::qWait(200); // the view lays out later
        int columns = 1;
        while (columns < 9 && place(columns).top() == place(0).top())
            ++columns;
        const int left = grid->viewport()->width() - place(columns - 1).right();
        QVERIFY2(left >= 0 && left < place(0).width(), qPrintable(QString::number(width)));
        QCOMPARE(grid->verticalScrollBar()->maximum() > 0,
                 place(8).bottom() > grid->viewport()->height());
    }
}

void TestWindow::sortAndFilter()
{
    WindowDriver driver;
    const QStringList names{"film 10.mp4", "film 9.mp4", "Älter.mp4", "zuletzt.ogg"};
    for (const QString& name : names) {
        const bool isSound = name.endsWith("ogg");
        writeFile(path("in/" + name),
                  contentOf(fixturePath(isSound ? "media/tagged.ogg" : "media/one-frame.mp4")));
    }
    writeFile(path("in/longer.mp4"), contentOf(fixturePath("media/quarters-square.mp4")));
    QVERIFY(driver.import({path("in")}));
    driver.trigger("table");
    driver.table()->sortByColumn(NameColumn, Qt::AscendingOrder);
    QCOMPARE(driver.column(NameColumn),
             QStringList({"Älter.mp4", "film 9.mp4", "film 10.mp4", "longer.mp4", "zuletzt.ogg"}));
    driver.table()->sortByColumn(BytesColumn, Qt::DescendingOrder);
    const QStringList bySize = driver.column(NameColumn);
    driver.table()->sortByColumn(BytesColumn, Qt::AscendingOrder);
    QCOMPARE(driver.column(NameColumn).first(), bySize.last());

    auto* words = driver.child<QLineEdit>("words");
    QTest::keyClicks(words, "FILM 9.mp");
    QCOMPARE(driver.column(NameColumn), QStringList("film 9.mp4"));
    QVERIFY(driver.window.windowTitle().startsWith("1 of 5"));
    words->setText("vorbis"); // a codec, and a tag's value
    QCOMPARE(driver.column(NameColumn), QStringList("zuletzt.ogg"));
    words->clear();
    auto* kind = driver.child<QComboBox>("kind");
    kind->setCurrentIndex(kind->findText("Audio"));
    QCOMPARE(driver.column(NameColumn), QStringList("zuletzt.ogg"));
    kind->setCurrentIndex(0);
    QCOMPARE(driver.model()->rowCount(), 5);

    driver.select(driver.find("zuletzt.ogg"));
    QVERIFY2(driver.details()->toPlainText().contains("vorbis"),
             qPrintable(driver.details()->toPlainText()));
}

void TestWindow::dvd()
{
    WindowDriver driver;
    QVERIFY(driver.import({fixturePath("dvd/PAL_FILM"), fixturePath("dvd/NTSC_FILM")}));
    const QModelIndex disc = driver.find("PAL_FILM");
    driver.trigger("table");
    driver.table()->expand(disc);
    const QModelIndex main = driver.model()->index(0, 0, disc);
    QCOMPARE(main.data().toString(), QString("Title 2 (main title)"));
    QVERIFY(driver.table()->isExpanded(main));
    QCOMPARE(driver.model()->index(1, 0, disc).data().toString(), QString("Title 1"));
    QCOMPARE(driver.model()->rowCount(main), 2);

    driver.select(disc);
    const QString text = driver.details()->toPlainText();
    for (const char* part : {"Title 2 (main title)", "2 chapter", "mpeg2video", "0:00:21"})
        QVERIFY2(text.contains(part), qPrintable(text));
    // The chapters of the main title, with pictures and times.
    auto* strip =
        qobject_cast<QListView*>(driver.details()->parentWidget()->findChild<QListView*>());
    QVERIFY(strip->isVisible());
    strip->setCurrentIndex(strip->model()->index(0, 0, strip->rootIndex()));
    driver.select(driver.find("NTSC_FILM"));
    QVERIFY(!strip->currentIndex().isValid()); // whose picture would be shown
    driver.select(disc);
    const QModelIndex chapter = strip->model()->index(1, 0, strip->rootIndex());
    QVERIFY(!chapter.data(LibraryModel::DurationRole).toString().isEmpty());
    QTRY_VERIFY(!chapter.data(LibraryModel::PictureRole).value<QPixmap>().isNull());
    driver.select(driver.model()->index(1, 0, main));
    QVERIFY(driver.details()->toPlainText().startsWith("Chapter 2"));
}

void TestWindow::bluray()
{
    WindowDriver driver;
    QVERIFY(driver.import({fixturePath("bluray/disc")}));
    const QModelIndex disc = driver.find("Clock & Corner");
    const QModelIndex title = driver.find("Title 1 (main title)", disc);
    const QModelIndex file = driver.find("00001.m2ts", disc);
    QVERIFY(title.isValid() && file.isValid());
    QVERIFY(driver.model()->rowCount(title) > 1);
    QVERIFY(driver.model()->rowCount(file) > 1);
    driver.select(disc);
    const QString text = driver.details()->toPlainText();
    for (const char* part : {"00002.m2ts, 00001.m2ts", "3 chapter", "Stream files"})
        QVERIFY2(text.contains(part), qPrintable(text));
    const QModelIndex chapter = driver.model()->index(0, 0, title);
    QTRY_VERIFY(!chapter.data(LibraryModel::PictureRole).value<QPixmap>().isNull());
}

void TestWindow::failures()
{
    WindowDriver driver;
    const QString broken = writeFile(path("broken.mp4"), randomBytes(4000));
    const QString text = writeFile(path("in/notes.txt"), "not media");
    const QString missing = path("missing.mkv");
    QVERIFY(driver.import({broken, path("in"), missing}));
    auto* again = driver.child<QPushButton>("tryAgain");
    QVERIFY(again->isVisible());
    QCOMPARE(driver.window.library().failures().size(), std::size_t(2));
    QCOMPARE(driver.window.library().otherKinds(), 1);
    QTest::mouseClick(driver.child<QToolButton>("showFailures"), Qt::LeftButton);
    QTreeView* list = nullptr;
    for (auto* view : driver.window.findChildren<QTreeView*>())
        list = view->model()->columnCount() == 2 ? view : list;
    QVERIFY(list && list->isVisible());
    QCOMPARE(list->model()->index(0, 0).data().toString(), missing);
    QVERIFY(!list->model()->index(1, 1).data().toString().isEmpty());

    driver.chooseFile(path("errors.report"), [&] {
        QTest::mouseClick(driver.child<QPushButton>("saveReport"), Qt::LeftButton);
    });
    QTRY_VERIFY(QFile::exists(path("errors.report")));
    QProcess report;
    report.start(PROGRAM, {"report", path("errors.report")});
    QVERIFY(report.waitForFinished());
    const QByteArray shown = report.readAllStandardOutput();
    QVERIFY2(shown.contains("broken.mp4") && shown.contains("missing.mkv"), shown.constData());

    const QPersistentModelIndex last = list->model()->index(1, 0);
    QVERIFY(driver.import({path("in"), writeFile(path("<b>.mp4"), "")}));
    QCOMPARE(driver.window.library().otherKinds(), 1); // and not counted twice
    QVERIFY(last.isValid());
    const QString tip = list->model()->index(2, 0).data(Qt::ToolTipRole).toString();
    QVERIFY2(tip.contains("&lt;b&gt;.mp4"), qPrintable(tip));
    QVERIFY(QFile::remove(path("<b>.mp4")));
    list->setFocus();
    QTest::keyClick(list, Qt::Key_A, Qt::ControlModifier); // here, not of the items
    QCOMPARE(list->selectionModel()->selectedRows().size(), 3);

    writeFile(broken, contentOf(fixturePath("media/one-frame.mp4")));
    QTest::mouseClick(again, Qt::LeftButton);
    QVERIFY(driver.wait());
    QTRY_COMPARE(driver.column(NameColumn), QStringList("broken.mp4"));
    QCOMPARE(driver.window.library().failures().size(), std::size_t(2));
}

void TestWindow::stop()
{
    WindowDriver driver;
    QVERIFY(driver.drop({manyFilms(many)}));
    QTRY_VERIFY(driver.model()->rowCount() > 0);
    QTest::mouseClick(driver.child<QPushButton>("stop"), Qt::LeftButton);
    QVERIFY(driver.wait());
    const int left = driver.model()->rowCount();
    QVERIFY2(left > 0 && left < many, qPrintable(QString::number(left)));
    driver.chooseFile(path("part.json"), [&] { driver.trigger("exportJson"); });
    QTRY_VERIFY(QFile::exists(path("part.json")));
    const QJsonObject part = QJsonDocument::fromJson(contentOf(path("part.json"))).object();
    QCOMPARE(part.value("stopped").toBool(), true);
    QTest::qWait(200);
    QCOMPARE(driver.model()->rowCount(), left);
    QVERIFY(driver.drop({path("many")}));
    QTRY_VERIFY(driver.model()->rowCount() > left);
    driver.window.library().stop();
    QVERIFY(driver.import({path("many")})); // the rest, though the stop is not over
    QCOMPARE(driver.model()->rowCount(), many);
}

void TestWindow::queue()
{
    WindowDriver driver;
    QVERIFY(driver.drop({manyFilms(many / 8)}));
    QVERIFY(driver.window.library().progress().isBusy);
    QVERIFY(driver.drop({fixturePath("dvd/NTSC_FILM")}));
    QVERIFY(driver.drop({fixturePath("media/tagged.ogg"), path("many")}));
    QVERIFY(driver.wait());
    const QStringList names = driver.column(NameColumn);
    QCOMPARE(names.size(), many / 8 + 2);
    QCOMPARE(names.mid(many / 8), QStringList({"NTSC_FILM", "tagged.ogg"}));
    QVERIFY(!driver.isBackwards);
}

void TestWindow::notTwice()
{
    WindowDriver driver;
    const QString film = fixturePath("media/one-frame.mp4");
    QFile::link(film, path("link.mp4"));
    QVERIFY(driver.import({film, fixturePath("media/tagged.ogg")}));
    driver.child<QLineEdit>("words")->setText("ogg");
    QVERIFY(driver.import({path("link.mp4")}));
    QTRY_VERIFY(driver.child<QLineEdit>("words")->text().isEmpty());
    QCOMPARE(driver.model()->rowCount(), 2);
    QCOMPARE(driver.table()->currentIndex(), driver.find("one-frame.mp4"));
}

void TestWindow::removed()
{
    WindowDriver driver;
    QVERIFY(driver.import({manyFilms(5)}));
    driver.select(driver.find("film 3.mp4"));
    driver.trigger("remove");
    QCOMPARE(driver.model()->rowCount(), 4);
    QVERIFY(QFile::exists(path("many/film 3.mp4")));
    QVERIFY(driver.import({path("many")}));
    QCOMPARE(driver.model()->rowCount(), 5);
    driver.trigger("selectAll");
    driver.trigger("remove");
    QCOMPARE(driver.model()->rowCount(), 0);
    QCOMPARE(driver.window.windowTitle(), QString("vspimport"));
    QVERIFY(driver.details()->toPlainText().isEmpty());
}

void TestWindow::paste()
{
    WindowDriver driver;
    const QString film = fixturePath("media/one-frame.mp4");
    const QString sound = fixturePath("media/tagged.ogg");
    QGuiApplication::clipboard()->setText(film + "\n" + QUrl::fromLocalFile(sound).toString());
    driver.trigger("paste");
    QVERIFY(driver.wait());
    QCOMPARE(driver.model()->rowCount(), 2);
    driver.select(driver.find("tagged.ogg"));
    driver.trigger("copyPath");
    QCOMPARE(QGuiApplication::clipboard()->text(), sound);
    driver.trigger("copyJson");
    const auto copied = [] {
        return QJsonDocument::fromJson(QGuiApplication::clipboard()->text().toUtf8()).object();
    };
    QTRY_COMPARE(copied().value("url").toString(), sound);
}

void TestWindow::exports()
{
    WindowDriver driver;
    const QString disc = fixturePath("dvd/PAL_FILM");
    QVERIFY(driver.import({disc, fixturePath("media/tagged.ogg")}));
    const std::pair<const char*, QString> formats[] = {{"exportJson", path("list.json")},
                                                       {"exportCsv", path("list.csv")},
                                                       {"exportPage", path("list.html")}};
    for (const auto& format : formats) {
        driver.chooseFile(format.second, [&] { driver.trigger(format.first); });
        QTRY_VERIFY2(QFile::exists(format.second), format.first);
        QTRY_VERIFY2(contentOf(format.second).contains("tagged.ogg"), format.first);
    }
    // The program says the same, but for the pictures' places and size.
    QProcess program;
    program.start(PROGRAM, {"--quiet", "--config-dir", path("pictures"), "--json", "-", disc,
                            fixturePath("media/tagged.ogg")});
    QVERIFY(program.waitForFinished());
    const auto tasks = [](const QByteArray& json) {
        QByteArray text;
        const QJsonArray all = QJsonDocument::fromJson(json).object().value("tasks").toArray();
        for (const QByteArray& line : QJsonDocument(all).toJson().split('\n'))
            text += line.contains("\"image") ? QByteArray() : line + '\n';
        return text;
    };
    const QByteArray expected = tasks(program.readAllStandardOutput());
    QVERIFY(expected.contains("PAL_FILM"));
    QCOMPARE(tasks(contentOf(path("list.json"))), expected);
    driver.chooseFile(path("missing/list.json"), [&] { driver.trigger("exportJson"); });
    QTRY_VERIFY(qobject_cast<QMessageBox*>(QApplication::activeModalWidget()));
    QApplication::activeModalWidget()->close();
}

void TestWindow::lists()
{
    const QString odd = path("two\nlines.mp4");
    writeFile(odd, contentOf(fixturePath("media/one-frame.mp4")));
    {
        WindowDriver driver;
        QVERIFY(driver.import({odd, fixturePath("media/tagged.ogg")}));
        driver.chooseFile(path("saved.list"), [&] { driver.trigger("saveList"); });
    }
    WindowDriver driver;
    driver.chooseFile(path("saved.list"), [&] { driver.trigger("openList"); });
    QVERIFY(driver.wait());
    QCOMPARE(driver.column(NameColumn), QStringList({"two␊lines.mp4", "tagged.ogg"}));
}

void TestWindow::closeWhileImporting()
{
    {
        WindowDriver driver;
        QVERIFY(driver.drop({manyFilms(many), fixturePath("dvd/PAL_FILM")}));
        QTRY_VERIFY(driver.model()->rowCount() > 0);
        QVERIFY(driver.window.close());
    }
    {
        WindowDriver driver; // closed before the first item
        QVERIFY(driver.drop({path("many")}));
    }
    WindowDriver driver;
    QVERIFY(driver.import({fixturePath("media/one-frame.mp4")}));
    QCOMPARE(driver.model()->rowCount(), 1);
}

void TestWindow::secondStart()
{
    {
        WindowDriver driver;
        QVERIFY(driver.import({fixturePath("media/one-frame.mp4")}));
        driver.window.resize(911, 633);
        driver.trigger("table");
        driver.trigger("details");
        driver.table()->header()->resizeSection(NameColumn, 321);
        driver.table()->header()->moveSection(FolderColumn, 1);
        driver.table()->sortByColumn(DurationColumn, Qt::DescendingOrder);
        driver.window.close();
    }
    WindowDriver driver;
    QCOMPARE(driver.window.size(), QSize(911, 633));
    QVERIFY(driver.child<QAction>("table")->isChecked());
    QVERIFY(!driver.child<QAction>("details")->isChecked());
    QCOMPARE(driver.table()->header()->sectionSize(NameColumn), 321);
    QCOMPARE(driver.table()->header()->visualIndex(FolderColumn), 1);
    QCOMPARE(driver.table()->header()->sortIndicatorSection(), int(DurationColumn));
    QCOMPARE(driver.table()->header()->sortIndicatorOrder(), Qt::DescendingOrder);
    QCOMPARE(driver.model()->rowCount(), 0);
}

QTEST_MAIN(TestWindow)
#include "tst_window.moc"
