// SPDX-License-Identifier: GPL-2.0-or-later
//
// windowlist PICTURE [COUNT]
// The window's list with COUNT made items (20,000), each with a picture of its own, all links to
// PICTURE: how long the window does not answer when they arrive, are scrolled through, filtered,
// sorted, selected and removed, in both looks, and how much memory all of it takes.
#include "detailspane.h"
#include "librarymodel.h"
#include "libraryview.h"
#include "picturecache.h"
#include "pictureformat.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QThread>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QSplitter>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <unistd.h>

namespace {

const int batch = 200; // as many come between two looks at what has come
const int steps = 60;

struct Slowest
{
    double ms = 0.0;
    double sum = 0.0;
    int count = 0;
};

/// All that the event loop does because of `action` counts, but for what comes from threads later.
void measure(Slowest& slowest, const std::function<void()>& action)
{
    QElapsedTimer timer;
    timer.start();
    action();
    QApplication::sendPostedEvents();
    QApplication::processEvents(QEventLoop::AllEvents, 0);
    const double ms = double(timer.nsecsElapsed()) / 1e6;
    slowest.ms = std::max(slowest.ms, ms);
    slowest.sum += ms;
    ++slowest.count;
}

bool isWithin = true;

void report(const char* what, const Slowest& slowest)
{
    const double most = 100.0;
    isWithin = isWithin && slowest.ms <= most;
    std::printf("%-34s %4d times  mean %7.1f ms  slowest %7.1f ms\n", what, slowest.count,
                slowest.sum / slowest.count, slowest.ms);
}

void reportOnce(const char* what, const std::function<void()>& action)
{
    Slowest once;
    measure(once, action);
    report(what, once);
    for (int i = 0; i < 20; ++i) { // what it has asked for arrives
        QThread::msleep(5);
        QApplication::processEvents();
    }
}

std::shared_ptr<facts::Item> makeItem(int number, const QString& picture)
{
    const char* const codecs[] = {"h264", "hevc", "mpeg2video", "av1"};
    const char* const languages[] = {"eng", "deu", "fra", "jpn"};
    auto item = std::make_shared<facts::Item>();
    item->path =
        QStringLiteral("/library/%1/Film %2.mkv").arg(number % 97).arg(number * 7919 % 20011);
    item->bytes = qint64(number) * 7919 % 9000000000;
    item->movie.duration = number * 31 % 9000;
    item->movie.format = QStringLiteral("matroska");
    item->movie.picture = {QStringLiteral("file://") + picture, picture};
    item->movie.tags = {{QStringLiteral("title"), QStringLiteral("A title of %1").arg(number)},
                        {QStringLiteral("encoder"), QStringLiteral("one of many")}};
    for (int i = 0; i < 3; ++i) {
        facts::Stream stream;
        stream.kind = i == 0 ? facts::StreamKind::Video : facts::StreamKind::Audio;
        stream.id = i;
        stream.codec = QLatin1String(i == 0 ? codecs[number % 4] : "aac");
        stream.language = QLatin1String(languages[(number + i) % 4]);
        stream.width = i == 0 ? 1920 : 0;
        stream.height = i == 0 ? 1080 : 0;
        stream.framerate = QStringLiteral("25 fps");
        item->movie.streams.push_back(stream);
    }
    return item;
}

long megabytes(const char* name)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith(name))
            return line.simplified().split(' ').value(1).toLong() / 1024;
    }
    return -1;
}

void measureLook(LibraryView& view, LibraryView::Look look, const char* name)
{
    std::printf("%s\n", name);
    reportOnce("  shown", [&] { view.setLook(look); });
    auto* bar = static_cast<QAbstractItemView*>(view.currentWidget())->verticalScrollBar();
    Slowest scroll;
    for (int i = 1; i <= steps; ++i)
        measure(scroll, [&] { bar->setValue(int(qint64(bar->maximum()) * i / steps)); });
    report("  scrolled from top to end", scroll);
    Slowest lines;
    for (int i = 1; i <= steps; ++i)
        measure(lines, [&] { bar->setValue(bar->value() - bar->pageStep() / 3); });
    report("  scrolled by thirds of a page", lines);
    reportOnce("  filtered to some", [&] { view.setWords(QStringLiteral("film 77")); });
    reportOnce("  filtered to half", [&] { view.setWords(QStringLiteral("deu hevc")); });
    reportOnce("  filtered to none", [&] { view.setWords(QStringLiteral("nothing")); });
    reportOnce("  all again", [&] { view.setWords(QString()); });
    Slowest sort;
    for (int column = 0; column < ColumnCount; ++column) {
        measure(sort, [&] { view.sort(column, Qt::AscendingOrder); });
        measure(sort, [&] { view.sort(column, Qt::DescendingOrder); });
    }
    report("  sorted by each column", sort);
    reportOnce("  as imported", [&] { view.sort(-1, Qt::AscendingOrder); });
    reportOnce("  all selected", [&] { view.selectAllItems(); });
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    if (argc < 2) {
        std::fputs("use: windowlist PICTURE [COUNT]\n", stderr);
        return 2;
    }
    const int count = argc > 2 ? std::atoi(argv[2]) : 20000;
    const QTemporaryDir folder;
    PictureCache pictures(pictureformat::gridSize, 1.0, 64);
    LibraryModel model(pictures);
    QSplitter window;
    auto* view = new LibraryView(model, pictureformat::gridSize, &window);
    auto* details = new DetailsPane(model, pictureformat::size, &window);
    QObject::connect(view, &LibraryView::currentChanged, details, &DetailsPane::show);
    window.resize(1400, 900);
    const long before = megabytes("VmRSS");

    std::vector<LibraryModel::Entry> entries;
    for (int i = 0; i < count; ++i) {
        const QString picture = folder.filePath(QStringLiteral("%1.jpg").arg(i));
        if (::link(argv[1], QFile::encodeName(picture).constData()) != 0)
            QFile::copy(QFile::decodeName(argv[1]), picture);
        entries.push_back({QString::number(i), makeItem(i, picture)});
    }
    reportOnce("first paint", [&] { window.show(); });
    const auto put = [&](int first) {
        model.put({entries.begin() + first, entries.begin() + std::min(first + batch, count)});
    };
    Slowest arrive;
    for (int first = 0; first < count; first += batch)
        measure(arrive, [&] { put(first); });
    report("items arrive, 200 at once", arrive);
    Slowest change;
    for (int first = 0; first < count; first += 10 * batch)
        measure(change, [&] { put(first); });
    report("items change, 200 at once", change);
    measureLook(*view, LibraryView::Grid, "pictures");
    measureLook(*view, LibraryView::Table, "table");
    reportOnce("sorted by name", [&] { view->sort(NameColumn, Qt::AscendingOrder); });
    Slowest sorted;
    for (int first = 0; first < count; first += 10 * batch)
        measure(sorted, [&] { put(first); });
    report("items change in a sorted list", sorted);
    reportOnce("all removed", [&] { model.removeKeys(view->selectedKeys()); });
    std::printf("memory at its highest: %ld MB, %ld MB of them before the items\n",
                megabytes("VmHWM"), before);
    return isWithin ? 0 : 1;
}
