// Rulers over real page panes on the offscreen platform: they keep their line of the page
// through zoom and scroll, move only across their length when dragged, each pane of a spread has
// its own, they take width and colour from the settings, and deleting all unloads them.
#include "support/AppError.h"
#include "viewer/AppRulerCtrlClass.h"
#include "viewer/PagePane.h"

#include <QApplication>
#include <QMouseEvent>

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::Literals::StringLiterals;

namespace {

class RulerTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        // An 800 x 1200 page in a 400 x 300 pane: fit page paints it at a quarter, from x 100.
        for (PagePane* pane : {&main_, &left_, &right_}) {
            pane->resize(400, 300);
            pane->SetPaintSizeMode(PagePane::SizeFitPage);
            QImage page(800, 1200, QImage::Format_RGB32);
            page.fill(Qt::white);
            pane->SetBitmap(page);
            pane->show();
        }
        rulers_.SetRulerWidth(8);
        rulers_.SetPane(u"Main"_s, &main_);
        rulers_.SetPane(u"Left"_s, &left_);
        rulers_.SetPane(u"Right"_s, &right_);
        Settle();
    }

    static void Settle() { QCoreApplication::processEvents(); }

    static void Send(QWidget* vTo, QEvent::Type vType, QPoint vScreen, Qt::MouseButton vButton, Qt::MouseButtons vHeld)
    {
        QMouseEvent event(vType, vTo->mapFromGlobal(QPointF(vScreen)), QPointF(vScreen), vButton, vHeld, Qt::NoModifier);
        QApplication::sendEvent(vTo, &event);
    }

    // A press on the bar, a move in two steps by vBy, a release.
    static void Drag(QWidget* vBar, QPoint vBy, Qt::MouseButton vButton = Qt::LeftButton)
    {
        const QPoint start = vBar->mapToGlobal(QPoint(2, 2));
        Send(vBar, QEvent::MouseButtonPress, start, vButton, vButton);
        Send(vBar, QEvent::MouseMove, start + vBy / 2, Qt::NoButton, vButton);
        Send(vBar, QEvent::MouseMove, start + vBy, Qt::NoButton, vButton);
        Send(vBar, QEvent::MouseButtonRelease, start + vBy, vButton, Qt::NoButton);
    }

    QString Stored(const QString& vPane, int vIndex, const QString& vKey) const
    {
        return rulers_.Data()->Thread(vPane)->Thread(QString::number(vIndex))->DataValue(vKey);
    }

    QWidget form_;
    AppRulerCtrlClass rulers_{&form_};
    PagePane main_;
    PagePane left_;
    PagePane right_;
};

} // namespace

TEST_F(RulerTest, RulersKeepTheirLineOfThePageThroughZoomAndScroll)
{
    ASSERT_EQ(rulers_.AddRuler(&main_, u"Main"_s, 0), 1);
    ASSERT_EQ(rulers_.AddRuler(&main_, u"Main"_s, 1), 2);
    RulerBar* horizon = rulers_.Ruler(u"Main"_s, 1);
    RulerBar* vertical = rulers_.Ruler(u"Main"_s, 2);
    EXPECT_EQ(Stored(u"Main"_s, 1, u"Type"_s), u"Horizon"_s);
    EXPECT_EQ(Stored(u"Main"_s, 1, u"Top"_s), u"600"_s);
    EXPECT_EQ(Stored(u"Main"_s, 2, u"Type"_s), u"Vertical"_s);
    EXPECT_EQ(Stored(u"Main"_s, 2, u"Left"_s), u"400"_s);
    // Across the middle of the painted page, as long as the page and as thick as the setting.
    EXPECT_EQ(horizon->geometry(), QRect(100, 150, 200, 8));
    EXPECT_EQ(vertical->geometry(), QRect(200, 0, 8, 300));
    EXPECT_TRUE(horizon->isVisible());

    // 200%, scrolled to bitmap (300, 500): the page's line 600 is at client 2 * (600 - 500).
    main_.SetPaintZoomFactor(200);
    main_.SetPaintSizeMode(PagePane::SizeZoom);
    main_.SetScrollPosition(QPoint(300, 500));
    Settle();
    EXPECT_EQ(horizon->geometry(), QRect(-600, 200, 1600, 8));
    EXPECT_EQ(vertical->geometry(), QRect(200, -1000, 8, 2400));
}

TEST_F(RulerTest, DraggingMovesARulerAcrossItsLengthOnlyAndUnclamped)
{
    rulers_.AddRuler(&main_, u"Main"_s, 0);
    rulers_.AddRuler(&main_, u"Main"_s, 0);
    rulers_.AddRuler(&main_, u"Main"_s, 1);
    RulerBar* under = rulers_.Ruler(u"Main"_s, 1);
    RulerBar* top = rulers_.Ruler(u"Main"_s, 2);
    RulerBar* vertical = rulers_.Ruler(u"Main"_s, 3);
    const QPoint middle(150, 152);
    ASSERT_EQ(main_.viewport()->childAt(middle), top);  // stacked, the last on top

    Drag(top, QPoint(37, 20));
    EXPECT_EQ(top->geometry(), QRect(100, 170, 200, 8));
    EXPECT_EQ(Stored(u"Main"_s, 2, u"Top"_s), u"680"_s);
    EXPECT_EQ(main_.viewport()->childAt(middle), under);  // uncovered, where it was
    Drag(vertical, QPoint(20, 50));
    EXPECT_EQ(vertical->geometry(), QRect(220, 0, 8, 300));
    EXPECT_EQ(Stored(u"Main"_s, 3, u"Left"_s), u"480"_s);
    // Only the left button drags; the others belong to the gestures over the page.
    Drag(under, QPoint(0, 30), Qt::RightButton);
    EXPECT_EQ(under->y(), 150);
    EXPECT_FALSE(rulers_.Dragging());
    // Pushed past the edge, a ruler goes out of sight.
    Drag(top, QPoint(0, -200));
    EXPECT_EQ(top->y(), -30);
    EXPECT_EQ(Stored(u"Main"_s, 2, u"Top"_s), u"-120"_s);

    // The new places are places on the page: at 100% the rulers are on bitmap lines -120 and 480.
    main_.SetPaintZoomFactor(100);
    main_.SetPaintSizeMode(PagePane::SizeZoom);
    Settle();
    EXPECT_EQ(top->y(), -120);
    EXPECT_EQ(under->y(), 600);
    EXPECT_EQ(vertical->x(), 480);
}

TEST_F(RulerTest, EachPaneOfASpreadHasItsOwnRulers)
{
    rulers_.SetRulerControl(u"leadRulerL"_s);
    rulers_.AddRuler(&left_, u"Left"_s, 0);
    rulers_.SetRulerControl(u"leadRulerR"_s);
    ASSERT_EQ(rulers_.AddRuler(&right_, u"Right"_s, 0), 1);
    RulerBar* left = rulers_.Ruler(u"Left"_s, 1);
    RulerBar* right = rulers_.Ruler(u"Right"_s, 1);
    EXPECT_EQ(left->objectName(), u"leadRulerL"_s);
    EXPECT_EQ(right->objectName(), u"leadRulerR"_s);
    EXPECT_EQ(right->parentWidget(), right_.viewport());

    Drag(left, QPoint(0, 30));
    EXPECT_EQ(left->y(), 180);
    EXPECT_EQ(right->y(), 150);
    EXPECT_EQ(Stored(u"Right"_s, 1, u"Top"_s), u"600"_s);
    // A zoom of one pane re-lays only its own rulers.
    right_.SetPaintZoomFactor(50);
    right_.SetPaintSizeMode(PagePane::SizeZoom);
    Settle();
    EXPECT_EQ(right->geometry().size(), QSize(400, 8));
    EXPECT_EQ(left->geometry(), QRect(100, 180, 200, 8));
}

TEST_F(RulerTest, WidthAndColourComeFromTheSettingsAndReachRulersAtTheNextPaint)
{
    rulers_.AddRuler(&main_, u"Main"_s, 0);
    RulerBar* bar = rulers_.Ruler(u"Main"_s, 1);
    EXPECT_EQ(bar->BackColor(), QColor(0, 255, 0));  // 65280 until the settings say otherwise

    const SDC settings = std::make_shared<StructuredDataClass>();
    rulers_.ReadSettings(settings);  // no window group: nothing changes
    EXPECT_EQ(rulers_.RulerWidth(), 8);
    const SDC group = settings->CreateThread(u"\\ウインドウ\\"_s);
    group->CreateThread(u"txtRulerWidth"_s)->AddData(u"12"_s, u"Text"_s);
    EXPECT_THROW(rulers_.ReadSettings(settings), AppError);  // the colour's control is missing
    const SDC colour = group->CreateThread(u"picRulerColor"_s);
    colour->AddData(u"2mm"_s, u"BackColor"_s);
    try {
        rulers_.ReadSettings(settings);
        ADD_FAILURE() << "no number, no colour";
    } catch (const AppError& e) {
        EXPECT_EQ(e.Number(), AppError::TypeMismatch);
    }
    EXPECT_EQ(rulers_.RulerWidth(), 8);  // neither value taken from a half-read setting
    colour->AddData(u"1193046"_s, u"BackColor"_s);  // 0x123456: red is the low byte
    rulers_.ReadSettings(settings);
    EXPECT_EQ(rulers_.RulerWidth(), 12);
    EXPECT_EQ(bar->height(), 8);  // until the pane paints

    main_.viewport()->update();
    Settle();
    EXPECT_EQ(bar->geometry(), QRect(100, 150, 200, 12));
    EXPECT_EQ(bar->BackColor(), QColor(0x56, 0x34, 0x12));
    EXPECT_EQ(main_.grab().toImage().pixelColor(200, 156), QColor(0x56, 0x34, 0x12));
}

TEST_F(RulerTest, DeletingAllUnloadsEveryRulerAndEndsADragInProgress)
{
    rulers_.AddRuler(&main_, u"Main"_s, 0);
    rulers_.AddRuler(&main_, u"Main"_s, 1);
    rulers_.AddRuler(&right_, u"Right"_s, 0);
    QPointer<RulerBar> bar = rulers_.Ruler(u"Main"_s, 1);
    const QPoint at = bar->mapToGlobal(QPoint(2, 2));
    Send(bar, QEvent::MouseButtonPress, at, Qt::LeftButton, Qt::LeftButton);
    ASSERT_TRUE(rulers_.Dragging());

    rulers_.AllDeleteRuler();
    EXPECT_TRUE(bar.isNull());
    EXPECT_EQ(rulers_.Data()->Count(), 0);
    EXPECT_TRUE(main_.viewport()->findChildren<RulerBar*>().isEmpty());
    EXPECT_TRUE(right_.viewport()->findChildren<RulerBar*>().isEmpty());

    // Numbering starts again, and the panes re-lay rulers again after the cut-short drag.
    ASSERT_EQ(rulers_.AddRuler(&main_, u"Main"_s, 0), 1);
    main_.SetPaintZoomFactor(100);
    main_.SetPaintSizeMode(PagePane::SizeZoom);
    Settle();
    EXPECT_EQ(rulers_.Ruler(u"Main"_s, 1)->y(), 600);

    // A pane that goes first takes its rulers along; what is left of them is harmless.
    auto gone = std::make_unique<PagePane>();
    rulers_.AddRuler(gone.get(), u"Left"_s, 1);
    gone.reset();
    EXPECT_EQ(rulers_.Ruler(u"Left"_s, 1), nullptr);
    rulers_.AllDeleteRuler();
}
