#include "MetafileWriter.h"
#include "Render.h"

#include <gtest/gtest.h>

using namespace testemf;

namespace {

const QList<quint32> kBlackWhite{0x000000, 0xFFFFFF};

QImage Decode(const QByteArray& vInfo, const QByteArray& vBits, QString* vError = nullptr)
{
    return dib::Decode(vInfo, vBits, vError);
}

} // namespace

TEST(Dib, EveryDepthReadsBottomUpRowsTheRightWayUp)
{
    // 2 x 2, the bottom row stored first: top row red then white, bottom row blue then black.
    const QList<quint32> palette{0xFF0000, 0xFFFFFF, 0x0000FF, 0x000000};
    struct Case { int bpp; QByteArray bits; };
    const QList<Case> cases{
        {1, QByteArray::fromHex("40000000" "80000000")},   // palette {black, white}
        {4, QByteArray::fromHex("23000000" "01000000")},
        {8, QByteArray::fromHex("02030000" "00010000")},
        {24, QByteArray::fromHex("ff0000000000" "0000" "0000ffffffff" "0000")},
        {32, QByteArray::fromHex("ff00000000000000" "0000ff00ffffff00")},
    };
    for (const Case& c : cases) {
        const QImage image = Decode(DibInfo(2, 2, c.bpp, 0, c.bpp == 1 ? kBlackWhite : c.bpp <= 8 ? palette : QList<quint32>{}), c.bits);
        ASSERT_FALSE(image.isNull()) << c.bpp;
        if (c.bpp == 1) {
            EXPECT_EQ(image.pixel(0, 0) & 0xFFFFFF, kWhite);
            EXPECT_EQ(image.pixel(1, 0) & 0xFFFFFF, kBlack);
            EXPECT_EQ(image.pixel(0, 1) & 0xFFFFFF, kBlack);
            EXPECT_EQ(image.pixel(1, 1) & 0xFFFFFF, kWhite);
            continue;
        }
        EXPECT_EQ(image.pixel(0, 0) & 0xFFFFFF, kRed) << c.bpp;
        EXPECT_EQ(image.pixel(1, 0) & 0xFFFFFF, kWhite) << c.bpp;
        EXPECT_EQ(image.pixel(0, 1) & 0xFFFFFF, kBlue) << c.bpp;
        EXPECT_EQ(image.pixel(1, 1) & 0xFFFFFF, kBlack) << c.bpp;
    }
    // A negative height stores the top row first.
    const QImage topDown = Decode(DibInfo(1, 2, 8, 0, {0xFF0000, 0x0000FF}), QByteArray::fromHex("00000000" "01000000"));
    EXPECT_EQ(topDown.pixel(0, 1) & 0xFFFFFF, kRed);
    const QImage flipped = Decode(DibInfo(1, -2, 8, 0, {0xFF0000, 0x0000FF}), QByteArray::fromHex("00000000" "01000000"));
    EXPECT_EQ(flipped.pixel(0, 0) & 0xFFFFFF, kRed);
}

TEST(Dib, SixteenBitsAndMasksSpreadEachChannel)
{
    // 5-5-5 by default: 0x7C00 is full red; with 5-6-5 masks 0x07E0 is full green.
    EXPECT_EQ(Decode(DibInfo(1, 1, 16), QByteArray::fromHex("007c0000")).pixel(0, 0) & 0xFFFFFF, kRed);
    const QImage masked = Decode(DibInfo(1, 1, 16, 3) + Words({0xF800, 0x07E0, 0x001F}), QByteArray::fromHex("e0070000"));
    EXPECT_EQ(masked.pixel(0, 0) & 0xFFFFFF, 0x00FF00u);
}

TEST(Dib, RunLengthFormsDecodeRunsLiteralsDeltasAndLeaveSkippedPixelsClear)
{
    const QList<quint32> palette{0xFFFFFF, 0xFF0000, 0x0000FF};
    // RLE8, 4 x 2: bottom row "run of 3 red, end of line", top row "literal blue red blue, then
    // a move of 1 right" so its last pixel is never written.
    const QByteArray rle8 = QByteArray::fromHex("0301" "0000" "0003020102 00" "0002 0100" "0001");
    const QImage a = Decode(DibInfo(4, 2, 8, 1, palette), rle8);
    ASSERT_FALSE(a.isNull());
    EXPECT_EQ(a.pixel(0, 1) & 0xFFFFFF, kRed);
    EXPECT_EQ(a.pixel(2, 1) & 0xFFFFFF, kRed);
    EXPECT_EQ(qAlpha(a.pixel(3, 1)), 0);
    EXPECT_EQ(a.pixel(0, 0) & 0xFFFFFF, kBlue);
    EXPECT_EQ(a.pixel(1, 0) & 0xFFFFFF, kRed);
    EXPECT_EQ(a.pixel(2, 0) & 0xFFFFFF, kBlue);
    EXPECT_EQ(qAlpha(a.pixel(3, 0)), 0);
    // RLE4, 6 x 1: a run of 3 alternating red and blue nibbles, then a literal of three.
    const QImage b = Decode(DibInfo(6, 1, 4, 2, palette), QByteArray::fromHex("0312" "00032120" "0001"));
    ASSERT_FALSE(b.isNull());
    const QList<QRgb> row{kRed, kBlue, kRed, kBlue, kRed, kBlue};
    for (int x = 0; x < 6; ++x)
        EXPECT_EQ(b.pixel(x, 0) & 0xFFFFFF, row[x]) << x;
    // A literal that runs past the data is an error, not a read beyond it.
    QString error;
    EXPECT_TRUE(Decode(DibInfo(8, 1, 8, 1, palette), QByteArray::fromHex("0008 0102"), &error).isNull());
    EXPECT_FALSE(error.isEmpty());
}

TEST(Dib, ClaimedSizesAreCheckedBeforeAnythingIsAllocated)
{
    QString error;
    EXPECT_TRUE(Decode(DibInfo(65535, 65535, 24), QByteArray(16, 0), &error).isNull());
    EXPECT_FALSE(error.isEmpty());
    EXPECT_TRUE(Decode(DibInfo(70000, 1, 1), QByteArray(16, 0), &error).isNull());
    EXPECT_TRUE(Decode(DibInfo(0, 1, 8), QByteArray(4, 0), &error).isNull());
    EXPECT_TRUE(Decode(DibInfo(4, 4, 8), QByteArray(15, 0), &error).isNull());   // 16 needed
    EXPECT_TRUE(Decode(DibInfo(1, 1, 2), QByteArray(4, 0), &error).isNull());
    EXPECT_TRUE(Decode(DibInfo(1, 1, 24, 4), QByteArray(4, 0), &error).isNull());   // JPEG inside
    EXPECT_TRUE(Decode(DibInfo(1, -1, 8, 1), QByteArray(4, 0), &error).isNull());   // top-down RLE
    EXPECT_TRUE(Decode(QByteArray(10, 0), {}, &error).isNull());
    EXPECT_FALSE(Decode(DibInfo(4, 4, 8), QByteArray(16, 0), &error).isNull());
}

TEST(Dib, StretchDibitsDrawsBandsUprightScaledAndByTheirRasterOperation)
{
    // A 2 x 2 band stretched over the left half: top red, bottom blue.
    const QByteArray info = DibInfo(2, 2, 8, 0, {0xFF0000, 0x0000FF});
    const QByteArray bits = QByteArray::fromHex("01010000" "00000000");
    const QImage image = Render(Emf().StretchDib(0, 0, 50, 100, info, bits, 2, 2).Finish());
    EXPECT_EQ(At(image, 25, 25), kRed);
    EXPECT_EQ(At(image, 25, 75), kBlue);
    EXPECT_EQ(At(image, 75, 50), kWhite);
    // Source-and over a red page: black text pixels stay black, white ones leave the red.
    const QByteArray mono = DibInfo(2, 1, 1, 0, kBlackWhite);
    const QImage anded = Render(Emf()
                                    .NoPen()
                                    .Brush(1, kRedRef)
                                    .Rect(0, 0, 100, 100)
                                    .StretchDib(0, 0, 100, 100, mono, QByteArray::fromHex("40000000"), 2, 1, 0x8800C6)
                                    .Finish());
    EXPECT_EQ(At(anded, 25, 50), kBlack);
    EXPECT_EQ(At(anded, 75, 50), kRed);
    // Without a bitmap the record fills with the brush.
    const QImage patcopy = Render(Emf().Brush(1, kBlueRef).Add(76, Words({0, 0, 0, 0, 10, 10, 20, 20, 0xF00021, 0, 0,
                                                                          0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0})).Finish());
    EXPECT_EQ(At(patcopy, 20, 20), kBlue);
    EXPECT_EQ(At(patcopy, 35, 35), kWhite);
}

TEST(Dib, SetDibitsToDeviceBandsCountTheirOwnRowsNotThePictures)
{
    // The header speaks of a 2 x 4 picture; the record carries scans 2 and 3 only, the top two.
    const QByteArray info = DibInfo(2, 4, 8, 0, {0xFF0000, 0x0000FF});
    const QByteArray bits = QByteArray::fromHex("00000000" "01010000");   // scan 2 red, scan 3 blue
    const qint32 infoAt = 76, bitsAt = infoAt + qint32(info.size());
    const QByteArray record = Words({0, 0, 0, 0, 10, 10, 0, 2, 2, 2, infoAt, qint32(info.size()), bitsAt,
                                     qint32(bits.size()), 0, 2, 2}) + info + bits;
    emf::PlayResult result;
    const QImage image = Render(Emf().Add(80, record).Finish(), emf::Mapping::Page, {100, 100}, &result);
    ASSERT_TRUE(result.ok) << result.error.toStdString();
    EXPECT_EQ(At(image, 10, 10), kBlue);
    EXPECT_EQ(At(image, 11, 11), kRed);
    EXPECT_EQ(At(image, 10, 12), kWhite);
}
