// Noise reduction on one-bit pictures: which specks and pinholes each level takes, what it must
// never take, and the pages it may be asked for.
#include "common/TestFiles.h"
#include "engine/ImageFiles.h"
#include "engine/Model.h"
#include "engine/NoiseReduction.h"
#include "engine/XdwBuilder.h"

#include <QPainter>
#include <QRandomGenerator>
#include <gtest/gtest.h>

using namespace xdwtest;

namespace {

constexpr int DotsPerMetreAt300 = 11811;

// A white one-bit picture at 300 dpi, black at index 0 or 1 as asked.
QImage Paper(int vWidth, int vHeight, bool vBlackFirst = false)
{
    QImage image(vWidth, vHeight, QImage::Format_Mono);
    image.setColorTable(vBlackFirst ? QList<QRgb>{qRgb(0, 0, 0), qRgb(255, 255, 255)}
                                    : QList<QRgb>{qRgb(255, 255, 255), qRgb(0, 0, 0)});
    image.fill(vBlackFirst ? 1 : 0);
    image.setDotsPerMeterX(DotsPerMetreAt300);
    image.setDotsPerMeterY(DotsPerMetreAt300);
    return image;
}

bool Black(const QImage& vImage, int vX, int vY)
{
    return qGray(vImage.pixel(vX, vY)) < 128;
}

void Fill(QImage& vImage, QRect vRect, bool vBlack)
{
    for (int y = vRect.top(); y <= vRect.bottom(); ++y)
        for (int x = vRect.left(); x <= vRect.right(); ++x)
            vImage.setPixel(x, y, (vImage.color(1) == qRgb(0, 0, 0)) == vBlack ? 1 : 0);
}

int BlackCount(const QImage& vImage)
{
    int n = 0;
    for (int y = 0; y < vImage.height(); ++y)
        for (int x = 0; x < vImage.width(); ++x)
            n += Black(vImage, x, y);
    return n;
}

// Square specks of 1 to 5 pixels and white pinholes of the same sizes inside a black block.
QImage Specimen(bool vBlackFirst = false)
{
    QImage image = Paper(200, 120, vBlackFirst);
    for (int side = 1; side <= 5; ++side) {
        Fill(image, QRect(10 + 20 * side, 10, side, side), true);
        Fill(image, QRect(10 + 20 * side, 60, 15, 15), true);
        Fill(image, QRect(15 + 20 * side, 65, side, side), false);
    }
    Fill(image, QRect(5, 100, 190, 1), true);    // a one-pixel rule
    Fill(image, QRect(5, 30, 1, 20), true);      // and a short upright one
    return image;
}

} // namespace

TEST(NoiseReduction, LevelNamesAndSizesStayAsTheRuntimeHasThem)
{
    EXPECT_EQ(xdw::NoiseLevelNames(), QStringList({"NONE", "NORMAL", "WEAK", "STRONG"}));
    EXPECT_EQ(xdw::SpeckSide(xdw::NoiseNone, 300), 0);
    EXPECT_EQ(xdw::SpeckSide(xdw::NoiseWeak, 300), 1);
    EXPECT_EQ(xdw::SpeckSide(xdw::NoiseNormal, 300), 2);
    EXPECT_EQ(xdw::SpeckSide(xdw::NoiseStrong, 300), 4);
    EXPECT_EQ(xdw::SpeckSide(xdw::NoiseStrong, 600), 7);
    EXPECT_EQ(xdw::SpeckSide(xdw::NoiseWeak, 10), 1);   // never below a pixel
}

TEST(NoiseReduction, EachLevelTakesSpecksAndPinholesUpToItsSizeAndKeepsStrokes)
{
    const int expectedSide[] = {0, 2, 1, 4};
    for (bool blackFirst : {false, true}) {
        for (int level = xdw::NoiseNone; level <= xdw::NoiseStrong; ++level) {
            SCOPED_TRACE(testing::Message() << "level " << level << " black first " << blackFirst);
            const QImage out = xdw::ReduceNoise(Specimen(blackFirst), level);
            ASSERT_EQ(out.size(), QSize(200, 120));
            for (int side = 1; side <= 5; ++side) {
                const bool gone = side <= expectedSide[level];
                EXPECT_EQ(Black(out, 10 + 20 * side, 10), !gone) << "speck " << side;
                EXPECT_EQ(Black(out, 15 + 20 * side, 65), gone) << "pinhole " << side;
                EXPECT_TRUE(Black(out, 10 + 20 * side, 60));   // the block stays
            }
            for (int x = 5; x < 195; ++x)
                ASSERT_TRUE(Black(out, x, 100)) << x;
            EXPECT_TRUE(Black(out, 5, 49));
            EXPECT_EQ(out.convertToFormat(QImage::Format_RGB32) == Specimen().convertToFormat(QImage::Format_RGB32),
                      level == xdw::NoiseNone);
        }
    }
}

TEST(NoiseReduction, ShapesCountAsOneSpeckByTheirWholeBox)
{
    // A diagonal touches only at corners: one speck of 3 by 3 with black's eight neighbours.
    // Shapes that start as two specks and meet lower down are judged by their joint box, even
    // when the part that began further left or higher up is the one that joins the other.
    // White along the edge of the picture is paper, not a pinhole, however small.
    QImage image = Paper(60, 40);
    for (int i = 0; i < 3; ++i)
        Fill(image, QRect(5 + i, 5 + i, 1, 1), true);
    Fill(image, QRect(20, 5, 1, 1), true);
    Fill(image, QRect(24, 5, 1, 1), true);
    Fill(image, QRect(21, 6, 3, 1), true);        // V of 5 by 2
    for (QPoint p : {QPoint(6, 23), QPoint(7, 23), QPoint(8, 23), QPoint(9, 24), QPoint(10, 25), QPoint(7, 25)})
        Fill(image, QRect(p, QSize(1, 1)), true);
    Fill(image, QRect(8, 26, 2, 1), true);        // hook of 5 by 4
    Fill(image, QRect(22, 20, 1, 4), true);
    Fill(image, QRect(20, 23, 1, 1), true);
    Fill(image, QRect(21, 24, 1, 1), true);       // hook of 3 by 5
    Fill(image, QRect(40, 0, 20, 40), true);
    Fill(image, QRect(59, 10, 1, 1), false);      // a notch in the right edge
    const QImage normal = xdw::ReduceNoise(image, xdw::NoiseNormal);
    EXPECT_TRUE(Black(normal, 6, 6));
    EXPECT_TRUE(Black(normal, 22, 6));
    const QImage strong = xdw::ReduceNoise(image, xdw::NoiseStrong);
    EXPECT_FALSE(Black(strong, 6, 6));
    EXPECT_FALSE(Black(strong, 5, 5));
    EXPECT_TRUE(Black(strong, 20, 5));            // 5 wide: beyond 4
    EXPECT_TRUE(Black(strong, 8, 26));
    EXPECT_TRUE(Black(strong, 21, 24));
    EXPECT_FALSE(Black(strong, 59, 10));
}

TEST(NoiseReduction, StrongerLevelsTakeMoreAndOnlyOneBitPicturesAreTaken)
{
    QImage noisy = Paper(300, 300);
    QRandomGenerator random(7);
    for (int i = 0; i < 4000; ++i)
        Fill(noisy, QRect(int(random.bounded(298)), int(random.bounded(298)), 1 + int(random.bounded(2)), 1), true);
    const int before = BlackCount(noisy);
    const int weak = BlackCount(xdw::ReduceNoise(noisy, xdw::NoiseWeak));
    const int normal = BlackCount(xdw::ReduceNoise(noisy, xdw::NoiseNormal));
    const int strong = BlackCount(xdw::ReduceNoise(noisy, xdw::NoiseStrong));
    EXPECT_LT(weak, before);
    EXPECT_LE(normal, weak);
    EXPECT_LE(strong, normal);
    EXPECT_LT(strong, weak);

    EXPECT_TRUE(xdw::IsBilevel(noisy));
    EXPECT_TRUE(xdw::IsBilevel(noisy.convertToFormat(QImage::Format_MonoLSB)));
    EXPECT_FALSE(xdw::ReduceNoise(noisy.convertToFormat(QImage::Format_MonoLSB), xdw::NoiseWeak).isNull());
    const QImage grey = noisy.convertToFormat(QImage::Format_Grayscale8);
    EXPECT_FALSE(xdw::IsBilevel(grey));
    EXPECT_TRUE(xdw::ReduceNoise(grey, xdw::NoiseWeak).isNull());
    EXPECT_TRUE(xdw::ReduceNoise(noisy, 4).isNull());
    EXPECT_TRUE(xdw::ReduceNoise(noisy, -1).isNull());
}

// The worst case for the labelling: a checkerboard is one black component (corners join it)
// and as many one-pixel white ones as it has white pixels, all pinholes but those on the edge.
TEST(NoiseReduction, LargeCheckerboardFillsItsInnerPinholes)
{
    const int side = 3000;
    QImage board = Paper(side, side);
    for (int y = 0; y < side; ++y) {
        uchar* line = board.scanLine(y);
        for (int i = 0; i < board.bytesPerLine(); ++i)
            line[i] = y % 2 ? 0x55 : 0xAA;   // white where x + y is odd
    }
    const QImage out = xdw::ReduceNoise(board, xdw::NoiseWeak);
    EXPECT_TRUE(Black(out, 1, 2));      // inner white pixels, filled
    EXPECT_TRUE(Black(out, 1502, 1501));
    EXPECT_FALSE(Black(out, 1, 0));     // on the edge: paper
    EXPECT_FALSE(Black(out, side - 1, 2));
    EXPECT_EQ(BlackCount(out), side * side - (2 * side - 2));   // all but the white half of the rim
}

TEST(NoiseReduction, OnlyScannedBlackAndWhitePagesAreBilevelPages)
{
    // A page made from our own one-bit bitmap file, as scanned pages keep their pictures.
    const QByteArray dib = xdw::DibBytes(Paper(64, 32), 300).mid(14);
    const int infoSize = 40 + 8;
    auto dibContent = [&](const QByteArray& vDib, int vInfoSize) {
        const QByteArray bits = vDib.mid(vInfoSize);
        QByteArray sub;
        for (quint32 v : {0u, quint32(bits.size()), quint32(bits.size()), 32u})
            sub.append(reinterpret_cast<const char*>(&v), 4);
        return Tlv(0x80, Int(7)) + Tlv(0x81, Int(vInfoSize)) + Tlv(0x84, Int(21000)) + Tlv(0x85, Int(29700))
            + Tlv(0x8D, Int(3)) + Tlv(0x86, vDib.left(vInfoSize) + sub + bits);
    };
    QImage colour(64, 32, QImage::Format_RGB32);
    colour.fill(Qt::green);
    PageSpec scanned, photo, jpeg, blank;
    scanned.content = dibContent(dib, infoSize);
    photo.content = dibContent(xdw::DibBytes(colour, 300).mid(14), 40);
    jpeg.content = JpegContent(colour, jpeg.width, jpeg.height);
    const xdw::Model model(Document({scanned, photo, jpeg, blank}));
    EXPECT_TRUE(xdw::IsBilevelPage(model, 0));
    EXPECT_FALSE(xdw::IsBilevelPage(model, 1));
    EXPECT_FALSE(xdw::IsBilevelPage(model, 2));
    EXPECT_FALSE(xdw::IsBilevelPage(model, 3));
    EXPECT_FALSE(xdw::IsBilevelPage(model, 4));
}
