// SPDX-License-Identifier: GPL-2.0-or-later
//
// Frames as pictures: their size, shape, turn and colours.
#include "engineobjects.h"

#include <QtTest/QtTest>

using namespace AVBased;

namespace {

QImage firstPicture(const QString& file, const QSize& size)
{
    const ImporterPtr importer = openFixture(file);
    const SourcePtr source = openVideo(importer);
    return source ? pictureOf(frameAt(*source, 0), size.width(), size.height()) : QImage();
}

/// The initial of the colour at a point: r, g, b, w, k (black) or "?".
QChar colourAt(const QImage& picture, int x, int y)
{
    const QRgb c = picture.pixel(x, y);
    for (const auto& [name, colour] :
         {std::pair('r', 0xFF0000), {'g', 0x00FF00}, {'b', 0x0000FF}, {'w', 0xFFFFFF}, {'k', 0}}) {
        if (qAbs(qRed(c) - qRed(colour)) < 24 && qAbs(qGreen(c) - qGreen(colour)) < 24 &&
            qAbs(qBlue(c) - qBlue(colour)) < 24)
            return name;
    }
    return '?';
}

/// Shows a file whose quarters have those colours, row by row, in pictures of that size, and looks
/// whether they fill `part` and the rest is black bars.
void expectFitted(const char* file, const QSize& size, const QRect& part, const QString& colours)
{
    const QImage picture = firstPicture(QString("media/quarters-") + file, size);
    QCOMPARE(picture.size(), size);
    QString quarters;
    for (const int y : {1, 3}) {
        for (const int x : {1, 3})
            quarters += colourAt(picture, part.x() + part.width() * x / 4,
                                 part.y() + part.height() * y / 4);
    }
    QVERIFY2(quarters == colours, qPrintable(file + (": " + quarters)));
    // Bars begin right beside it, and the picture right within.
    const QPoint middle = part.center() - QPoint(0, 10);
    if (part.left() > 1) {
        QCOMPARE(colourAt(picture, part.left() - 2, middle.y()), QChar('k'));
        QCOMPARE(colourAt(picture, part.right() + 3, middle.y()), QChar('k'));
        QVERIFY(colourAt(picture, part.left() + 3, middle.y()) != QChar('k'));
    }
    if (part.top() > 1) {
        QCOMPARE(colourAt(picture, middle.x(), part.top() - 2), QChar('k'));
        QCOMPARE(colourAt(picture, middle.x(), part.bottom() + 3), QChar('k'));
    }
    const QImage opaque = picture.convertToFormat(QImage::Format_RGB32);
    QCOMPARE(opaque.convertToFormat(QImage::Format_ARGB32), picture);
}

} // namespace

class PictureTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void framesAreFittedIn()
    {
        const QSize wide(320, 180);
        const QRect all(0, 0, 320, 180);
        const QRect upright(109, 0, 101, 180);
        expectFitted("upright.mp4", wide, all, "rgbw");
        expectFitted("turned-90.mp4", wide, upright, "gwrb");
        expectFitted("turned-180.mp4", wide, all, "wbgr");
        expectFitted("turned-270.mp4", wide, upright, "brwg");
        expectFitted("wide-pixels.mp4", wide, all, "rgbw");
        expectFitted("square.mp4", wide, QRect(70, 0, 180, 180), "rgbw");
        expectFitted("upright.mp4", QSize(100, 100), QRect(0, 22, 100, 56), "rgbw");
        expectFitted("upright.mp4", QSize(641, 361), QRect(0, 0, 641, 361), "rgbw");
        expectFitted("full-range.avi", wide, all, "rgbw");
        expectFitted("bt709.mp4", wide, all, "rgbw");
    }

    void darkOfFullRangeIsNotBlack()
    {
        const QImage picture = firstPicture("media/dark-full-range.avi", QSize(320, 180));
        QVERIFY(qAbs(qGray(picture.pixel(160, 90)) - 0x18) < 6);
    }

    void transparentPixelsAreBlack()
    {
        const QImage picture = firstPicture("media/transparent.mov", QSize(320, 180));
        QCOMPARE(picture.pixel(100, 100), qRgb(0, 0, 0));
    }

    /// The white of ordinary content stays bright, dark stays dark, and light far above white still
    /// shows brighter than white.
    void highDynamicRangeIsBroughtDown()
    {
        const auto grey = [](const char* file) {
            return qGray(firstPicture(file, QSize(320, 180)).pixel(160, 90));
        };
        const int dark = grey("media/hdr-200.mkv");
        const int white = grey("media/hdr-573.mkv");
        const int bright = grey("media/hdr-900.mkv");
        QVERIFY2(dark > 2 && dark < 60, qPrintable(QString::number(dark)));
        QVERIFY2(white > 185 && white < 240, qPrintable(QString::number(white)));
        QVERIFY2(bright > white + 10, qPrintable(QString::number(bright)));
    }

    void onlySizesThatPicturesHave()
    {
        Vesk::CAVBasedModelWrapper* engine = engineWrapper();
        QVERIFY(!ConverterPtr(engine->CreateImageConverterEx(29, 320, 180, 0)));
        QVERIFY(!ConverterPtr(engine->CreateImageConverterEx(30, 0, 180, 0)));
        QVERIFY(!ConverterPtr(engine->CreateImageConverterEx(30, 320, unsigned(-5), 0)));
        const ConverterPtr converter(engine->CreateImageConverterEx(30, 1, 1, 0));
        QVERIFY(converter && !converter->convert(nullptr));
        QCOMPARE(firstPicture("media/quarters-upright.mp4", QSize(1, 1)).size(), QSize(1, 1));
    }
};

QTEST_GUILESS_MAIN(PictureTest)
#include "tst_picture.moc"
