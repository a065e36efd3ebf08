// Start-up, closing and the window's place; documents through a scripted engine.
#include "MainWindowFixture.h"

#include "common/ScriptedEngine.h"
#include "common/TestFiles.h"
#include "settings/DataSaveLoadClass.h"
#include "viewer/MarnoquillClass.h"

#include <QScopeGuard>

namespace {

SDC LoadSettings(const QString& vPath)
{
    auto tree = std::make_shared<StructuredDataClass>();
    DataSaveLoadClass io;
    io.SetData(tree);
    io.Load(vPath, QStringLiteral("DetailSet"));
    return tree;
}

void SaveGeometry(const SDC& vSettings, const QString& vLeft, const QString& vTop, const QString& vWidth,
                  const QString& vHeight)
{
    const SDC form = vSettings->CreateThread(QStringLiteral("FormSet"))->CreateThread(QStringLiteral("Form"));
    form->AddData(vTop, QStringLiteral("Top"));
    form->AddData(vLeft, QStringLiteral("Left"));
    form->AddData(vHeight, QStringLiteral("Height"));
    form->AddData(vWidth, QStringLiteral("Width"));
}

} // namespace

TEST_F(MainWindowTest, SettingsAreSavedOnlyFromTheNormalWindowState)
{
    AddWindowGroup(context.DetailSet);
    frmMain& w = Window();
    w.showMaximized();
    w.close();
    EXPECT_FALSE(QFile::exists(context.SettingsPath));

    form.reset();
    frmMain& again = Window();
    again.showNormal();
    again.resize(640, 480);
    again.close();
    const SDC saved = LoadSettings(context.SettingsPath);
    const SDC geometry = saved->ThreadOfPath(QStringLiteral("\\FormSet\\Form\\"));
    ASSERT_TRUE(geometry);
    const double twips = again.TwipsPerPixel();
    // The outer size, frame included.
    ASSERT_GT(again.frameGeometry().width(), 640);
    EXPECT_EQ(geometry->DataValue(QStringLiteral("Width")).toInt(), qRound(again.frameGeometry().width() * twips));
    EXPECT_EQ(geometry->DataValue(QStringLiteral("Height")).toInt(), qRound(again.frameGeometry().height() * twips));
    EXPECT_TRUE(saved->Exists(frmMain::WindowGroup));
}

TEST_F(MainWindowTest, SavedGeometryIsMendedOnLoad)
{
    AddWindowGroup(context.DetailSet);
    SaveGeometry(context.DetailSet, QStringLiteral("300"), QStringLiteral("450"), QStringLiteral("100"),
                 QStringLiteral("9000"));
    form = std::make_unique<frmMain>(context);
    form->Load();
    const double twips = form->TwipsPerPixel();
    EXPECT_EQ(qRound(form->width() * twips), 4800);
    EXPECT_EQ(qRound(form->height() * twips), 9000);
    EXPECT_EQ(qRound(form->pos().x() * twips), 300);
    EXPECT_EQ(qRound(form->pos().y() * twips), 450);

    // The remembered layout is applied at load: a spread window.
    AddWindowGroup(context.DetailSet, true, true);
    frmMain spread(context);
    spread.Load();
    EXPECT_EQ(spread.WindowState()->DataValue(QStringLiteral("DOUBLE_DISP")), QStringLiteral("2"));
    EXPECT_TRUE(spread.Button(QStringLiteral("DOUBLE_DISP:2"))->isChecked());
}

TEST_F(MainWindowTest, WithoutSettingsTheWindowRunsOnItsDefaults)
{
    frmMain& w = Window();
    EXPECT_EQ(shown.Count(), 0);
    EXPECT_EQ(Panel(3), QStringLiteral("0Files"));
    w.InitialOpenFile(Tiff(QStringLiteral("a.tif"), 2), true);
    EXPECT_EQ(PageIn(4), 1);
    // The same path opens twice: without settings there is no duplicate rule.
    w.InitialOpenFile(dir.filePath(QStringLiteral("a.tif")), true);
    EXPECT_EQ(Tabs(), 2);
}

TEST_F(MainWindowTest, DocumentsAreDrawnThroughTheEngineAndEveryHandleFreed)
{
    AddWindowGroup(context.DetailSet);
    ScopedScriptedEngine engine;
    const QString path = dir.filePath(QStringLiteral("報告書.xdw"));
    testfiles::WriteBytes(path, "scripted");
    engine->AddDocument(path, 3);
    frmMain& w = Window();
    w.InitialOpenFile(path, true);
    EXPECT_EQ(PageIn(4), 1);
    EXPECT_EQ(Panel(1), path);
    EXPECT_EQ(Panel(2), QStringLiteral("1/3"));
    w.SetDoubleDisp(QStringLiteral("2"));
    w.txtSkipPage()->setText(QStringLiteral("2"));
    w.NextPage();
    EXPECT_EQ(PageIn(2), 3);
    EXPECT_EQ(PageIn(3), 0);
    EXPECT_EQ(engine->Handles().LiveCount(), 0);
}

TEST_F(MainWindowTest, ADocumentWithoutARuntimeEndsSilently)
{
    AddWindowGroup(context.DetailSet);
    const QString path = dir.filePath(QStringLiteral("a.xdw"));
    testfiles::WriteBytes(path, "no runtime here");
    frmMain& w = Window();
    w.InitialOpenFile(path, true);
    EXPECT_EQ(w.TabTable()->Count(), 0);
    EXPECT_EQ(shown.Count(), 0);
}

TEST(MarnoquillStartup, CommandLineFilesOpenInTabs)
{
    QTemporaryDir dir;
    const QByteArray saved = qgetenv("XDG_CONFIG_HOME");
    qputenv("XDG_CONFIG_HOME", dir.filePath(QStringLiteral("config")).toLocal8Bit());
    const auto restore = qScopeGuard([&] { qputenv("XDG_CONFIG_HOME", saved); });
    ScopedRecordingPresenter shown;

    const QString first = dir.filePath(QStringLiteral("名前 with \"quotes\".tif"));
    const QString second = dir.filePath(QStringLiteral("two.tif"));
    ASSERT_TRUE(tiffwriter::WriteNumbered(first, 2, tiffwriter::Kind::GreyLzw, QSize(200, 260)));
    ASSERT_TRUE(tiffwriter::WriteNumbered(second, 3, tiffwriter::Kind::GreyLzw, QSize(200, 260)));

    MarnoquillClass app(QStringList{QStringLiteral("marnoquill"), first, QStringLiteral("-x"), second});
    ASSERT_TRUE(app.MainForm());
    EXPECT_EQ(app.FailedStep(), QString());
    EXPECT_EQ(shown.Count(), 0);
    EXPECT_EQ(app.MainForm()->tabMain()->Count(), 2);
    EXPECT_EQ(app.GetFileNameOfSelectedTab(), first);  // the first file is the chosen one

    app.FileOpen(second, true);  // the duplicate rule isn't set without a settings file
    EXPECT_EQ(app.MainForm()->tabMain()->Count(), 3);
    app.MainForm()->AllTabClose();
    EXPECT_EQ(app.GetFileNameOfSelectedTab(), QString());

    // Closing saves into the user's folder.
    app.MainForm()->close();
    EXPECT_TRUE(QFile::exists(dir.filePath(QStringLiteral("config/Ombrelark/Marnoquill/Marnoquill.ini"))));
}
