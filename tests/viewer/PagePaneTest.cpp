// The page pane on the offscreen platform: how big each size mode paints a page and where, the
// scroll bars, bitmap and client coordinates, gamma, the 16-bit conversion, and that resizing
// and mode changes neither decode the file again nor rescale on every paint.
#include "common/PagePicture.h"
#include "common/TiffWriter.h"
#include "support/AppError.h"
#include "viewer/PagePane.h"
#include "viewer/PagePaneImage.h"
#include "viewer/TiffPages.h"

#include <QCoreApplication>
#include <QPainter>
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

// How far two pictures of one size are apart, over the channels of every pixel.
struct Difference {
    int worst = 0;
    double mean = 0;
};
Difference Compare(const QImage& vA, const QImage& vB)
{
    Difference d;
    qint64 sum = 0;
    for (int y = 0; y < vA.height(); ++y)
        for (int x = 0; x < vA.width(); ++x)
            for (int shift : {0, 8, 16}) {
                const int apart = std::abs(int(vA.pixel(x, y) >> shift & 0xFF) - int(vB.pixel(x, y) >> shift & 0xFF));
                d.worst = std::max(d.worst, apart);
                sum += apart;
            }
    d.mean = double(sum) / (3.0 * vA.width() * vA.height());
    return d;
}

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
    EXPECT_FALSE(HBar() || VBar());
    EXPECT_EQ(pane_.BitmapToClient({0, 0}), QPointF(100, 0));
    EXPECT_EQ(pane_.BitmapToClient({800, 1200}), QPointF(300, 300));

    // Fit width: the width beside the vertical bar the long page needs.
    pane_.SetPaintSizeMode(PagePane::SizeFitWidth);
    EXPECT_TRUE(VBar() && !HBar());
    EXPECT_DOUBLE_EQ(pane_.PaintScale(), Client().width() / 800.0);
    EXPECT_EQ(pane_.verticalScrollBar()->maximum(), std::lround(1200 * pane_.PaintScale()) - Client().height());
    // A wide page needs no bar and is centred down.
    pane_.SetBitmap(Filled(800, 200, Qt::white));
    EXPECT_FALSE(VBar());
    EXPECT_EQ(pane_.BitmapToClient({0, 0}), QPointF(0, 100));

    // Zoom: both bars as needed, the range is the painted size beyond the client.
    pane_.SetBitmap(Filled(800, 1200, Qt::white));
    pane_.SetPaintZoomFactor(200);
    pane_.SetPaintSizeMode(PagePane::SizeZoom);
    EXPECT_DOUBLE_EQ(pane_.PaintScale(), 2.0);
    EXPECT_EQ(pane_.horizontalScrollBar()->maximum(), 1600 - Client().width());
    EXPECT_EQ(pane_.verticalScrollBar()->maximum(), 2400 - Client().height());
    pane_.SetPaintZoomFactor(0);  // ignored, as is a mode we don't have
    pane_.SetPaintSizeMode(1);
    EXPECT_DOUBLE_EQ(pane_.PaintScale(), 2.0);
    pane_.SetPaintSizeMode(PagePane::SizeNone);
    EXPECT_DOUBLE_EQ(pane_.PaintScale(), 1.0);

    // The window grows: fit page follows it, and the picture is never touched.
    pane_.SetPaintSizeMode(PagePane::SizeFitPage);
    pane_.resize(800, 600);
    EXPECT_DOUBLE_EQ(pane_.PaintScale(), 0.5);
    EXPECT_EQ(pane_.BitmapSize(), QSize(800, 1200));
}

TEST_F(PagePaneTest, WhatIsPaintedMatchesTheLayoutAndGammaDarkensOnlyTheMidTones)
{
    // A white page with a black square at bitmap (400, 600) to (480, 720), grey to its right.
    QImage page = Filled(800, 1200, Qt::white);
    QPainter(&page).fillRect(400, 600, 80, 120, Qt::black);
    QPainter(&page).fillRect(480, 600, 120, 120, QColor(Grey));
    pane_.SetBitmap(page);
    pane_.SetPaintScaling(PagePane::ScalingSmooth);
    pane_.SetPaintZoomFactor(300);
    // Reduced, one to one and magnified copies alike.
    for (int mode : {PagePane::SizeFitPage, PagePane::SizeFitWidth, PagePane::SizeNone, PagePane::SizeZoom}) {
        SCOPED_TRACE(mode);
        pane_.SetPaintSizeMode(mode);
        pane_.SetScrollPosition({400, 580});  // ignored where nothing scrolls
        pane_.SetPaintGamma(50);
        QImage grab = pane_.viewport()->grab().toImage();
        EXPECT_EQ(At(grab, pane_.BitmapToClient({440, 660})), qRgb(0, 0, 0));
        EXPECT_EQ(At(grab, pane_.BitmapToClient({420, 590})), qRgb(255, 255, 255));
        EXPECT_EQ(At(grab, pane_.BitmapToClient({510, 660})), qRgb(64, 64, 64));
        pane_.SetPaintGamma(100);
        grab = pane_.viewport()->grab().toImage();
        EXPECT_EQ(At(grab, pane_.BitmapToClient({510, 660})), Grey);
        if (mode == PagePane::SizeFitPage) {  // the grey beside a centred page
            EXPECT_EQ(grab.pixel(5, 150), Grey);
        }
    }
    EXPECT_EQ(pane_.Bitmap(), page);
    pane_.ClearBitmap();
    EXPECT_TRUE(pane_.BitmapSize().isEmpty());
    EXPECT_EQ(pane_.viewport()->grab().toImage().pixel(200, 150), Grey);
    EXPECT_FALSE(HBar() || VBar());
}

TEST_F(PagePaneTest, BitmapAndClientPointsRoundTripThroughZoomAndScroll)
{
    pane_.SetBitmap(Filled(1000, 1400, Qt::white));
    pane_.SetPaintZoomFactor(300);
    pane_.SetPaintSizeMode(PagePane::SizeZoom);
    pane_.SetScrollPosition({200, 500});
    EXPECT_EQ(pane_.ScrollOffset(), QPoint(600, 1500));
    EXPECT_EQ(pane_.ClientToBitmap({0, 0}), QPointF(200, 500));
    EXPECT_EQ(pane_.BitmapToClient({210, 505}), QPointF(30, 15));
    for (QPointF p : {QPointF(0, 0), QPointF(333.25, 71.5), QPointF(999, 1399)})
        EXPECT_EQ(pane_.ClientToBitmap(pane_.BitmapToClient(p)), p);

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

TEST_F(PagePaneTest, ConversionTo16BitsGivesWhatQtGivesAndAFaxPagePaintsAsThatCopyWould)
{
    // Strokes on a page of every colour, 1201 pixels wide: whole bytes of eight pixels and a rest.
    QImage rgb(1201, 1650, QImage::Format_RGB32);
    for (int y = 0; y < rgb.height(); ++y)
        for (int x = 0; x < rgb.width(); ++x)
            rgb.setPixel(x, y, (x / 4 + y / 9) % 5 == 0 ? qRgb(3, 3, 60) : qRgb(x * 7 & 0xFF, y * 50 & 0xFF, x * y & 0xFF));
    QImage fax = rgb.convertToFormat(QImage::Format_Mono, Qt::ThresholdDither);
    fax.setColorTable({qRgb(250, 250, 245), qRgb(3, 3, 60)});  // a white-is-zero page
    for (QImage::Format format : {QImage::Format_Mono, QImage::Format_MonoLSB, QImage::Format_Indexed8, QImage::Format_Grayscale8,
                                  QImage::Format_RGB32, QImage::Format_RGB888, QImage::Format_RGB16}) {
        SCOPED_TRACE(format);
        const QImage picture = format == QImage::Format_Mono ? fax : rgb.convertToFormat(format, Qt::ThresholdDither);
        pane_.SetBitmap(picture);
        pane_.ConvertTo16Bit();
        EXPECT_EQ(pane_.Bitmap(), picture.convertToFormat(QImage::Format_RGB555));
    }

    // The pane keeps a converted 1-bit page in 1 bit; what it paints, reduced or not, must be
    // what the 16-bit picture itself would paint.
    pane_.SetPaintScaling(PagePane::ScalingSmooth);
    for (int mode : {PagePane::SizeFitPage, PagePane::SizeNone}) {
        SCOPED_TRACE(mode);
        pane_.SetPaintSizeMode(mode);
        pane_.SetBitmap(fax);
        pane_.ConvertTo16Bit();
        const QImage kept = pane_.grab().toImage();
        pane_.SetBitmap(pane_.Bitmap());
        EXPECT_LE(Compare(kept, pane_.grab().toImage()).worst, 1);  // a level of rounding
    }
}

TEST_F(PagePaneTest, AFilePageIsDecodedOnceAndResizesOrModeChangesOnlyRescaleIt)
{
    QTemporaryDir temp;
    const QString path = temp.filePath(u"three.tif"_s);
    const QString none = temp.filePath(u"none.tif"_s);
    ASSERT_TRUE(tiffwriter::WriteNumbered(path, 3, tiffwriter::Kind::GreyLzw, QSize(600, 800)));
    QSignalSpy painted(&pane_, &PagePane::Painted);

    const qint64 before = TiffPages::DecodeCount();
    pane_.ExamineFile(path);
    EXPECT_EQ(pane_.InfoTotalPages(), 3);
    EXPECT_FALSE(pane_.HasBitmap());
    pane_.LoadTiffPage(path, 2);
    pane_.ConvertTo16Bit();
    EXPECT_EQ(TiffPages::DecodeCount(), before + 1);
    // A page that isn't there and a file that isn't one raise, and the pane keeps its page.
    for (auto [file, page] : {std::pair{path, 4}, std::pair{none, 1}}) {
        EXPECT_THROW(pane_.LoadTiffPage(file, page), AppError);
        EXPECT_EQ(pagepicture::Read(pane_.Bitmap()), 2);
        EXPECT_EQ(pane_.InfoTotalPages(), 3);
    }
    EXPECT_THROW(pane_.ExamineFile(none), AppError);

    const qint64 decoded = TiffPages::DecodeCount();
    pane_.SetPaintScaling(PagePane::ScalingSmooth);
    pane_.SetPaintSizeMode(PagePane::SizeFitPage);
    pane_.grab();
    const int builds = pane_.ScaledCopyBuilds();
    pane_.grab();
    pane_.grab();
    EXPECT_EQ(pane_.ScaledCopyBuilds(), builds) << "a repaint with nothing changed rescaled";
    EXPECT_GE(painted.count(), 3);
    // Each change makes one new scaled copy.
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
    EXPECT_EQ(TiffPages::DecodeCount(), decoded);
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
    // A usual page reduction, less than half, and a huge one that goes in two steps.
    for (QSize size : {QSize(301, 212), QSize(700, 492), QSize(15, 10)}) {
        for (QImage::Format format : {QImage::Format_RGB32, QImage::Format_Mono, QImage::Format_RGB555,
                                      QImage::Format_RGB888, QImage::Format_Grayscale8, QImage::Format_Indexed8}) {
            SCOPED_TRACE(::testing::Message() << size.width() << " " << format);
            const QImage picture = source.convertToFormat(format, Qt::ThresholdDither);
            const QImage ours = pagepane::SmoothReduced(picture, size);
            ASSERT_EQ(ours.size(), size);
            ASSERT_EQ(ours.format(), QImage::Format_RGB32);
            const QImage qt = picture.convertToFormat(QImage::Format_RGB32)
                                  .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
            // Both average areas; rounding and Qt's fixed point differ by a level here and there.
            // A channel swapped, a shifted edge or a wrong weight shows at once.
            EXPECT_LT(Compare(ours, qt).mean, 2.0);
        }
    }
}
