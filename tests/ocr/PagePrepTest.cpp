// The picture made ready for Tesseract: specks go and characters stay; a straightened area's
// boxes land back on the page where the unturned ink was.

#include "DrawnPage.h"
#include "engine/ocr/OcrSettings.h"
#include "engine/ocr/PagePrep.h"

#include <leptonica/allheaders.h>

#include <QPainter>
#include <gtest/gtest.h>

#include <numbers>

using namespace ocrtest;

namespace {

int InkIn(Pix* vPix, const QRect& vRect)
{
    int ink = 0;
    for (int y = vRect.top(); y <= vRect.bottom(); ++y) {
        for (int x = vRect.left(); x <= vRect.right(); ++x) {
            l_uint32 v = 255;
            pixGetPixel(vPix, x, y, &v);
            ink += v < 128;
        }
    }
    return ink;
}

} // namespace

TEST(PagePrep, NoiseReductionTakesSpecksAndLeavesCharacters)
{
    DrawnPage page = Draw(QSize(1200, 400), {{QStringLiteral("i.j, 吾輩は猫。"), {100, 100}, 10}});
    QPainter painter(&page.image);
    // Specks of 2, 3, 4 and 6 pixels across, well away from the text.
    const int sizes[] = {2, 3, 4, 6};
    for (int i = 0; i < 4; ++i)
        painter.fillRect(QRect(100 + 100 * i, 300, sizes[i], sizes[i]), Qt::black);
    painter.end();
    const QRect text = page.inked[0].adjusted(-2, -2, 2, 2);
    const QRect all = page.image.rect();
    const ocr::Prepared none = ocr::Prepare(page.image, all, 0, false);
    const int inkBefore = InkIn(none.pix.get(), text);
    ASSERT_GT(inkBefore, 500);
    for (int level = 1; level <= 3; ++level) {
        SCOPED_TRACE(level);
        const ocr::Prepared p = ocr::Prepare(page.image, all, ocr::SpeckSize(level, kDpi), false);
        for (int i = 0; i < 4; ++i) {
            const QRect speck(100 + 100 * i, 300, sizes[i], sizes[i]);
            EXPECT_EQ(InkIn(p.pix.get(), speck) == 0, sizes[i] <= level + 1) << sizes[i];
        }
        // The dots of i and j, the full stops, the comma stay: every character's ink is there.
        EXPECT_EQ(InkIn(p.pix.get(), text), inkBefore);
    }
}

TEST(PagePrep, AreasAreCutOutAndBoxesReturnToThePage)
{
    const DrawnPage page = Draw(QSize(1000, 600), {{QStringLiteral("fox"), {500, 300}}});
    const QRect area(400, 200, 400, 300);
    const ocr::Prepared p = ocr::Prepare(page.image, area, 0, true);
    ASSERT_TRUE(p.pix);
    EXPECT_EQ(pixGetWidth(p.pix.get()), 400);
    EXPECT_EQ(pixGetHeight(p.pix.get()), 300);
    // Level text: nothing to turn.
    EXPECT_EQ(p.angle, 0.0);
    EXPECT_EQ(InkIn(p.pix.get(), page.inked[0].translated(-area.topLeft())),
              InkIn(ocr::ToPix(page.image, page.image.rect()).get(), page.inked[0]));
    EXPECT_EQ(p.ToPage(QRect(10, 20, 30, 40)), QRect(410, 220, 30, 40));
}

TEST(PagePrep, SkewIsMeasuredAndTurnedBackOnlyWhenAskedFor)
{
    std::vector<Line> lines;
    for (int i = 0; i < 5; ++i)
        lines.push_back({QStringLiteral("Pack my box with five dozen jugs"), {150, 150 + 120 * i}, 12});
    const DrawnPage page = Draw(QSize(1400, 900), lines, 3.0);
    const ocr::Prepared p = ocr::Prepare(page.image, page.image.rect(), 0, true);
    EXPECT_NEAR(p.angle * 180 / std::numbers::pi, -3.0, 0.2);
    // Nothing is cut off: the picture grew to hold the turned corners.
    EXPECT_GT(p.turnedSize.width(), 1400);
    EXPECT_GT(p.turnedSize.height(), 900);
    EXPECT_EQ(pixGetWidth(p.pix.get()), p.turnedSize.width());
    const ocr::Prepared asIs = ocr::Prepare(page.image, page.image.rect(), 0, false);
    EXPECT_EQ(asIs.angle, 0.0);
    EXPECT_EQ(asIs.turnedSize, QSize(1400, 900));
}
