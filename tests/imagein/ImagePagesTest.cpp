// Image files made into pages and drawn back by the engine: lossless pictures come back pixel
// for pixel at the image's resolution, JPEG ones close to the original, and each tone is stored
// at its own depth.
#include "common/TestFiles.h"
#include "common/TiffWriter.h"
#include "engine/Drawing.h"
#include "engine/Model.h"
#include "engine/Tlv.h"
#include "engine/XdwBuilder.h"
#include "engine/write/Emit.h"
#include "engine/write/ImagePages.h"
#include "imagein/ImageFixtures.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace imagefixtures;

namespace {

constexpr int Dpi = 200;   // 160 pixels are then exactly 2032 hundredths of a millimetre

xdw::Placing Compressed(const char* vName)
{
    xdw::Placing placing;
    placing.compress = QString::fromLatin1(vName);
    return placing;
}

std::vector<xdw::Node> Pages(const QString& vPath, const xdw::Placing& vPlacing = {})
{
    return xdw::PagesFromImage(vPath, vPlacing, &Pack);
}

// The content drawing of a page node, as the reader expands it.
xdw::Drawing ContentDrawing(const xdw::Node& vPage)
{
    const xdw::Node& content = vPage.children.at(0).children.at(0);
    return xdw::ReadDrawing(AttributeOf(content, 7)->value);
}

int BitCount(const xdw::Drawing& vDrawing)
{
    return quint8(vDrawing.dibInfo[14]) | quint8(vDrawing.dibInfo[15]) << 8;
}

class ImagePagesTest : public ::testing::Test {
protected:
    QString Path(const QString& vName) const { return dir_.filePath(vName); }
    QTemporaryDir dir_;
};

TEST_F(ImagePagesTest, LosslessPicturesComeBackPixelForPixelAtTheirOwnDepth)
{
    struct Case {
        const char* what;
        QString path;
        QImage source;
        const char* compress;
        int bits;
    };
    const QString g4 = Path("fax.tif"), grey = Path("grey.tif"), rgb = Path("rgb.tif");
    ASSERT_TRUE(tiffwriter::Write(g4, {Bilevel()}, tiffwriter::Kind::BilevelG4, Dpi));
    ASSERT_TRUE(tiffwriter::Write(grey, {Grey()}, tiffwriter::Kind::GreyLzw, Dpi));
    ASSERT_TRUE(tiffwriter::Write(rgb, {Colour()}, tiffwriter::Kind::RgbDeflate, Dpi));
    const std::vector<Case> cases = {
        // A black and white page stays one bit whatever name asks for a JPEG.
        {"G4 fax, NORMAL", g4, Bilevel(), "NORMAL", 1},
        {"G4 fax, JPEG", g4, Bilevel(), "JPEG", 1},
        {"G4 fax, G4", g4, Bilevel(), "G4", 1},
        {"grey TIFF", grey, Grey(), "LOSSLESS", 8},
        {"RGB TIFF", rgb, Colour(), "NOCOMPRESS", 24},
        {"1-bit PNG", Save(Path("bw.png"), Bilevel(), "png", Dpi), Bilevel(), "NORMAL", 1},
        {"grey PNG", Save(Path("grey.png"), Grey(), "png", Dpi), Grey(), "PACKBITS", 8},
        {"colour BMP", Save(Path("colour.bmp"), Colour(), "bmp", Dpi), Colour(), "LOSSLESS", 24},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        ASSERT_FALSE(c.path.isEmpty());
        const std::vector<xdw::Node> pages = Pages(c.path, Compressed(c.compress));
        ASSERT_EQ(pages.size(), 1u);
        const xdw::Drawing drawing = ContentDrawing(pages[0]);
        ASSERT_EQ(drawing.kind, xdw::DrawingKind::Dib);
        EXPECT_EQ(BitCount(drawing), c.bits);
        const QImage drawn = Render(Document(pages), 0, Dpi);
        EXPECT_EQ(drawn.size(), c.source.size());
        EXPECT_EQ(Differing(drawn, c.source), 0);
    }
}

TEST_F(ImagePagesTest, EveryPageOfAMultiPageTiffBecomesAPageInOrder)
{
    const QString path = Path("three.tif");
    ASSERT_TRUE(tiffwriter::Write(path, {Bilevel(0), Bilevel(5), Bilevel(10)}, tiffwriter::Kind::BilevelG4, Dpi));
    const std::vector<xdw::Node> pages = Pages(path);
    ASSERT_EQ(pages.size(), 3u);
    const QByteArray document = Document(pages);
    EXPECT_EQ(xdw::Model(document).Pages().size(), 3u);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(Differing(Render(document, i, Dpi), Bilevel(5 * i)), 0) << "page " << i + 1;
}

TEST_F(ImagePagesTest, JpegNamesStoreJpegsCloseToTheImage)
{
    const QString png = Save(Path("colour.png"), Colour(), "png", Dpi);
    const QString grey = Save(Path("grey.png"), Grey(), "png", Dpi);
    for (const char* name : {"NORMAL", "HIGHQUALITY", "HIGHCOMPRESS", "JPEG"}) {
        SCOPED_TRACE(name);
        for (const auto& [path, source] : {std::pair{png, Colour()}, std::pair{grey, Grey()}}) {
            const std::vector<xdw::Node> pages = Pages(path, Compressed(name));
            const xdw::Drawing drawing = ContentDrawing(pages[0]);
            ASSERT_EQ(drawing.kind, xdw::DrawingKind::Jpeg);
            // A grey image stays a one-channel JPEG.
            EXPECT_EQ(QImage::fromData(drawing.data, "JPEG").isGrayscale(), source.isGrayscale());
            EXPECT_GT(Psnr(Render(Document(pages), 0, Dpi), source), 35.0);
        }
    }
    // The names differ in what they keep.
    const auto size = [&](const char* vName) { return ContentDrawing(Pages(png, Compressed(vName))[0]).data.size(); };
    EXPECT_LT(size("HIGHCOMPRESS"), size("NORMAL"));
    EXPECT_LT(size("NORMAL"), size("HIGHQUALITY"));
}

TEST_F(ImagePagesTest, AJpegIsKeptByteForByteUnlessCutOrAskedSmaller)
{
    const QString path = Save(Path("photo.jpg"), Colour(), "jpeg", Dpi, 95);
    const QByteArray file = testfiles::ReadBytes(path);
    for (const char* name : {"NORMAL", "HIGHQUALITY", "JPEG"})
        EXPECT_EQ(ContentDrawing(Pages(path, Compressed(name))[0]).data, file) << name;
    EXPECT_NE(ContentDrawing(Pages(path, Compressed("HIGHCOMPRESS"))[0]).data, file);
    // Made larger than its page, only the part that shows is stored.
    xdw::Placing cut = Compressed("NORMAL");
    cut.fitImage = QStringLiteral("USERDEF");
    cut.zoom = 1000;
    cut.width = 10000;
    cut.height = 5000;
    const xdw::Drawing drawn = ContentDrawing(Pages(path, cut)[0]);
    EXPECT_NE(drawn.data, file);
    EXPECT_LT(QImage::fromData(drawn.data, "JPEG").width(), Colour().width());
    // Lossless names turn the photograph into a bitmap of its decoded pixels.
    const xdw::Drawing bitmap = ContentDrawing(Pages(path, Compressed("LOSSLESS"))[0]);
    EXPECT_EQ(bitmap.kind, xdw::DrawingKind::Dib);
    EXPECT_EQ(Differing(Render(Document(Pages(path, Compressed("LOSSLESS"))), 0, Dpi), QImage(path)), 0);
}

TEST_F(ImagePagesTest, ThePageNodeHasTheShapeOfAPageTheReaderKnows)
{
    const QString path = Save(Path("grey.png"), Grey(), "png", Dpi);
    const xdw::Node page = Pages(path).at(0);
    EXPECT_EQ(page.kind, 0x1301u);
    EXPECT_EQ(AttributeOf(page, 3), nullptr);   // the page id is the inserting document's
    EXPECT_EQ(AttributeOf(page, 5)->value, xdwtest::Numbers({2032, 1270}));
    ASSERT_EQ(page.children.size(), 1u);
    const xdw::Node& placement = page.children[0];
    EXPECT_EQ(placement.kind, 0x1302u);
    EXPECT_EQ(AttributeOf(placement, 52)->value, xdwtest::Numbers({0, 0}));
    ASSERT_EQ(placement.declarations.size(), 1u);
    EXPECT_EQ(placement.declarations[0].name, QStringLiteral("childdim"));
    EXPECT_EQ(placement.declarations[0].type, xdw::NamedSizePair);
    ASSERT_EQ(placement.children.size(), 1u);
    const xdw::Node& content = placement.children[0];
    EXPECT_EQ(content.kind, 0x8010u);
    EXPECT_FALSE(AttributeOf(content, 7)->constructed);   // inline, tag 87, as the vendor writes it
    EXPECT_EQ(AttributeOf(content, 5)->value, xdwtest::Numbers({2032, 1270}));

    // The reader sees the box, the resolution and the drawing's fields.
    const xdw::Model model(Document({page}));
    const xdw::Placement& shown = model.Pages().at(0).placements.at(0);
    EXPECT_EQ(shown.kind, 0x8010u);
    EXPECT_EQ(shown.width, 2032);
    EXPECT_EQ(shown.height, 1270);
    EXPECT_EQ(shown.dpi, Dpi);
    const xdw::Fields fields(model.DrawingOf(shown));
    EXPECT_EQ(fields.IntegerOr(0, 0), 5);   // NORMAL on a grey picture: a JPEG
    EXPECT_EQ(fields.IntegerOr(4, 0), 2032);
    EXPECT_EQ(fields.IntegerOr(5, 0), 1270);
    EXPECT_EQ(fields.IntegerOr(13, 0), 3);
    EXPECT_EQ(fields.IntegerOr(7, 0), 160);
    EXPECT_EQ(fields.IntegerOr(8, 0), 100);
}

TEST_F(ImagePagesTest, TheBitmapLayoutMatchesTheStoredThumbnails)
{
    const QString path = Save(Path("bw.png"), Bilevel(), "png", Dpi);
    const QByteArray fields = AttributeOf(Pages(path).at(0).children[0].children[0], 7)->value;
    const QByteArray data = xdw::Fields(fields).Get(6)->toByteArray();
    // BITMAPINFOHEADER of 40 bytes, bottom-up, 1 plane, 1 bit, 2 colours, then the table.
    const QByteArray header = QByteArray::fromHex("28000000" "a0000000" "64000000" "0100" "0100" "00000000"
                                                  "d0070000" "c21e0000" "c21e0000" "02000000" "00000000"
                                                  "00000000" "ffffff00");
    EXPECT_EQ(data.left(header.size()).toHex(), header.toHex());
    EXPECT_EQ(xdw::Fields(fields).IntegerOr(1, 0), header.size());
    // Then method 1 (LH5), stored size, expanded size (20-byte rows, 100 of them), rows.
    const QByteArray rows = QByteArray::fromHex("01000000") + QByteArray::fromHex("00000000")
        + QByteArray::fromHex("d0070000" "64000000");
    const QByteArray sub = data.mid(header.size(), 16);
    EXPECT_EQ(sub.left(4), rows.left(4));
    EXPECT_EQ(sub.mid(8), rows.mid(8));
    EXPECT_EQ(sub.mid(4, 4), xdw::emit::Le32(static_cast<quint32>(data.size() - header.size() - 16)));
}

} // namespace
