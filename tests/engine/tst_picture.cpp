// SPDX-License-Identifier: GPL-2.0-or-later
//
// Frames as pictures: their size, shape, turn and colours.
#include "engineobjects.h"
#include "picture/frame.h"

#include <QtTest/QtTest>

#include <cmath>
#include <cstring>
#include <valarray>

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
/// whether their corners are those of `part` and beyond it there are black bars.
void expectFitted(const char* file, const QSize& size, const QRect& part, const QString& colours)
{
    const QImage picture = firstPicture(QString("media/quarters-") + file, size);
    QCOMPARE(picture.size(), size);
    QString sketch;
    for (const int y : {part.top() - 2, part.top() + 3, part.bottom() - 3, part.bottom() + 3}) {
        for (const int x : {part.left() - 2, part.left() + 3, part.right() - 3, part.right() + 3})
            sketch += picture.valid(x, y) ? colourAt(picture, x, y) : QChar('k');
    }
    const QString expected = "kkkkk" + colours.left(2) + "kk" + colours.right(2) + "kkkkk";
    QVERIFY2(sketch == expected, qPrintable(file + (": " + sketch)));
    const QImage opaque = picture.convertToFormat(QImage::Format_RGB32);
    QCOMPARE(opaque.convertToFormat(QImage::Format_ARGB32), picture);
}

using Components = std::valarray<double>;

/// A frame of one colour, or of another in its odd lines, given as 8-bit values for any format.
IAVFrame flatFrame(AVPixelFormat format, const Components& even, const Components& odd)
{
    IAVFrame frame{engine::FramePtr(av_frame_alloc()), {}, {1, 1}};
    AVFrame& picture = *frame.picture;
    std::tie(picture.format, picture.width, picture.height) = std::tuple(format, 68, 48);
    picture.buf[0] = av_buffer_allocz(80 * 48 * 6);
    av_image_fill_arrays(picture.data, picture.linesize, picture.buf[0]->data, format, 68, 48, 16);
    const AVPixFmtDescriptor* about = av_pix_fmt_desc_get(format);
    for (int i = 0; i < about->nb_components; ++i) {
        const bool isColour = i > 0 && !(about->flags & AV_PIX_FMT_FLAG_RGB);
        for (int y = 0; y < 48 >> (isColour ? about->log2_chroma_h : 0); ++y) {
            const double value = (y % 2 ? odd : even)[unsigned(i)];
            const std::vector<std::uint16_t> line(68, unsigned(value)
                                                          << (about->comp[i].depth - 8));
            av_write_image_line(line.data(), picture.data, picture.linesize, about, 0, y, i,
                                68 >> (isColour ? about->log2_chroma_w : 0));
        }
    }
    return frame;
}

/// Light of a code value in units of the white of ordinary content; for HLG, of the scene.
double lightOf(double code, AVColorTransferCharacteristic transfer)
{
    const double e = std::pow(code, 32 / 2523.0);
    if (transfer == AVCOL_TRC_SMPTE2084)
        return std::pow(std::max(e - 0.8359375, 0.0) / (18.8515625 - 18.6875 * e), 8192 / 1305.0) *
               10000 / 203;
    if (transfer == AVCOL_TRC_ARIB_STD_B67)
        return code <= 0.5 ? code * code / 3
                           : (std::exp((code - 0.55991073) / 0.17883277) + 0.28466892) / 12;
    return code <= 0.04045 ? code / 12.92 : std::pow((code + 0.055) / 1.055, 2.4);
}

/// What the standards make of 8-bit values on a screen, 0 … 255. Nothing for light that has to be
/// rolled off, which they leave open. `red` and `blue` are the matrix's shares of the brightness.
Components expectedColour(const Components& yuv, double red, double blue, bool isFull,
                          AVColorTransferCharacteristic transfer)
{
    const auto clip = [](double x) { return std::clamp(x, 0.0, 1.0); };
    const double y = isFull ? yuv[0] / 255 : (yuv[0] - 16) / 219;
    const double r = y + 2 * (1 - red) * (yuv[2] - 128) / (isFull ? 255 : 224);
    const double b = y + 2 * (1 - blue) * (yuv[1] - 128) / (isFull ? 255 : 224);
    Components c = Components{r, (y - red * r - blue * b) / (1 - red - blue), b}.apply(clip);
    if (transfer == AVCOL_TRC_BT709)
        return c * 255.0;
    for (double& x : c)
        x = lightOf(x, transfer);
    if (transfer == AVCOL_TRC_ARIB_STD_B67) // on a screen of 1000 cd/m2
        c *= std::pow(0.2627 * c[0] + 0.678 * c[1] + 0.0593 * c[2], 0.2) * 1000 / 203;
    if (transfer != AVCOL_TRC_BT2020_10 && c.max() > 0.5)
        return {};
    c = Components{1.6605 * c[0] - 0.5876 * c[1] - 0.0728 * c[2],
                   -0.1246 * c[0] + 1.1329 * c[1] - 0.0083 * c[2],
                   -0.0182 * c[0] - 0.1006 * c[1] + 1.1187 * c[2]};
    for (double& x : c)
        x = clip(x <= 0.0031308 ? 12.92 * x : 1.055 * std::pow(x, 1 / 2.4) - 0.055);
    return c * 255.0;
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

    void transparentPixelsAreBlack()
    {
        const QImage picture = firstPicture("media/transparent.mov", QSize(320, 180));
        QCOMPARE(picture.pixel(100, 100), qRgb(0, 0, 0));
    }

    void coloursAreThoseOfTheStandards_data()
    {
        QTest::addColumn<int>("space");
        QTest::addColumn<double>("red");
        QTest::addColumn<double>("blue");
        QTest::newRow("BT.709") << int(AVCOL_SPC_BT709) << 0.2126 << 0.0722;
        QTest::newRow("BT.601") << int(AVCOL_SPC_SMPTE170M) << 0.299 << 0.114;
        QTest::newRow("PAL") << int(AVCOL_SPC_BT470BG) << 0.299 << 0.114;
        QTest::newRow("FCC") << int(AVCOL_SPC_FCC) << 0.30 << 0.11;
        QTest::newRow("SMPTE 240M") << int(AVCOL_SPC_SMPTE240M) << 0.212 << 0.087;
        QTest::newRow("BT.2020") << int(AVCOL_SPC_BT2020_NCL) << 0.2627 << 0.0593;
    }

    /// Within one level, in all ranges, transfers and sorts of formats. Greys whose light is rolled
    /// off get brighter, and not all of it is white.
    void coloursAreThoseOfTheStandards()
    {
        QFETCH(int, space);
        QFETCH(double, red);
        QFETCH(double, blue);
        const Components samples[] = {{16, 128, 128},  {50, 128, 128},  {102, 128, 128},
                                      {143, 128, 128}, {235, 128, 128}, {81, 90, 240},
                                      {145, 54, 34},   {41, 240, 110},  {70, 110, 150}};
        for (int i = 0; i < 32; ++i) {
            const auto format = std::array{AV_PIX_FMT_YUV420P, AV_PIX_FMT_YUV420P10,
                                           AV_PIX_FMT_NV12, AV_PIX_FMT_YUYV422}[i % 4];
            const bool isFull = i / 4 % 2;
            const auto transfer = std::array{AVCOL_TRC_BT709, AVCOL_TRC_BT2020_10,
                                             AVCOL_TRC_SMPTE2084, AVCOL_TRC_ARIB_STD_B67}[i / 8];
            int darker = 0;
            for (const Components& yuv : samples) {
                IAVFrame frame = flatFrame(format, yuv, yuv);
                frame.picture->colorspace = AVColorSpace(space);
                frame.picture->color_range = isFull ? AVCOL_RANGE_JPEG : AVCOL_RANGE_MPEG;
                frame.picture->color_trc = transfer;
                frame.picture->color_primaries = i < 8 ? AVCOL_PRI_BT709 : AVCOL_PRI_BT2020;
                const QRgb c = pictureOf(&frame, 34, 24).pixel(17, 12);
                const Components shown = {double(qRed(c)), double(qGreen(c)), double(qBlue(c))};
                const Components expected = expectedColour(yuv, red, blue, isFull, transfer);
                const bool fits = expected.size()
                                      ? std::abs(shown - expected).max() <= 1.0
                                      : yuv[1] != 128 || (shown[0] > darker + 8 &&
                                                          (shown[0] < 240 || yuv[0] > 200));
                QVERIFY2(fits,
                         qPrintable(QString("%1: %2 of %3").arg(i).arg(c, 0, 16).arg(yuv[0])));
                darker = qRed(c);
            }
        }
    }

    /// Fields of different brightness and colour are not mixed, in small pictures or in large ones,
    /// and what is the same in both stays as sharp as it is.
    void interlacedFramesShowOneMoment()
    {
        for (const auto format : {AV_PIX_FMT_YUV420P, AV_PIX_FMT_NV12, AV_PIX_FMT_YUYV422,
                                  AV_PIX_FMT_YUV422P10, AV_PIX_FMT_GBRP}) {
            IAVFrame frame = flatFrame(format, {60, 90, 170}, {200, 150, 100});
            frame.picture->interlaced_frame = 1;
            for (const int size : {24, 48, 75}) {
                const QImage picture = pictureOf(&frame, size * 17 / 12, size);
                QImage flat = picture;
                flat.fill(picture.pixel(3, 3));
                QVERIFY2(picture == flat, av_get_pix_fmt_name(format));
            }
        }
        IAVFrame still = flatFrame(AV_PIX_FMT_GRAY8, {0}, {0});
        for (int y = 0; y < 48; ++y)
            std::memset(still.picture->data[0] + y * still.picture->linesize[0], 16 + y * 4, 68);
        const QRect inner(0, 0, 68, 47); // the last line has none below
        const QImage whole = pictureOf(&still, 68, 48).copy(inner);
        still.picture->interlaced_frame = 1;
        QCOMPARE(pictureOf(&still, 68, 48).copy(inner), whole);
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
