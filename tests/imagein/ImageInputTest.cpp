// What image files say about themselves, and the files that are refused: missing, not images,
// PDF, cut short, damaged, or claiming more pixels than a page picture may have.
#include "common/TestFiles.h"
#include "common/TiffWriter.h"
#include "document/XdwApi.h"
#include "engine/FormatError.h"
#include "engine/write/ImagePages.h"
#include "imagein/ImageFixtures.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace imagefixtures;

namespace {

class ImageInputTest : public ::testing::Test {
protected:
    QString Write(const QString& vName, const QByteArray& vBytes) const
    {
        testfiles::WriteBytes(dir_.filePath(vName), vBytes);
        return dir_.filePath(vName);
    }
    QString Saved(const QString& vName, const QImage& vImage, int vDpi) const
    {
        return Save(dir_.filePath(vName), vImage, QFileInfo(vName).suffix().toLatin1().constData(), vDpi);
    }
    // The refusal of a conversion; code 0 when it went through.
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
    ASSERT_TRUE(tiffwriter::Write(dir_.filePath("a.tif"), {Grey(), Colour()}, tiffwriter::Kind::GreyLzw, 300));
    QByteArray none = testfiles::ReadBytes(Saved("none.bmp", Colour(), 150));
    QByteArray absurd = none;
    none.replace(38, 8, QByteArray(8, '\0'));
    absurd.replace(38, 8, QByteArray::fromHex("0100000001000000"));   // a pixel a metre
    const std::vector<std::pair<QString, float>> cases = {
        {dir_.filePath("a.tif"), 300}, {Saved("a.jpeg", Colour(), 72), 72}, {Saved("a.png", Grey(), 600), 600},
        {Saved("a.bmp", Bilevel(), 400), 400}, {Write("none.bmp", none), 96}, {Write("absurd.bmp", absurd), 96},
    };
    for (const auto& [path, dpi] : cases) {
        const xdw::ImageInformation info = xdw::ReadImageInformation(path);
        EXPECT_EQ(std::make_pair(info.pixelWidth, info.pixelHeight), std::make_pair(160, 100));
        // Files keep whole pixels a metre: within a hundredth of a dpi.
        EXPECT_NEAR(info.horDpi, dpi, 0.01) << path.toStdString();
        EXPECT_NEAR(info.verDpi, dpi, 0.01) << path.toStdString();
    }
}

TEST_F(ImageInputTest, FilesThatAreNoImageOfOursAreRefusedWithTheirReason)
{
    const QString pdf = Write("scan.pdf", "%PDF-1.4\n1 0 obj\n<<>>\nendobj\n");
    EXPECT_EQ(Refusal(dir_.filePath("absent.png")).code, XdwResult::FileNotFound);
    EXPECT_EQ(Refusal(dir_.path()).code, XdwResult::FileNotFound);
    EXPECT_EQ(Refusal(pdf).code, XdwResult::BadFormat);
    EXPECT_EQ(Refusal(pdf).reason, QStringLiteral("PDF input needs a PDF renderer"));
    const xdw::FormatError text = Refusal(Write("notes.txt", "just some words"));
    EXPECT_EQ(text.code, XdwResult::BadFormat);
    EXPECT_TRUE(text.reason.startsWith(QStringLiteral("not an image this program reads"))) << text.reason.toStdString();
    EXPECT_EQ(Refusal(Write("empty.png", {})).code, XdwResult::BadFormat);
    EXPECT_THROW(xdw::ReadImageInformation(pdf), xdw::FormatError);
}

TEST_F(ImageInputTest, CutOffOrDamagedImagesAreRefusedNotHalfDrawn)
{
    ASSERT_TRUE(tiffwriter::Write(dir_.filePath("fax.tif"), {Bilevel()}, tiffwriter::Kind::BilevelG4, 200));
    ASSERT_TRUE(tiffwriter::Write(dir_.filePath("rgb.tif"), {Colour()}, tiffwriter::Kind::RgbDeflate, 200));
    for (const QString& path : {Saved("a.jpeg", Colour(), 200), Saved("a.png", Colour(), 200), Saved("a.bmp", Colour(), 200),
                                dir_.filePath("fax.tif"), dir_.filePath("rgb.tif")}) {
        const QByteArray bytes = testfiles::ReadBytes(path);
        ASSERT_EQ(Refusal(path).code, 0) << Refusal(path).reason.toStdString();
        // Cut at two thirds: past the headers, inside the pixels. Decoders draw the rest grey
        // or black when let.
        const xdw::FormatError cut = Refusal(Write("cut-" + QFileInfo(path).fileName(), bytes.left(bytes.size() * 2 / 3)));
        EXPECT_EQ(cut.code, XdwResult::BadFormat) << path.toStdString();
        EXPECT_FALSE(cut.reason.isEmpty());
    }
    QByteArray png = testfiles::ReadBytes(dir_.filePath("a.png"));
    png.replace(png.indexOf("IDAT") + 20, 16, QByteArray(16, '\x5A'));
    EXPECT_EQ(Refusal(Write("damaged.png", png)).code, XdwResult::BadFormat);
}

TEST_F(ImageInputTest, ClaimedSizesBeyondTheLimitsAreRefusedBeforeDecoding)
{
    // Headers alone (every reader checks the same way before decoding): a decoder that believed them would allocate gigabytes.
    for (const auto& [width, height] : {std::pair{40000u, 10u}, std::pair{10u, 32768u}, std::pair{20000u, 20000u}}) {
        const QString path = Write(QStringLiteral("huge-%1x%2.tif").arg(width).arg(height), tiffwriter::HeaderOnly(width, height));
        EXPECT_EQ(xdw::ReadImageInformation(path).pixelWidth, static_cast<qint32>(width));
        EXPECT_EQ(Refusal(path).code, XdwResult::OutOfMemory) << width << " x " << height;
    }
}

} // namespace
