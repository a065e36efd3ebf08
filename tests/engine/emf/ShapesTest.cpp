#include "MetafileWriter.h"
#include "Render.h"

#include <gtest/gtest.h>

using namespace testemf;

TEST(EmfShapes, FilledRectangleLandsWhereTheFrameSaysAndNowhereElse)
{
    const QByteArray emf = Emf().NoPen().Brush(1, kRedRef).Rect(10, 20, 50, 40).Finish();
    ASSERT_TRUE(emf::LooksLikeEmf(emf));
    emf::PlayResult result;
    const QImage image = Render(emf, emf::Mapping::Page, {100, 100}, &result);
    EXPECT_TRUE(result.ok) << result.error.toStdString();
    EXPECT_EQ(result.unsupportedRecords, 0);
    EXPECT_EQ(At(image, 12, 22), kRed);
    EXPECT_EQ(At(image, 48, 38), kRed);
    EXPECT_EQ(At(image, 8, 22), kWhite);
    EXPECT_EQ(At(image, 30, 45), kWhite);
    // Twice the target: the same drawing scales with it.
    const QImage big = Render(emf, emf::Mapping::Page, {200, 200});
    EXPECT_EQ(At(big, 24, 44), kRed);
    EXPECT_EQ(At(big, 24, 36), kWhite);
}

TEST(EmfShapes, UnknownRecordsAreSkippedAndCounted)
{
    const QByteArray emf = Emf().Add(200, {1, 2, 3}).NoPen().Brush(1, kRedRef).Add(201, {}).Rect(0, 0, 10, 10).Finish();
    emf::PlayResult result;
    const QImage image = Render(emf, emf::Mapping::Page, {100, 100}, &result);
    EXPECT_TRUE(result.ok);
    EXPECT_EQ(result.unsupportedRecords, 2);
    EXPECT_EQ(At(image, 5, 5), kRed);
}

TEST(EmfShapes, PolygonsFillByTheirRuleAndSixteenBitPointsReadSigned)
{
    // Two nested squares in one polypolygon: alternate leaves the inner one a hole, winding fills it.
    auto squares = [](int vMode, bool vSmall) {
        QByteArray p = Words({0, 0, 0, 0, 2, 8, 4, 4});
        const QList<int> xy{10, 10, 90, 10, 90, 90, 10, 90, 30, 30, 70, 30, 70, 70, 30, 70};
        for (int v : xy)
            vSmall ? Put16(p, quint16(v)) : Put32(p, quint32(v));
        return Emf().Add(19, {vMode}).NoPen().Brush(1, kRedRef).Add(vSmall ? 91 : 8, p).Finish();
    };
    for (bool small : {false, true}) {
        const QImage alternate = Render(squares(1, small));
        EXPECT_EQ(At(alternate, 20, 50), kRed);
        EXPECT_EQ(At(alternate, 50, 50), kWhite) << "small " << small;
        EXPECT_EQ(At(Render(squares(2, small)), 50, 50), kRed);
    }
    // A Polygon16 reaching to negative coordinates: -10 must not read as 65526.
    QByteArray p = Words({0, 0, 0, 0, 3});
    for (int v : {-10, -10, 40, -10, 40, 40})
        Put16(p, quint16(v));
    const QImage image = Render(Emf().NoPen().Brush(1, kRedRef).Add(86, p).Finish());
    EXPECT_EQ(At(image, 35, 5), kRed);
    EXPECT_EQ(At(image, 5, 35), kWhite);
}

TEST(EmfShapes, PathOfTwoRectanglesFilledAlternateIsAFrameAndStrokeUsesThePen)
{
    // The way a custom shape annotation draws its frame: both rectangles in one path.
    const QByteArray emf = Emf()
                               .Add(19, {1})
                               .Brush(1, kRedRef)
                               .Pen(2, kBlueRef, 4)
                               .Add(59, {})
                               .Rect(10, 10, 90, 90)
                               .Rect(30, 30, 70, 70)
                               .Add(60, {})
                               .Add(62, {0, 0, 0, 0})
                               .Add(59, {})
                               .Rect(10, 10, 90, 90)
                               .Add(60, {})
                               .Add(64, {0, 0, 0, 0})
                               .Finish();
    const QImage image = Render(emf);
    EXPECT_EQ(At(image, 20, 50), kRed);
    EXPECT_EQ(At(image, 50, 50), kWhite);
    EXPECT_EQ(At(image, 10, 50), kBlue);
    EXPECT_EQ(At(image, 5, 50), kWhite);
    // Figures built from moves and lines stay apart: no line joins one figure's end to the next
    // one's start, as an annotation's frame draws its two rectangles.
    Emf figures;
    figures.Pen(1, kBlueRef, 2).Add(59, {});
    for (const QRect& r : {QRect(QPoint(10, 10), QPoint(90, 90)), QRect(QPoint(30, 30), QPoint(70, 70))})
        figures.Add(27, {r.right(), r.top()}).Add(54, {r.left(), r.top()}).Add(54, {r.left(), r.bottom()})
            .Add(54, {r.right(), r.bottom()}).Add(61, {});
    const QImage stroked = Render(figures.Add(60, {}).Add(64, {0, 0, 0, 0}).Finish());
    EXPECT_EQ(At(stroked, 90, 50), kBlue);
    EXPECT_EQ(At(stroked, 70, 50), kBlue);
    EXPECT_EQ(At(stroked, 80, 20), kWhite);
    // Nothing is drawn while the path is recorded.
    const QImage open = Render(Emf().Brush(1, kRedRef).Add(59, {}).Rect(10, 10, 90, 90).Finish());
    EXPECT_EQ(InkIn(open, open.rect()), 0);
}

TEST(EmfShapes, StockObjectsAndSavedStatesComeBack)
{
    const QByteArray emf = Emf()
                               .NoPen()
                               .Brush(1, kRedRef)
                               .Add(33, {})
                               .Add(37, {qint32(0x80000004)})   // the black stock brush
                               .Rect(0, 0, 50, 50)
                               .Add(34, {-1})
                               .Rect(50, 50, 100, 100)
                               .Add(37, {qint32(0x80000005)})   // the hollow brush: nothing
                               .Rect(0, 50, 50, 100)
                               .Finish();
    const QImage image = Render(emf);
    EXPECT_EQ(At(image, 25, 25), kBlack);
    EXPECT_EQ(At(image, 75, 75), kRed);
    EXPECT_EQ(At(image, 25, 75), kWhite);
}

TEST(EmfShapes, LinesMoveTheCurrentPositionAndHighlighterDarkens)
{
    const QByteArray emf = Emf()
                               .NoPen()
                               .Brush(1, 0x00FFFF)   // yellow
                               .Rect(0, 0, 100, 50)
                               .Pen(2, kBlueRef, 6)
                               .Add(27, {10, 80})
                               .Add(54, {90, 80})
                               .Add(20, {9})           // mask pen over the yellow
                               .Add(27, {50, 0})
                               .Add(54, {50, 40})
                               .Finish();
    const QImage image = Render(emf);
    EXPECT_EQ(At(image, 50, 80), kBlue);
    EXPECT_EQ(At(image, 5, 80), kWhite);
    // Yellow and-ed with blue is black; the highlighter never lightens the page.
    EXPECT_EQ(At(image, 50, 20), kBlack);
    EXPECT_EQ(At(image, 20, 20), 0xFFFF00u);
}
