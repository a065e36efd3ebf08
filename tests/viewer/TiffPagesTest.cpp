// Reading TIFF pages: every fast layout and the RGBA reader on files written here, orientation,
// files that are no TIFF or claim impossible sizes, damaged files, and the shared corpus of real
// files against libtiff's own verdict.
#include "common/TestFiles.h"
#include "common/TiffWriter.h"
#include "support/AppError.h"
#include "viewer/TiffPages.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <memory>

using namespace Qt::Literals::StringLiterals;
using tiffwriter::Page;

namespace {

// A picture with something different in every corner, so that a flip or a turn shows.
QImage Pattern(int vWidth, int vHeight)
{
    QImage image(vWidth, vHeight, QImage::Format_RGB888);
    for (int y = 0; y < vHeight; ++y)
        for (int x = 0; x < vWidth; ++x)
            image.setPixel(x, y, qRgb((x * 37 + y * 11) & 0xFF, (x * 5 + y * 71) & 0xFF, (x ^ y) * 9 & 0xFF));
    return image;
}

QImage Bilevel(const QImage& vPicture)
{
    return vPicture.convertToFormat(QImage::Format_Mono, Qt::ThresholdDither);
}

// Whether two pictures show the same, whatever their formats.
bool SameColours(const QImage& vActual, const QImage& vExpected)
{
    return vActual.convertToFormat(QImage::Format_RGB32) == vExpected.convertToFormat(QImage::Format_RGB32);
}

// The failure vCall raised, or one numbered 0 when it raised none.
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

TEST_F(TiffPagesTest, EveryFastLayoutOfAMultiPageFileReadsBackInItsOwnDepth)
{
    // Widths that are no multiple of 8 or 32, so row padding and partial bytes matter.
    const QImage rgb = Pattern(45, 29);
    const QImage grey = rgb.convertToFormat(QImage::Format_Grayscale8);
    const QImage mono = Bilevel(rgb);
    const QImage palette = rgb.convertToFormat(QImage::Format_Indexed8);
    // Seven pages: an odd count, so a spread ends on a lone page.
    const std::vector<Page> pages = {
        {.picture = mono, .compression = COMPRESSION_CCITTFAX4, .fillOrder = FILLORDER_LSB2MSB},  // as fax machines write
        {.picture = mono, .compression = COMPRESSION_CCITTFAX3},
        {.picture = mono, .photometric = PHOTOMETRIC_MINISBLACK, .rowsPerStrip = 4},
        {.picture = grey, .compression = COMPRESSION_LZW, .rowsPerStrip = 7},
        {.picture = grey, .compression = COMPRESSION_PACKBITS, .photometric = PHOTOMETRIC_MINISWHITE},
        {.picture = rgb, .compression = COMPRESSION_ADOBE_DEFLATE, .tileSide = 16},
        {.picture = palette, .compression = COMPRESSION_LZW}};
    const QString path = At(u"pages.tif"_s);
    ASSERT_TRUE(tiffwriter::Write(path, pages));

    EXPECT_EQ(TiffPages::CountPages(path), 7);
    for (int page = 1; page <= 7; ++page) {
        SCOPED_TRACE(page);
        int total = 0;
        const QImage read = TiffPages::ReadPage(path, page, &total);
        EXPECT_EQ(total, 7);
        EXPECT_EQ(read.format(), pages[size_t(page - 1)].picture.format());
        EXPECT_TRUE(SameColours(read, pages[size_t(page - 1)].picture));
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
    // Stored as the orientation tag defines it: row 0 and column 0 of the file are the named
    // sides of what is seen, so 5 to 8 swap rows and columns, and 2, 3, 6 and 7 count what
    // becomes x from the right, 3, 4, 7 and 8 what becomes y from the bottom. Both the 1-bit
    // fast path and the RGBA reader (16-bit grey) must undo all eight.
    const QImage upright = Pattern(13, 6).convertToFormat(QImage::Format_Grayscale8);
    const int wd = upright.width();
    const int hd = upright.height();
    for (uint16_t orientation = 1; orientation <= 8; ++orientation) {
        SCOPED_TRACE(orientation);
        const bool swap = orientation >= 5;
        const bool fromRight = orientation % 4 == 2 || orientation % 4 == 3;
        const bool fromBottom = orientation % 4 == 3 || orientation % 4 == 0;
        QImage stored(swap ? hd : wd, swap ? wd : hd, QImage::Format_Grayscale8);
        for (int r = 0; r < stored.height(); ++r)
            for (int c = 0; c < stored.width(); ++c) {
                const int x = swap ? r : c, y = swap ? c : r;
                stored.scanLine(r)[c] = upright.constScanLine(fromBottom ? hd - 1 - y : y)[fromRight ? wd - 1 - x : x];
            }
        const QString path = At(u"o%1.tif"_s.arg(orientation));
        ASSERT_TRUE(tiffwriter::Write(path, {{.picture = Bilevel(stored), .compression = COMPRESSION_CCITTFAX4,
                                              .orientation = orientation},
                                             {.picture = stored.convertToFormat(QImage::Format_Grayscale16),
                                              .orientation = orientation}}));
        EXPECT_TRUE(SameColours(TiffPages::ReadPage(path, 1), Bilevel(upright)));
        EXPECT_TRUE(SameColours(TiffPages::ReadPage(path, 2), upright));
    }
}

TEST_F(TiffPagesTest, WhatIsNoTiffOrTooBigRaisesBeforeAnyAllocation)
{
    testfiles::WriteBytes(At(u"text.tif"_s), "This is not a picture.\r\n");
    testfiles::WriteBytes(At(u"empty.tif"_s), {});
    testfiles::WriteBytes(At(u"header.tif"_s), QByteArray("II*\0\x08\0\0\0", 8));  // an IFD that isn't there
    for (const QString& name : {u"text.tif"_s, u"empty.tif"_s, u"header.tif"_s, u"missing.tif"_s}) {
        SCOPED_TRACE(name.toStdString());
        const AppError read = Failure([&] { TiffPages::ReadPage(At(name), 1); });
        EXPECT_EQ(read.Number(), AppError::PathFileAccess);
        EXPECT_TRUE(read.Description().startsWith(u"ファイルを読み込めません。 ("_s + At(name)));
        EXPECT_EQ(Failure([&] { TiffPages::CountPages(At(name)); }).Number(), AppError::PathFileAccess);
    }

    // Headers of sides beyond 65535, or within it but too many pixels (400 million): counted,
    // but refused on reading.
    rusage before{};
    getrusage(RUSAGE_SELF, &before);
    for (auto [w, h] : {std::pair<uint32_t, uint32_t>{100000, 100000}, {20000, 20000}, {65536, 10}}) {
        SCOPED_TRACE(w);
        const QString path = At(u"huge%1.tif"_s.arg(w));
        testfiles::WriteBytes(path, tiffwriter::HeaderOnly(w, h));
        EXPECT_EQ(TiffPages::CountPages(path), 1);
        const AppError e = Failure([&] { TiffPages::ReadPage(path, 1); });
        EXPECT_EQ(e.Number(), AppError::PathFileAccess);
        EXPECT_TRUE(e.Description().contains(u"大きすぎる"_s) && e.Description().contains(u"%1 x %2"_s.arg(w).arg(h)))
            << e.Description().toStdString();
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
    ASSERT_TRUE(tiffwriter::Write(whole, {{.picture = Bilevel(rgb), .compression = COMPRESSION_CCITTFAX4},
                                          {.picture = rgb, .compression = COMPRESSION_LZW}}));
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

TEST_F(TiffPagesTest, SharedCorpusLoadsWhatLibtiffDecodesAndRefusesTheRest)
{
    const QString folder = testfiles::SharedTestData(u"tiff"_s);
    if (folder.isEmpty())
        GTEST_SKIP() << "no shared test data beside this checkout";
    // libtiff's own reading of a page's orientation tag.
    const auto sideways = [](const QString& vPath, int vPage) {
        std::unique_ptr<TIFF, decltype(&TIFFClose)> tif(TIFFOpen(QFile::encodeName(vPath).constData(), "rm"), &TIFFClose);
        uint16_t orientation = ORIENTATION_TOPLEFT;
        if (tif && TIFFSetDirectory(tif.get(), tdir_t(vPage - 1)))
            TIFFGetFieldDefaulted(tif.get(), TIFFTAG_ORIENTATION, &orientation);
        return orientation >= ORIENTATION_LEFTTOP;
    };
    QFile reference(folder + u"/REFERENCE.tsv"_s);
    ASSERT_TRUE(reference.open(QIODevice::ReadOnly | QIODevice::Text));
    int files = 0;
    QTextStream lines(&reference);
    while (!lines.atEnd()) {
        // name, "pages=N" or "open-fail", "decoded=N", the stored size of the last page decoded
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
        EXPECT_EQ(TiffPages::CountPages(path), pages);
        int read = 0, lastPage = 0;
        QSize last;
        for (int page = 1; page <= pages; ++page) {
            try {
                last = TiffPages::ReadPage(path, page).size();
                lastPage = page;
                ++read;
            } catch (const AppError& e) {
                EXPECT_FALSE(e.Description().isEmpty());
            }
        }
        EXPECT_EQ(read, fields[2].mid(8).toInt());
        const QStringList size = fields[3].split(u'x');
        if (read > 0) {  // a page stored sideways is shown turned
            EXPECT_EQ(last, sideways(path, lastPage) ? QSize(size.value(1).toInt(), size.value(0).toInt())
                                                     : QSize(size.value(0).toInt(), size.value(1).toInt()));
        }
    }
    EXPECT_GT(files, 100);
}
