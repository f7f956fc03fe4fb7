// SPDX-License-Identifier: GPL-2.0-or-later
//
// Frames as pictures: their size, shape, turn and colours.
#include "engineobjects.h"
#include "fixture.h"

#include <QtTest/QtTest>

using namespace AVBased;

namespace {

QImage firstPicture(const QString& file, int width, int height)
{
    const ImporterPtr importer = openItem(fixtureUtf8(file));
    const SourcePtr source(importer ? importer->openSource(0, 0, -1) : nullptr);
    return source ? pictureOf(frameAt(*source, 0), width, height) : QImage();
}

/// The initial of the colour at a point: r, g, b, w, k (black) or "?".
QChar colourAt(const QImage& picture, int x, int y)
{
    const QRgb c = picture.pixel(x, y);
    const auto is = [c](int r, int g, int b) {
        return qAbs(qRed(c) - r) < 24 && qAbs(qGreen(c) - g) < 24 && qAbs(qBlue(c) - b) < 24;
    };
    if (is(255, 0, 0))
        return 'r';
    if (is(0, 255, 0))
        return 'g';
    if (is(0, 0, 255))
        return 'b';
    if (is(255, 255, 255))
        return 'w';
    return is(0, 0, 0) ? 'k' : '?';
}

/// The four quarters of the part of the picture that is not bars, row by row.
QString quarters(const QImage& picture, const QRect& part)
{
    QString text;
    for (const int y : {1, 3}) {
        for (const int x : {1, 3})
            text += colourAt(picture, part.x() + part.width() * x / 4,
                             part.y() + part.height() * y / 4);
    }
    return text;
}

} // namespace

class PictureTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void framesAreFittedIn_data();
    void framesAreFittedIn();
    void transparentPixelsAreBlack();
    void highDynamicRangeIsBroughtDown();
    void onlySizesThatPicturesHave();
};

void PictureTest::framesAreFittedIn_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QRect>("part"); ///< what the frame fills
    QTest::addColumn<QString>("colours");

    const QSize wide(320, 180);
    const QRect all(0, 0, 320, 180);
    const QRect upright(109, 0, 101, 180);
    QTest::newRow("as it is") << "upright.mp4" << wide << all << "rgbw";
    QTest::newRow("turned by 90") << "turned-90.mp4" << wide << upright << "gwrb";
    QTest::newRow("turned by 180") << "turned-180.mp4" << wide << all << "wbgr";
    QTest::newRow("turned by 270") << "turned-270.mp4" << wide << upright << "brwg";
    QTest::newRow("wide pixels") << "wide-pixels.mp4" << wide << all << "rgbw";
    QTest::newRow("square") << "square.mp4" << wide << QRect(70, 0, 180, 180) << "rgbw";
    QTest::newRow("into a square")
        << "upright.mp4" << QSize(100, 100) << QRect(0, 22, 100, 56) << "rgbw";
    QTest::newRow("enlarged") << "upright.mp4" << QSize(641, 361) << QRect(0, 0, 641, 361)
                              << "rgbw";
    QTest::newRow("full range") << "full-range.avi" << wide << all << "rgbw";
    QTest::newRow("other matrix") << "bt709.mp4" << wide << all << "rgbw";
}

void PictureTest::framesAreFittedIn()
{
    QFETCH(QString, file);
    QFETCH(QSize, size);
    QFETCH(QRect, part);
    const QImage picture = firstPicture("media/quarters-" + file, size.width(), size.height());
    QCOMPARE(picture.size(), size);
    QTEST(quarters(picture, part), "colours");
    // Bars begin right beside it, and the picture right within.
    const int middle = part.center().y() - 10;
    if (part.left() > 1) {
        QCOMPARE(colourAt(picture, part.left() - 2, middle), QChar('k'));
        QCOMPARE(colourAt(picture, part.right() + 3, middle), QChar('k'));
        QVERIFY(colourAt(picture, part.left() + 3, middle) != QChar('k'));
    }
    if (part.top() > 1) {
        QCOMPARE(colourAt(picture, part.center().x(), part.top() - 2), QChar('k'));
        QCOMPARE(colourAt(picture, part.center().x(), part.bottom() + 3), QChar('k'));
    }
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            QCOMPARE(qAlpha(picture.pixel(x, y)), 255);
    }
}

void PictureTest::transparentPixelsAreBlack()
{
    const QImage picture = firstPicture("media/transparent.mov", 320, 180);
    QCOMPARE(picture.pixel(100, 100), qRgb(0, 0, 0));
}

/// The white of ordinary content stays bright, dark stays dark, and light far above white still
/// shows brighter than white.
void PictureTest::highDynamicRangeIsBroughtDown()
{
    const auto grey = [](const char* file) {
        return qGray(firstPicture(file, 320, 180).pixel(160, 90));
    };
    const int dark = grey("media/hdr-200.mkv");
    const int white = grey("media/hdr-573.mkv");
    const int bright = grey("media/hdr-900.mkv");
    QVERIFY2(dark > 2 && dark < 60, qPrintable(QString::number(dark)));
    QVERIFY2(white > 185 && white < 240, qPrintable(QString::number(white)));
    QVERIFY2(bright > white + 10, qPrintable(QString::number(bright)));
}

void PictureTest::onlySizesThatPicturesHave()
{
    Vesk::CAVBasedModelWrapper* engine = engineWrapper();
    QVERIFY(!ConverterPtr(engine->CreateImageConverterEx(29, 320, 180, 0)));
    QVERIFY(!ConverterPtr(engine->CreateImageConverterEx(30, 0, 180, 0)));
    QVERIFY(!ConverterPtr(engine->CreateImageConverterEx(30, 320, unsigned(-5), 0)));
    const ConverterPtr converter(engine->CreateImageConverterEx(30, 1, 1, 0));
    QVERIFY(converter);
    QVERIFY(!converter->convert(nullptr));
    QCOMPARE(firstPicture("media/quarters-upright.mp4", 1, 1).size(), QSize(1, 1));
}

QTEST_GUILESS_MAIN(PictureTest)
#include "tst_picture.moc"
