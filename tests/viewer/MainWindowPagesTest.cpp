// Pages of the real main window: moving by the move amount, spreads in both directions, the
// seven sizes and the page jump dialog.
#include "MainWindowFixture.h"

#include "viewer/TiffPages.h"
#include "viewer/frmPageInput.h"

#include <QPushButton>
#include <QSlider>
#include <QTest>
#include <QTimer>

TEST_F(MainWindowTest, MovingByTheMoveAmountStopsAtTheEnds)
{
    AddWindowGroup(context.DetailSet);
    frmMain& w = Window();
    w.InitialOpenFile(Tiff(QStringLiteral("a.tif"), 7), true);
    EXPECT_EQ(w.txtSkipPage()->text(), QStringLiteral("1"));

    w.NextPage();
    EXPECT_EQ(PageIn(4), 2);
    EXPECT_EQ(Panel(2), QStringLiteral("2/7"));
    w.txtSkipPage()->setText(QStringLiteral("4"));
    w.NextPage();
    EXPECT_EQ(PageIn(4), 6);
    w.NextPage();  // past the end: the last page, drawn again
    EXPECT_EQ(PageIn(4), 7);
    w.NextPage();
    EXPECT_EQ(Panel(2), QStringLiteral("7/7"));
    w.txtSkipPage()->setText(QStringLiteral("5"));
    w.PreviousPage();
    w.PreviousPage();  // not below page 1
    EXPECT_EQ(PageIn(4), 1);

    // A move amount of 0 draws the same page; text moves nothing.
    w.txtSkipPage()->setText(QStringLiteral("0"));
    w.NextPage();
    EXPECT_EQ(Panel(2), QStringLiteral("1/7"));
    w.txtSkipPage()->setText(QStringLiteral("abc"));
    w.NextPage();
    w.PreviousPage();
    EXPECT_EQ(w.SelectedFile()->NowPage(), 1);
    w.txtSkipPage()->setText(QStringLiteral("99999"));  // beyond 16 bits
    w.NextPage();
    EXPECT_EQ(w.SelectedFile()->NowPage(), 1);

    // A negative amount goes back, tested against the total only. Page 0 is a new tab's page:
    // the tab's record is made afresh at page 1. Below that nothing can be drawn and the tab
    // stays where it was.
    w.txtSkipPage()->setText(QStringLiteral("3"));
    w.NextPage();
    w.txtSkipPage()->setText(QStringLiteral("-2"));
    w.NextPage();
    EXPECT_EQ(w.SelectedFile()->NowPage(), 2);
    w.NextPage();
    EXPECT_EQ(w.SelectedFile()->NowPage(), 1);
    EXPECT_EQ(PageIn(4), 1);
    w.NextPage();
    EXPECT_EQ(w.SelectedFile()->NowPage(), 1);
    EXPECT_EQ(w.SelectedFile()->TotalPage(), 7);

    // Choosing a tab puts the move amount back to the layout's step.
    w.InitialOpenFile(Tiff(QStringLiteral("b.tif"), 2), true);
    EXPECT_EQ(w.txtSkipPage()->text(), QStringLiteral("1"));
}

TEST_F(MainWindowTest, SpreadsOnOddAndEvenPageCounts)
{
    AddWindowGroup(context.DetailSet);
    frmMain& w = Window();
    w.InitialOpenFile(Tiff(QStringLiteral("five.tif"), 5), true);
    w.SetDoubleDisp(QStringLiteral("2"));
    EXPECT_EQ(w.WindowState()->DataValue(QStringLiteral("DOUBLE_DISP")), QStringLiteral("2"));
    EXPECT_EQ(w.SelectedFile()->PageAmount(), 2);
    EXPECT_TRUE(w.LEAD(1)->isVisible());
    EXPECT_FALSE(w.LEAD(4)->isVisible());
    EXPECT_EQ(w.txtSkipPage()->text(), QStringLiteral("2"));
    EXPECT_EQ(PageIn(2), 1);
    EXPECT_EQ(PageIn(3), 2);
    // The halves share the background, LEAD2 on the left.
    EXPECT_EQ(w.LEAD(2)->geometry().left(), 0);
    EXPECT_EQ(w.LEAD(3)->geometry().left(), w.LEAD(1)->width() / 2);

    w.NextPage();
    w.NextPage();
    EXPECT_EQ(PageIn(2), 5);  // the last page of an odd count stands alone
    EXPECT_EQ(PageIn(3), 0);

    // Right to left: the first page of the pair on the right, the second on the left.
    w.txtSkipPage()->setText(QStringLiteral("2"));
    w.PreviousPage();
    w.SetDispDirection(QStringLiteral("RL"));
    EXPECT_EQ(w.SelectedFile()->DispDirection(), QStringLiteral("RL"));
    EXPECT_EQ(PageIn(2), 3);
    EXPECT_EQ(PageIn(3), 4);
    EXPECT_EQ(w.LEAD(3)->geometry().left(), 0);
    EXPECT_EQ(w.LEAD(2)->geometry().left(), w.LEAD(1)->width() / 2);

    // An even count ends on a full pair; a new tab takes the window's layout and reads LR.
    w.InitialOpenFile(Tiff(QStringLiteral("four.tif"), 4), true);
    const auto four = w.SelectedFile();
    EXPECT_EQ(four->PageAmount(), 2);
    EXPECT_EQ(four->DispDirection(), QStringLiteral("LR"));
    EXPECT_EQ(PageIn(2), 1);
    EXPECT_EQ(PageIn(3), 2);
    w.NextPage();
    EXPECT_EQ(PageIn(2), 3);
    EXPECT_EQ(PageIn(3), 4);
    EXPECT_FALSE(w.Button(QStringLiteral("DISP_DIRECTION"))->isChecked());

    // Choosing the other tab brings back its spread and direction, button included.
    w.PreviousTab();
    EXPECT_EQ(w.WindowState()->DataValue(QStringLiteral("DISP_DIRECTION")), QStringLiteral("RL"));
    EXPECT_TRUE(w.Button(QStringLiteral("DISP_DIRECTION"))->isChecked());
    w.SetDoubleDisp(QStringLiteral("1"));
    EXPECT_TRUE(w.LEAD(4)->isVisible());
    EXPECT_EQ(PageIn(4), 3);
    EXPECT_EQ(w.txtSkipPage()->text(), QStringLiteral("1"));
}

TEST_F(MainWindowTest, SpreadWithNoTabIsRememberedForTheNextFile)
{
    AddWindowGroup(context.DetailSet);
    frmMain& w = Window();
    w.SetDoubleDisp(QStringLiteral("2"));
    EXPECT_EQ(w.WindowState()->DataValue(QStringLiteral("DOUBLE_DISP")), QStringLiteral("2"));
    w.InitialOpenFile(Tiff(QStringLiteral("one.tif"), 1), true);
    EXPECT_EQ(w.SelectedFile()->PageAmount(), 2);
    EXPECT_EQ(PageIn(2), 1);
    EXPECT_EQ(PageIn(3), 0);  // the redraw through the tab empties the missing second page
}

TEST_F(MainWindowTest, SizeCodesReachAllThreePanes)
{
    AddWindowGroup(context.DetailSet);
    frmMain& w = Window();
    EXPECT_EQ(w.WindowState()->DataValue(QStringLiteral("DISPSIZE")), QStringLiteral("1"));  // "ページ全体"
    w.InitialOpenFile(Tiff(QStringLiteral("a.tif"), 2), true);
    struct {
        const char* code;
        int mode;
        int zoom;
    } sizes[] = {{"2", 4, 100}, {"3", 4, 200}, {"4", 4, 300}, {"5", 4, 400}, {"6", 4, 500}, {"0", 2, 500}, {"1", 3, 500}};
    for (const auto& size : sizes) {
        w.SetPaintSizeMode(QString::fromLatin1(size.code));
        for (int lead : {2, 3, 4}) {
            EXPECT_EQ(w.LEAD(lead)->PaintSizeMode(), size.mode) << size.code << " LEAD" << lead;
            EXPECT_EQ(w.LEAD(lead)->PaintZoomFactor(), size.zoom) << size.code << " LEAD" << lead;
        }
        EXPECT_TRUE(w.Button(QStringLiteral("DISPSIZE:") + QLatin1String(size.code))->isChecked());
        EXPECT_EQ(w.WindowState()->DataValue(QStringLiteral("DISPSIZE")), QLatin1String(size.code));
    }
    w.SetPaintSizeMode(QStringLiteral("9"));  // unknown: the panes stay as they are
    EXPECT_EQ(w.LEAD(4)->PaintSizeMode(), 3);
}

TEST_F(MainWindowTest, PageJumpPreviewsThenCancelPutsTheTabsPageBack)
{
    AddWindowGroup(context.DetailSet);
    frmMain& w = Window();
    w.InitialOpenFile(Tiff(QStringLiteral("a.tif"), 9), true);
    w.NextPage();
    int seenDuringPreview = 0;
    bool dialogOpenDuring = false;
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<frmPageInput*>(QApplication::activeModalWidget());
        ASSERT_TRUE(dialog);
        dialogOpenDuring = w.DialogOpen();
        auto* slider = dialog->findChild<QSlider*>(QStringLiteral("slPageJump"));
        ASSERT_TRUE(slider);
        for (int page : {5, 7, 8})
            slider->setValue(page);
        seenDuringPreview = PageIn(4);
        dialog->findChild<QPushButton*>(QStringLiteral("cmdCancel"))->click();
    });
    w.PageJump();
    EXPECT_TRUE(dialogOpenDuring);
    EXPECT_EQ(seenDuringPreview, 8);
    EXPECT_EQ(PageIn(4), 2);
    EXPECT_EQ(w.SelectedFile()->NowPage(), 2);
    EXPECT_FALSE(w.DialogOpen());

    // Confirmed: the tab moves.
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<frmPageInput*>(QApplication::activeModalWidget());
        ASSERT_TRUE(dialog);
        dialog->findChild<QLineEdit*>(QStringLiteral("txtPageJump"))->setText(QStringLiteral("6"));
        dialog->findChild<QPushButton*>(QStringLiteral("cmdOK"))->click();
    });
    w.PageJump();
    EXPECT_EQ(PageIn(4), 6);
    EXPECT_EQ(Panel(2), QStringLiteral("6/9"));
}

TEST_F(MainWindowTest, ResizingScalesWhatIsHeldAndNeverDecodes)
{
    AddWindowGroup(context.DetailSet);
    frmMain& w = Window();
    w.InitialOpenFile(Tiff(QStringLiteral("a.tif"), 3), true);
    const qint64 decodes = TiffPages::DecodeCount();
    w.resize(700, 500);
    QApplication::processEvents();
    // Plain painting while the size changes, smooth again shortly after the last change.
    EXPECT_EQ(w.LEAD(4)->PaintScaling(), 0);
    w.SetPaintSizeMode(QStringLiteral("4"));
    w.resize(1100, 800);
    QApplication::processEvents();
    EXPECT_EQ(TiffPages::DecodeCount(), decodes);
    EXPECT_EQ(PageIn(4), 1);
    QTRY_COMPARE_WITH_TIMEOUT(w.LEAD(4)->PaintScaling(), 1, 5000);

    // The same in a spread, where both halves follow the background.
    w.SetDoubleDisp(QStringLiteral("2"));
    const qint64 spreadDecodes = TiffPages::DecodeCount();
    w.resize(900, 640);
    QApplication::processEvents();
    EXPECT_EQ(TiffPages::DecodeCount(), spreadDecodes);
    EXPECT_EQ(w.LEAD(2)->PaintScaling(), 0);
    EXPECT_EQ(w.LEAD(2)->width() + w.LEAD(3)->width(), w.LEAD(1)->width() / 2 * 2);
    QTRY_COMPARE_WITH_TIMEOUT(w.LEAD(3)->PaintScaling(), 1, 5000);
}

TEST_F(MainWindowTest, RulersKeepTheirLineAndSpreadHalvesGetTheirOwn)
{
    AddWindowGroup(context.DetailSet);
    frmMain& w = Window();
    w.AddRuler(0);  // no tab: nothing
    w.InitialOpenFile(Tiff(QStringLiteral("a.tif"), 4), true);
    w.AddRuler(0);
    QWidget* ruler = w.LEAD(4)->findChild<QWidget*>(QStringLiteral("leadRuler"));
    ASSERT_TRUE(ruler);
    QApplication::processEvents();
    const double line = w.LEAD(4)->ClientToBitmap(QPointF(0, ruler->geometry().top())).y();
    w.SetPaintSizeMode(QStringLiteral("3"));
    w.LEAD(4)->SetScrollPosition(QPoint(0, 40));
    w.LEAD(4)->viewport()->repaint();
    EXPECT_NEAR(w.LEAD(4)->ClientToBitmap(QPointF(0, ruler->geometry().top())).y(), line, 1.0);

    // A spread: each new ruler on both halves; closing the last tab takes them all away.
    w.SetDoubleDisp(QStringLiteral("2"));
    w.AddRuler(1);
    EXPECT_TRUE(w.LEAD(2)->findChild<QWidget*>(QStringLiteral("leadRulerL")));
    EXPECT_TRUE(w.LEAD(3)->findChild<QWidget*>(QStringLiteral("leadRulerR")));
    w.TabClose();
    QApplication::processEvents();
    EXPECT_FALSE(w.LEAD(2)->findChild<QWidget*>(QStringLiteral("leadRulerL")));
    EXPECT_FALSE(w.LEAD(4)->findChild<QWidget*>(QStringLiteral("leadRuler")));
}
