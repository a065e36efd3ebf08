#include "MetafileWriter.h"
#include "Render.h"

#include <gtest/gtest.h>

using namespace testemf;

namespace {

// ExtSelectClipRgn with device rectangles, or with no region at all.
QByteArray SelectRegion(int vMode, const QList<QRect>& vRects)
{
    if (vRects.isEmpty())
        return Words({0, vMode});
    QByteArray region = Words({32, 1, qint32(vRects.size()), qint32(vRects.size() * 16), 0, 0, 100, 100});
    for (const QRect& r : vRects)
        region += Words({r.left(), r.top(), r.right() + 1, r.bottom() + 1});
    return Words({qint32(region.size()), vMode}) + region;
}

} // namespace

TEST(EmfClip, RectanglesIntersectExcludeAndResetThroughRegionsAndSavedStates)
{
    const QByteArray emf = Emf()
                               .NoPen()
                               .Brush(1, kRedRef)
                               .Add(33, {})
                               .Add(30, {20, 20, 80, 80})   // intersect
                               .Add(29, {40, 40, 60, 60})   // then cut a hole
                               .Rect(0, 0, 100, 50)
                               .Add(34, {-1})               // the saved state had no clip
                               .Brush(2, kBlueRef)
                               .Add(75, SelectRegion(5, {QRect(0, 60, 10, 10)}))
                               .Rect(0, 50, 100, 100)
                               .Add(75, SelectRegion(5, {}))   // a reset: the whole surface again
                               .Rect(90, 90, 100, 100)
                               .Finish();
    emf::PlayResult result;
    const QImage image = Render(emf, emf::Mapping::Page, {100, 100}, &result);
    ASSERT_TRUE(result.ok) << result.error.toStdString();
    EXPECT_EQ(At(image, 10, 10), kWhite);   // outside the intersected box
    EXPECT_EQ(At(image, 30, 30), kRed);
    EXPECT_EQ(At(image, 45, 45), kWhite);   // in the excluded hole
    EXPECT_EQ(At(image, 5, 65), kBlue);     // inside the selected region
    EXPECT_EQ(At(image, 30, 65), kWhite);
    EXPECT_EQ(At(image, 95, 95), kBlue);
}

TEST(EmfClip, ClipFollowsTheMappingOfItsOwnTimeAndAPathCanBecomeTheClip)
{
    // The clip is fixed when set: moving the window afterwards moves the drawing, not the clip.
    const QByteArray moved = Emf()
                                 .NoPen()
                                 .Brush(1, kRedRef)
                                 .Add(30, {0, 0, 50, 100})
                                 .Add(10, {-30, 0})
                                 .Rect(0, 0, 40, 100)   // lands at 30..70, clipped at 50
                                 .Finish();
    const QImage a = Render(moved);
    EXPECT_EQ(At(a, 40, 50), kRed);
    EXPECT_EQ(At(a, 60, 50), kWhite);
    EXPECT_EQ(At(a, 20, 50), kWhite);

    QByteArray ellipse = Words({20, 20, 80, 80});
    const QByteArray viaPath = Emf()
                                   .NoPen()
                                   .Brush(1, kRedRef)
                                   .Add(59, {})
                                   .Add(42, ellipse)
                                   .Add(60, {})
                                   .Add(67, {5})
                                   .Rect(0, 0, 100, 100)
                                   .Finish();
    const QImage b = Render(viaPath);
    EXPECT_EQ(At(b, 50, 50), kRed);
    EXPECT_EQ(At(b, 22, 22), kWhite);   // inside the box, outside the ellipse
}
