// Where an image goes on its page under each fit name, and the names users' scripts spell out:
// both tables are pinned word for word.
#include "document/XdwApi.h"
#include "engine/FormatError.h"
#include "engine/write/ImagePages.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>

namespace {

// 2,000 x 1,000 pixels at 200 dpi: 25,400 x 12,700 hundredths of a millimetre.
const QSize Wide(2000, 1000);

xdw::Placing Fit(const char* vName, qint32 vWidth = 0, qint32 vHeight = 0, int vHor = 0, int vVer = 0, qint32 vZoom = 0)
{
    return {QString::fromLatin1(vName), QStringLiteral("NORMAL"), vZoom, vWidth, vHeight, vHor, vVer};
}

// Page width and height, then the box: x, y, width, height.
std::array<qint64, 6> Box(const xdw::PageLayout& vLayout)
{
    return {vLayout.pageWidth, vLayout.pageHeight, vLayout.x, vLayout.y, vLayout.width, vLayout.height};
}

qint32 RefusalCode(const std::function<void()>& vCall)
{
    try {
        vCall();
    } catch (const xdw::FormatError& refused) {
        return refused.code;
    }
    return 0;
}

TEST(PlacingTest, EachFitNamePutsTheImageWhereAUserWouldLookForIt)
{
    const std::vector<std::pair<xdw::Placing, std::array<qint64, 6>>> cases = {
        // FITDEF: the page is the image, whatever the other values say.
        {Fit("FITDEF", 5000, 5000, 2, 2, 300), {25400, 12700, 0, 0, 25400, 12700}},
        // FIT: A4 portrait when a size is missing, centred, top, bottom.
        {Fit("FIT"), {21000, 29700, 0, 9600, 21000, 10500}},
        {Fit("FIT", 30000, 0, 0, 1), {21000, 29700, 0, 0, 21000, 10500}},
        {Fit("FIT", 0, 0, 0, 2), {21000, 29700, 0, 19200, 21000, 10500}},
        // FIT enlarges too, and places along the side with room: left, right, centred.
        {Fit("FIT", 60000, 10000, 1), {60000, 10000, 0, 0, 20000, 10000}},
        {Fit("FIT", 60000, 10000, 2), {60000, 10000, 40000, 0, 20000, 10000}},
        {Fit("FIT", 60000, 10000, 7), {60000, 10000, 20000, 0, 20000, 10000}},
        // USERDEF: own size times the zoom (0 is 100), on the page asked for or A4.
        {Fit("USERDEF", 30000, 20000, 1, 1), {30000, 20000, 0, 0, 25400, 12700}},
        {Fit("USERDEF", 30000, 20000, 2, 2, 50), {30000, 20000, 17300, 13650, 12700, 6350}},
        {Fit("USERDEF", 0, 0, 0, 0, 50), {21000, 29700, 4150, 11675, 12700, 6350}},
    };
    for (const auto& [placing, expected] : cases) {
        const xdw::PageLayout layout = xdw::LayOut(placing, Wide, 200, 200);
        EXPECT_EQ(Box(layout), expected) << placing.fitImage.toStdString() << " " << placing.width;
        EXPECT_EQ(layout.pixels, QRect(QPoint(0, 0), Wide));
    }
    // A fax of 204 x 98 dpi is square on paper although its pixels are not: 21,515.29 x 29,650.61.
    EXPECT_EQ(Box(xdw::LayOut(Fit("FITDEF"), QSize(1728, 1144), 204, 98)),
              (std::array<qint64, 6>{21515, 29651, 0, 0, 21515, 29651}));
}

TEST(PlacingTest, WhatWouldFallOffThePageIsCutFromThePicture)
{
    // Twice its size, centred on a 20 cm square: 787.4 of 2,000 pixels across show, from 606.3.
    const xdw::PageLayout centred = xdw::LayOut(Fit("USERDEF", 20000, 20000, 0, 0, 200), Wide, 200, 200);
    EXPECT_EQ(Box(centred), (std::array<qint64, 6>{20000, 20000, 0, 0, 20000, 20000}));
    EXPECT_EQ(centred.pixels, QRect(QPoint(606, 106), QPoint(1393, 893)));
    const xdw::PageLayout left = xdw::LayOut(Fit("USERDEF", 20000, 30000, 1, 1, 100), Wide, 200, 200);
    EXPECT_EQ(Box(left), (std::array<qint64, 6>{20000, 30000, 0, 0, 20000, 12700}));
    EXPECT_EQ(left.pixels, QRect(0, 0, 1575, 1000));
}

TEST(PlacingTest, PlacingValuesOutOfRangeAreRefusedAsArguments)
{
    const auto code = [](const xdw::Placing& vPlacing) {
        return RefusalCode([&] { xdw::LayOut(vPlacing, Wide, 200, 200); });
    };
    for (const xdw::Placing& wrong : {Fit("fit"), Fit(""), Fit("USERDEF_FIT"), Fit("FIT", -1, 100), Fit("FIT", 1000001, 100),
                                      Fit("USERDEF", 0, 0, 0, 0, -5), Fit("USERDEF", 0, 0, 0, 0, 10001)})
        EXPECT_EQ(code(wrong), XdwResult::InvalidArg) << wrong.fitImage.toStdString();
    EXPECT_EQ(code(Fit("USERDEF", 0, 0, 0, 0, 10000)), 0);
    EXPECT_EQ(code(Fit("FITDEF", -1, -1, 9, 9, -5)), 0);   // FITDEF uses none of the numbers
    // A resolution that makes the page longer than 10 m.
    EXPECT_EQ(RefusalCode([] { xdw::LayOut(Fit("FITDEF"), QSize(32767, 10), 10, 10); }), XdwResult::InvalidArg);
}

TEST(PlacingTest, CompressionNamesAndTheJpegQualityEachGives)
{
    const std::vector<std::pair<const char*, int>> names = {
        {"NORMAL", 75}, {"LOSSLESS", 0}, {"HIGHQUALITY", 90}, {"HIGHCOMPRESS", 50},
        {"NOCOMPRESS", 0}, {"JPEG", 75}, {"PACKBITS", 0}, {"G4", 0},
    };
    for (const auto& [name, quality] : names)
        EXPECT_EQ(xdw::JpegQualityOf(QString::fromLatin1(name)), quality) << name;
    for (const char* name : {"MRC_NORMAL", "MRC_HIGHQUALITY", "MRC_HIGHCOMPRESS", "MRC", "normal", "", "DEFAULT"})
        EXPECT_EQ(RefusalCode([&] { xdw::JpegQualityOf(QString::fromLatin1(name)); }), XdwResult::InvalidArg) << name;
}

} // namespace
