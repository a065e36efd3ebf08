// What image files say about themselves, and the files that are refused: missing, not images,
// PDF, cut short, damaged, or claiming more pixels than a page picture may have.
#include "common/TestFiles.h"
#include "common/TiffWriter.h"
#include "document/XdwApi.h"
#include "engine/FormatError.h"
#include "engine/XdwBuilder.h"
#include "engine/write/ImagePages.h"
#include "imagein/ImageFixtures.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace imagefixtures;

namespace {

quint32 Crc32(const QByteArray& vBytes)
{
    quint32 crc = 0xFFFFFFFF;
    for (char c : vBytes) {
        crc ^= quint8(c);
        for (int k = 0; k < 8; ++k)
            crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1)));
    }
    return ~crc;
}

QByteArray Be32(quint32 vValue)
{
    return QByteArray::fromHex(QByteArray::number(vValue, 16).rightJustified(8, '0'));
}

class ImageInputTest : public ::testing::Test {
protected:
    QString Path(const QString& vName) const { return dir_.filePath(vName); }
    QString Write(const QString& vName, const QByteArray& vBytes) const
    {
        testfiles::WriteBytes(Path(vName), vBytes);
        return Path(vName);
    }
    // The code and reason of a refused conversion; code 0 when it went through.
    static xdw::FormatError Refusal(const QString& vPath)
    {
        try {
            xdw::PagesFromImage(vPath, {}, &Pack);
        } catch (const xdw::FormatError& refused) {
            return refused;
        }
        return {0, {}};
    }
    QTemporaryDir dir_;
};

TEST_F(ImageInputTest, TheResolutionIsTheFilesOwnOr96WhereItStatesNone)
{
    ASSERT_TRUE(tiffwriter::Write(Path("a.tif"), {Grey(), Colour()}, tiffwriter::Kind::GreyLzw, 300));
    struct Case {
        const char* what;
        QString path;
        float dpi;
    };
    QByteArray bmp = testfiles::ReadBytes(Save(Path("plain.bmp"), Colour(), "bmp", 150));
    bmp.replace(38, 8, QByteArray(8, '\0'));
    QByteArray absurd = testfiles::ReadBytes(Save(Path("absurd.bmp"), Colour(), "bmp", 150));
    absurd.replace(38, 8, QByteArray::fromHex("0100000001000000"));   // one pixel a metre
    const std::vector<Case> cases = {
        {"TIFF, first page", Path("a.tif"), 300},
        {"JPEG density", Save(Path("a.jpg"), Colour(), "jpeg", 72), 72},
        {"PNG pHYs", Save(Path("a.png"), Grey(), "png", 600), 600},
        {"BMP", Save(Path("a.bmp"), Bilevel(), "bmp", 400), 400},
        {"BMP stating none", Write("none.bmp", bmp), 96},
        {"BMP stating an absurd one", Write("absurd2.bmp", absurd), 96},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const xdw::ImageInformation info = xdw::ReadImageInformation(c.path);
        EXPECT_EQ(info.pixelWidth, 160);
        EXPECT_EQ(info.pixelHeight, 100);
        // Stored densities are whole pixels per metre: within a hundredth of a dpi.
        EXPECT_NEAR(info.horDpi, c.dpi, 0.01);
        EXPECT_NEAR(info.verDpi, c.dpi, 0.01);
    }
}

TEST_F(ImageInputTest, FilesThatAreNoImageOfOursAreRefusedWithTheirReason)
{
    const QString pdf = Write("scan.pdf", "%PDF-1.4\n1 0 obj\n<<>>\nendobj\n");
    EXPECT_EQ(Refusal(Path("absent.png")).code, XdwResult::FileNotFound);
    EXPECT_EQ(Refusal(dir_.path()).code, XdwResult::FileNotFound);
    EXPECT_EQ(Refusal(pdf).code, XdwResult::BadFormat);
    EXPECT_EQ(Refusal(pdf).reason, QStringLiteral("PDF input needs a PDF renderer"));
    const xdw::FormatError text = Refusal(Write("notes.txt", "just some words, no picture"));
    EXPECT_EQ(text.code, XdwResult::BadFormat);
    EXPECT_TRUE(text.reason.startsWith(QStringLiteral("not an image this program reads"))) << text.reason.toStdString();
    EXPECT_EQ(Refusal(Write("empty.png", {})).code, XdwResult::BadFormat);
    // The information call refuses the same way.
    EXPECT_THROW(xdw::ReadImageInformation(pdf), xdw::FormatError);
}

TEST_F(ImageInputTest, CutOffOrDamagedImagesAreRefusedNotHalfDrawn)
{
    ASSERT_TRUE(tiffwriter::Write(Path("fax.tif"), {Bilevel()}, tiffwriter::Kind::BilevelG4, 200));
    ASSERT_TRUE(tiffwriter::Write(Path("rgb.tif"), {Colour()}, tiffwriter::Kind::RgbDeflate, 200));
    const std::vector<QString> whole = {
        Save(Path("a.jpg"), Colour(), "jpeg", 200), Save(Path("a.png"), Colour(), "png", 200),
        Save(Path("a.bmp"), Colour(), "bmp", 200), Path("fax.tif"), Path("rgb.tif"),
    };
    for (const QString& path : whole) {
        SCOPED_TRACE(path.toStdString());
        const QByteArray bytes = testfiles::ReadBytes(path);
        ASSERT_EQ(Refusal(path).code, 0) << Refusal(path).reason.toStdString();
        // Cut at two thirds: past the headers, inside the pixels.
        const xdw::FormatError cut = Refusal(Write("cut-" + QFileInfo(path).fileName(), bytes.left(bytes.size() * 2 / 3)));
        EXPECT_EQ(cut.code, XdwResult::BadFormat) << cut.reason.toStdString();
        EXPECT_FALSE(cut.reason.isEmpty());
    }
    // A PNG whose pixel data was overwritten fails its check.
    QByteArray png = testfiles::ReadBytes(Save(Path("b.png"), Colour(), "png", 200));
    const qsizetype idat = png.indexOf("IDAT");
    png.replace(idat + 20, 16, QByteArray(16, '\x5A'));
    EXPECT_EQ(Refusal(Write("damaged.png", png)).code, XdwResult::BadFormat);
}

TEST_F(ImageInputTest, ClaimedSizesBeyondTheLimitsAreRefusedBeforeDecoding)
{
    // A header alone: nothing of the claimed pixels is there, so a decoder that believed it
    // would allocate gigabytes.
    for (const auto& [width, height] : {std::pair{40000u, 10u}, std::pair{10u, 32768u}, std::pair{20000u, 20000u}}) {
        const QString path = Write(QStringLiteral("huge-%1x%2.tif").arg(width).arg(height),
                                   tiffwriter::HeaderOnly(width, height));
        EXPECT_EQ(xdw::ReadImageInformation(path).pixelWidth, static_cast<qint32>(width));
        EXPECT_EQ(Refusal(path).code, XdwResult::OutOfMemory) << width << " x " << height;
    }
    // The same for a PNG whose header claims 30,000 x 30,000, its check mended.
    QByteArray png = testfiles::ReadBytes(Save(Path("small.png"), Grey(), "png", 200));
    png.replace(16, 8, QByteArray::fromHex("0000753000007530"));
    png.replace(29, 4, Be32(Crc32(png.mid(12, 17))));
    EXPECT_EQ(xdw::ReadImageInformation(Write("huge.png", png)).pixelWidth, 30000);
    EXPECT_EQ(Refusal(Path("huge.png")).code, XdwResult::OutOfMemory);
}

} // namespace
