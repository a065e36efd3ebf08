// The chrome of the real main window: the menu tree, the bar buttons reaching the window's
// operations, the popup menu from the settings, the move amount's arrows and the version box.
#include "MainWindowFixture.h"

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

TEST_F(MainWindowTest, MenusHoldTheirItemsAndLaterFeaturesAreGreyed)
{
    frmMain& w = Window();
    auto* menuBar = w.menuWidget()->findChild<QMenuBar*>();
    ASSERT_TRUE(menuBar);
    EXPECT_EQ(KeysOf(menuBar->actions()), (QStringList{u"FILE"_s, u"DISP"_s, u"TOOL"_s, u"WINDOW"_s, u"HELP"_s}));
    EXPECT_EQ(w.Button(u"WINDOW"_s)->text(), u"ウインドウ(&W)"_s);
    const std::pair<QString, QStringList> menus[] = {
        {u"FILE"_s, {u"FILE_OPEN"_s, u"FOLDER_OPEN"_s, u"FILE_PATH_COPY"_s, u"OPEN_INI_FOLDER"_s, u"FILE_EXIT"_s}},
        {u"DISP"_s, {u"DISP_DIRECTION"_s, u"DISP_UPDATE"_s, u"ADD_H_RULER"_s, u"ADD_V_RULER"_s, u"DELL_RULER"_s}},
        {u"TOOL"_s, {u"TOOL_OPTION"_s}},
        {u"WINDOW"_s, {u"ALL_TAB_CLOSE"_s, u"ALL_TAB_NEXT"_s, u"ALL_TAB_PREVIOUS"_s}},
        {u"HELP"_s, {u"HELP_INDEX"_s, u"HELP_VERSION"_s}},
    };
    for (const auto& [key, items] : menus)
        EXPECT_EQ(KeysOf(w.Button(key)->menu()->actions()), items) << key.toStdString();
    EXPECT_EQ(KeysOf(w.TabMenu()->actions()), (QStringList{u"TABL_CLOSE"_s, u"ALL_TAB_CLOSE"_s}));

    for (const QString& key : {u"FOLDER_OPEN"_s, u"ADD_H_RULER"_s, u"ADD_V_RULER"_s, u"DELL_RULER"_s, u"TOOL_OPTION"_s})
        EXPECT_FALSE(w.Button(key)->isEnabled()) << key.toStdString();
    EXPECT_TRUE(w.Button(u"FILE_OPEN"_s)->isEnabled());
    EXPECT_TRUE(w.Button(u"DOUBLE_DISP:1"_s)->isChecked());
    EXPECT_TRUE(w.Button(u"DISPSIZE:0"_s)->isChecked() || w.Button(u"DISPSIZE:1"_s)->isChecked());
    EXPECT_EQ(Panel(2), QString());
    EXPECT_EQ(Panel(3), u"0Files"_s);
}

TEST_F(MainWindowTest, BarButtonsReachTheWindowAndAreMutedByADialog)
{
    AddWindowGroup(context.DetailSet);
    frmMain& w = Window();
    w.InitialOpenFile(Tiff(u"a.tif"_s, 4), true);
    w.InitialOpenFile(Tiff(u"b.tif"_s, 3), true);

    w.Button(u"NEXT_PAGE"_s)->trigger();
    EXPECT_EQ(Panel(2), u"2/3"_s);
    w.Button(u"PREV_PAGE"_s)->trigger();
    EXPECT_EQ(Panel(2), u"1/3"_s);

    // Options run their operation with the code behind the colon; the group keeps one checked.
    w.Button(u"DISPSIZE:3"_s)->trigger();
    EXPECT_EQ(w.WindowState()->DataValue(u"DISPSIZE"_s), u"3"_s);
    EXPECT_EQ(w.LEAD(4)->PaintZoomFactor(), 200);
    w.SetPaintSizeMode(u"5"_s);  // checking from the window runs no press
    EXPECT_TRUE(w.Button(u"DISPSIZE:5"_s)->isChecked());
    EXPECT_FALSE(w.Button(u"DISPSIZE:3"_s)->isChecked());
    w.Button(u"DOUBLE_DISP:2"_s)->trigger();
    EXPECT_EQ(w.WindowState()->DataValue(u"DOUBLE_DISP"_s), u"2"_s);
    EXPECT_EQ(w.txtSkipPage()->text(), u"2"_s);
    w.Button(u"DISP_DIRECTION"_s)->trigger();
    EXPECT_EQ(w.SelectedFile()->DispDirection(), u"RL"_s);
    w.Button(u"DISP_DIRECTION"_s)->trigger();
    EXPECT_EQ(w.SelectedFile()->DispDirection(), u"LR"_s);

    w.SetDialogOpen(true);
    w.Button(u"NEXT_PAGE"_s)->trigger();
    w.Button(u"TABL_CLOSE"_s)->trigger();
    w.Button(u"DOUBLE_DISP:1"_s)->trigger();
    EXPECT_EQ(Panel(2), u"1/3"_s);
    EXPECT_EQ(Tabs(), 2);
    EXPECT_EQ(w.WindowState()->DataValue(u"DOUBLE_DISP"_s), u"2"_s);
    w.SetDialogOpen(false);

    w.Button(u"ALL_TAB_PREVIOUS"_s)->trigger();
    EXPECT_EQ(w.tabMain()->SelectedKey(), u"T1"_s);
    w.Button(u"TABL_CLOSE"_s)->trigger();
    EXPECT_EQ(Tabs(), 1);
    EXPECT_EQ(Panel(3), u"1Files"_s);
    w.Button(u"ALL_TAB_CLOSE"_s)->trigger();
    EXPECT_EQ(Panel(2), QString());
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
    EXPECT_EQ(Tabs(), 1);
    EXPECT_EQ(w.tabMain()->SelectedKey(), u"T2"_s);
}

TEST_F(MainWindowTest, PopupMenuIsBuiltFromTheSettings)
{
    const SDC rows = context.DetailSet->CreateThread(u"\\ポップアップメニュー\\"_s)
                         ->CreateThread(u"livPMenuList"_s)
                         ->CreateThread(u"ListItem"_s);
    auto addRow = [&](const QString& vText, const QString& vCaption, const QString& vAccess) {
        const SDC row = rows->CreateThread();
        row->AddData(vText, u"Text"_s);
        const SDC sub = row->CreateThread(u"SubItem"_s);
        sub->AddData(vCaption, u"1"_s);
        sub->AddData(vAccess, u"2"_s);
    };
    addRow(u"次ページ"_s, u"次へ"_s, u"B"_s);
    addRow(u"セパレータ"_s, {}, {});
    addRow(u"次ページ"_s, u"次へ 2"_s, {});
    frmMain& w = Window();

    const QList<QAction*> actions = w.PopupMenu()->actions();
    ASSERT_EQ(actions.size(), 3);
    EXPECT_EQ(actions[0]->text(), u"次へ(&B)"_s);
    EXPECT_TRUE(actions[1]->isSeparator());
    EXPECT_EQ(actions[2]->text(), u"次へ 2"_s);
    EXPECT_EQ(w.Button(u"次ページ#$%1"_s), actions[0]);
    EXPECT_EQ(w.Button(u"次ページ#$%3"_s), actions[2]);
    EXPECT_EQ(w.Button(u"SEPARATOR#$%2"_s), actions[1]);
}

TEST_F(MainWindowTest, WithoutPopupEntriesThePopupMenuIsEmpty)
{
    frmMain& w = Window();
    ASSERT_TRUE(w.PopupMenu());
    EXPECT_TRUE(w.PopupMenu()->isEmpty());
}

TEST_F(MainWindowTest, MoveAmountArrowsKeepWithinOneAndNineThousandNineHundredNinetyNine)
{
    frmMain& w = Window();
    auto* arrows = w.menuWidget()->findChild<UpDownArrows*>(u"UpDown"_s);
    ASSERT_TRUE(arrows);
    auto press = [&](bool vUp, const QString& vBefore) {
        w.txtSkipPage()->setText(vBefore);
        QTest::mouseClick(vUp ? arrows->UpButton() : arrows->DownButton(), Qt::LeftButton);
        return w.txtSkipPage()->text();
    };
    EXPECT_EQ(press(true, u"1"_s), u"2"_s);
    EXPECT_EQ(press(false, u"1"_s), u"1"_s);
    EXPECT_EQ(press(false, u"5"_s), u"4"_s);
    EXPECT_EQ(press(true, u"9999"_s), u"9999"_s);
    EXPECT_EQ(press(true, u"9998"_s), u"9999"_s);
    EXPECT_EQ(press(true, u"abc"_s), u"1"_s);
    EXPECT_EQ(press(false, u""_s), u"1"_s);
    EXPECT_EQ(press(true, u"-3"_s), u"-2"_s);        // typed below the range: stepped towards it
    EXPECT_EQ(press(false, u"12000"_s), u"11999"_s);
}

TEST_F(MainWindowTest, VersionBoxIsModalAndMutesTheMouse)
{
    frmMain& w = Window();
    bool openDuring = false;
    QString caption;
    QTimer::singleShot(0, [&] {
        auto* about = qobject_cast<frmAbout*>(QApplication::activeModalWidget());
        ASSERT_TRUE(about);
        openDuring = w.DialogOpen();
        caption = about->windowTitle();
        about->cmdOK()->click();
    });
    w.Button(u"HELP_VERSION"_s)->trigger();
    EXPECT_TRUE(openDuring);
    EXPECT_EQ(caption, u"Marnoquillのﾊﾞｰｼﾞｮﾝ情報"_s);
    EXPECT_FALSE(w.DialogOpen());
}
