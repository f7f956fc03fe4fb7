// SPDX-License-Identifier: GPL-2.0-or-later
#include "detailstext.h"
#include "droppedpaths.h"
#include "files.h"
#include "libraryfilter.h"
#include "librarymodel.h"
#include "picturecache.h"

#include <QtCore/QMimeData>
#include <QtCore/QTemporaryDir>
#include <QtCore/QUrl>
#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QtTest>

#include <limits>

namespace {

using facts::Item;
using facts::ItemKind;

std::shared_ptr<Item> film(const QString& path, double duration = 60.0)
{
    auto item = std::make_shared<Item>();
    item->path = path;
    item->movie.duration = duration;
    return item;
}

std::shared_ptr<Item> dvd(int titles, int main, const QString& picture = QString())
{
    auto item = std::make_shared<Item>();
    item->kind = ItemKind::Dvd;
    item->path = "/discs/DVD/";
    item->dvd.titles.resize(std::size_t(titles));
    for (int i = 0; i < titles; ++i) {
        facts::DvdTitle& title = item->dvd.titles[std::size_t(i)];
        title.isMain = i == main;
        title.chapters.resize(std::size_t(i + 1));
        title.chapters.back().pictureFile = picture;
    }
    return item;
}

/// As no disc should be: titles play clips that are not there.
std::shared_ptr<Item> hostileBluray()
{
    auto item = std::make_shared<Item>();
    item->kind = ItemKind::Bluray;
    item->path = "/discs/<b>BD</b>";
    item->bluray.name = "<img src=x onerror=alert(1)>\n&amp;";
    item->bluray.files.resize(2);
    item->bluray.files[0].path = "/discs/<i>0.m2ts";
    item->bluray.files[0].clips.resize(50000);
    facts::BlurayTitle title;
    title.duration = std::numeric_limits<double>::quiet_NaN();
    title.clips = {{-1, 0}, {7, 7}, {0, 60000}, {1, 0}};
    item->bluray.titles.push_back(title);
    title.chapters.resize(3);
    title.chapters[1].start = std::numeric_limits<double>::infinity();
    title.chapters[1].clips = title.clips;
    item->bluray.titles.push_back(title);
    return item;
}

} // namespace

/// The list's model, filter and pictures, with items that are made.
class TestLibraryModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void treeOfParts();
    void updates();
    void removals();
    void moves();
    void hostileDisc();
    void order_data();
    void order();
    void words_data();
    void words();
    void pictures();
    void dropped_data();
    void dropped();

private:
    PictureCache m_pictures{QSize(64, 36), 1.0, 1};
};

void TestLibraryModel::treeOfParts()
{
    LibraryModel model(m_pictures);
    const QAbstractItemModelTester tester(&model);
    model.put({{"a", film("/a.mkv")}, {"d", dvd(3, 1)}});
    const QModelIndex disc = model.indexOf("d");
    QCOMPARE(model.rowCount(model.indexOf("a")), 0);
    QStringList names;
    for (int row = 0; row < model.rowCount(disc); ++row)
        names.append(model.index(row, 0, disc).data().toString());
    QCOMPARE(names, QStringList({"Title 2 (main title)", "Title 1", "Title 3"}));
    const QModelIndex chapter = model.index(1, 0, model.index(0, 0, disc));
    QCOMPARE(chapter.data().toString(), QString("Chapter 2"));
    QCOMPARE(chapter.parent().parent(), disc);
    QCOMPARE(model.place(chapter).part, 1);
    QCOMPARE(model.key(chapter), QString("d"));
    QCOMPARE(model.rowCount(chapter), 0);
}

void TestLibraryModel::updates()
{
    LibraryModel model(m_pictures);
    const QAbstractItemModelTester tester(&model);
    model.put({{"d", dvd(3, 1)}, {"a", film("/a.mkv")}, {"a", film("/a.mkv")}});
    QCOMPARE(model.itemCount(), 2);
    const QPersistentModelIndex chapter = model.index(0, 0, model.index(1, 0, model.indexOf("d")));
    QVERIFY(ItemParts::pictureFile(model.place(chapter)).isEmpty());
    model.put({{"d", dvd(3, 1, "/p.jpg")}}); // as it was, with pictures
    QVERIFY(chapter.isValid());
    QCOMPARE(ItemParts::pictureFile(model.place(chapter)), QString("/p.jpg"));
    model.put({{"d", dvd(5, 4)}}); // another disc at the same place
    QVERIFY(!chapter.isValid());
    QCOMPARE(model.rowCount(model.indexOf("d")), 5);
    model.put({{"e", dvd(1, 0)}, {"e", dvd(4, 0)}}); // before it was shown
    QCOMPARE(model.rowCount(model.indexOf("e")), 4);
    model.put({{"d", dvd(5, 0)}});
    QCOMPARE(model.index(0, 0, model.indexOf("d")).data().toString(),
             QString("Title 1 (main title)"));
}

void TestLibraryModel::removals()
{
    LibraryModel model(m_pictures);
    LibraryFilter filter(model);
    const QAbstractItemModelTester tester(&filter);
    for (int i = 0; i < 9; ++i)
        model.put({{QString::number(i), film(QString("/%1.mkv").arg(9 - i))}});
    filter.sort(NameColumn);
    const QPersistentModelIndex kept = model.indexOf("4");
    model.removeKeys({"1", "0", "7", "5", "6", "not there"});
    QCOMPARE(kept.row(), 2);
    QStringList keys;
    for (int row = 0; row < filter.rowCount(); ++row)
        keys.append(model.key(filter.mapToSource(filter.index(row, 0))));
    QCOMPARE(keys, QStringList({"8", "4", "3", "2"}));

    std::vector<LibraryModel::Entry> many;
    QStringList even;
    for (int i = 10; i < 90; ++i) {
        many.push_back({QString::number(i), film("/many.mkv")});
        if (i % 2 == 0)
            even.append(many.back().key);
    }
    model.put(many);
    const QSignalSpy removals(&model, &QAbstractItemModel::rowsRemoved);
    model.removeKeys(even);
    QCOMPARE(removals.size(), 1); // and not one each, which takes views long
    QCOMPARE(model.itemCount(), 44);
    QCOMPARE(model.indexOf("89").row(), 43);
    QCOMPARE(kept.row(), 2);
}

void TestLibraryModel::moves()
{
    LibraryModel model(m_pictures);
    const QAbstractItemModelTester tester(&model);
    for (const char* name : {"a", "b", "c", "d", "e"})
        model.put({{name, film(QString("/") + name)}});
    const auto order = [&model] {
        QString order;
        for (int row = 0; row < model.itemCount(); ++row)
            order += model.key(model.index(row, 0));
        return order;
    };
    const std::pair<QStringList, bool> moves[] = {
        {{"d", "b"}, true}, {{"b", "d"}, true}, {{"b", "d"}, true}, {{"b", "c"}, false}};
    const QPersistentModelIndex kept = model.indexOf("c");
    const QSignalSpy changes(&model, &QAbstractItemModel::layoutChanged);
    const char* const expected[] = {"badce", "bdace", "bdace", "dbaec"};
    for (int i = 0; i < 4; ++i) {
        model.moveKeys(moves[i].first, moves[i].second);
        QCOMPARE(order(), QString(expected[i]));
    }
    QCOMPARE(model.indexOf("c").row(), 4);
    QCOMPARE(kept.row(), 4);
    QCOMPARE(changes.size(), 3); // each at once, and one was none
}

void TestLibraryModel::hostileDisc()
{
    LibraryModel model(m_pictures);
    const auto disc = hostileBluray();
    model.put({{"b", disc}});
    const QModelIndex index = model.indexOf("b");
    for (int part = 0; part < model.rowCount(index); ++part) {
        const QModelIndex partIndex = model.index(part, 0, index);
        for (const QModelIndex& shown : {index, partIndex, model.index(1, 0, partIndex)}) {
            for (int column = 0; column < ColumnCount; ++column)
                shown.siblingAtColumn(column).data();
            QVERIFY(!shown.data(LibraryModel::PictureRole).isValid() || shown == index);
            const QString text = DetailsText::text(model.place(shown));
            for (const char* markup : {"<img", "<i>", "<b>"})
                QVERIFY2(!text.contains(markup), qPrintable(text));
            QVERIFY(text.size() < 100000);
        }
    }
    QVERIFY(DetailsText::text(model.place(index)).contains("&lt;img src=x"));
    const QString tip = index.data(Qt::ToolTipRole).toString();
    QVERIFY2(tip.contains("&lt;b&gt;BD"), qPrintable(tip));
}

void TestLibraryModel::order_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QStringList>("ascending");
    QTest::newRow("as imported") << -1 << QStringList{"b10", "B2", "ä", "c"};
    QTest::newRow("names") << int(NameColumn) << QStringList{"ä", "B2", "b10", "c"};
    QTest::newRow("durations") << int(DurationColumn) << QStringList{"c", "B2", "b10", "ä"};
    QTest::newRow("equal ones") << int(KindColumn) << QStringList{"b10", "B2", "ä", "c"};
}

void TestLibraryModel::order()
{
    QFETCH(int, column);
    QFETCH(QStringList, ascending);
    LibraryModel model(m_pictures);
    LibraryFilter filter(model);
    const std::pair<const char*, double> films[] = {
        {"b10", 600}, {"B2", 60}, {"ä", 7000}, {"c", -1}};
    for (const auto& made : films)
        model.put({{made.first, film(QString("/%1").arg(made.first), made.second)}});
    const auto names = [&filter] {
        QStringList names;
        for (int row = 0; row < filter.rowCount(); ++row)
            names.append(filter.index(row, 0).data().toString());
        return names;
    };
    filter.sort(column, Qt::AscendingOrder);
    QCOMPARE(names(), ascending);
    if (column != NameColumn && column != DurationColumn)
        return;
    filter.sort(column, Qt::DescendingOrder);
    std::reverse(ascending.begin(), ascending.end());
    QCOMPARE(names(), ascending);
}

void TestLibraryModel::words_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<bool>("isFound");
    for (const char* words : {"", "FILM", "some folder", "straße", "STRASSE", "Fílm", "hevc deu",
                              "an artist", "1920x1080", "commentary", "dvd /some"})
        QTest::newRow(words) << words << (QByteArray(words) != "dvd /some");
}

void TestLibraryModel::words()
{
    QFETCH(QString, words);
    QFETCH(bool, isFound);
    auto item = film("/some folder/Film Straße.mkv");
    facts::Stream video;
    video.kind = facts::StreamKind::Video;
    video.codec = "hevc";
    video.width = 1920;
    video.height = 1080;
    facts::Stream audio;
    audio.kind = facts::StreamKind::Audio;
    audio.language = "deu";
    audio.name = "Commentary";
    item->movie.streams = {video, audio};
    item->movie.tags = {{"artist", "An Artist"}};
    LibraryModel model(m_pictures);
    LibraryFilter filter(model);
    model.put({{"f", item}});
    filter.setWords(words);
    QCOMPARE(filter.rowCount() == 1, isFound);
    filter.setKind(int(ItemKind::Audio));
    QCOMPARE(filter.rowCount(), 0);
}

/// Bounded, in a thread, told of by the model.
void TestLibraryModel::pictures()
{
    const QTemporaryDir folder;
    PictureCache cache(QSize(160, 90), 1.0, 1); // room for some fifteen
    LibraryModel model(cache);
    QImage image(320, 180, QImage::Format_RGB32);
    image.fill(Qt::red);
    const int count = 40;
    for (int i = 0; i <= count; ++i) {
        auto item = film(QString("/%1.mkv").arg(i));
        item->movie.picture.file = folder.filePath(QString("%1.png").arg(i));
        if (i < count)
            QVERIFY(image.save(item->movie.picture.file));
        model.put({{QString::number(i), item}});
    }
    QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    const auto picture = [&model](int row) {
        return model.index(row, 0).data(LibraryModel::PictureRole).value<QPixmap>();
    };
    for (int row = 0; row <= count; ++row) {
        for (int time = 0; time < 2; ++time)
            QVERIFY(picture(row).isNull());
    }
    QTRY_COMPARE(changes.count(), count + 1);
    int kept = 0;
    for (int row = 0; row <= count; ++row)
        kept += cache.picture(folder.filePath(QString("%1.png").arg(row))).isNull() ? 0 : 1;
    QVERIFY2(kept > 5 && kept < 20, qPrintable(QString::number(kept)));
    QTRY_COMPARE(picture(3).size(), QSize(160, 90));
    QVERIFY(picture(count).isNull()); // not there

    image.fill(Qt::blue);
    QVERIFY(image.save(folder.filePath("3.png")));
    cache.forget(folder.filePath("3.png"));
    QTRY_COMPARE(picture(3).toImage().pixelColor(9, 9), QColor(Qt::blue));
}

void TestLibraryModel::dropped_data()
{
    QTest::addColumn<QStringList>("urls");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("paths");
    QTest::newRow("urls") << QStringList{"file:///a%20b/%23.mkv", "https://example.org/c.mkv"} << ""
                          << QStringList{"/a b/#.mkv"};
    QTest::newRow("lines") << QStringList() << "/a/../b.mkv\r\nfile:///c%25.mkv\n\nrelative\n"
                           << QStringList{"/b.mkv", "/c%.mkv"};
    QTest::newRow("home") << QStringList() << "~/x.mkv" << QStringList{QDir::homePath() + "/x.mkv"};
    QTest::newRow("nothing") << QStringList() << "some words" << QStringList();
}

void TestLibraryModel::dropped()
{
    QFETCH(QStringList, urls);
    QFETCH(QString, text);
    QFETCH(QStringList, paths);
    QMimeData data;
    QList<QUrl> list;
    for (const QString& url : urls)
        list.append(QUrl(url));
    if (!list.isEmpty())
        data.setUrls(list);
    if (!text.isEmpty())
        data.setText(text);
    QCOMPARE(droppedPaths(data), paths);
}

QTEST_MAIN(TestLibraryModel)
#include "tst_librarymodel.moc"
