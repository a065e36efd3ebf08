// Where an image goes on its page under each fit name, and the names that users' scripts and
// settings spell out: both tables are pinned here word for word.
#include "document/XdwApi.h"
#include "engine/FormatError.h"
#include "engine/write/ImagePages.h"

#include <gtest/gtest.h>

namespace {

// An image of 2,000 x 1,000 pixels at 200 dpi is 25,400 x 12,700 hundredths of a millimetre.
const QSize Wide(2000, 1000);

xdw::Placing Fit(const char* vName, qint32 vWidth = 0, qint32 vHeight = 0, int vHor = 0, int vVer = 0, qint32 vZoom = 0)
{
    xdw::Placing placing;
    placing.fitImage = QString::fromLatin1(vName);
    placing.width = vWidth;
    placing.height = vHeight;
    placing.horPos = vHor;
    placing.verPos = vVer;
    placing.zoom = vZoom;
    return placing;
}

struct Box {
    qint64 pageWidth, pageHeight, x, y, width, height;
};

Box BoxOf(const xdw::PageLayout& vLayout)
{
    return {vLayout.pageWidth, vLayout.pageHeight, vLayout.x, vLayout.y, vLayout.width, vLayout.height};
}

bool operator==(const Box& vA, const Box& vB)
{
    return vA.pageWidth == vB.pageWidth && vA.pageHeight == vB.pageHeight && vA.x == vB.x && vA.y == vB.y
        && vA.width == vB.width && vA.height == vB.height;
}

void PrintTo(const Box& vBox, std::ostream* vOut)
{
    *vOut << "page " << vBox.pageWidth << " x " << vBox.pageHeight << ", box at " << vBox.x << ", " << vBox.y
          << " of " << vBox.width << " x " << vBox.height;
}

qint32 RefusalCode(const xdw::Placing& vPlacing)
{
    try {
        xdw::LayOut(vPlacing, Wide, 200, 200);
    } catch (const xdw::FormatError& refused) {
        return refused.code;
    }
    return 0;
}

TEST(PlacingTest, EachFitNamePutsTheImageWhereAUserWouldLookForIt)
{
    struct Case {
        const char* what;
        xdw::Placing placing;
        Box expected;
    };
    const std::vector<Case> cases = {
        {"FITDEF: the page is the image", Fit("FITDEF", 5000, 5000, 2, 2, 300), {25400, 12700, 0, 0, 25400, 12700}},
        {"FIT into A4, centred", Fit("FIT"), {21000, 29700, 0, 9600, 21000, 10500}},
        {"FIT, one size missing is A4", Fit("FIT", 30000, 0), {21000, 29700, 0, 9600, 21000, 10500}},
        {"FIT at the top", Fit("FIT", 0, 0, 0, 1), {21000, 29700, 0, 0, 21000, 10500}},
        {"FIT at the bottom", Fit("FIT", 0, 0, 0, 2), {21000, 29700, 0, 19200, 21000, 10500}},
        {"FIT enlarges to a tall page", Fit("FIT", 10000, 100000, 1, 1), {10000, 100000, 0, 0, 10000, 5000}},
        {"FIT into a wider page, left", Fit("FIT", 60000, 10000, 1), {60000, 10000, 0, 0, 20000, 10000}},
        {"FIT into a wider page, right", Fit("FIT", 60000, 10000, 2), {60000, 10000, 40000, 0, 20000, 10000}},
        {"FIT into a wider page, centred", Fit("FIT", 60000, 10000, 7), {60000, 10000, 20000, 0, 20000, 10000}},
        {"USERDEF at its own size", Fit("USERDEF", 30000, 20000, 1, 1), {30000, 20000, 0, 0, 25400, 12700}},
        {"USERDEF at half, right and bottom", Fit("USERDEF", 30000, 20000, 2, 2, 50), {30000, 20000, 17300, 13650, 12700, 6350}},
        {"USERDEF on A4 when no size", Fit("USERDEF", 0, 0, 0, 0, 50), {21000, 29700, 4150, 11675, 12700, 6350}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const xdw::PageLayout layout = xdw::LayOut(c.placing, Wide, 200, 200);
        EXPECT_EQ(BoxOf(layout), c.expected);
        EXPECT_EQ(layout.pixels, QRect(QPoint(0, 0), Wide));
    }
}

TEST(PlacingTest, FitdefHonoursUnequalResolutions)
{
    // A fax of 200 x 100 dpi: square on paper although its pixels are not.
    const xdw::PageLayout fax = xdw::LayOut(Fit("FITDEF"), QSize(1728, 1144), 204, 98);
    EXPECT_EQ(fax.pageWidth, 21515);   // 1728 / 204 * 2540 = 21515.29
    EXPECT_EQ(fax.pageHeight, 29651);  // 1144 / 98 * 2540 = 29650.61
}

TEST(PlacingTest, WhatWouldFallOffThePageIsCutFromThePicture)
{
    // Twice its size, centred on a 20 cm square: the middle 787.4 of 2,000 pixels show.
    const xdw::PageLayout layout = xdw::LayOut(Fit("USERDEF", 20000, 20000, 0, 0, 200), Wide, 200, 200);
    EXPECT_EQ(layout.x, 0);
    EXPECT_EQ(layout.width, 20000);
    EXPECT_EQ(layout.y, 0);
    EXPECT_EQ(layout.height, 20000);
    EXPECT_EQ(layout.pixels.left(), 606);    // (50,800 - 20,000) / 2 of 50,800 is 606.3 pixels
    EXPECT_EQ(layout.pixels.right(), 1393);
    EXPECT_EQ(layout.pixels.top(), 106);     // (25,400 - 20,000) / 2 of 25,400 is 106.3
    EXPECT_EQ(layout.pixels.bottom(), 893);
    // At the left edge only the right side is cut.
    const xdw::PageLayout left = xdw::LayOut(Fit("USERDEF", 20000, 30000, 1, 1, 100), Wide, 200, 200);
    EXPECT_EQ(BoxOf(left), (Box{20000, 30000, 0, 0, 20000, 12700}));
    EXPECT_EQ(left.pixels, QRect(0, 0, 1575, 1000));
}

TEST(PlacingTest, PlacingValuesOutOfRangeAreRefusedAsArguments)
{
    EXPECT_EQ(RefusalCode(Fit("fit")), XdwResult::InvalidArg);   // names are exact
    EXPECT_EQ(RefusalCode(Fit("")), XdwResult::InvalidArg);
    EXPECT_EQ(RefusalCode(Fit("USERDEF_FIT")), XdwResult::InvalidArg);
    EXPECT_EQ(RefusalCode(Fit("FIT", -1, 100)), XdwResult::InvalidArg);
    EXPECT_EQ(RefusalCode(Fit("FIT", 1000001, 100)), XdwResult::InvalidArg);
    EXPECT_EQ(RefusalCode(Fit("USERDEF", 0, 0, 0, 0, -5)), XdwResult::InvalidArg);
    EXPECT_EQ(RefusalCode(Fit("USERDEF", 0, 0, 0, 0, 10001)), XdwResult::InvalidArg);
    EXPECT_EQ(RefusalCode(Fit("USERDEF", 0, 0, 0, 0, 10000)), 0);
    // FITDEF uses none of the numbers, so none of them is wrong there.
    EXPECT_EQ(RefusalCode(Fit("FITDEF", -1, -1, 9, 9, -5)), 0);
    // An image whose resolution makes it longer than 10 m.
    EXPECT_THROW(xdw::LayOut(Fit("FITDEF"), QSize(32767, 10), 10, 10), xdw::FormatError);
}

TEST(PlacingTest, CompressionNamesAndHowEachStoresAPicture)
{
    const std::vector<std::pair<const char*, int>> names = {
        {"NORMAL", 75}, {"LOSSLESS", 0}, {"HIGHQUALITY", 90}, {"HIGHCOMPRESS", 50},
        {"NOCOMPRESS", 0}, {"JPEG", 75}, {"PACKBITS", 0}, {"G4", 0},
    };
    for (const auto& [name, quality] : names)
        EXPECT_EQ(xdw::JpegQualityOf(QString::fromLatin1(name)), quality) << name;
    for (const char* refused : {"MRC_NORMAL", "MRC_HIGHQUALITY", "MRC_HIGHCOMPRESS", "MRC", "normal", "", "DEFAULT"}) {
        try {
            xdw::JpegQualityOf(QString::fromLatin1(refused));
            ADD_FAILURE() << refused << " was taken";
        } catch (const xdw::FormatError& error) {
            EXPECT_EQ(error.code, XdwResult::InvalidArg) << refused;
        }
    }
}

} // namespace
