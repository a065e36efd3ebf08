#include "MetafileWriter.h"
#include "Render.h"

#include <QPainter>
#include <gtest/gtest.h>

using namespace testemf;

// The two annotations of a DocuWorks page as the vendor's software writes them: a custom shape
// (a frame: two rectangles in one path filled alternate, then stroked) and a text annotation
// (one ExtTextOutW at (20, 20) in a 12 pt font at 300 units per inch), each with a window of its
// box's size and a frame that has nothing to do with it.
namespace {

QByteArray FrameShape()
{
    return Emf(6500, 6500, 768, 768, 65, 65)
        .Add(9, {2016, 768})
        .Add(19, {1})
        .Brush(1, 0x00C9CB96)
        .Pen(2, 0x00838363, 4)
        .Add(59, {})
        .Rect(0, 0, 2016, 768)
        .Rect(40, 40, 1976, 728)
        .Add(60, {})
        .Add(63, {0, 0, 0, 0})
        .Finish();
}

QByteArray TextBox(const QString& vText)
{
    return Emf(6500, 6500, 768, 768, 65, 65)
        .Add(9, {765, 90})
        .Font(1, -50, 128, QStringLiteral("Yu Gothic UI"))
        .Add(22, {0})
        .Add(18, {1})
        .TextW(20, 20, vText)
        .Finish();
}

} // namespace

TEST(Annotations, FrameAndTextLandInTheirBoxesOnThePage)
{
    // A4 at 100 dpi; the boxes placed in millimetres as a page's annotations are.
    QImage page(827, 1169, QImage::Format_RGB32);
    page.fill(Qt::white);
    const double px = 100 / 25.4;
    const QRectF frameBox(26.62 * px, 22.88 * px, 170.69 * px, 65.02 * px);
    const QRectF textBox(35 * px, 30 * px, 64.78 * px, 7.63 * px);
    {
        QPainter painter(&page);
        emf::PlayOptions options;
        options.mapping = emf::Mapping::Annotation;
        EXPECT_TRUE(emf::Play(painter, FrameShape(), frameBox, options).ok);
        EXPECT_TRUE(emf::Play(painter, TextBox(QStringLiteral("Lorem ipsum. 吾輩は猫である。")), textBox, options).ok);
    }
    if (qEnvironmentVariableIsSet("MQ_EMF_SHOT"))
        page.save(qEnvironmentVariable("MQ_EMF_SHOT"));
    const QPoint inFrame = frameBox.toRect().topLeft() + QPoint(5, 5);
    EXPECT_EQ(page.pixel(inFrame) & 0xFFFFFF, 0x96CBC9u);
    EXPECT_EQ(page.pixel(frameBox.center().toPoint()) & 0xFFFFFF, kWhite);   // the hole
    EXPECT_EQ(page.pixel(frameBox.toRect().topLeft() + QPoint(-3, 30)) & 0xFFFFFF, kWhite);
    // The text sits in its box: ink in the box's top part, none below it or right of the text.
    EXPECT_GT(DarkIn(page, textBox.toRect()), 100);
    EXPECT_EQ(DarkIn(page, QRect(textBox.toRect().bottomLeft() + QPoint(0, 3), QSize(250, 40))), 0);
    EXPECT_EQ(emf::Text(TextBox(QStringLiteral("1"))), QStringList{QStringLiteral("1")});
}

TEST(EmfShapes, ArcsPiesAndChordsGoCounterClockwiseFromStartToEnd)
{
    // A pie from 3 o'clock to 12 o'clock is the top-right quarter.
    const QImage pie = Render(Emf().NoPen().Brush(1, kRedRef).Add(47, {10, 10, 90, 90, 100, 50, 50, 0}).Finish());
    EXPECT_EQ(At(pie, 70, 30), kRed);
    EXPECT_EQ(At(pie, 30, 30), kWhite);
    EXPECT_EQ(At(pie, 70, 70), kWhite);
    // Clockwise turns it into the other three quarters.
    const QImage clockwise = Render(Emf().Add(57, {2}).NoPen().Brush(1, kRedRef)
                                        .Add(47, {10, 10, 90, 90, 100, 50, 50, 0}).Finish());
    EXPECT_EQ(At(clockwise, 70, 30), kWhite);
    EXPECT_EQ(At(clockwise, 30, 70), kRed);
    // A chord closes with a straight line: the middle of the box is outside a quarter chord.
    const QImage chord = Render(Emf().NoPen().Brush(1, kRedRef).Add(46, {10, 10, 90, 90, 100, 50, 50, 0}).Finish());
    EXPECT_EQ(At(chord, 75, 25), kRed);
    EXPECT_EQ(At(chord, 55, 45), kWhite);
}
