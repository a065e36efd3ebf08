// Opening whole folders through the read settings and the folder dialog: real folders of TIFF
// files, the real database file, and the order of the tabs for each sort setting.

#include "viewer/IntakeFixture.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QStatusBar>
#include <QTest>
#include <QToolButton>

namespace {

using namespace Qt::StringLiterals;

const QString kNoFiles = u"フォルダ読み込み : ファイルは0個でした｡ "_s;

class FolderReadTest : public IntakeTest {
protected:
    // The folder "in": two files at the top, one below, one deeper, and files the patterns skip.
    // Names and times disagree, so that every order is a different one.
    QString MakeFolder()
    {
        const QDateTime base(QDate(2023, 3, 1), QTime(8, 0));
        File(u"in/b.tif"_s, base.addSecs(300));
        File(u"in/C.TIF"_s, base.addSecs(100));
        // Quotes, blanks and Japanese in the folders go through the database's text as they are.
        File(u"in/o'sub 資料/a.tif"_s, base.addSecs(400));
        File(u"in/o'sub 資料/deeper/d.tif"_s, base.addSecs(200));
        testfiles::WriteBytes(dir.filePath(u"in/notes.txt"_s), "x");
        testfiles::WriteBytes(dir.filePath(u"in/o'sub 資料/e.tiff"_s), "x");
        return dir.filePath(u"in"_s);
    }
};

TEST_F(FolderReadTest, TabsFollowTheSortSettings)
{
    const QString folder = MakeFolder();
    AddReadSetting(u"Read:全部"_s, folder, true, u"*.xdw;*.tif"_s);
    AddReadSetting(u"Read:上だけ"_s, folder, false, u"*.tif"_s);
    frmMain& w = Window();

    struct Case {
        bool on, byName, ascending;
        QString action;
        QStringList captions;
    } cases[] = {
        // Unsorted: the order of the table's key, folder then name, as bytes.
        {false, true, true, u"Read:上だけ"_s, {u"C.TIF"_s, u"b.tif"_s}},
        {false, true, true, u"Read:全部"_s, {u"C.TIF"_s, u"b.tif"_s, u"a.tif"_s, u"d.tif"_s}},
        {true, true, true, u"Read:全部"_s, {u"C.TIF"_s, u"a.tif"_s, u"b.tif"_s, u"d.tif"_s}},
        {true, true, false, u"Read:全部"_s, {u"d.tif"_s, u"b.tif"_s, u"a.tif"_s, u"C.TIF"_s}},
        {true, false, true, u"Read:全部"_s, {u"C.TIF"_s, u"d.tif"_s, u"b.tif"_s, u"a.tif"_s}},
        {true, false, false, u"Read:全部"_s, {u"a.tif"_s, u"b.tif"_s, u"d.tif"_s, u"C.TIF"_s}},
    };
    for (const Case& c : cases) {
        SetSort(c.on, c.byName, c.ascending);
        w.AllTabClose();
        w.ReadFolder(c.action);
        EXPECT_EQ(Captions(), c.captions) << c.action.toStdString() << c.on << c.byName << c.ascending;
        // The first file read is the one shown.
        EXPECT_EQ(w.tabMain()->SelectedIndex(), 0);
        ASSERT_TRUE(w.SelectedFile());
        EXPECT_EQ(QFileInfo(w.SelectedFile()->FileName()).fileName(), c.captions.first());
    }
    EXPECT_EQ(shown.Count(), 0);
    EXPECT_FALSE(QFile::exists(w.FileListDbPath()));
    EXPECT_FALSE(w.Reading());
}

TEST_F(FolderReadTest, ReadsAddBehindOpenTabsAndShowTheirFirstFile)
{
    const QString folder = MakeFolder();
    AddReadSetting(u"Read:上だけ"_s, folder, false, u"*.tif"_s);
    const QString before = File(u"before.tif"_s);
    frmMain& w = Window();
    w.InitialOpenFile(before, true);
    w.ReadFolder(u"Read:上だけ"_s);
    EXPECT_EQ(Captions(), QStringList({u"before.tif"_s, u"C.TIF"_s, u"b.tif"_s}));
    EXPECT_EQ(w.tabMain()->SelectedIndex(), 1);
    // A second read of the same folder in the same process reuses the numbering and the file.
    w.ReadFolder(u"Read:上だけ"_s);
    EXPECT_EQ(Tabs(), 5);
    EXPECT_EQ(w.tabMain()->SelectedIndex(), 3);
}

TEST_F(FolderReadTest, OneCloseButtonRidesOnTheChosenTab)
{
    AddReadSetting(u"Read:上だけ"_s, MakeFolder(), false, u"*.tif"_s);
    File(u"x.tif"_s);
    frmMain& w = Window();
    w.InitialOpenFile(dir.filePath(u"x.tif"_s), true);
    w.ReadFolder(u"Read:上だけ"_s);
    QTabBar* bar = w.tabMain()->Bar();
    auto* button = w.tabMain()->findChild<QToolButton*>(u"closeButton"_s);
    ASSERT_TRUE(button);
    auto carriers = [&] {
        QList<int> tabs;
        for (int i = 0; i < bar->count(); ++i)
            if (bar->tabButton(i, QTabBar::RightSide))
                tabs << i;
        return tabs;
    };
    EXPECT_EQ(carriers(), QList<int>({1}));  // the first file of the read is the chosen tab
    // The bar, laid out only now and then during the read, stands in its place after it.
    EXPECT_TRUE(bar->isVisible());
    EXPECT_EQ(bar->geometry().top(), 0);

    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(Captions(), QStringList({u"x.tif"_s, u"b.tif"_s}));
    EXPECT_EQ(carriers(), QList<int>({bar->currentIndex()}));
    bar->setCurrentIndex(0);
    EXPECT_EQ(carriers(), QList<int>({0}));
    QTest::mouseClick(button, Qt::LeftButton);
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(Tabs(), 0);
    EXPECT_FALSE(button->isVisible());
}

TEST_F(FolderReadTest, MessagesForNothingFoundAndForAnUnknownSetting)
{
    QDir().mkpath(dir.filePath(u"empty"_s));
    AddReadSetting(u"Read:空"_s, dir.filePath(u"empty"_s), true, u"*.tif"_s);
    frmMain& w = Window();

    w.ReadFolder(u"Read:空"_s);
    EXPECT_EQ(Panel(1), kNoFiles);
    EXPECT_EQ(shown.Count(), 0);
    EXPECT_EQ(Tabs(), 0);

    w.statusBar()->findChild<QLabel*>(u"Panel1"_s)->clear();
    w.ReadFolder(u"Read:ない"_s);
    ASSERT_EQ(shown.Count(), 1);
    EXPECT_EQ(shown.Last().text, u"読み込み設定が見つかりません。(動作 : Read:ない)"_s);
    EXPECT_EQ(shown.Last().kind, MessagePresenter::Kind::Error);
    EXPECT_EQ(Panel(1), kNoFiles);  // the zero count is shown for a failed look-up too
}

TEST_F(FolderReadTest, ADatabaseThatCannotBeMadeStopsTheReadCleanly)
{
    const QString folder = MakeFolder();
    AddReadSetting(u"Read:上だけ"_s, folder, false, u"*.tif"_s);
    frmMain& w = Window();
    // A folder where the database file belongs: SQLite can't open it, whoever runs the test.
    const QString dbPath = w.FileListDbPath();
    ASSERT_TRUE(QDir().mkpath(dbPath));

    w.ReadFolder(u"Read:上だけ"_s);
    ASSERT_EQ(shown.Count(), 1);
    EXPECT_EQ(shown.Last().kind, MessagePresenter::Kind::Plain);
    EXPECT_EQ(shown.Last().text, u"SQLite.Open_: データベースファイル "_s + dbPath
                                     + u" のオープンに失敗しました。 (14) unable to open database file"_s);
    EXPECT_EQ(Tabs(), 0);
    EXPECT_FALSE(w.Reading());
    EXPECT_FALSE(context.ReadFolderBusy);
    EXPECT_EQ(QDir(QFileInfo(dbPath).path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries),
              QStringList({QFileInfo(dbPath).fileName()}));

    // Once the way is clear the next read works, and the window still closes.
    ASSERT_TRUE(QDir(dbPath).removeRecursively());
    w.ReadFolder(u"Read:上だけ"_s);
    EXPECT_EQ(Tabs(), 2);
    EXPECT_TRUE(w.close());
}

TEST_F(FolderReadTest, TheFolderDialogStartsAtTheLastFolderAndRemembersTheChoice)
{
    const QString folder = dir.filePath(u"docs"_s);
    QDir().mkpath(folder + u"/inner"_s);
    for (const QString& name : {u"b.xdw"_s, u"a.XDW"_s, u"inner/c.xdw"_s, u"d.tif"_s})
        testfiles::WriteBytes(folder + u"/"_s + name, "not a document");
    context.DetailSet->AddData(dir.path(), u"OpenFolder"_s);
    frmMain& w = Window();

    QString title;
    QString startedAt;
    WhenDialogUp<QFileDialog>([&](QFileDialog* vDialog) {
        title = vDialog->windowTitle();
        startedAt = vDialog->directory().absolutePath();
        // Into the folder, then "Choose" with nothing typed: the folder one stands in.
        vDialog->setDirectory(folder);
        auto* name = vDialog->findChild<QLineEdit*>(u"fileNameEdit"_s);
        ASSERT_TRUE(name);
        name->clear();
        QTest::keyClick(name, Qt::Key_Return);
    });
    w.Button(u"FOLDER_OPEN"_s)->trigger();
    EXPECT_EQ(title, u"フォルダ内のファイルを全て開く"_s);
    EXPECT_EQ(startedAt, QDir(dir.path()).absolutePath());
    // Only "*.xdw", without regard to case and not below the folder.
    EXPECT_EQ(Captions(), QStringList({u"a.XDW"_s, u"b.xdw"_s}));
    EXPECT_EQ(context.DetailSet->DataValue(u"OpenFolder"_s), folder);
    EXPECT_FALSE(QFile::exists(w.FileListDbPath()));

    // A cancel reads nothing and keeps the folder.
    WhenDialogUp<QFileDialog>([](QFileDialog* vDialog) { vDialog->reject(); });
    w.FolderOpenDialog();
    EXPECT_EQ(Tabs(), 2);
    EXPECT_EQ(context.DetailSet->DataValue(u"OpenFolder"_s), folder);
    EXPECT_TRUE(w.MouseTracker());  // the mouse works again after the dialog
}

TEST_F(FolderReadTest, TheOpenDialogOffersBothTypesAndACancelIsSilent)
{
    const QString tiff = File(u"one.tif"_s);
    frmMain& w = Window();
    QStringList filters;
    WhenDialogUp<QFileDialog>([&](QFileDialog* vDialog) {
        filters = vDialog->nameFilters();
        filters << vDialog->selectedNameFilter();
        vDialog->selectFile(tiff);
        static_cast<QDialog*>(vDialog)->accept();  // the file dialog checks the choice first
    });
    w.Button(u"FILE_OPEN"_s)->trigger();
    EXPECT_EQ(filters, QStringList({u"DocuWorksファイル (*.xdw)"_s, u"TIFFファイル (*.tif)"_s, u"DocuWorksファイル (*.xdw)"_s}));
    EXPECT_EQ(Captions(), QStringList({u"one.tif"_s}));

    WhenDialogUp<QFileDialog>([](QFileDialog* vDialog) { vDialog->reject(); });
    w.OpenDialog();
    EXPECT_EQ(Tabs(), 1);
    EXPECT_EQ(shown.Count(), 0);
    EXPECT_TRUE(w.MouseTracker());
}

} // namespace
