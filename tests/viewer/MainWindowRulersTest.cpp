// Rulers on the real main window, added and removed through its menu: a ruler stays on its line
// of the page at every size, scrolled or not, on one page and on both halves of a spread in
// either reading direction, and is really painted there.
#include "MainWindowFixture.h"

#include "viewer/AppRulerCtrlClass.h"

#include <QAction>
#include <QTest>

namespace {

const QColor Green(0, 255, 0);  // picRulerColor 65280

class MainWindowRulersTest : public MainWindowTest {
protected:
    frmMain& Ready(bool vSpread)
    {
        AddWindowGroup(context.DetailSet, true, vSpread);
        context.DetailSet->Thread(frmMain::WindowGroup)->Thread(QStringLiteral("txtRulerWidth"))
            ->AddData(QStringLiteral("6"), QStringLiteral("Text"));
        frmMain& w = Window();
        w.InitialOpenFile(Tiff(QStringLiteral("a.tif"), 4), true);
        QCoreApplication::processEvents();
        return w;
    }

    // The ruler bars over a pane, as the user sees them.
    static QList<RulerBar*> Bars(PagePane* vPane)
    {
        QList<RulerBar*> bars;
        for (RulerBar* bar : vPane->viewport()->findChildren<RulerBar*>())
            if (bar->isVisible())
                bars.append(bar);
        return bars;
    }

    static void Menu(frmMain& vWindow, const char* vKey)
    {
        QAction* item = vWindow.Button(QString::fromLatin1(vKey));
        ASSERT_TRUE(item && item->isEnabled()) << vKey;
        item->trigger();
        QCoreApplication::processEvents();
    }

    // The ruler lies on bitmap line vLine of the pane and shows in its colour there, when that
    // line is in view.
    static void ExpectOnLine(PagePane* vPane, double vLine, const std::string& vWhere)
    {
        const QList<RulerBar*> bars = Bars(vPane);
        ASSERT_EQ(bars.size(), 1) << vWhere;
        const RulerBar* bar = bars.first();
        const int y = int(std::lround(vPane->BitmapToClient(QPointF(0, vLine)).y()));
        EXPECT_EQ(bar->y(), y) << vWhere;
        EXPECT_GE(bar->height(), 6) << vWhere;
        const QImage shown = vPane->viewport()->grab().toImage();
        const int x = std::clamp(bar->x() + bar->width() / 2, 0, shown.width() - 1);
        if (y >= 0 && y + 3 < shown.height()) {
            EXPECT_EQ(shown.pixelColor(x, y + 3), Green) << vWhere << " at " << x << "," << y + 3;
        }
    }
};

} // namespace

TEST_F(MainWindowRulersTest, AHorizontalRulerKeepsItsLineAtEverySizeAndScroll)
{
    frmMain& w = Ready(false);
    Menu(w, "ADD_H_RULER");
    PagePane* pane = w.LEAD(4);
    const double line = pane->BitmapSize().height() / 2.0;
    for (int size = 0; size <= 6; ++size) {
        Menu(w, qPrintable(QStringLiteral("DISPSIZE:%1").arg(size)));
        ExpectOnLine(pane, line, "size " + std::to_string(size));
        // Scrolled so that the ruler's line is near the top of the view, where there is room.
        pane->SetScrollPosition(QPoint(pane->BitmapSize().width() / 3, int(line) - 20));
        QCoreApplication::processEvents();
        ExpectOnLine(pane, line, "size " + std::to_string(size) + " scrolled");
    }
    Menu(w, "DELL_RULER");
    EXPECT_TRUE(Bars(pane).isEmpty());
}

TEST_F(MainWindowRulersTest, ASpreadGetsARulerOnEachHalfInBothDirections)
{
    frmMain& w = Ready(true);
    for (const char* direction : {"LR", "RL"}) {
        w.SetDispDirection(QString::fromLatin1(direction));
        Menu(w, "ADD_V_RULER");
        Menu(w, "ADD_H_RULER");
        for (int size = 0; size <= 6; ++size) {
            Menu(w, qPrintable(QStringLiteral("DISPSIZE:%1").arg(size)));
            for (int lead : {2, 3}) {
                PagePane* pane = w.LEAD(lead);
                const QList<RulerBar*> bars = Bars(pane);
                ASSERT_EQ(bars.size(), 2) << direction << " size " << size << " pane " << lead;
                const QPointF centre = pane->BitmapToClient(
                    QPointF(pane->BitmapSize().width() / 2.0, pane->BitmapSize().height() / 2.0));
                for (const RulerBar* bar : bars) {
                    if (bar->width() < bar->height())
                        EXPECT_EQ(bar->x(), int(std::lround(centre.x()))) << direction << " size " << size;
                    else
                        EXPECT_EQ(bar->y(), int(std::lround(centre.y()))) << direction << " size " << size;
                }
            }
        }
        Menu(w, "DELL_RULER");
        EXPECT_TRUE(Bars(w.LEAD(2)).isEmpty() && Bars(w.LEAD(3)).isEmpty()) << direction;
    }
}

TEST_F(MainWindowRulersTest, RulerItemsDoNothingWithoutATab)
{
    AddWindowGroup(context.DetailSet);
    frmMain& w = Window();
    Menu(w, "ADD_H_RULER");
    EXPECT_TRUE(Bars(w.LEAD(4)).isEmpty());
    Menu(w, "DELL_RULER");
}
