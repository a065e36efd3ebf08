// Pages written as files through the engine and read back with libtiff, Qt and the bytes of the
// PDF: every kind and compression, the resolution stored, multi-page sets, parts of pages.
#include "common/TestFiles.h"
#include "document/XdwApi.h"
#include "engine/ImageFiles.h"
#include "engine/XdwBuilder.h"
#include "engine/XdwEngine.h"

#include <QPainter>
#include <QRegularExpression>
#include <QtEndian>
#include <gtest/gtest.h>
#include <tiffio.h>

#include <cmath>

using namespace xdwtest;

namespace {

struct TiffPage {
    uint32_t width = 0, height = 0;
    uint16_t compression = 0, bits = 0, photometric = 0;
    float xDpi = 0, yDpi = 0;
    QImage pixels;   // ARGB32, top row first
};

std::vector<TiffPage> ReadTiff(const QString& vPath)
{
    std::vector<TiffPage> pages;
    TIFF* tiff = TIFFOpen(vPath.toLocal8Bit().constData(), "r");
    if (!tiff)
        return pages;
    do {
        TiffPage p;
        TIFFGetField(tiff, TIFFTAG_IMAGEWIDTH, &p.width);
        TIFFGetField(tiff, TIFFTAG_IMAGELENGTH, &p.height);
        TIFFGetField(tiff, TIFFTAG_COMPRESSION, &p.compression);
        TIFFGetField(tiff, TIFFTAG_BITSPERSAMPLE, &p.bits);
        TIFFGetField(tiff, TIFFTAG_PHOTOMETRIC, &p.photometric);
        TIFFGetField(tiff, TIFFTAG_XRESOLUTION, &p.xDpi);
        TIFFGetField(tiff, TIFFTAG_YRESOLUTION, &p.yDpi);
        p.pixels = QImage(int(p.width), int(p.height), QImage::Format_ARGB32);
        std::vector<uint32_t> raster(size_t(p.width) * p.height);
        if (TIFFReadRGBAImageOriented(tiff, p.width, p.height, raster.data(), ORIENTATION_TOPLEFT, 0))
            for (uint32_t y = 0; y < p.height; ++y)
                for (uint32_t x = 0; x < p.width; ++x) {
                    const uint32_t v = raster[y * p.width + x];
                    p.pixels.setPixel(int(x), int(y), qRgb(TIFFGetR(v), TIFFGetG(v), TIFFGetB(v)));
                }
        pages.push_back(p);
    } while (TIFFReadDirectory(tiff));
    TIFFClose(tiff);
    return pages;
}

// Page count and page boxes (in points) of a PDF, from its bytes.
struct PdfFacts {
    int pages = 0;
    std::vector<QSizeF> boxes;
    bool jpeg = false, finished = false;
};

PdfFacts ReadPdf(const QString& vPath)
{
    const QByteArray bytes = testfiles::ReadBytes(vPath);
    const QString text = QString::fromLatin1(bytes);
    PdfFacts facts;
    facts.pages = int(text.count(QRegularExpression(QStringLiteral("/Type\\s*/Page[^s]"))));
    static const QRegularExpression box(QStringLiteral("/MediaBox\\s*\\[\\s*0\\s+0\\s+([\\d.]+)\\s+([\\d.]+)"));
    for (auto it = box.globalMatch(text); it.hasNext();) {
        const auto m = it.next();
        facts.boxes.emplace_back(m.captured(1).toDouble(), m.captured(2).toDouble());
    }
    facts.jpeg = bytes.contains("/DCTDecode");
    facts.finished = bytes.trimmed().endsWith("%%EOF");
    return facts;
}

QImage Argb(const QImage& vImage)
{
    return vImage.convertToFormat(QImage::Format_ARGB32);
}

class ImageFilesTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        // A colour picture page and a blank one, both A4.
        QImage art(200, 280, QImage::Format_RGB32);
        art.fill(Qt::white);
        QPainter p(&art);
        p.fillRect(10, 10, 90, 120, Qt::red);
        p.fillRect(110, 150, 80, 120, Qt::black);
        p.end();
        PageSpec picture;
        picture.content = JpegContent(art, picture.width, picture.height);
        const QString path = Path(QStringLiteral("doc.xdw"));
        testfiles::WriteBytes(path, Document({picture, PageSpec{}}));
        engine_.OpenDocument(path, 1);
        ASSERT_EQ(engine_.LastResult(), 0) << engine_.LastReason().toStdString();
        engine_.SelectDocumentHandle(engine_.ReadDocumentHandle());
    }
    QString Path(const QString& vName) const { return dir_.filePath(vName); }
    // The page as the engine draws it, for comparing files against.
    QImage Rendered(int vPage, int vDpi, int vColor)
    {
        const qint32 handle = engine_.ConvertPageToImageHandle(vPage, vDpi, vColor);
        const QImage image = *engine_.HandleImage(handle);
        engine_.GlobalFree(handle);
        return image;
    }
    void Convert(int vPage, const QString& vPath, int vDpi, int vColor, const QString& vType)
    {
        engine_.ConvertPageToImageFile(vPage, vPath, vDpi, vColor, vType);
        ASSERT_EQ(engine_.LastResult(), 0) << engine_.LastReason().toStdString();
    }

    QTemporaryDir dir_;
    XdwEngine engine_;
};

} // namespace

// Settings files and scripts name these; a changed word breaks them.
TEST(ImageFileNames, CompressionAndKindWordsStayAsUsersWriteThem)
{
    EXPECT_EQ(xdw::TiffCompressNames(), QStringList({"NOCOMPRESS", "PACKBITS", "JPEG", "JPEG_TTN2", "G4", "LZW", "DEFLATE"}));
    EXPECT_EQ(xdw::JpegCompressNames(), QStringList({"NORMAL", "HIGHQUALITY", "HIGHCOMPRESS"}));
    EXPECT_EQ(xdw::PdfCompressNames(), QStringList({"NORMAL", "HIGHQUALITY", "HIGHCOMPRESS", "LOSSLESS"}));
    EXPECT_EQ(xdw::PdfConvertMethods(), QStringList({"IMAGE"}));
    EXPECT_EQ(xdw::JpegQuality(QStringLiteral("highquality")), 90);
    EXPECT_EQ(xdw::JpegQuality(QString()), 75);
    EXPECT_EQ(xdw::JpegQuality(QStringLiteral("G4")), 0);
    for (const char* word : {"TIFF", "tif", "JPEG", "jpg", "PDF", "DIB", "bmp", "png"})
        EXPECT_TRUE(xdw::ImageKindOf(QString::fromLatin1(word))) << word;
    EXPECT_FALSE(xdw::ImageKindOf(QStringLiteral("GIF")));
}

TEST_F(ImageFilesTest, EveryTiffCompressionKeepsTheResolutionAndLosslessOnesThePixels)
{
    struct Case {
        const char* name;
        uint16_t codec;
        bool lossless;
    };
    const Case cases[] = {{"NOCOMPRESS", COMPRESSION_NONE, true}, {"PACKBITS", COMPRESSION_PACKBITS, true},
                          {"LZW", COMPRESSION_LZW, true},         {"DEFLATE", COMPRESSION_ADOBE_DEFLATE, true},
                          {"JPEG", COMPRESSION_JPEG, false},       {"JPEG_TTN2", COMPRESSION_JPEG, false}};
    for (int color : {0, 1}) {
        const QImage expected = Argb(Rendered(1, 60, color));
        for (const Case& c : cases) {
            SCOPED_TRACE(std::string(c.name) + (color ? " colour" : " mono"));
            engine_.SetImageTiff(QString::fromLatin1(c.name), 1);
            ASSERT_EQ(engine_.LastResult(), 0);
            const QString path = Path(QStringLiteral("p.tif"));
            Convert(1, path, 60, color, QStringLiteral("TIFF"));
            const auto pages = ReadTiff(path);
            ASSERT_EQ(pages.size(), 1u);
            EXPECT_EQ(pages[0].compression, c.codec);
            EXPECT_EQ(pages[0].xDpi, 60.0f);
            EXPECT_EQ(pages[0].yDpi, 60.0f);
            EXPECT_EQ(pages[0].bits, c.lossless && color == 0 ? 1 : 8);
            if (c.lossless)
                EXPECT_EQ(pages[0].pixels, expected);
            else
                EXPECT_EQ(pages[0].pixels.size(), expected.size());
        }
    }
    // The two JPEG layouts: RGB as it is, and the YCbCr of the technical note.
    engine_.SetImageTiff(QStringLiteral("JPEG_TTN2"), 1);
    Convert(1, Path(QStringLiteral("t.tif")), 60, 1, QStringLiteral("TIFF"));
    EXPECT_EQ(ReadTiff(Path(QStringLiteral("t.tif")))[0].photometric, PHOTOMETRIC_YCBCR);
    engine_.SetImageTiff(QStringLiteral("jpeg"), 1);
    Convert(1, Path(QStringLiteral("t.tif")), 60, 1, QStringLiteral("TIFF"));
    EXPECT_EQ(ReadTiff(Path(QStringLiteral("t.tif")))[0].photometric, PHOTOMETRIC_RGB);
}

TEST_F(ImageFilesTest, G4MakesEvenAColourPageOneBitAndNothingChosenKeepsTheEngineDefault)
{
    engine_.SetImageTiff(QStringLiteral("G4"), 1);
    Convert(1, Path(QStringLiteral("g.tif")), 50, 1, QStringLiteral("TIFF"));
    auto pages = ReadTiff(Path(QStringLiteral("g.tif")));
    ASSERT_EQ(pages.size(), 1u);
    EXPECT_EQ(pages[0].compression, COMPRESSION_CCITTFAX4);
    EXPECT_EQ(pages[0].bits, 1);
    EXPECT_EQ(pages[0].pixels, Argb(Rendered(1, 50, 0)));

    // Before any choice, as the command line writes: G4 for black and white, deflate for colour.
    XdwEngine fresh;
    fresh.OpenDocument(Path(QStringLiteral("doc.xdw")), 1);
    fresh.SelectDocumentHandle(fresh.ReadDocumentHandle());
    for (int color : {0, 1}) {
        fresh.ConvertPageToImageFile(1, Path(QStringLiteral("d.tif")), 50, color, QStringLiteral("TIFF"));
        pages = ReadTiff(Path(QStringLiteral("d.tif")));
        ASSERT_EQ(pages.size(), 1u);
        EXPECT_EQ(pages[0].compression, color ? COMPRESSION_ADOBE_DEFLATE : COMPRESSION_CCITTFAX4);
    }
}

TEST_F(ImageFilesTest, JpegQualityFollowsTheNameAndBlackAndWhiteBecomesGrey)
{
    QMap<QString, qint64> sizes;
    for (const QString& name : xdw::JpegCompressNames()) {
        engine_.SetImageJpeg(name);
        const QString path = Path(name + QStringLiteral(".jpg"));
        Convert(1, path, 100, 1, QStringLiteral("JPEG"));
        sizes[name] = QFileInfo(path).size();
        const QImage back(path);
        EXPECT_EQ(back.size(), QSize(827, 1169));
        EXPECT_EQ(back.dotsPerMeterX(), 3937);   // 100 dpi
    }
    EXPECT_LT(sizes["HIGHCOMPRESS"], sizes["NORMAL"]);
    EXPECT_LT(sizes["NORMAL"], sizes["HIGHQUALITY"]);
    Convert(1, Path(QStringLiteral("m.jpg")), 100, 0, QStringLiteral("JPEG"));
    EXPECT_TRUE(QImage(Path(QStringLiteral("m.jpg"))).isGrayscale());
}

TEST_F(ImageFilesTest, BitmapFileIsOneBitOrTwentyFourWithItsResolution)
{
    // 41 pixels across at 10 dpi: rows padded to four bytes, the last byte's spare bits clear.
    for (int color : {0, 1}) {
        SCOPED_TRACE(color);
        const QString path = Path(QStringLiteral("p.bmp"));
        Convert(1, path, 10, color, QStringLiteral("DIB"));
        const QByteArray b = testfiles::ReadBytes(path);
        auto u32 = [&](int vAt) { return qFromLittleEndian<quint32>(b.constData() + vAt); };
        auto u16 = [&](int vAt) { return qFromLittleEndian<quint16>(b.constData() + vAt); };
        const quint32 width = 83, height = 117, stride = color ? 252 : 12;
        ASSERT_GE(b.size(), 62);
        EXPECT_EQ(b.left(2), "BM");
        EXPECT_EQ(u32(2), quint32(b.size()));
        EXPECT_EQ(u32(10), color ? 54u : 62u);
        EXPECT_EQ(u32(14), 40u);
        EXPECT_EQ(u32(18), width);
        EXPECT_EQ(u32(22), height);            // positive: bottom-up
        EXPECT_EQ(u16(26), 1);
        EXPECT_EQ(u16(28), color ? 24 : 1);
        EXPECT_EQ(u32(30), 0u);
        EXPECT_EQ(u32(34), stride * height);
        EXPECT_EQ(u32(38), 394u);              // 10 dpi in pixels per metre
        EXPECT_EQ(u32(42), 394u);
        EXPECT_EQ(u32(46), color ? 0u : 2u);
        EXPECT_EQ(b.size(), qsizetype(u32(10) + stride * height));
        if (!color) {
            EXPECT_EQ(u32(54), 0x000000u);     // black first
            EXPECT_EQ(u32(58), 0xFFFFFFu);
            for (quint32 row = 0; row < height; ++row)   // 83 = 10 bytes and 3 bits
                EXPECT_EQ(quint8(b[qsizetype(62 + row * stride + 10)]) & 0x1F, 0) << row;
        }
        const QImage back(path);
        EXPECT_EQ(Argb(back), Argb(Rendered(1, 10, color)));
    }
}

TEST_F(ImageFilesTest, PdfPageHasThePaperSizeAndTheCompressionChoosesJpegOrLossless)
{
    // With nothing chosen a PDF is one JPEG page, finished at once.
    Convert(1, Path(QStringLiteral("a.pdf")), 72, 1, QStringLiteral("PDF"));
    PdfFacts pdf = ReadPdf(Path(QStringLiteral("a.pdf")));
    EXPECT_EQ(pdf.pages, 1);
    EXPECT_TRUE(pdf.finished);
    EXPECT_TRUE(pdf.jpeg);
    ASSERT_EQ(pdf.boxes.size(), 1u);
    EXPECT_NEAR(pdf.boxes[0].width(), 595.3, 1.0);    // A4 in points, whatever the dpi
    EXPECT_NEAR(pdf.boxes[0].height(), 841.9, 1.0);

    engine_.SetImagePdf(QStringLiteral("LOSSLESS"), 1, QStringLiteral("IMAGE"));
    ASSERT_EQ(engine_.LastResult(), 0);
    Convert(1, Path(QStringLiteral("b.pdf")), 72, 1, QStringLiteral("PDF"));
    pdf = ReadPdf(Path(QStringLiteral("b.pdf")));
    EXPECT_EQ(pdf.pages, 1);
    EXPECT_FALSE(pdf.jpeg);

    // Black and white is kept lossless whatever the compression says.
    engine_.SetImagePdf(QStringLiteral("HIGHCOMPRESS"), 1, QStringLiteral("IMAGE"));
    Convert(1, Path(QStringLiteral("m.pdf")), 72, 0, QStringLiteral("PDF"));
    EXPECT_FALSE(ReadPdf(Path(QStringLiteral("m.pdf"))).jpeg);

    // A part is a page of the part's own paper: the right half, the top fifth.
    engine_.ConvertPageToImageFileEx(1, Path(QStringLiteral("part.pdf")), 100, 1, 50, 100, 0, 20);
    ASSERT_EQ(engine_.LastResult(), 0) << engine_.LastReason().toStdString();
    pdf = ReadPdf(Path(QStringLiteral("part.pdf")));
    ASSERT_EQ(pdf.boxes.size(), 1u);
    EXPECT_NEAR(pdf.boxes[0].width(), 595.3 / 2, 1.0);
    EXPECT_NEAR(pdf.boxes[0].height(), 841.9 / 5, 1.0);
}

TEST_F(ImageFilesTest, PagesOfAnOpenSetGoIntoOneFileUntilTheFlagEndsIt)
{
    const QString tif = Path(QStringLiteral("set.tif"));
    engine_.SetImageTiff(QStringLiteral("PACKBITS"), 0);
    Convert(1, tif, 30, 0, QStringLiteral("TIFF"));
    Convert(2, tif, 30, 0, QStringLiteral("TIFF"));
    EXPECT_EQ(ReadTiff(tif).size(), 2u);                // whole after every page
    engine_.SetImageTiff(QStringLiteral("PACKBITS"), 1);
    Convert(1, tif, 30, 1, QStringLiteral("TIFF"));
    auto pages = ReadTiff(tif);
    ASSERT_EQ(pages.size(), 3u);
    EXPECT_EQ(pages[0].pixels, Argb(Rendered(1, 30, 0)));
    EXPECT_EQ(pages[2].pixels, Argb(Rendered(1, 30, 1)));
    Convert(2, tif, 30, 0, QStringLiteral("TIFF"));       // the set ended: a new file
    EXPECT_EQ(ReadTiff(tif).size(), 1u);

    // A page to another path ends an open set too.
    engine_.SetImageTiff(QStringLiteral("LZW"), 0);
    Convert(1, tif, 30, 0, QStringLiteral("TIFF"));
    Convert(1, Path(QStringLiteral("other.tif")), 30, 0, QStringLiteral("TIFF"));
    Convert(2, tif, 30, 0, QStringLiteral("TIFF"));
    EXPECT_EQ(ReadTiff(tif).size(), 1u);

    const QString pdf = Path(QStringLiteral("set.pdf"));
    engine_.SetImagePdf(QStringLiteral("NORMAL"), 0, QString());
    Convert(1, pdf, 30, 1, QStringLiteral("PDF"));
    Convert(2, pdf, 30, 1, QStringLiteral("PDF"));
    engine_.SetImagePdf(QStringLiteral("NORMAL"), 1, QString());
    Convert(1, pdf, 30, 0, QStringLiteral("PDF"));
    PdfFacts facts = ReadPdf(pdf);
    EXPECT_EQ(facts.pages, 3);
    EXPECT_EQ(facts.boxes.size(), 3u);
    EXPECT_TRUE(facts.finished);

    // A set left open is finished when the engine ends.
    engine_.SetImagePdf(QStringLiteral("NORMAL"), 0, QString());
    Convert(1, pdf, 30, 1, QStringLiteral("PDF"));
    Convert(2, pdf, 30, 1, QStringLiteral("PDF"));
    engine_.Finalize();
    facts = ReadPdf(pdf);
    EXPECT_EQ(facts.pages, 2);
    EXPECT_TRUE(facts.finished);
}

TEST_F(ImageFilesTest, UnknownNamesAndTypesAreRefusedAndPartsTakeTheChosenKind)
{
    engine_.SetImageTiff(QStringLiteral("ZIP"), 1);
    EXPECT_EQ(engine_.LastResult(), XdwResult::InvalidArg);
    engine_.ConvertPageToImageFile(1, Path(QStringLiteral("z.tif")), 30, 0, QStringLiteral("TIFF"));
    EXPECT_EQ(engine_.LastResult(), XdwResult::InvalidArg);
    EXPECT_FALSE(QFileInfo::exists(Path(QStringLiteral("z.tif"))));
    engine_.SetImagePdf(QStringLiteral("NORMAL"), 1, QStringLiteral("OCR"));
    EXPECT_EQ(engine_.LastResult(), XdwResult::InvalidArg);
    engine_.SetImageJpeg(QStringLiteral("HIGHCOMPRESS"));
    EXPECT_EQ(engine_.LastResult(), 0);
    engine_.ConvertPageToImageFile(1, Path(QStringLiteral("x.gif")), 30, 0, QStringLiteral("GIF"));
    EXPECT_EQ(engine_.LastResult(), XdwResult::InvalidArg);
    for (const char* type : {"JPEG", "TIFF", "PDF", "DIB", "PNG"}) {
        engine_.ConvertPageToImageFile(1, Path(QStringLiteral("no/x")), 30, 0, QString::fromLatin1(type));
        EXPECT_EQ(engine_.LastResult(), XdwResult::WriteFault) << type;
    }

    // A part to a path without a known ending is written as the kind chosen last.
    engine_.SetImageTiff(QStringLiteral("NOCOMPRESS"), 1);
    engine_.ConvertPageToImageFileEx(1, Path(QStringLiteral("part.tmp")), 100, 1, 0, 50, 0, 50);
    ASSERT_EQ(engine_.LastResult(), 0) << engine_.LastReason().toStdString();
    const auto pages = ReadTiff(Path(QStringLiteral("part.tmp")));
    ASSERT_EQ(pages.size(), 1u);
    EXPECT_EQ(pages[0].compression, COMPRESSION_NONE);
    EXPECT_EQ(pages[0].pixels, Argb(Rendered(1, 100, 1).copy(0, 0, 413, 584)));
    engine_.ConvertPageToImageFileEx(1, Path(QStringLiteral("part.bmp")), 100, 0, 0, 50, 0, 50);
    EXPECT_EQ(testfiles::ReadBytes(Path(QStringLiteral("part.bmp"))).left(2), "BM");
}

// The real samples, every page into one multi-page file of each kind.
TEST(ImageFileSamples, SamplePagesMakeMultiPageFiles)
{
    const QString folder = testfiles::SharedTestData(QStringLiteral("xdw"));
    if (folder.isEmpty())
        GTEST_SKIP() << "no sample folder";
    QTemporaryDir dir;
    XdwEngine engine;
    engine.OpenDocument(folder + QStringLiteral("/annotated-10-pages-gen7.xdw"), 1);
    ASSERT_EQ(engine.LastResult(), 0);
    engine.SelectDocumentHandle(engine.ReadDocumentHandle());
    const QString tif = dir.filePath(QStringLiteral("all.tif")), pdf = dir.filePath(QStringLiteral("all.pdf"));
    for (int page = 1; page <= 10; ++page) {
        engine.SetImageTiff(QStringLiteral("G4"), page == 10);
        engine.ConvertPageToImageFile(page, tif, 40, 0, QStringLiteral("TIFF"));
        ASSERT_EQ(engine.LastResult(), 0) << engine.LastReason().toStdString();
    }
    const auto pages = ReadTiff(tif);
    ASSERT_EQ(pages.size(), 10u);
    EXPECT_EQ(pages[9].width, 331u);   // A4 at 40 dpi
    EXPECT_EQ(pages[9].height, 468u);
    for (int page = 1; page <= 10; ++page) {
        engine.SetImagePdf(QStringLiteral("LOSSLESS"), page == 10, QStringLiteral("IMAGE"));
        engine.ConvertPageToImageFile(page, pdf, 40, 1, QStringLiteral("PDF"));
        ASSERT_EQ(engine.LastResult(), 0) << engine.LastReason().toStdString();
    }
    const PdfFacts facts = ReadPdf(pdf);
    EXPECT_EQ(facts.pages, 10);
    EXPECT_TRUE(facts.finished);
}
