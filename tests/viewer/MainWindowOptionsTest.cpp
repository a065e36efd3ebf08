// The options dialog opened from the main window's menu, filled in by clicks, and saved: the new
// bindings, popup row and ruler settings work at once in the same window, with no restart.
#include "MainWindowFixture.h"

#include "options/OptionsDriver.h"
#include "settings/ColorSwatch.h"
#include "viewer/AppRulerCtrlClass.h"

#include <QAction>
#include <QMenu>
#include <QTimer>
#include <QWindow>

#include <functional>

class MainWindowOptionsTest : public MainWindowTest, protected OptionsDriver {
protected:
    // Opens the dialog through the menu item and lets vFill work in it while it runs modally.
    void InOptions(const std::function<void()>& vFill)
    {
        bool reached = false;
        QTimer::singleShot(0, form.get(), [&] {
            ui = qobject_cast<frmOption*>(QApplication::activeModalWidget());
            ASSERT_TRUE(ui);
            reached = true;
            EXPECT_TRUE(form->DialogOpen());
            vFill();
            if (ui->isVisible())
                ui->reject();
        });
        form->Button(QStringLiteral("TOOL_OPTION"))->trigger();
        EXPECT_TRUE(reached);
        EXPECT_FALSE(form->DialogOpen());
    }

    QWindow* Native() const { return form->windowHandle(); }
    QPoint OnPage(QPoint vAt) const { return form->LEAD(4)->viewport()->mapTo(form.get(), vAt); }
};

TEST_F(MainWindowOptionsTest, NewBindingsWorkTheMomentTheyAreSaved)
{
    AddWindowGroup(context.DetailSet);
    frmMain& w = Window();
    w.InitialOpenFile(Tiff(QStringLiteral("a.tif"), 5), true);
    w.InitialOpenFile(Tiff(QStringLiteral("b.tif"), 5), true);
    w.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&w));
    ASSERT_TRUE(w.Button(QStringLiteral("TOOL_OPTION"))->isEnabled());
    QTest::keyClick(Native(), Qt::Key_J, Qt::ControlModifier);
    EXPECT_EQ(PageIn(4), 1);  // nothing bound yet

    InOptions([this] {
        Page("キーボード");
        Choose("cboShortCutKey", QStringLiteral("J"));
        Tick("chkShortCutKeyCtrl");
        Choose("cboShortCutKeyAction", QStringLiteral("次ページ"));
        Click("cmdShortCutKeyAdd");
        Page("マウスジェスチャ");
        Tick("chkMouseGesture");
        Click("cmdMouseGesture", 2);
        Click("cmdMouseGesture", 1);
        Choose("cboMouseGestureAction", QStringLiteral("タブを閉じる"));
        Click("cmdMouseGestureAdd");
        Page("ウインドウ");
        Type("txtRulerWidth", QStringLiteral("30"));
        C<ColorSwatch>("picRulerColor")->SetBackColor(255);
        Page("ポップアップメニュー");
        Choose("cboPMenuAction", QStringLiteral("前ページ"));
        Type("txtPMenuShortcutKey", QStringLiteral("B"));
        Click("cmdPMenuAdd");
        Click("cmdSave");
    });
    EXPECT_EQ(shown.Count(), 0);
    ASSERT_TRUE(QFile::exists(context.SettingsPath));
    const auto* rulers = w.findChild<AppRulerCtrlClass*>();
    ASSERT_TRUE(rulers);
    EXPECT_EQ(rulers->RulerWidth(), 30);
    EXPECT_EQ(rulers->RulerColor(), 255);
    ASSERT_EQ(w.PopupMenu()->actions().size(), 1);
    EXPECT_EQ(w.PopupMenu()->actions().first()->text(), QStringLiteral("前ページ(&B)"));

    w.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&w));
    QTest::keyClick(Native(), Qt::Key_J, Qt::ControlModifier);
    EXPECT_EQ(PageIn(4), 2);
    EXPECT_EQ(Panel(2), QStringLiteral("2/5"));

    ASSERT_EQ(Tabs(), 2);
    const QList<QPoint> stroke = {{200, 150}, {201, 190}, {200, 240}, {240, 241}, {290, 240}};
    QTest::mousePress(Native(), Qt::RightButton, {}, OnPage(stroke.first()));
    for (const QPoint& p : stroke.mid(1))
        QTest::mouseMove(Native(), OnPage(p));
    QTest::mouseRelease(Native(), Qt::RightButton, {}, OnPage(stroke.last()));
    EXPECT_EQ(Tabs(), 1);
}
