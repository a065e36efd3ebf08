// Actions triggered on the real main window by real Qt events: right-button strokes, keys, the
// right button with the wheel, composite actions and the popup menu, with bindings written into
// the settings tree as the options dialog stores them.
#include "MainWindowFixture.h"

#include "common/SettingsTree.h"
#include "settings/DataSaveLoadClass.h"
#include "viewer/frmPageInput.h"

#include <QAction>
#include <QMenu>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>
#include <QWindow>

namespace {

using settingstree::AddComposite;
using settingstree::AddRow;
using settingstree::Group;

void BindMouse(const SDC& vSettings, const QString& vRightWheel)
{
    const SDC mouse = Group(vSettings, QStringLiteral("\\マウス\\"));
    const std::pair<const char*, QString> clicks[] = {
        {"cboMouseLeftDClick", QStringLiteral("次ページ")},
        {"cboMouseWheelClick", QStringLiteral("なし")},
        {"cboMouse4thClick", QStringLiteral("前ページ")},
        {"cboMouse5thClick", QStringLiteral("表示:見開き")},
        {"cboMouseRightWheel", vRightWheel},
    };
    for (const auto& [control, action] : clicks)
        mouse->CreateThread(QString::fromLatin1(control))->AddData(action, QStringLiteral("Text"));
}

} // namespace

class MainWindowInputTest : public MainWindowTest {
protected:
    frmMain& Ready(int vPages = 9)
    {
        AddWindowGroup(context.DetailSet);
        BindMouse(context.DetailSet, QStringLiteral("ページの移動"));
        const SDC gestures = Group(context.DetailSet, QStringLiteral("\\マウスジェスチャ\\"));
        gestures->CreateThread(QStringLiteral("chkMouseGesture"))->AddData(QStringLiteral("1"), QStringLiteral("Value"));
        AddRow(gestures, QStringLiteral("livMouseGesture"), QStringLiteral("前ページ"), {QStringLiteral("←")});
        const SDC keys = Group(context.DetailSet, QStringLiteral("\\キーボード\\"));
        AddRow(keys, QStringLiteral("livShortCutKey"), QStringLiteral("次ページ"), {QStringLiteral("Ctrl + Shift + A")});
        AddRow(keys, QStringLiteral("livShortCutKey"), QStringLiteral("表示:見開き"), {QStringLiteral("Shift + 1")});
        AddRow(keys, QStringLiteral("livShortCutKey"), QStringLiteral("Multi:二つ進む"), {QStringLiteral("Ctrl + M")});
        AddRow(keys, QStringLiteral("livShortCutKey"), QStringLiteral("Multi:途中で失敗"), {QStringLiteral("Ctrl + F")});
        AddRow(keys, QStringLiteral("livShortCutKey"), QStringLiteral("次ページ"), {QStringLiteral("Right")});
        AddComposite(context.DetailSet, QStringLiteral("Multi:二つ進む"),
                     {QStringLiteral("次ページ"), QStringLiteral("次ページ"), QStringLiteral("表示:見開き")});
        // A composite that reaches itself fails when the stack runs out; the step after it in
        // the outer composite never runs.
        AddComposite(context.DetailSet, QStringLiteral("Multi:循環"), {QStringLiteral("Multi:循環")});
        AddComposite(context.DetailSet, QStringLiteral("Multi:途中で失敗"),
                     {QStringLiteral("次ページ"), QStringLiteral("Multi:循環"), QStringLiteral("次ページ")});
        AddRow(Group(context.DetailSet, QStringLiteral("\\ポップアップメニュー\\")), QStringLiteral("livPMenuList"),
               QStringLiteral("次ページ"), {QStringLiteral("次へ"), QStringLiteral("N")});
        // Through the settings file, as the program reads its bindings.
        DataSaveLoadClass writer;
        writer.SetData(context.DetailSet);
        writer.Save(context.SettingsPath, QStringLiteral("DetailSet"));
        context.DetailSet = std::make_shared<StructuredDataClass>();
        DataSaveLoadClass reader;
        reader.SetData(context.DetailSet);
        reader.Load(context.SettingsPath, QStringLiteral("DetailSet"));
        frmMain& w = Window();
        w.InitialOpenFile(Tiff(QStringLiteral("a.tif"), vPages), true);
        w.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&w));
        return w;
    }

    QWindow* Native() const { return form->windowHandle(); }
    QPoint OnPage(int vX, int vY) const { return form->LEAD(4)->viewport()->mapTo(form.get(), QPoint(vX, vY)); }

    void Stroke(const QList<QPoint>& vPoints)
    {
        QTest::mousePress(Native(), Qt::RightButton, {}, OnPage(vPoints[0].x(), vPoints[0].y()));
        for (const QPoint& p : vPoints.mid(1))
            QTest::mouseMove(Native(), OnPage(p.x(), p.y()));
        QTest::mouseRelease(Native(), Qt::RightButton, {}, OnPage(vPoints.last().x(), vPoints.last().y()));
    }

    int Now() const { return form->SelectedFile()->NowPage(); }
};

TEST_F(MainWindowInputTest, ALeftStrokeTurnsThePageBack)
{
    frmMain& w = Ready();
    w.txtSkipPage()->setText(QStringLiteral("3"));
    w.NextPage();
    w.txtSkipPage()->setText(QStringLiteral("1"));
    Stroke({{300, 300}, {285, 301}, {260, 300}, {220, 302}});
    EXPECT_EQ(Now(), 3);
    EXPECT_EQ(PageIn(4), 3);
    EXPECT_EQ(Panel(1), QString());  // the gesture text is cleared at the end
    // A stroke with no binding shows itself and does nothing.
    Stroke({{300, 300}, {300, 260}, {301, 220}});
    EXPECT_EQ(Now(), 3);
}

TEST_F(MainWindowInputTest, KeysRunTheirActions)
{
    frmMain& w = Ready();
    QTest::keyClick(Native(), Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Now(), 2);
    QTest::keyClick(Native(), Qt::Key_A, Qt::ControlModifier);  // not bound
    EXPECT_EQ(Now(), 2);
    // Shift with 1 arrives as "!" and fires "Shift + 1".
    QTest::keyClick(Native(), Qt::Key_Exclam, Qt::ShiftModifier, 0);
    EXPECT_EQ(w.WindowState()->DataValue(QStringLiteral("DOUBLE_DISP")), QStringLiteral("2"));

    // Another window active: the window's keys stay quiet.
    QWidget other;
    other.resize(200, 100);
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    QTest::keyClick(Native(), Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Now(), 2);
}

TEST_F(MainWindowInputTest, CompositeActionsRunInOrderAndStopAtAFailingStep)
{
    Ready();
    QTest::keyClick(Native(), Qt::Key_M, Qt::ControlModifier);
    EXPECT_EQ(Now(), 3);
    EXPECT_EQ(form->SelectedFile()->PageAmount(), 2);
    EXPECT_EQ(shown.Count(), 0);

    QTest::keyClick(Native(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(Now(), 5);  // the first step ran (a spread moves by 2), the one after the failure didn't
    ASSERT_EQ(shown.Count(), 1);
    EXPECT_TRUE(shown.Last().text.startsWith(QStringLiteral("28 : ")));
    // The dispatcher is free again afterwards.
    QTest::keyClick(Native(), Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Now(), 7);
}

TEST_F(MainWindowInputTest, FourRightButtonWheelNotchesMoveOnePage)
{
    Ready();
    const QPoint at = OnPage(200, 200);
    QTest::mousePress(Native(), Qt::RightButton, {}, at);
    for (int notch = 1; notch <= 4; ++notch) {
        QWheelEvent wheel(at, Native()->mapToGlobal(at), QPoint(), QPoint(0, -120), Qt::RightButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(Native(), &wheel);
        EXPECT_EQ(Now(), notch < 4 ? 1 : 2) << "notch " << notch;
    }
    QTest::mouseRelease(Native(), Qt::RightButton, {}, at);
}

TEST_F(MainWindowInputTest, APopupMenuItemRunsItsAction)
{
    frmMain& w = Ready();
    QAction* item = nullptr;
    for (QAction* a : w.PopupMenu()->actions())
        if (a->text() == QStringLiteral("次へ(&N)"))
            item = a;
    ASSERT_TRUE(item);
    item->trigger();
    EXPECT_EQ(Now(), 2);
}

TEST_F(MainWindowInputTest, AGestureDoesNothingWhileThePageJumpDialogIsOpen)
{
    frmMain& w = Ready();
    w.NextPage();
    w.NextPage();
    QTimer::singleShot(0, [&] {
        Stroke({{300, 300}, {285, 301}, {260, 300}, {220, 302}});
        if (QWidget* dialog = QApplication::activeModalWidget())
            dialog->findChild<QPushButton*>(QStringLiteral("cmdCancel"))->click();
    });
    w.PageJump();
    EXPECT_EQ(Now(), 3);
    // Afterwards the tracker is back.
    Stroke({{300, 300}, {285, 301}, {260, 300}, {220, 302}});
    EXPECT_EQ(Now(), 2);
}

TEST_F(MainWindowInputTest, DoubleClicksAndSideButtonsRunTheirBindings)
{
    frmMain& w = Ready();
    QTest::mouseDClick(Native(), Qt::LeftButton, {}, OnPage(200, 200));
    EXPECT_EQ(Now(), 2);
    QTest::mouseClick(Native(), Qt::XButton1, {}, OnPage(200, 200));
    EXPECT_EQ(Now(), 1);
    QTest::mouseClick(Native(), Qt::XButton2, {}, OnPage(200, 200));
    EXPECT_EQ(w.WindowState()->DataValue(QStringLiteral("DOUBLE_DISP")), QStringLiteral("2"));
}

TEST_F(MainWindowInputTest, ABoundKeyIsTheBindingsAloneButAUnboundKeyGoesOn)
{
    frmMain& w = Ready();
    w.InitialOpenFile(Tiff(QStringLiteral("b.tif"), 5), false);
    auto* strip = w.tabMain()->findChild<QTabBar*>();
    ASSERT_TRUE(strip);
    strip->setFocus();
    QTest::keyClick(Native(), Qt::Key_Right);
    EXPECT_EQ(w.tabMain()->SelectedIndex(), 0);  // the strip never saw it
    EXPECT_EQ(Now(), 2);
    strip->setCurrentIndex(1);
    QTest::keyClick(Native(), Qt::Key_Left);  // bound to nothing: the strip's own key
    EXPECT_EQ(w.tabMain()->SelectedIndex(), 0);

    // In the move amount the bound key fires and still moves the cursor; typing goes on.
    w.txtSkipPage()->setFocus();
    w.txtSkipPage()->setText(QStringLiteral("1"));
    w.txtSkipPage()->setCursorPosition(0);
    QTest::keyClick(Native(), Qt::Key_Right);
    EXPECT_EQ(Now(), 3);
    EXPECT_EQ(w.txtSkipPage()->cursorPosition(), 1);
    QTest::keyClick(Native(), Qt::Key_Backspace);
    QTest::keyClick(Native(), Qt::Key_2);
    EXPECT_EQ(w.txtSkipPage()->text(), QStringLiteral("2"));
}

TEST_F(MainWindowInputTest, OnlyAPlainRightClickOpensThePopupMenu)
{
    frmMain& w = Ready();
    const QPoint at = OnPage(200, 200);
    QTest::mouseClick(Native(), Qt::RightButton, {}, at);
    ASSERT_TRUE(w.PopupMenu()->isVisible());  // the control: this is how the menu shows
    w.PopupMenu()->hide();

    QTest::mouseClick(Native(), Qt::XButton1, {}, at);
    QTest::mouseClick(Native(), Qt::XButton2, {}, at);
    EXPECT_FALSE(w.PopupMenu()->isVisible()) << "side buttons";
    EXPECT_EQ(Now(), 1);  // they ran their bindings: back from 1 stays 1, then the spread
    EXPECT_EQ(w.WindowState()->DataValue(QStringLiteral("DOUBLE_DISP")), QStringLiteral("2"));

    // The wheel with the right button held turns a page; letting go is no click.
    QTest::mouseClick(Native(), Qt::RightButton, {}, at);  // a plain click sets the skip turn
    w.PopupMenu()->hide();
    QTest::mousePress(Native(), Qt::RightButton, {}, at);
    for (int notch = 0; notch < 4; ++notch) {
        QWheelEvent wheel(at, Native()->mapToGlobal(at), QPoint(), QPoint(0, -120), Qt::RightButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(Native(), &wheel);
    }
    QTest::mouseRelease(Native(), Qt::RightButton, {}, at);
    EXPECT_EQ(Now(), 3);
    EXPECT_FALSE(w.PopupMenu()->isVisible()) << "right button and wheel";

    // A right click on a tab shows the tab menu alone.
    auto* strip = w.tabMain()->findChild<QTabBar*>();
    const QPoint onTab = strip->mapTo(&w, strip->tabRect(0).center());
    QTest::mouseClick(Native(), Qt::RightButton, {}, onTab);
    QCoreApplication::processEvents();
    EXPECT_TRUE(w.TabMenu()->isVisible());
    EXPECT_FALSE(w.PopupMenu()->isVisible()) << "right click on a tab";
    w.TabMenu()->hide();
}
