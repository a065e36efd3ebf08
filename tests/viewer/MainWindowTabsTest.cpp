// Tabs of the real main window: adding, the duplicate rule, choosing and closing.
#include "MainWindowFixture.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QTabBar>
#include <QTest>

TEST_F(MainWindowTest, AddingSelectedAndUnselectedTabs)
{
    AddWindowGroup(context.DetailSet);
    const QString a = Tiff(QStringLiteral("a.tif"), 3);
    const QString b = Tiff(QStringLiteral("書類 b.tif"), 5);
    frmMain& w = Window();
    EXPECT_TRUE(w.tabMain()->isHidden());

    // The first tab is shown even when not asked to be selected.
    w.InitialOpenFile(a, false);
    EXPECT_FALSE(w.tabMain()->isHidden());
    EXPECT_EQ(w.tabMain()->SelectedKey(), QStringLiteral("T1"));
    EXPECT_EQ(PageIn(4), 1);
    EXPECT_EQ(Panel(2), QStringLiteral("1/3"));
    EXPECT_EQ(Panel(3), QStringLiteral("1Files"));

    // Not selected: the tab appears, the panes stay, yet its pages are known.
    w.InitialOpenFile(b, false);
    EXPECT_EQ(Tabs(), 2);
    EXPECT_EQ(w.tabMain()->SelectedKey(), QStringLiteral("T1"));
    EXPECT_EQ(w.tabMain()->CaptionOfKey(QStringLiteral("T2")), QStringLiteral("書類 b.tif"));
    const auto record = w.TabTable()->DataReference(QStringLiteral("2")).As<AppFileClass>();
    ASSERT_TRUE(record);
    EXPECT_EQ(record->TotalPage(), 5);
    EXPECT_EQ(record->PageAmount(), 1);
    EXPECT_EQ(Panel(2), QStringLiteral("1/3"));

    // Selected: drawn at once.
    w.InitialOpenFile(Tiff(QStringLiteral("c.tif"), 2), true);
    EXPECT_EQ(w.tabMain()->SelectedKey(), QStringLiteral("T3"));
    EXPECT_EQ(Panel(2), QStringLiteral("1/2"));
    EXPECT_EQ(Panel(3), QStringLiteral("3Files"));

    // Types other than XDW and TIF, also "tiff", don't open.
    w.InitialOpenFile(dir.filePath(QStringLiteral("x.tiff")), true);
    w.InitialOpenFile(dir.filePath(QStringLiteral("x.pdf")), true);
    EXPECT_EQ(Tabs(), 3);
}

TEST_F(MainWindowTest, DuplicateRuleFollowsTheSetting)
{
    AddWindowGroup(context.DetailSet, true);
    const QString a = Tiff(QStringLiteral("a.tif"), 2);
    const QString b = Tiff(QStringLiteral("b.tif"), 2);
    frmMain& w = Window();
    w.InitialOpenFile(a, true);
    w.InitialOpenFile(b, true);
    w.InitialOpenFile(a, true);  // refused: the other tab stays chosen
    EXPECT_EQ(Tabs(), 2);
    EXPECT_EQ(w.tabMain()->SelectedKey(), QStringLiteral("T2"));
    // The comparison is exact: another spelling of the path is another file.
    QFile::copy(a, dir.filePath(QStringLiteral("A.tif")));
    w.InitialOpenFile(dir.filePath(QStringLiteral("A.tif")), true);
    EXPECT_EQ(Tabs(), 3);

    // With the rule off, the same file opens twice, and tab numbers are never reused.
    context.DetailSet->Thread(frmMain::WindowGroup)->Thread(QStringLiteral("chkOpenOnlyOne"))
        ->AddData(QStringLiteral("0"), QStringLiteral("Value"));
    w.InitialOpenFile(a, true);
    EXPECT_EQ(Tabs(), 4);
    EXPECT_EQ(w.tabMain()->SelectedKey(), QStringLiteral("T4"));
}

TEST_F(MainWindowTest, NextAndPreviousTabStopAtTheEnds)
{
    AddWindowGroup(context.DetailSet);
    frmMain& w = Window();
    for (int i = 1; i <= 3; ++i)
        w.InitialOpenFile(Tiff(QStringLiteral("f%1.tif").arg(i), i), true);
    w.NextTab();
    EXPECT_EQ(w.tabMain()->SelectedKey(), QStringLiteral("T3"));
    w.PreviousTab();
    w.PreviousTab();
    EXPECT_EQ(w.tabMain()->SelectedKey(), QStringLiteral("T1"));
    EXPECT_EQ(Panel(2), QStringLiteral("1/1"));
    w.PreviousTab();
    EXPECT_EQ(w.tabMain()->SelectedKey(), QStringLiteral("T1"));
    w.NextTab();
    EXPECT_EQ(Panel(2), QStringLiteral("1/2"));
    EXPECT_EQ(w.GetSelectedTabFilePath(), dir.filePath(QStringLiteral("f2.tif")));
    w.SelectedTabFilePathCopy();
    EXPECT_EQ(QApplication::clipboard()->text(), dir.filePath(QStringLiteral("f2.tif")));
}

TEST_F(MainWindowTest, ClosingEachWay)
{
    AddWindowGroup(context.DetailSet);
    frmMain& w = Window();
    for (int i = 1; i <= 4; ++i)
        w.InitialOpenFile(Tiff(QStringLiteral("f%1.tif").arg(i), i + 1), true);

    // The selected tab: the strip chooses a neighbour, which is drawn.
    w.TabClose();
    EXPECT_EQ(Tabs(), 3);
    EXPECT_FALSE(w.TabTable()->Exists(QStringLiteral("4")));
    EXPECT_EQ(Panel(2), QStringLiteral("1/") + QString::number(w.SelectedFile()->TotalPage()));
    EXPECT_EQ(Panel(3), QStringLiteral("3Files"));

    // The tab's own close button.
    QTabBar* bar = w.tabMain()->Bar();
    Q_EMIT bar->tabCloseRequested(0);
    EXPECT_EQ(Tabs(), 2);
    EXPECT_FALSE(w.TabTable()->Exists(QStringLiteral("1")));

    // All at once: nothing drawn on the way, the strip hidden at the end.
    w.AllTabClose();
    EXPECT_EQ(Tabs(), 0);
    EXPECT_EQ(w.TabTable()->Count(), 0);
    EXPECT_TRUE(w.tabMain()->isHidden());
    EXPECT_EQ(Panel(1), QString());
    EXPECT_EQ(Panel(2), QString());
    EXPECT_EQ(Panel(3), QStringLiteral("0Files"));
    EXPECT_EQ(w.SelectedFile(), nullptr);

    // Closing with nothing open does nothing.
    w.TabClose();
    w.AllTabClose();
    w.NextTab();
    EXPECT_EQ(Panel(3), QStringLiteral("0Files"));
}

TEST_F(MainWindowTest, AFileThatCannotBeShownLeavesNoRecord)
{
    AddWindowGroup(context.DetailSet);
    frmMain& w = Window();
    const QString broken = dir.filePath(QStringLiteral("broken.tif"));
    QFile f(broken);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("II*\0garbage that is no TIFF at all", 36);
    f.close();
    w.InitialOpenFile(broken, true);
    w.InitialOpenFile(dir.filePath(QStringLiteral("vanished.tif")), true);
    EXPECT_EQ(w.TabTable()->Count(), 0);
    // Choosing such a tab does nothing at all.
    w.NextPage();
    w.SelectedTabUpdate();
    EXPECT_EQ(w.SelectedFile(), nullptr);

    // Good files opened behind the chosen broken one: the count is that of the tabs, and the
    // broken tab numbers no pages.
    w.InitialOpenFile(Tiff(QStringLiteral("a.tif"), 3), false);
    w.InitialOpenFile(Tiff(QStringLiteral("b.tif"), 2), false);
    EXPECT_EQ(Tabs(), 4);
    EXPECT_EQ(Panel(3), QStringLiteral("4Files"));
    EXPECT_EQ(Panel(2), QString());
    w.NextTab();
    w.NextTab();
    EXPECT_EQ(Panel(2), QStringLiteral("1/3"));
    w.NextTab();
    EXPECT_EQ(Panel(2), QStringLiteral("1/2"));
    w.tabMain()->findChild<QTabBar*>()->setCurrentIndex(0);  // as a click chooses it
    EXPECT_EQ(Panel(2), QString());
    EXPECT_EQ(Panel(3), QStringLiteral("4Files"));
}
