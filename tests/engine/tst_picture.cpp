// SPDX-License-Identifier: GPL-2.0-or-later
//
// Frames as pictures: their size, shape, turn and colours.
#include "engineobjects.h"
#include "picture/frame.h"

#include <QtTest/QtTest>

#include <cmath>
#include <valarray>

using namespace AVBased;

namespace {

QImage firstPicture(const QString& file, const QSize& size)
{
    const ImporterPtr importer = openFixture(file);
    const SourcePtr source = openVideo(importer);
    return source ? pictureOf(frameAt(*source, 0), size.width(), size.height()) : QImage();
}

/// The initial of the colour at a point, k for black; "?" for a mixed one.
QChar colourAt(const QImage& picture, int x, int y)
{
    const auto level = [](int value) { return value < 24 ? 0 : (value > 231 ? 1 : 8); };
    const QRgb c = picture.pixel(x, y);
    const int index = level(qRed(c)) * 4 + level(qGreen(c)) * 2 + level(qBlue(c));
    return index < 8 && qAlpha(c) == 255 ? "kbgcrmyw"[index] : '?';
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
}

using Components = std::valarray<double>;

/// A frame of one colour, or of another in its odd lines, given as 8-bit values for any format.
IAVFrame flatFrame(AVPixelFormat format, const Components& even, const Components& odd)
{
    IAVFrame frame{engine::FramePtr(av_frame_alloc()), {}, {1, 1}};
    AVFrame& f = *frame.picture;
    std::tie(f.format, f.width, f.height) = std::tuple(format, 68, 48);
    constexpr std::size_t planeSize = 48 * 320; // has room for the largest
    f.buf[0] = av_buffer_allocz(3 * planeSize);
    for (std::size_t i = 0; i < 3; ++i) {
        f.data[i] = f.buf[0]->data + i * planeSize;
        f.linesize[i] = 320;
    }
    const AVPixFmtDescriptor* about = av_pix_fmt_desc_get(format);
    for (int i = 0; i < about->nb_components * 48; ++i) {
        const auto value = unsigned((i % 2 ? odd : even)[unsigned(i / 48)]);
        const std::vector<std::uint16_t> line(68, value << (about->comp[0].depth - 8));
        av_write_image_line(line.data(), f.data, f.linesize, about, 0, i % 48, i / 48, 68);
    }
    return frame;
}

/// What the standards make of 8-bit values on a screen, 0 … 255. Nothing for light that has to be
/// rolled off, which they leave open. `red` and `blue` are the matrix's shares of the brightness.
Components expectedColour(const Components& yuv, double red, double blue, bool isFull,
                          AVColorTransferCharacteristic transfer)
{
    const double y = isFull ? yuv[0] / 255 : (yuv[0] - 16) / 219;
    const double r = y + 2 * (1 - red) * (yuv[2] - 128) / (isFull ? 255 : 224);
    const double b = y + 2 * (1 - blue) * (yuv[1] - 128) / (isFull ? 255 : 224);
    Components c = {r, (y - red * r - blue * b) / (1 - red - blue), b};
    for (double& x : c) { // into light, in units of the white of ordinary content
        x = std::clamp(x, 0.0, 1.0);
        const double e = std::pow(x, 32 / 2523.0) * 128;
        if (transfer == AVCOL_TRC_SMPTE2084)
            x = std::pow(std::max(e - 107, 0.0) / (2413 - 18.6875 * e), 8192 / 1305.0) * 10000 /
                203;
        else if (transfer == AVCOL_TRC_ARIB_STD_B67)
            x = x < 0.5 ? x * x / 3 : (std::exp((x - 0.559911) / 0.178833) + 0.284669) / 12;
        else
            x = x <= 0.04045 ? x / 12.92 : std::pow((x + 0.055) / 1.055, 2.4);
    }
    if (transfer == AVCOL_TRC_ARIB_STD_B67) // on a screen of 1000 cd/m2
        c *= std::pow(0.2627 * c[0] + 0.678 * c[1] + 0.0593 * c[2], 0.2) * 1000 / 203;
    if (transfer != AVCOL_TRC_BT709 && transfer != AVCOL_TRC_BT2020_10 && c.max() > 0.5)
        return {};
    if (transfer != AVCOL_TRC_BT709)
        c = {1.6605 * c[0] - 0.5876 * c[1] - 0.0728 * c[2],
             -0.1246 * c[0] + 1.1329 * c[1] - 0.0083 * c[2],
             -0.0182 * c[0] - 0.1006 * c[1] + 1.1187 * c[2]};
    for (double& x : c)
        x = x <= 0.0031308 ? 12.92 * x : 1.055 * std::pow(x, 1 / 2.4) - 0.055;
    return 255.0 * c.apply([](double x) { return std::clamp(x, 0.0, 1.0); });
}

} // namespace

class PictureTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void framesAreFittedIn()
    {
        const QSize wide(320, 180);
        const QRect all(0, 0, 320, 180), upright(109, 0, 101, 180);
        expectFitted("upright.mp4", wide, all, "rgbw");
        expectFitted("turned-90.mp4", wide, upright, "gwrb");
        expectFitted("turned-180.mp4", wide, all, "wbgr");
        expectFitted("turned-270.mp4", wide, upright, "brwg");
        expectFitted("wide-pixels.mp4", wide, all, "rgbw");
        expectFitted("square.mp4", wide, QRect(70, 0, 180, 180), "rgbw");
        expectFitted("upright.mp4", QSize(100, 100), QRect(0, 22, 100, 56), "rgbw");
        expectFitted("upright.mp4", QSize(641, 361), QRect(0, 0, 641, 361), "rgbw");
        expectFitted("full-range.avi", wide, all, "rgbw");
    }

    void transparentPixelsAreBlack()
    {
        const QImage picture = firstPicture("media/transparent.mov", QSize(320, 180));
        QCOMPARE(picture.pixel(100, 100), qRgb(0, 0, 0));
    }

    /// Within one level, in all matrices, ranges, transfers and sorts of formats. Greys whose light
    /// is rolled off get brighter, and ordinary white is not yet the screen's.
    void coloursAreThoseOfTheStandards()
    {
        const AVColorSpace spaces[] = {AVCOL_SPC_BT709, AVCOL_SPC_SMPTE170M, AVCOL_SPC_FCC,
                                       AVCOL_SPC_SMPTE240M, AVCOL_SPC_BT2020_NCL};
        const Components reds = {0.2126, 0.299, 0.30, 0.212, 0.2627};
        const Components blues = {0.0722, 0.114, 0.11, 0.087, 0.0593};
        const AVColorTransferCharacteristic transfers[] = {
            AVCOL_TRC_BT709, AVCOL_TRC_BT2020_10, AVCOL_TRC_SMPTE2084, AVCOL_TRC_ARIB_STD_B67};
        const AVPixelFormat formats[] = {AV_PIX_FMT_YUV420P, AV_PIX_FMT_YUV420P10, AV_PIX_FMT_NV12,
                                         AV_PIX_FMT_YUYV422};
        const Components samples[] = {{16, 128, 128},  {50, 128, 128},  {102, 128, 128},
                                      {143, 128, 128}, {235, 128, 128}, {81, 90, 240},
                                      {145, 54, 34},   {41, 240, 110},  {70, 110, 150}};
        for (unsigned i = 0; i < 5 * 4 * 4 * 2 * 9; ++i) {
            const Components& yuv = samples[i % 9];
            const bool isFull = i / 9 % 2;
            IAVFrame frame = flatFrame(formats[i / 18 % 4], yuv, yuv);
            AVFrame& f = *frame.picture;
            f.colorspace = spaces[i / 288];
            f.color_range = isFull ? AVCOL_RANGE_JPEG : AVCOL_RANGE_MPEG;
            f.color_trc = transfers[i / 72 % 4];
            f.color_primaries = i / 72 % 4 ? AVCOL_PRI_BT2020 : AVCOL_PRI_BT709;
            const QRgb c = pictureOf(&frame, 34, 24).pixel(17, 12);
            const Components shown = {double(qRed(c)), double(qGreen(c)), double(qBlue(c))};
            const Components expected =
                expectedColour(yuv, reds[i / 288], blues[i / 288], isFull, f.color_trc);
            const bool isRolledOff = qGray(c) > 160 && (qGray(c) > 240) == (yuv[0] > 200);
            QVERIFY2(expected.size() ? std::abs(shown - expected).max() <= 1
                                     : isRolledOff || yuv[1] != 128,
                     qPrintable(QString("%1: %2").arg(i).arg(c, 0, 16)));
        }
    }

    /// Fields of different brightness and colour are not mixed, in small pictures or in large ones,
    /// and what is the same in both stays as sharp as it is.
    void interlacedFramesShowOneMoment()
    {
        for (const auto format : {AV_PIX_FMT_YUV420P, AV_PIX_FMT_NV12, AV_PIX_FMT_YUYV422,
                                  AV_PIX_FMT_YUV422P10, AV_PIX_FMT_GBRP}) {
            IAVFrame frame = flatFrame(format, {60, 90, 170}, {200, 150, 100});
            engine::setInterlaced(*frame.picture);
            for (const int height : {24, 48, 75}) {
                const QImage picture = pictureOf(&frame, height * 17 / 12, height);
                for (int y = 1; y < height; ++y)
                    QCOMPARE(picture.pixel(9, y), picture.pixel(9, 0));
            }
        }
        IAVFrame still = flatFrame(AV_PIX_FMT_GRAY8, {0}, {0});
        for (int i = 0; i < 48 * 320; ++i)
            still.picture->data[0][i] = std::uint8_t(16 + i / 320 * 4);
        const QImage whole = pictureOf(&still, 68, 48).copy(0, 0, 68, 47);
        engine::setInterlaced(*still.picture);
        QCOMPARE(pictureOf(&still, 68, 48).copy(0, 0, 68, 47), whole);
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
