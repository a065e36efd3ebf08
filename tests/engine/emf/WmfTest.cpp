#include "MetafileWriter.h"
#include "Render.h"

#include "support/Cp932.h"

#include <gtest/gtest.h>

using namespace testemf;

namespace {

QByteArray FontParams(qint16 vHeight, quint8 vCharset, const QByteArray& vFace)
{
    QByteArray p = Shorts({vHeight, 0, 0, 0, 400});
    p.append(char(0)).append(char(0)).append(char(0)).append(char(vCharset));
    p.append(4, '\0');
    return p + vFace + QByteArray(32 - vFace.size(), '\0');
}

QByteArray Brush(quint32 vColourRef)
{
    QByteArray p = Shorts({0});
    Put32(p, vColourRef);
    return p + Shorts({0});
}

} // namespace

TEST(Wmf, WindowFillsTheTargetAndObjectsTakeTheLowestFreeSlot)
{
    const QByteArray wmf = Wmf()
                               .Add(0x020B, {0, 0})        // window origin (y, x)
                               .Add(0x020C, {200, 200})    // window extent (y, x)
                               .Add(0x06FF, QByteArray(22, '\0'))   // a region takes slot 0
                               .Add(0x02FC, Brush(kRedRef))         // slot 1
                               .Add(0x02FA, Shorts({5, 0, 0, 0, 0}))   // a null pen, slot 2
                               .Add(0x012D, {1})
                               .Add(0x012D, {2})
                               .Add(0x041B, {100, 100, 0, 0})   // bottom, right, top, left
                               .Add(0x01F0, {1})
                               .Add(0x02FC, Brush(kBlueRef))   // reuses slot 1
                               .Add(0x012D, {1})
                               .Add(0x041B, {200, 200, 100, 100})
                               .Finish();
    ASSERT_TRUE(emf::LooksLikeWmf(wmf));
    ASSERT_FALSE(emf::LooksLikeEmf(wmf));
    emf::PlayResult result;
    const QImage image = Render(wmf, emf::Mapping::Page, {100, 100}, &result);
    ASSERT_TRUE(result.ok) << result.error.toStdString();
    EXPECT_EQ(At(image, 25, 25), kRed);
    EXPECT_EQ(At(image, 75, 75), kBlue);
    EXPECT_EQ(At(image, 75, 25), kWhite);
}

TEST(Wmf, TextRecordsReadInTheFontsCodePageWithTheirSpacing)
{
    const QByteArray sjis = Cp932::Encode(QStringLiteral("猫"));
    QByteArray ext = Shorts({10, 0, 2, 0});   // y, x, count, options
    ext += sjis + Shorts({0, 30});
    QByteArray plain = Shorts({3});
    plain += QByteArray("abc") + QByteArray(1, '\0') + Shorts({40, 0});
    const QByteArray wmf = Wmf()
                               .Add(0x020C, {100, 100})
                               .Add(0x02FB, FontParams(-20, 128, Cp932::Encode(QStringLiteral("ＭＳ ゴシック"))))
                               .Add(0x012D, {0})
                               .Add(0x0A32, ext)
                               .Add(0x0521, plain)
                               .Finish();
    EXPECT_EQ(emf::Text(wmf), (QStringList{QStringLiteral("猫"), QStringLiteral("abc")}));
    const QImage image = Render(wmf);
    EXPECT_GT(DarkIn(image, QRect(0, 10, 22, 22)), 20);
    EXPECT_GT(DarkIn(image, QRect(0, 40, 40, 22)), 10);
    EXPECT_EQ(DarkIn(image, QRect(50, 0, 50, 100)), 0);
}

TEST(Wmf, StretchDibDrawsUprightAndAStencilPaintsOnlyTheBlackInTheBrush)
{
    const QByteArray info = DibInfo(2, 2, 8, 0, {0xFF0000, 0x0000FF});
    QByteArray stretch;
    Put32(stretch, 0xCC0020);
    stretch += Shorts({0, 2, 2, 0, 0, 100, 50, 0, 0}) + info + QByteArray::fromHex("01010000" "00000000");
    const QImage image = Render(Wmf().Add(0x020C, {100, 100}).Add(0x0F43, stretch).Finish());
    EXPECT_EQ(At(image, 25, 25), kRed);
    EXPECT_EQ(At(image, 25, 75), kBlue);
    EXPECT_EQ(At(image, 75, 50), kWhite);

    QByteArray stencil;
    Put32(stencil, 0xB8074A);
    stencil += Shorts({0, 1, 2, 0, 0, 100, 100, 0, 0}) + DibInfo(2, 1, 1, 0, {0x000000, 0xFFFFFF}) +
               QByteArray::fromHex("80000000");   // white, then black
    const QImage stencilled = Render(Wmf()
                                         .Add(0x020C, {100, 100})
                                         .Add(0x02FC, Brush(kRedRef))
                                         .Add(0x012D, {0})
                                         .Add(0x0F43, stencil)
                                         .Finish());
    EXPECT_EQ(At(stencilled, 75, 50), kRed);     // the black pixel
    EXPECT_EQ(At(stencilled, 25, 50), kWhite);   // the white one leaves the page alone
}
