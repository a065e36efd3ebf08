// Image files made into pages and drawn back by the engine: lossless pictures come back pixel
// for pixel at the image's resolution and at their own depth, JPEG ones close to the original.
#include "common/TestFiles.h"
#include "common/TiffWriter.h"
#include "engine/Drawing.h"
#include "engine/Model.h"
#include "engine/Tlv.h"
#include "engine/XdwBuilder.h"
#include "engine/write/Emit.h"
#include "engine/write/ImagePages.h"
#include "imagein/ImageFixtures.h"

#include <QPainter>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace imagefixtures;

namespace {

constexpr int Dpi = 200;   // 160 pixels are then exactly 2,032 hundredths of a millimetre

std::vector<xdw::Node> Pages(const QString& vPath, const char* vCompress = "NORMAL", xdw::Placing vPlacing = {})
{
    vPlacing.compress = QString::fromLatin1(vCompress);
    return xdw::PagesFromImage(vPath, vPlacing, &Pack);
}

const xdw::Node& Content(const xdw::Node& vPage) { return vPage.children.at(0).children.at(0); }

xdw::Drawing ContentDrawing(const xdw::Node& vPage)
{
    return xdw::ReadDrawing(AttributeOf(Content(vPage), 7)->value);
}

class ImagePagesTest : public ::testing::Test {
protected:
    QString Path(const QString& vName) const { return dir_.filePath(vName); }
    QTemporaryDir dir_;
};

TEST_F(ImagePagesTest, LosslessPicturesComeBackPixelForPixelAtTheirOwnDepth)
{
    const QString g4 = Path("fax.tif"), grey = Path("grey.tif"), rgb = Path("rgb.tif");
    ASSERT_TRUE(tiffwriter::Write(g4, {Bilevel()}, tiffwriter::Kind::BilevelG4, Dpi));
    ASSERT_TRUE(tiffwriter::Write(grey, {Grey()}, tiffwriter::Kind::GreyLzw, Dpi));
    ASSERT_TRUE(tiffwriter::Write(rgb, {Colour()}, tiffwriter::Kind::RgbDeflate, Dpi));
    // Half transparent: what shows through is white paper.
    QImage glass(Colour().size(), QImage::Format_ARGB32);
    glass.fill(QColor(200, 0, 0, 100));
    QPainter(&glass).drawImage(0, 0, Colour().copy(0, 0, 80, 100));
    QImage onPaper(glass.size(), QImage::Format_RGB32);
    onPaper.fill(Qt::white);
    QPainter(&onPaper).drawImage(0, 0, glass);
    const struct {
        QString path;
        QImage source;
        const char* compress;
        int bits;
    } cases[] = {
        // A black and white page stays one bit whatever the name.
        {g4, Bilevel(), "NORMAL", 1}, {g4, Bilevel(), "JPEG", 1}, {g4, Bilevel(), "G4", 1},
        {grey, Grey(), "LOSSLESS", 8}, {rgb, Colour(), "NOCOMPRESS", 24},
        {Save(Path("bw.png"), Bilevel(), "png", Dpi), Bilevel(), "NORMAL", 1},
        {Save(Path("grey.png"), Grey(), "png", Dpi), Grey(), "PACKBITS", 8},
        {Save(Path("colour.bmp"), Colour(), "bmp", Dpi), Colour(), "LOSSLESS", 24},
        {Save(Path("glass.png"), glass, "png", Dpi), onPaper, "LOSSLESS", 24},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(QFileInfo(c.path).fileName().toStdString() + " " + c.compress);
        const std::vector<xdw::Node> pages = Pages(c.path, c.compress);
        ASSERT_EQ(pages.size(), 1u);
        const xdw::Drawing drawing = ContentDrawing(pages[0]);
        ASSERT_EQ(drawing.kind, xdw::DrawingKind::Dib);
        EXPECT_EQ(quint8(drawing.dibInfo[14]), c.bits);
        EXPECT_TRUE(SamePixels(Render(Document(pages), 0, Dpi), c.source));
    }
    // On a page a quarter its size at the right and bottom, the bottom-right quarter shows.
    const xdw::Placing corner{QStringLiteral("USERDEF"), {}, 100, 1016, 635, 2, 2};
    EXPECT_TRUE(SamePixels(Render(Document(Pages(rgb, "LOSSLESS", corner)), 0, Dpi), Colour().copy(80, 50, 80, 50)));
    // Every page of a multi-page TIFF, in order.
    ASSERT_TRUE(tiffwriter::Write(g4, {Bilevel(0), Bilevel(5), Bilevel(10)}, tiffwriter::Kind::BilevelG4, Dpi));
    const QByteArray three = Document(Pages(g4));
    ASSERT_EQ(xdw::Model(three).Pages().size(), 3u);
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(SamePixels(Render(three, i, Dpi), Bilevel(5 * i))) << "page " << i + 1;
}

TEST_F(ImagePagesTest, JpegNamesStoreJpegsCloseToTheImage)
{
    const QString colour = Save(Path("colour.png"), Colour(), "png", Dpi);
    const QString grey = Save(Path("grey.png"), Grey(), "png", Dpi);
    for (const char* name : {"NORMAL", "HIGHQUALITY", "HIGHCOMPRESS", "JPEG"}) {
        for (const auto& [path, source] : {std::pair{colour, Colour()}, std::pair{grey, Grey()}}) {
            SCOPED_TRACE(QFileInfo(path).fileName().toStdString() + " " + name);
            const std::vector<xdw::Node> pages = Pages(path, name);
            const xdw::Drawing drawing = ContentDrawing(pages[0]);
            ASSERT_EQ(drawing.kind, xdw::DrawingKind::Jpeg);
            EXPECT_EQ(QImage::fromData(drawing.data, "JPEG").isGrayscale(), source.isGrayscale());
            EXPECT_GT(Psnr(Render(Document(pages), 0, Dpi), source), 35.0);
        }
    }
    const auto size = [&](const char* vName) { return ContentDrawing(Pages(colour, vName)[0]).data.size(); };
    EXPECT_LT(size("HIGHCOMPRESS"), size("NORMAL"));
    EXPECT_LT(size("NORMAL"), size("HIGHQUALITY"));
}

TEST_F(ImagePagesTest, AJpegIsKeptByteForByteUnlessCutOrAskedSmaller)
{
    const QString path = Save(Path("photo.jpg"), Colour(), "jpeg", Dpi, 95);
    const QByteArray file = testfiles::ReadBytes(path);
    for (const char* name : {"NORMAL", "HIGHQUALITY", "JPEG"})
        EXPECT_EQ(ContentDrawing(Pages(path, name)[0]).data, file) << name;
    EXPECT_NE(ContentDrawing(Pages(path, "HIGHCOMPRESS")[0]).data, file);
    // Ten times its size on a 10 x 5 cm page: only the part that shows is stored.
    const xdw::Placing cut{QStringLiteral("USERDEF"), {}, 1000, 10000, 5000, 0, 0};
    EXPECT_LT(QImage::fromData(ContentDrawing(Pages(path, "NORMAL", cut)[0]).data, "JPEG").width(), 160);
    // Lossless names keep its decoded pixels.
    EXPECT_TRUE(SamePixels(Render(Document(Pages(path, "LOSSLESS")), 0, Dpi), QImage(path)));
}

TEST_F(ImagePagesTest, ThePageHasTheRecordsAndBitmapLayoutTheReaderKnows)
{
    const xdw::Node page = Pages(Save(Path("bw.png"), Bilevel(), "png", Dpi)).at(0);
    EXPECT_EQ(page.kind, 0x1301u);
    EXPECT_EQ(AttributeOf(page, 3), nullptr);   // the page id is the inserting document's
    EXPECT_EQ(AttributeOf(page, 5)->value, xdwtest::Numbers({2032, 1270}));
    const xdw::Node& placement = page.children.at(0);
    EXPECT_EQ(placement.kind, 0x1302u);
    ASSERT_EQ(placement.declarations.size(), 1u);
    EXPECT_EQ(placement.declarations[0].name, QStringLiteral("childdim"));
    EXPECT_EQ(placement.declarations[0].type, xdw::NamedSizePair);
    EXPECT_EQ(Content(page).kind, 0x8010u);
    EXPECT_FALSE(AttributeOf(Content(page), 7)->constructed);   // inline, tag 87

    const xdw::Model model(Document({page}));
    const xdw::Placement& shown = model.Pages().at(0).placements.at(0);
    EXPECT_EQ(std::vector<qint64>({shown.kind, shown.x, shown.y, shown.width, shown.height, shown.dpi}),
              std::vector<qint64>({0x8010, 0, 0, 2032, 1270, Dpi}));
    const xdw::Fields fields(model.DrawingOf(shown));
    EXPECT_EQ(std::vector<qint64>({fields.IntegerOr(0, 0), fields.IntegerOr(4, 0), fields.IntegerOr(5, 0), fields.IntegerOr(13, 0)}),
              std::vector<qint64>({7, 2032, 1270, 3}));
    // As the stored thumbnails: a 40-byte header, bottom-up, 1 plane, 1 bit, 2,000 bytes of rows,
    // 7,874 pixels a metre, 2 colours, the table; field 81 counts them. Then method 1 (LH5),
    // the stored size, the expanded size and the rows.
    const QByteArray data = fields.Get(6)->toByteArray();
    const QByteArray info = QByteArray::fromHex("28000000a0000000640000000100010000000000d0070000c21e0000"
                                                "c21e00000200000000000000" "00000000ffffff00");
    EXPECT_EQ(data.left(info.size()).toHex(), info.toHex());
    EXPECT_EQ(fields.IntegerOr(1, 0), info.size());
    EXPECT_EQ(data.mid(info.size(), 16).toHex(),
              (xdw::emit::Le32(1) + xdw::emit::Le32(quint32(data.size() - info.size() - 16)) + xdw::emit::Le32(2000)
               + xdw::emit::Le32(100)).toHex());
}

} // namespace
