// The chrome of the real main window: the menu tree, the bar buttons reaching the window's
// operations, the popup menu from the settings, the move amount's arrows and the version box.
#include "MainWindowFixture.h"

#include "viewer/ChromeMenus.h"
#include "viewer/UpDownArrows.h"
#include "viewer/frmAbout.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <QTimer>
#include <QToolButton>

using namespace Qt::Literals::StringLiterals;

namespace {

QStringList KeysOf(const QList<QAction*>& vActions)
{
    QStringList keys;
    for (const QAction* action : vActions)
        keys << (action->isSeparator() && action->objectName().isEmpty() ? u"-"_s : action->objectName());
    return keys;
}

} // namespace

TEST_F(MainWindowTest, MenusPopupEntriesAndArrowsOfAnEmptyWindow)
{
    const SDC rows = context.DetailSet->CreateThread(PopupMenuGroup)
                         ->CreateThread(u"livPMenuList"_s)->CreateThread(u"ListItem"_s);
    rows->CreateThread()->AddData(u"セパレータ"_s, u"Text"_s);
    const SDC row = rows->CreateThread();
    row->AddData(u"次ページ"_s, u"Text"_s);
    row->CreateThread(u"SubItem"_s)->AddData(u"次へ"_s, u"1"_s);
    frmMain& w = Window();
    auto* menuBar = w.menuWidget()->findChild<QMenuBar*>();
    ASSERT_TRUE(menuBar);
    EXPECT_EQ(KeysOf(menuBar->actions()), (QStringList{u"FILE"_s, u"DISP"_s, u"TOOL"_s, u"WINDOW"_s, u"HELP"_s}));
    EXPECT_EQ(w.Button(u"WINDOW"_s)->text(), u"ウインドウ(&W)"_s);
    const std::pair<QString, QStringList> menus[] = {
        {u"FILE"_s, {u"FILE_OPEN"_s, u"FOLDER_OPEN"_s, u"FILE_PATH_COPY"_s, u"OPEN_INI_FOLDER"_s, u"FILE_EXIT"_s}},
        {u"WINDOW"_s, {u"ALL_TAB_CLOSE"_s, u"ALL_TAB_NEXT"_s, u"ALL_TAB_PREVIOUS"_s}},
    };
    for (const auto& [key, items] : menus)
        EXPECT_EQ(KeysOf(w.Button(key)->menu()->actions()), items) << key.toStdString();
    EXPECT_EQ(KeysOf(w.TabMenu()->actions()), (QStringList{u"TABL_CLOSE"_s, u"ALL_TAB_CLOSE"_s}));
    EXPECT_TRUE(w.Button(u"FOLDER_OPEN"_s)->isEnabled());
    EXPECT_TRUE(w.Button(u"TOOL_OPTION"_s)->isEnabled());
    EXPECT_TRUE(w.Button(u"ADD_H_RULER"_s)->isEnabled());
    EXPECT_TRUE(w.Button(u"DOUBLE_DISP:1"_s)->isChecked());

    const QList<QAction*> popup = w.PopupMenu()->actions();
    ASSERT_EQ(popup.size(), 2);
    EXPECT_TRUE(popup[0]->isSeparator());
    EXPECT_EQ(w.Button(u"次ページ#$%2"_s), popup[1]);
    EXPECT_EQ(popup[1]->text(), u"次へ"_s);

    // The move amount's arrows stop at 9999.
    auto* arrows = w.menuWidget()->findChild<UpDownArrows*>(u"UpDown"_s);
    ASSERT_TRUE(arrows);
    w.txtSkipPage()->setText(u"9998"_s);
    QTest::mouseClick(arrows->UpButton(), Qt::LeftButton);
    QTest::mouseClick(arrows->UpButton(), Qt::LeftButton);
    EXPECT_EQ(w.txtSkipPage()->text(), u"9999"_s);
    QTest::mouseClick(arrows->DownButton(), Qt::LeftButton);
    EXPECT_EQ(w.txtSkipPage()->text(), u"9998"_s);
}

TEST_F(MainWindowTest, BarButtonsReachTheWindowAndAreMutedByADialog)
{
    AddWindowGroup(context.DetailSet);
    frmMain& w = Window();
    w.InitialOpenFile(Tiff(u"a.tif"_s, 4), true);
    w.InitialOpenFile(Tiff(u"b.tif"_s, 3), true);
    w.Button(u"NEXT_PAGE"_s)->trigger();
    EXPECT_EQ(Panel(2), u"2/3"_s);

    // Options run their operation with the code behind the colon.
    w.Button(u"DISPSIZE:3"_s)->trigger();
    EXPECT_EQ(w.LEAD(4)->PaintZoomFactor(), 200);
    w.Button(u"DOUBLE_DISP:2"_s)->trigger();
    EXPECT_EQ(w.txtSkipPage()->text(), u"2"_s);
    w.Button(u"DISP_DIRECTION"_s)->trigger();
    EXPECT_EQ(w.SelectedFile()->DispDirection(), u"RL"_s);

    w.SetDialogOpen(true);
    w.Button(u"NEXT_PAGE"_s)->trigger();
    w.Button(u"TABL_CLOSE"_s)->trigger();
    EXPECT_EQ(Panel(2), u"2/3"_s);
    EXPECT_EQ(Tabs(), 2);
    w.SetDialogOpen(false);
    w.Button(u"ALL_TAB_CLOSE"_s)->trigger();
    EXPECT_EQ(Panel(3), u"0Files"_s);
}

TEST_F(MainWindowTest, RightClickOnATabOpensTheTabMenuWhereClicked)
{
    AddWindowGroup(context.DetailSet);
    frmMain& w = Window();
    w.InitialOpenFile(Tiff(u"a.tif"_s, 2), true);
    w.InitialOpenFile(Tiff(u"b.tif"_s, 2), true);
    QTabBar* bar = w.tabMain()->Bar();
    const QPoint at = bar->tabRect(0).center();
    QTest::mouseClick(bar, Qt::RightButton, {}, at);
    QCoreApplication::processEvents();  // the click is reported once the bar is done with it
    EXPECT_EQ(w.tabMain()->SelectedKey(), u"T1"_s);
    ASSERT_TRUE(w.TabMenu()->isVisible());
    EXPECT_EQ(w.TabMenu()->pos(), bar->mapToGlobal(at));
    w.TabMenu()->actions().constFirst()->trigger();
    w.TabMenu()->hide();
    EXPECT_EQ(w.tabMain()->SelectedKey(), u"T2"_s);
}

TEST_F(MainWindowTest, VersionBoxIsModalAndMutesTheMouse)
{
    frmMain& w = Window();
    bool openDuring = false;
    QTimer::singleShot(0, [&] {
        auto* about = qobject_cast<frmAbout*>(QApplication::activeModalWidget());
        ASSERT_TRUE(about);
        EXPECT_EQ(about->windowTitle(), u"Marnoquillのﾊﾞｰｼﾞｮﾝ情報"_s);
        openDuring = w.DialogOpen();
        about->cmdOK()->click();
    });
    w.Button(u"HELP_VERSION"_s)->trigger();
    EXPECT_TRUE(openDuring);
    EXPECT_FALSE(w.DialogOpen());
}
