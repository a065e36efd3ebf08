// A page as a printer driver leaves it: a compressed 600 dpi metafile with narrow cp932 text and
// a ruled bar, drawn through the engine to the page's pixels and read back as text.
#include "common/TestFiles.h"
#include "engine/XdwBuilder.h"
#include "engine/XdwEngine.h"
#include "engine/emf/MetafileWriter.h"
#include "support/Cp932.h"

#include <gtest/gtest.h>

using namespace xdwtest;

TEST(PrintedPage, MetafileContentDrawsItsBarAndGivesItsNarrowText)
{
    // A4 at 600 dpi: the frame is the page, the device its pixels.
    testemf::Emf emf(21000, 29700, 4961, 7016, 210, 297);
    const QByteArray title = Cp932::Encode(u"請求書");
    emf.Font(1, -100, 128, QStringLiteral("ＭＳ 明朝"))
        .Text(600, 600, title, static_cast<qint32>(title.size()), false)
        .Brush(2, 0x00000000)
        .NoPen()
        .Rect(600, 1200, 4300, 1260);
    PageSpec page;
    page.content = DrawingFields(4, emf.Finish(), 21000, 29700, true);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("printed.xdw"));
    testfiles::WriteBytes(path, Document({page}));

    XdwEngine engine;
    engine.OpenDocument(path, 1);
    ASSERT_EQ(engine.LastResult(), 0) << engine.LastReason().toStdString();
    engine.SelectDocumentHandle(engine.ReadDocumentHandle());
    engine.GetPageInformation(1);
    EXPECT_EQ(engine.PageType(), 2);   // made from an application
    EXPECT_EQ(engine.GetPageTextToMemory(1), QStringLiteral("請求書"));

    const qint32 handle = engine.ConvertPageToImageHandle(1, 100, 1);
    ASSERT_EQ(engine.LastResult(), 0) << engine.LastReason().toStdString();
    const QImage* picture = engine.HandleImage(handle);
    ASSERT_EQ(picture->size(), QSize(827, 1169));
    // The bar runs from 100 to 717 pixels across at 200 to 210 down; the page around it is white.
    EXPECT_LT(qGray(picture->pixel(400, 205)), 64);
    EXPECT_EQ(picture->pixel(400, 230), qRgb(255, 255, 255));
    EXPECT_EQ(picture->pixel(750, 205), qRgb(255, 255, 255));
    // The title left ink between its origin and the bar.
    int ink = 0;
    for (int y = 100; y < 195; ++y)
        for (int x = 100; x < 400; ++x)
            ink += qGray(picture->pixel(x, y)) < 128 ? 1 : 0;
    EXPECT_GT(ink, 100);
    engine.GlobalFree(handle);
}
