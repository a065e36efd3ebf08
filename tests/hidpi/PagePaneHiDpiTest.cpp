// Page panes on a screen that scales by 2 (this program sets QT_SCALE_FACTOR=2): pages are
// painted at device pixels, so nothing of the page is lost to a copy at the widget's own size
// and blown up, while every size and position the program keeps stays in the widget's pixels.
#include "viewer/PagePane.h"

#include <QApplication>
#include <gtest/gtest.h>

namespace {

// Before main makes the application: the scale is the process's, fixed at its start.
const bool scaled = qputenv("QT_SCALE_FACTOR", "2");

// One-pixel stripes, black on even columns: any pass through a coarser copy blurs or loses them.
QImage Stripes(QSize vSize)
{
    QImage page(vSize, QImage::Format_RGB32);
    for (int y = 0; y < page.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(page.scanLine(y));
        for (int x = 0; x < page.width(); ++x)
            row[x] = x % 2 == 0 ? qRgb(0, 0, 0) : qRgb(255, 255, 255);
    }
    return page;
}

class PagePaneHiDpi : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(scaled);
        ASSERT_EQ(qApp->devicePixelRatio(), 2.0);
        pane_.setFrameShape(QFrame::NoFrame);
        pane_.resize(400, 600);
        pane_.SetBitmap(Stripes(QSize(800, 1200)));
        pane_.show();
        QCoreApplication::processEvents();
    }

    // What the screen shows, at device pixels.
    QImage Shown() { return pane_.viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32); }

    PagePane pane_;
};

TEST_F(PagePaneHiDpi, APageFittedAtHalfShowsEveryOneOfItsPixels)
{
    pane_.SetPaintSizeMode(PagePane::SizeFitPage);
    QCoreApplication::processEvents();
    EXPECT_DOUBLE_EQ(pane_.PaintScale(), 0.5);  // the widget's measures are those of scale 1
    EXPECT_EQ(pane_.BitmapToClient(QPointF(800, 1200)), QPointF(400, 600));
    const QImage shown = Shown();
    ASSERT_EQ(shown.size(), QSize(800, 1200));
    for (int y : {0, 599, 1199})
        for (int x = 0; x < 800; ++x)
            ASSERT_EQ(shown.pixel(x, y), x % 2 == 0 ? qRgb(0, 0, 0) : qRgb(255, 255, 255)) << x << "," << y;
}

TEST_F(PagePaneHiDpi, APageAtFullSizeGetsTwoDevicePixelsPerPixel)
{
    pane_.SetPaintSizeMode(PagePane::SizeNone);
    pane_.SetScrollPosition(QPoint(101, 0));
    QCoreApplication::processEvents();
    EXPECT_EQ(pane_.ScrollPosition(), QPoint(101, 0));
    const QImage shown = Shown();  // beside the scroll bars now
    ASSERT_GT(shown.width(), 700);
    for (int x = 0; x < shown.width(); ++x) {
        const int column = 101 + x / 2;
        ASSERT_EQ(shown.pixel(x, 10), column % 2 == 0 ? qRgb(0, 0, 0) : qRgb(255, 255, 255)) << x;
    }
}

}  // namespace
