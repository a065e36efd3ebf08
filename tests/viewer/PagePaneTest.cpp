// The page pane on the offscreen platform: how big each size mode paints a page and where, the
// scroll bars, bitmap and client coordinates, gamma, the 16-bit conversion, and that resizing
// and mode changes neither decode the file again nor rescale on every paint.
#include "common/TestFiles.h"
#include "support/AppError.h"
#include "viewer/PagePane.h"
#include "viewer/PagePaneImage.h"
#include "viewer/TiffFixtures.h"
#include "viewer/TiffPages.h"

#include <QCoreApplication>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

QImage Filled(int vWidth, int vHeight, QColor vColour)
{
    QImage image(vWidth, vHeight, QImage::Format_RGB32);
    image.fill(vColour);
    return image;
}

const QRgb Grey = qRgb(128, 128, 128);

class PagePaneTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        pane_.resize(400, 300);
        pane_.show();
    }
    // The viewport's size and the bars as the event loop lays them out.
    QSize Client() const
    {
        QCoreApplication::processEvents();
        return pane_.viewport()->size();
    }
    bool HBar() const { return Client().height() < pane_.height(); }
    bool VBar() const { return Client().width() < pane_.width(); }
    QRgb At(const QImage& vGrab, QPointF vClient) const { return vGrab.pixel(vClient.toPoint()); }

    PagePane pane_;
};

} // namespace

TEST_F(PagePaneTest, SizeModesScaleAndPlaceThePage)
{
    pane_.SetBitmap(Filled(800, 1200, Qt::white));

    // Fit page: the whole page, centred across.
    pane_.SetPaintSizeMode(PagePane::SizeFitPage);
    EXPECT_DOUBLE_EQ(pane_.PaintScale(), 0.25);
    EXPECT_FALSE(HBar());
    EXPECT_FALSE(VBar());
    EXPECT_EQ(pane_.BitmapToClient({0, 0}), QPointF(100, 0));
    EXPECT_EQ(pane_.BitmapToClient({800, 1200}), QPointF(300, 300));

    // Fit width: the width beside the vertical bar the long page needs.
    pane_.SetPaintSizeMode(PagePane::SizeFitWidth);
    EXPECT_TRUE(VBar());
    EXPECT_FALSE(HBar());
    EXPECT_LT(Client().width(), 400);
    EXPECT_DOUBLE_EQ(pane_.PaintScale(), Client().width() / 800.0);
    EXPECT_EQ(pane_.verticalScrollBar()->maximum(), std::lround(1200 * pane_.PaintScale()) - Client().height());

    // A wide page at fit width needs no bar and is centred down.
    pane_.SetBitmap(Filled(800, 200, Qt::white));
    EXPECT_FALSE(VBar());
    EXPECT_DOUBLE_EQ(pane_.PaintScale(), 0.5);
    EXPECT_EQ(pane_.BitmapToClient({0, 0}), QPointF(0, 100));

    // Zoom and 1:1: both bars as needed, the range is the painted size beyond the client.
    pane_.SetBitmap(Filled(800, 1200, Qt::white));
    pane_.SetPaintZoomFactor(200);
    pane_.SetPaintSizeMode(PagePane::SizeZoom);
    EXPECT_DOUBLE_EQ(pane_.PaintScale(), 2.0);
    EXPECT_TRUE(HBar() && VBar());
    EXPECT_EQ(pane_.horizontalScrollBar()->maximum(), 1600 - Client().width());
    EXPECT_EQ(pane_.verticalScrollBar()->maximum(), 2400 - Client().height());
    pane_.SetPaintZoomFactor(50);
    EXPECT_DOUBLE_EQ(pane_.PaintScale(), 0.5);
    pane_.SetPaintZoomFactor(0);  // ignored
    EXPECT_EQ(pane_.PaintZoomFactor(), 50);
    pane_.SetPaintSizeMode(PagePane::SizeNone);
    EXPECT_DOUBLE_EQ(pane_.PaintScale(), 1.0);
    pane_.SetPaintSizeMode(1);  // not a mode of ours
    EXPECT_EQ(pane_.PaintSizeMode(), PagePane::SizeNone);

    // The window grows: fit page follows it, and the picture is never touched.
    pane_.SetPaintSizeMode(PagePane::SizeFitPage);
    pane_.resize(800, 600);
    EXPECT_DOUBLE_EQ(pane_.PaintScale(), 0.5);
    EXPECT_EQ(pane_.BitmapSize(), QSize(800, 1200));
}

TEST_F(PagePaneTest, WhatIsPaintedMatchesTheLayout)
{
    // A white page with a black square at bitmap (400, 600) to (480, 720).
    QImage page = Filled(800, 1200, Qt::white);
    for (int y = 600; y < 720; ++y)
        for (int x = 400; x < 480; ++x)
            page.setPixel(x, y, qRgb(0, 0, 0));
    pane_.SetBitmap(page);
    pane_.SetPaintScaling(PagePane::ScalingSmooth);
    for (int mode : {PagePane::SizeFitPage, PagePane::SizeFitWidth, PagePane::SizeZoom}) {
        SCOPED_TRACE(mode);
        pane_.SetPaintZoomFactor(300);
        pane_.SetPaintSizeMode(mode);
        pane_.SetScrollPosition({380, 580});  // ignored where nothing scrolls
        const QImage grab = pane_.viewport()->grab().toImage();
        EXPECT_EQ(At(grab, pane_.BitmapToClient({440, 660})), qRgb(0, 0, 0));
        EXPECT_EQ(At(grab, pane_.BitmapToClient({380, 590})), qRgb(255, 255, 255));
        if (mode == PagePane::SizeFitPage) {  // the grey beside a centred page
            EXPECT_EQ(grab.pixel(5, 150), Grey);
        }
    }
    pane_.ClearBitmap();
    EXPECT_FALSE(pane_.HasBitmap());
    EXPECT_TRUE(pane_.BitmapSize().isEmpty());
    const QImage empty = pane_.viewport()->grab().toImage();
    EXPECT_EQ(empty.pixel(200, 150), Grey);
    EXPECT_FALSE(HBar() || VBar());
}

TEST_F(PagePaneTest, BitmapAndClientPointsRoundTripThroughZoomAndScroll)
{
    pane_.SetBitmap(Filled(1000, 1400, Qt::white));
    pane_.SetPaintZoomFactor(300);
    pane_.SetPaintSizeMode(PagePane::SizeZoom);
    pane_.SetScrollPosition({200, 500});
    EXPECT_EQ(pane_.ScrollPosition(), QPoint(200, 500));
    EXPECT_EQ(pane_.ScrollOffset(), QPoint(600, 1500));
    EXPECT_EQ(pane_.ClientToBitmap({0, 0}), QPointF(200, 500));
    for (QPointF p : {QPointF(0, 0), QPointF(333.25, 71.5), QPointF(999, 1399)})
        EXPECT_EQ(pane_.ClientToBitmap(pane_.BitmapToClient(p)), p);
    EXPECT_EQ(pane_.BitmapToClient({210, 505}), QPointF(30, 15));

    // Out of range is held at the end; a hand drag moves the page pixel for pixel.
    pane_.SetScrollPosition({100000, -5});
    EXPECT_EQ(pane_.ScrollOffset(), QPoint(3000 - Client().width(), 0));
    pane_.SetScrollOffset({601, 1501});
    EXPECT_EQ(pane_.BitmapToClient({200, 500}), QPointF(-1, -1));

    // A zoom keeps the bitmap point at the top left; a new page starts at its top left.
    pane_.SetScrollPosition({200, 500});
    pane_.SetPaintZoomFactor(200);
    EXPECT_EQ(pane_.ScrollPosition(), QPoint(200, 500));
    pane_.SetBitmap(Filled(1000, 1400, Qt::white));
    EXPECT_EQ(pane_.ScrollPosition(), QPoint(0, 0));
}

TEST_F(PagePaneTest, GammaDarkensTheMidTonesOfWhatIsPaintedOnly)
{
    QImage page = Filled(200, 100, QColor(128, 128, 128));
    for (int y = 0; y < 100; ++y)
        for (int x = 0; x < 100; ++x)
            page.setPixel(x, y, x < 50 ? qRgb(0, 0, 0) : qRgb(255, 255, 255));
    pane_.SetBitmap(page);
    pane_.SetPaintSizeMode(PagePane::SizeNone);
    for (int zoom : {50, 100, 250}) {  // reduced and magnified copies alike
        SCOPED_TRACE(zoom);
        pane_.SetPaintSizeMode(PagePane::SizeZoom);
        pane_.SetPaintZoomFactor(zoom);
        pane_.SetPaintGamma(50);
        QImage grab = pane_.viewport()->grab().toImage();
        EXPECT_EQ(At(grab, pane_.BitmapToClient({150, 50})), qRgb(64, 64, 64));
        EXPECT_EQ(At(grab, pane_.BitmapToClient({10, 50})), qRgb(0, 0, 0));
        EXPECT_EQ(At(grab, pane_.BitmapToClient({80, 50})), qRgb(255, 255, 255));
        pane_.SetPaintGamma(100);
        grab = pane_.viewport()->grab().toImage();
        EXPECT_EQ(At(grab, pane_.BitmapToClient({150, 50})), qRgb(128, 128, 128));
    }
    EXPECT_EQ(pane_.Bitmap(), page);
}

TEST_F(PagePaneTest, ConversionTo16BitsGivesWhatQtGivesForEveryFormat)
{
    // 37 pixels wide: whole bytes of eight pixels and a rest.
    QImage rgb(37, 5, QImage::Format_RGB32);
    for (int y = 0; y < 5; ++y)
        for (int x = 0; x < 37; ++x)
            rgb.setPixel(x, y, qRgb(x * 7, y * 50, (x * y * 13) & 0xFF));
    QImage mono = rgb.convertToFormat(QImage::Format_Mono, Qt::ThresholdDither);
    mono.setColorTable({qRgb(255, 255, 255), qRgb(0, 0, 40)});  // a white-is-zero page
    const QImage pictures[] = {mono,
                               rgb.convertToFormat(QImage::Format_MonoLSB, Qt::ThresholdDither),
                               rgb.convertToFormat(QImage::Format_Indexed8),
                               rgb.convertToFormat(QImage::Format_Grayscale8),
                               rgb,
                               rgb.convertToFormat(QImage::Format_RGB888),
                               rgb.convertToFormat(QImage::Format_RGB16)};
    for (const QImage& picture : pictures) {
        SCOPED_TRACE(picture.format());
        pane_.SetBitmap(picture);
        pane_.ConvertTo16Bit();
        ASSERT_EQ(pane_.Bitmap().format(), QImage::Format_RGB555);
        EXPECT_EQ(pane_.Bitmap(), picture.convertToFormat(QImage::Format_RGB555));
    }
}

TEST_F(PagePaneTest, TiffPagesLoadConvertAndFailWithoutTouchingThePane)
{
    QTemporaryDir temp;
    const QString path = temp.filePath(u"three.tif"_s);
    QImage first(50, 40, QImage::Format_Grayscale8);
    first.fill(30);
    QImage second(60, 20, QImage::Format_Grayscale8);
    second.fill(200);
    ASSERT_TRUE(tifffixtures::Write(path, {{first}, {second}, {first}}));

    pane_.ExamineFile(path);
    EXPECT_EQ(pane_.InfoTotalPages(), 3);
    EXPECT_FALSE(pane_.HasBitmap());  // examining decodes nothing
    pane_.LoadTiffPage(path, 2);
    EXPECT_EQ(pane_.BitmapSize(), QSize(60, 20));
    EXPECT_EQ(pane_.Bitmap().format(), QImage::Format_Grayscale8);
    pane_.ConvertTo16Bit();
    EXPECT_EQ(pane_.Bitmap(), second.convertToFormat(QImage::Format_RGB555));

    // A page that isn't there and a file that isn't one raise, and the pane keeps its page.
    pane_.ExamineFile(path);
    for (auto [file, page] : {std::pair{path, 4}, std::pair{temp.filePath(u"none.tif"_s), 1}}) {
        EXPECT_THROW(pane_.LoadTiffPage(file, page), AppError);
        EXPECT_EQ(pane_.BitmapSize(), QSize(60, 20));
        EXPECT_EQ(pane_.InfoTotalPages(), 3);
    }
    EXPECT_THROW(pane_.ExamineFile(temp.filePath(u"none.tif"_s)), AppError);
}

TEST_F(PagePaneTest, ResizesAndModeChangesScaleWhatIsHeldWithoutDecodingOrRepeating)
{
    QTemporaryDir temp;
    const QString path = temp.filePath(u"page.tif"_s);
    QImage page(600, 800, QImage::Format_Grayscale8);
    page.fill(255);
    ASSERT_TRUE(tifffixtures::Write(path, {{page, COMPRESSION_LZW}}));
    QSignalSpy painted(&pane_, &PagePane::Painted);

    const qint64 before = TiffPages::DecodeCount();
    pane_.LoadTiffPage(path, 0);
    pane_.ConvertTo16Bit();
    EXPECT_EQ(TiffPages::DecodeCount(), before + 1);

    pane_.SetPaintScaling(PagePane::ScalingSmooth);
    pane_.SetPaintSizeMode(PagePane::SizeFitPage);
    pane_.grab();
    const int builds = pane_.ScaledCopyBuilds();
    pane_.grab();
    pane_.grab();
    EXPECT_EQ(pane_.ScaledCopyBuilds(), builds) << "a repaint with nothing changed rescaled";
    EXPECT_GE(painted.count(), 3);

    pane_.resize(700, 500);
    pane_.grab();
    pane_.SetPaintSizeMode(PagePane::SizeFitWidth);
    pane_.grab();
    pane_.SetPaintZoomFactor(400);
    pane_.SetPaintSizeMode(PagePane::SizeZoom);
    pane_.grab();
    pane_.SetScrollPosition({100, 100});
    pane_.grab();
    pane_.SetPaintGamma(70);
    pane_.SetPaintScaling(PagePane::ScalingFast);
    pane_.grab();
    EXPECT_EQ(pane_.ScaledCopyBuilds(), builds + 5);
    EXPECT_EQ(TiffPages::DecodeCount(), before + 1);
}

TEST(PagePaneReduceTest, SmoothReductionAgreesWithQtForEveryFormat)
{
    // A busy picture: strokes of every thickness and colour noise, the worst case for boxes.
    QImage source(997, 701, QImage::Format_RGB32);
    for (int y = 0; y < source.height(); ++y)
        for (int x = 0; x < source.width(); ++x) {
            const bool stroke = (x / 7 + y / 11) % 3 == 0 || (x % 50) < (y % 5);
            source.setPixel(x, y, stroke ? qRgb(20, 10, 0) : qRgb(255 - (x * 3 & 63), 250 - (y & 31), 240));
        }
    const QImage pictures[] = {source,
                               source.convertToFormat(QImage::Format_Mono, Qt::ThresholdDither),
                               source.convertToFormat(QImage::Format_RGB555),
                               source.convertToFormat(QImage::Format_RGB888),
                               source.convertToFormat(QImage::Format_Grayscale8),
                               source.convertToFormat(QImage::Format_Indexed8)};
    // A usual page reduction, less than half, and a huge one that goes in two steps.
    for (QSize size : {QSize(301, 212), QSize(700, 492), QSize(15, 10)}) {
        for (const QImage& picture : pictures) {
            SCOPED_TRACE(::testing::Message() << size.width() << " " << picture.format());
            const QImage ours = pagepane::SmoothReduced(picture, size);
            ASSERT_EQ(ours.size(), size);
            ASSERT_EQ(ours.format(), QImage::Format_RGB32);
            const QImage qt = picture.convertToFormat(QImage::Format_RGB32)
                                  .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
            // Both average areas; rounding and Qt's fixed point differ by a level here and there.
            // A channel swapped, a shifted edge or a wrong weight shows at once.
            qint64 difference = 0;
            for (int y = 0; y < size.height(); ++y)
                for (int x = 0; x < size.width(); ++x) {
                    const QRgb a = ours.pixel(x, y);
                    const QRgb b = qt.pixel(x, y);
                    difference += std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b))
                                  + std::abs(qBlue(a) - qBlue(b));
                }
            EXPECT_LT(double(difference) / (3.0 * size.width() * size.height()), 2.0);
        }
    }
}

TEST_F(PagePaneTest, AFaxPageIn16BitsPaintsAsItsOwnCopyWould)
{
    // The pane keeps a converted 1-bit page in 1 bit; what it paints must be what the 16-bit
    // picture itself would paint, and its colours those of 5-5-5.
    QImage fax(1201, 1650, QImage::Format_Mono);
    fax.setColorTable({qRgb(250, 250, 245), qRgb(3, 3, 60)});
    for (int y = 0; y < fax.height(); ++y)
        for (int x = 0; x < fax.width(); ++x)
            fax.setPixel(x, y, (x / 4 + y / 9) % 5 == 0 ? 1 : 0);
    pane_.SetPaintScaling(PagePane::ScalingSmooth);
    for (int mode : {PagePane::SizeFitPage, PagePane::SizeNone}) {
        SCOPED_TRACE(mode);
        pane_.SetPaintSizeMode(mode);
        pane_.SetBitmap(fax);
        pane_.ConvertTo16Bit();
        const QImage kept = pane_.grab().toImage();
        const QImage wide = pane_.Bitmap();
        EXPECT_EQ(wide, fax.convertToFormat(QImage::Format_RGB555));
        pane_.SetBitmap(wide);
        const QImage painted = pane_.grab().toImage();
        ASSERT_EQ(kept.size(), painted.size());
        int worst = 0;
        for (int y = 0; y < kept.height(); ++y)
            for (int x = 0; x < kept.width(); ++x)
                worst = std::max({worst, std::abs(qRed(kept.pixel(x, y)) - qRed(painted.pixel(x, y))),
                                  std::abs(qBlue(kept.pixel(x, y)) - qBlue(painted.pixel(x, y)))});
        EXPECT_LE(worst, 1);
    }
}
