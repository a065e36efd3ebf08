// Reading TIFF pages: every fast layout and the RGBA reader on files written here, orientation,
// files that are no TIFF or claim impossible sizes, damaged files, and the shared corpus of real
// files against libtiff's own verdict.
#include "common/TestFiles.h"
#include "support/AppError.h"
#include "viewer/TiffFixtures.h"
#include "viewer/TiffPages.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

#include <gtest/gtest.h>
#include <sys/resource.h>

using namespace Qt::Literals::StringLiterals;
using tifffixtures::Page;

namespace {

// A picture with something in every corner, so that a flip or a turn shows.
QImage Pattern(int vWidth, int vHeight)
{
    QImage image(vWidth, vHeight, QImage::Format_RGB888);
    for (int y = 0; y < vHeight; ++y)
        for (int x = 0; x < vWidth; ++x)
            image.setPixel(x, y, qRgb((x * 37 + y * 11) & 0xFF, (x * 5 + y * 71) & 0xFF, (x ^ y) * 9 & 0xFF));
    return image;
}

// Black where vPicture is dark.
QImage Bilevel(const QImage& vPicture)
{
    QImage mono(vPicture.size(), QImage::Format_Mono);
    mono.setColorTable({qRgb(0, 0, 0), qRgb(255, 255, 255)});
    for (int y = 0; y < vPicture.height(); ++y)
        for (int x = 0; x < vPicture.width(); ++x)
            mono.setPixel(x, y, qGray(vPicture.pixel(x, y)) < 128 ? 0 : 1);
    return mono;
}

QImage Palette(const QImage& vPicture)
{
    QImage indexed(vPicture.size(), QImage::Format_Indexed8);
    QList<QRgb> colours;
    for (int i = 0; i < 256; ++i)
        colours.append(qRgb(i, 255 - i, (i * 7) & 0xFF));
    indexed.setColorTable(colours);
    for (int y = 0; y < vPicture.height(); ++y)
        for (int x = 0; x < vPicture.width(); ++x)
            indexed.setPixel(x, y, uint((x * 13 + y) & 0xFF));
    return indexed;
}

// Compares what two pictures show, whatever their formats.
::testing::AssertionResult SameColours(const QImage& vActual, const QImage& vExpected)
{
    if (vActual.size() != vExpected.size())
        return ::testing::AssertionFailure() << "size " << vActual.width() << "x" << vActual.height()
                                             << ", expected " << vExpected.width() << "x" << vExpected.height();
    const QImage a = vActual.convertToFormat(QImage::Format_RGB32);
    const QImage e = vExpected.convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            if (a.pixel(x, y) != e.pixel(x, y))
                return ::testing::AssertionFailure() << "pixel " << x << "," << y << " is " << std::hex
                                                     << a.pixel(x, y) << ", expected " << e.pixel(x, y);
    return ::testing::AssertionSuccess();
}

// The number and text of the failure of vCall, or number 0 when it didn't fail.
template <class Call>
AppError Failure(Call vCall)
{
    try {
        vCall();
    } catch (const AppError& e) {
        return e;
    }
    return AppError(0, QString());
}

class TiffPagesTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(temp_.isValid()); }
    QString At(const QString& vName) const { return temp_.filePath(vName); }
    QTemporaryDir temp_;
};

} // namespace

TEST_F(TiffPagesTest, EveryFastLayoutOfAMultiPageFileReadsBackExactly)
{
    // Widths that are no multiple of 8 or 32, so row padding and partial bytes matter.
    const QImage rgb = Pattern(45, 29);
    const QImage grey = rgb.convertToFormat(QImage::Format_Grayscale8);
    const QImage mono = Bilevel(rgb);
    Page fax{mono, COMPRESSION_CCITTFAX4};
    fax.fillOrder = FILLORDER_LSB2MSB;  // as many fax machines write it
    Page g3{mono, COMPRESSION_CCITTFAX3};
    Page blackIsZero{mono, COMPRESSION_NONE, PHOTOMETRIC_MINISBLACK};
    blackIsZero.rowsPerStrip = 4;
    Page greyLzw{grey, COMPRESSION_LZW};
    greyLzw.rowsPerStrip = 7;
    Page greyInverted{grey, COMPRESSION_PACKBITS, PHOTOMETRIC_MINISWHITE};
    Page rgbTiled{rgb, COMPRESSION_ADOBE_DEFLATE};
    rgbTiled.tileSide = 16;
    Page palette{Palette(rgb), COMPRESSION_LZW};
    // Seven pages: an odd count, so a spread ends on a lone page.
    const QString path = At(u"pages.tif"_s);
    ASSERT_TRUE(tifffixtures::Write(path, {fax, g3, blackIsZero, greyLzw, greyInverted, rgbTiled, palette}));

    EXPECT_EQ(TiffPages::CountPages(path), 7);
    const std::vector<std::pair<QImage, QImage::Format>> expected = {
        {mono, QImage::Format_Mono},          {mono, QImage::Format_Mono},
        {mono, QImage::Format_Mono},          {grey, QImage::Format_Grayscale8},
        {grey, QImage::Format_Grayscale8},    {rgb, QImage::Format_RGB888},
        {palette.picture, QImage::Format_Indexed8}};
    for (int page = 1; page <= 7; ++page) {
        SCOPED_TRACE(page);
        int total = 0;
        const QImage read = TiffPages::ReadPage(path, page, &total);
        EXPECT_EQ(total, 7);
        EXPECT_EQ(read.format(), expected[size_t(page - 1)].second);  // the file's own depth
        EXPECT_TRUE(SameColours(read, expected[size_t(page - 1)].first));
    }
    // Page 0 is the first page; pages outside the file raise 9 and name the file.
    EXPECT_TRUE(SameColours(TiffPages::ReadPage(path, 0), mono));
    for (int page : {8, -1}) {
        const AppError e = Failure([&] { TiffPages::ReadPage(path, page); });
        EXPECT_EQ(e.Number(), AppError::SubscriptOutOfRange) << page;
        EXPECT_TRUE(e.Description().contains(path));
    }
}

TEST_F(TiffPagesTest, EveryOrientationShowsThePageUpright)
{
    // Stored as the TIFF orientation tag defines it: row 0 and column 0 of the file are the
    // named sides of what is seen. Both the 1-bit fast path and the RGBA reader (16-bit grey)
    // must undo all eight.
    const QImage upright = Pattern(13, 6).convertToFormat(QImage::Format_Grayscale8);
    const int wd = upright.width();
    const int hd = upright.height();
    for (int orientation = 1; orientation <= 8; ++orientation) {
        SCOPED_TRACE(orientation);
        const bool sideways = orientation >= 5;
        QImage stored8(sideways ? hd : wd, sideways ? wd : hd, QImage::Format_Grayscale8);
        for (int r = 0; r < stored8.height(); ++r)
            for (int c = 0; c < stored8.width(); ++c) {
                int x = c, y = r;
                switch (orientation) {
                case 2: x = wd - 1 - c; break;
                case 3: x = wd - 1 - c; y = hd - 1 - r; break;
                case 4: y = hd - 1 - r; break;
                case 5: x = r; y = c; break;
                case 6: x = wd - 1 - r; y = c; break;
                case 7: x = wd - 1 - r; y = hd - 1 - c; break;
                case 8: x = r; y = hd - 1 - c; break;
                default: break;
                }
                stored8.scanLine(r)[c] = upright.constScanLine(y)[x];
            }
        QImage stored16 = stored8.convertToFormat(QImage::Format_Grayscale16);
        Page bilevel{Bilevel(stored8)};
        bilevel.compression = COMPRESSION_CCITTFAX4;
        bilevel.orientation = uint16_t(orientation);
        Page deep{stored16};
        deep.orientation = uint16_t(orientation);
        const QString path = At(u"o%1.tif"_s.arg(orientation));
        ASSERT_TRUE(tifffixtures::Write(path, {bilevel, deep}));

        EXPECT_TRUE(SameColours(TiffPages::ReadPage(path, 1), Bilevel(upright)));
        EXPECT_TRUE(SameColours(TiffPages::ReadPage(path, 2), upright));
    }
}

TEST_F(TiffPagesTest, WhatIsNoReadableTiffRaisesNamingTheFile)
{
    testfiles::WriteBytes(At(u"text.tif"_s), "This is not a picture.\r\n");
    testfiles::WriteBytes(At(u"empty.tif"_s), {});
    testfiles::WriteBytes(At(u"header.tif"_s), QByteArray("II*\0\x08\0\0\0", 8));  // an IFD that isn't there
    for (const QString& name : {u"text.tif"_s, u"empty.tif"_s, u"header.tif"_s, u"missing.tif"_s}) {
        SCOPED_TRACE(name.toStdString());
        const AppError read = Failure([&] { TiffPages::ReadPage(At(name), 1); });
        EXPECT_EQ(read.Number(), AppError::PathFileAccess);
        EXPECT_TRUE(read.Description().startsWith(u"ファイルを読み込めません。 ("_s + At(name)))
            << read.Description().toStdString();
        EXPECT_EQ(Failure([&] { TiffPages::CountPages(At(name)); }).Number(), AppError::PathFileAccess);
    }
}

TEST_F(TiffPagesTest, ImpossibleSizesAreRefusedBeforeAnyAllocation)
{
    rusage before{};
    getrusage(RUSAGE_SELF, &before);
    // Sides beyond 65535, and sides within it that make too many pixels (400 million).
    for (auto [w, h] : {std::pair<uint32_t, uint32_t>{100000, 100000}, {20000, 20000}, {65536, 10}}) {
        SCOPED_TRACE(w);
        const QString path = At(u"huge%1.tif"_s.arg(w));
        testfiles::WriteBytes(path, tifffixtures::HeaderOnly(w, h));
        EXPECT_EQ(TiffPages::CountPages(path), 1);
        const AppError e = Failure([&] { TiffPages::ReadPage(path, 1); });
        EXPECT_EQ(e.Number(), AppError::PathFileAccess);
        EXPECT_TRUE(e.Description().contains(u"大きすぎる"_s)) << e.Description().toStdString();
        EXPECT_TRUE(e.Description().contains(u"%1 x %2"_s.arg(w).arg(h)));
    }
    rusage after{};
    getrusage(RUSAGE_SELF, &after);
    EXPECT_LT(after.ru_maxrss - before.ru_maxrss, 64 * 1024) << "KB of peak memory";
}

TEST_F(TiffPagesTest, TruncatedFilesFailOrShowWhatIsLeft)
{
    // A fax page and an RGB page cut at many points: each read gives the page or raises; none
    // crashes, hangs or gives a page of another size.
    const QImage rgb = Pattern(120, 90);
    const QString whole = At(u"whole.tif"_s);
    ASSERT_TRUE(tifffixtures::Write(whole, {Page{Bilevel(rgb), COMPRESSION_CCITTFAX4}, Page{rgb, COMPRESSION_LZW}}));
    const QByteArray bytes = testfiles::ReadBytes(whole);
    const QString cut = At(u"cut.tif"_s);
    for (qsizetype length = 0; length < bytes.size(); length += std::max<qsizetype>(1, bytes.size() / 97)) {
        testfiles::WriteBytes(cut, bytes.left(length));
        for (int page = 1; page <= 2; ++page) {
            try {
                EXPECT_EQ(TiffPages::ReadPage(cut, page).size(), rgb.size()) << length;
            } catch (const AppError&) {
            }
        }
    }
}

namespace {

int Orientation(const QString& vPath, int vPage)
{
    TIFF* tif = TIFFOpen(QFile::encodeName(vPath).constData(), "rm");
    uint16_t orientation = ORIENTATION_TOPLEFT;
    if (tif && TIFFSetDirectory(tif, tdir_t(vPage - 1)))
        TIFFGetFieldDefaulted(tif, TIFFTAG_ORIENTATION, &orientation);
    if (tif)
        TIFFClose(tif);
    return orientation;
}

} // namespace

TEST_F(TiffPagesTest, SharedCorpusLoadsWhatLibtiffDecodesAndRefusesTheRest)
{
    const QString folder = testfiles::SharedTestData(u"tiff"_s);
    if (folder.isEmpty())
        GTEST_SKIP() << "no shared test data beside this checkout";
    QFile reference(folder + u"/REFERENCE.tsv"_s);
    ASSERT_TRUE(reference.open(QIODevice::ReadOnly | QIODevice::Text));
    int files = 0;
    QTextStream lines(&reference);
    while (!lines.atEnd()) {
        const QStringList fields = lines.readLine().split(u'\t');
        if (fields.size() < 2)
            continue;
        ++files;
        const QString path = folder + u'/' + fields[0];
        SCOPED_TRACE(fields[0].toStdString());
        if (fields[1] == u"open-fail"_s) {
            EXPECT_EQ(Failure([&] { TiffPages::CountPages(path); }).Number(), AppError::PathFileAccess);
            EXPECT_EQ(Failure([&] { TiffPages::ReadPage(path, 0); }).Number(), AppError::PathFileAccess);
            continue;
        }
        ASSERT_EQ(fields.size(), 4);
        const int pages = fields[1].mid(6).toInt();
        const int decoded = fields[2].mid(8).toInt();
        EXPECT_EQ(TiffPages::CountPages(path), pages);
        int read = 0;
        QSize last;
        int lastPage = 0;
        for (int page = 1; page <= pages; ++page) {
            try {
                last = TiffPages::ReadPage(path, page).size();
                lastPage = page;
                ++read;
            } catch (const AppError& e) {
                EXPECT_FALSE(e.Description().isEmpty());
            }
        }
        EXPECT_EQ(read, decoded);
        if (read == 0)
            continue;
        // The reference gives the stored size; a page stored sideways is shown turned.
        const QStringList size = fields[3].split(u'x');
        QSize expected(size.value(0).toInt(), size.value(1).toInt());
        if (Orientation(path, lastPage) >= 5)
            expected.transpose();
        EXPECT_EQ(last, expected);
    }
    EXPECT_GT(files, 100);
}

TEST_F(TiffPagesTest, CorpusFaxPagesOfAllOrientationsShowTheSamePicture)
{
    const QString folder = testfiles::SharedTestData(u"tiff"_s);
    if (folder.isEmpty())
        GTEST_SKIP() << "no shared test data beside this checkout";
    const QImage first = TiffPages::ReadPage(folder + u"/g4_orientation_1.tif"_s, 1).convertToFormat(QImage::Format_Grayscale8);
    for (int orientation = 2; orientation <= 8; ++orientation) {
        SCOPED_TRACE(orientation);
        const QImage other = TiffPages::ReadPage(folder + u"/g4_orientation_%1.tif"_s.arg(orientation), 1)
                                 .convertToFormat(QImage::Format_Grayscale8);
        ASSERT_EQ(other.size(), first.size());
        qint64 differing = 0;
        for (int y = 0; y < first.height(); ++y)
            for (int x = 0; x < first.width(); ++x)
                differing += first.constScanLine(y)[x] != other.constScanLine(y)[x];
        EXPECT_LT(differing, first.width() * first.height() / 100);
    }
}
