// The options dialog opened from the main window's menu, filled in by clicks, and saved: the new
// bindings, popup row and ruler settings work at once in the same window, with no restart.
#include "MainWindowFixture.h"

#include "options/frmOption.h"
#include "settings/ColorSwatch.h"
#include "viewer/AppRulerCtrlClass.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <QWindow>

#include <functional>

class MainWindowOptionsTest : public MainWindowTest {
protected:
    // Opens the dialog through the menu item and lets vFill work in it while it runs modally.
    void InOptions(const std::function<void(frmOption&)>& vFill)
    {
        bool reached = false;
        QTimer::singleShot(0, form.get(), [&] {
            auto* dialog = qobject_cast<frmOption*>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog);
            reached = true;
            EXPECT_TRUE(form->DialogOpen());
            vFill(*dialog);
            if (dialog->isVisible())
                dialog->reject();
        });
        form->Button(QStringLiteral("TOOL_OPTION"))->trigger();
        EXPECT_TRUE(reached);
        EXPECT_FALSE(form->DialogOpen());
    }

    static void Page(frmOption& vDialog, const QString& vNode)
    {
        auto* tree = vDialog.Ctl<QTreeWidget>(QStringLiteral("TreeView1"));
        QTreeWidgetItem* node = tree->findItems(vNode, Qt::MatchExactly).value(0);
        ASSERT_TRUE(node);
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(node).center());
    }
    static void Click(QWidget* vWidget) { QTest::mouseClick(vWidget, Qt::LeftButton, {}, QPoint(5, 5)); }
    static void Choose(frmOption& vDialog, const char* vCombo, const QString& vText)
    {
        auto* combo = vDialog.Ctl<QComboBox>(QString::fromLatin1(vCombo));
        combo->setCurrentIndex(combo->findText(vText));
        ASSERT_EQ(combo->currentText(), vText);
    }

    QWindow* Native() const { return form->windowHandle(); }
    QPoint OnPage(int vX, int vY) const { return form->LEAD(4)->viewport()->mapTo(form.get(), QPoint(vX, vY)); }
};

TEST_F(MainWindowOptionsTest, NewKeyAndGestureWorkTheMomentTheyAreSaved)
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

    InOptions([](frmOption& d) {
        Page(d, QStringLiteral("キーボード"));
        Choose(d, "cboShortCutKey", QStringLiteral("J"));
        Click(d.Ctl<QCheckBox>(QStringLiteral("chkShortCutKeyCtrl")));
        Choose(d, "cboShortCutKeyAction", QStringLiteral("次ページ"));
        QTest::mouseClick(d.Ctl<QPushButton>(QStringLiteral("cmdShortCutKeyAdd")), Qt::LeftButton);
        Page(d, QStringLiteral("マウスジェスチャ"));
        Click(d.Ctl<QCheckBox>(QStringLiteral("chkMouseGesture")));
        QTest::mouseClick(d.Ctl<QPushButton>(QStringLiteral("cmdMouseGesture"), 2), Qt::LeftButton);
        QTest::mouseClick(d.Ctl<QPushButton>(QStringLiteral("cmdMouseGesture"), 1), Qt::LeftButton);
        Choose(d, "cboMouseGestureAction", QStringLiteral("タブを閉じる"));
        QTest::mouseClick(d.Ctl<QPushButton>(QStringLiteral("cmdMouseGestureAdd")), Qt::LeftButton);
        Page(d, QStringLiteral("ウインドウ"));
        d.Ctl<QLineEdit>(QStringLiteral("txtRulerWidth"))->setText(QStringLiteral("30"));
        d.Ctl<ColorSwatch>(QStringLiteral("picRulerColor"))->SetBackColor(255);
        Page(d, QStringLiteral("ポップアップメニュー"));
        Choose(d, "cboPMenuAction", QStringLiteral("前ページ"));
        d.Ctl<QLineEdit>(QStringLiteral("txtPMenuShortcutKey"))->setText(QStringLiteral("B"));
        QTest::mouseClick(d.Ctl<QPushButton>(QStringLiteral("cmdPMenuAdd")), Qt::LeftButton);
        QTest::mouseClick(d.Ctl<QPushButton>(QStringLiteral("cmdSave")), Qt::LeftButton);
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
    QTest::mousePress(Native(), Qt::RightButton, {}, OnPage(stroke[0].x(), stroke[0].y()));
    for (const QPoint& p : stroke.mid(1))
        QTest::mouseMove(Native(), OnPage(p.x(), p.y()));
    QTest::mouseRelease(Native(), Qt::RightButton, {}, OnPage(stroke.last().x(), stroke.last().y()));
    EXPECT_EQ(Tabs(), 1);
}
