#include "MetafileWriter.h"
#include "Render.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace testemf;

TEST(EmfMapping, PageDrawingsAreDevicePixelsShiftedByTheWindowOrigin)
{
    // 600 dpi device on a 10 mm frame: 236 device pixels fill 100 target pixels.
    const QByteArray emf = Emf(1000, 1000, 4961, 7016, 210, 297)
                               .Add(10, {-109, -109})
                               .NoPen()
                               .Brush(1, kRedRef)
                               .Rect(-109, -109, 9, 9)   // device 0..118: the top-left half
                               .Finish();
    const QImage image = Render(emf);
    EXPECT_EQ(At(image, 2, 2), kRed);
    EXPECT_EQ(At(image, 47, 47), kRed);
    EXPECT_EQ(At(image, 53, 53), kWhite);
}

TEST(EmfMapping, AnnotationWindowFillsTheTargetWhateverTheFrame)
{
    // The frame says 10 mm square, but an annotation's window of 200 x 50 units is its box.
    const QByteArray emf = Emf()
                               .Add(9, {200, 50})
                               .Add(10, {100, 0})
                               .NoPen()
                               .Brush(1, kRedRef)
                               .Rect(100, 0, 200, 25)
                               .Finish();
    const QImage image = Render(emf, emf::Mapping::Annotation, {200, 100});
    EXPECT_EQ(At(image, 90, 45), kRed);
    EXPECT_EQ(At(image, 90, 55), kWhite);
    EXPECT_EQ(At(image, 110, 45), kWhite);
    // Without a window the frame stands in: a page-sized rectangle fills the target.
    const QImage framed = Render(Emf().NoPen().Brush(1, kRedRef).Rect(50, 0, 100, 100).Finish(),
                                 emf::Mapping::Annotation, {200, 100});
    EXPECT_EQ(At(framed, 150, 50), kRed);
    EXPECT_EQ(At(framed, 50, 50), kWhite);
}

TEST(EmfMapping, MapModesAndTheWorldTransformCompose)
{
    // Anisotropic: a 1000-unit window onto a 100-pixel viewport.
    const QByteArray aniso = Emf()
                                 .Add(17, {8})
                                 .Add(9, {1000, 1000})
                                 .Add(11, {100, 100})
                                 .NoPen()
                                 .Brush(1, kRedRef)
                                 .Rect(500, 500, 1000, 1000)
                                 .Finish();
    const QImage a = Render(aniso);
    EXPECT_EQ(At(a, 75, 75), kRed);
    EXPECT_EQ(At(a, 25, 25), kWhite);
    // Tenths of a millimetre with y up: at 10 pixels per mm one unit is a pixel, going up.
    const QImage lometric = Render(Emf().Add(17, {2}).Add(12, {0, 100}).NoPen().Brush(1, kRedRef)
                                       .Rect(0, 0, 20, 20).Finish());
    EXPECT_EQ(At(lometric, 10, 90), kRed);
    EXPECT_EQ(At(lometric, 10, 10), kWhite);
    // A world transform that doubles, then one multiplied after it that moves by 50.
    QByteArray scale = Words({0, 0, 0, 0, 0, 0}), move = scale;
    const float two = 2, one = 1, fifty = 50;
    std::memcpy(scale.data() + 8, &two, 4), std::memcpy(scale.data(), &two, 4);
    std::memcpy(scale.data() + 12, &two, 4), std::memcpy(scale.data() + 0, &two, 4);
    std::memcpy(move.data(), &one, 4), std::memcpy(move.data() + 12, &one, 4), std::memcpy(move.data() + 16, &fifty, 4);
    QByteArray scaleOnly = Words({0, 0, 0, 0, 0, 0});
    std::memcpy(scaleOnly.data(), &two, 4), std::memcpy(scaleOnly.data() + 12, &two, 4);
    const QImage w = Render(Emf().Add(35, scaleOnly).Add(36, move + Words({3})).NoPen().Brush(1, kRedRef)
                                .Rect(0, 0, 10, 10).Finish());
    EXPECT_EQ(At(w, 65, 15), kRed);    // x: 0..10 doubled to 0..20, moved to 50..70
    EXPECT_EQ(At(w, 45, 15), kWhite);
    EXPECT_EQ(At(w, 65, 25), kWhite);
}
