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
