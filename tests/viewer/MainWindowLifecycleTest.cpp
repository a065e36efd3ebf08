// The window's life around its settings: a start-up step that fails leaves what was built
// serving, the window comes forward when it becomes active again from one of the program's own
// windows, and its outer size goes through the settings file unchanged.
#include "MainWindowFixture.h"

#include "settings/DataSaveLoadClass.h"
#include "support/AppError.h"
#include "support/ProcessClass.h"
#include "viewer/MarnoquillClass.h"

#include <QFile>
#include <QScopeGuard>
#include <QTest>
#include <QTimer>
#include <QWindow>

namespace {

// A user folder of its own for the program's settings, for the length of a test.
class ScopedConfigHome {
public:
    explicit ScopedConfigHome(const QString& vPath) : saved_(qgetenv("XDG_CONFIG_HOME"))
    {
        qputenv("XDG_CONFIG_HOME", vPath.toLocal8Bit());
    }
    ~ScopedConfigHome() { qputenv("XDG_CONFIG_HOME", saved_); }
    QString SettingsFile() const
    {
        return QString::fromLocal8Bit(qgetenv("XDG_CONFIG_HOME")) + QStringLiteral("/Ombrelark/Marnoquill/Marnoquill.ini");
    }

private:
    QByteArray saved_;
};

bool TopMost(const QWidget& vWindow)
{
    return vWindow.windowHandle() && (vWindow.windowHandle()->flags() & Qt::WindowStaysOnTopHint);
}

} // namespace

TEST(MarnoquillLifecycle, AFailedStartUpStepShowsItsMessageAndTheProcessServesOn)
{
    QTemporaryDir dir;
    const ScopedConfigHome home(dir.path());
    ScopedRecordingPresenter shown;
    // A line one level deep with nothing above it: the settings file cannot be read.
    QDir().mkpath(QFileInfo(home.SettingsFile()).path());
    QFile file(home.SettingsFile());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[!LABEL_DetailSet]\r\n\tTHREAD\tx\r\n");
    file.close();

    bool served = false;
    QTimer::singleShot(0, [&] {
        served = true;
        QCoreApplication::quit();
    });
    EXPECT_EQ(MarnoquillClass::Serve({QStringLiteral("marnoquill")}), 0);
    EXPECT_TRUE(served);  // the event loop ran although start-up stopped
    ASSERT_EQ(shown.Count(), 1);
    EXPECT_TRUE(shown.Last().text.endsWith(QStringLiteral(" MarnoquillClass Class_Initialize 処理設定のロード")))
        << qPrintable(shown.Last().text);

    // What was not built answers a caller with the error of a missing object, not a crash.
    MarnoquillClass app({QStringLiteral("marnoquill")});
    EXPECT_EQ(app.MainForm(), nullptr);
    EXPECT_EQ(app.GetFileNameOfSelectedTab(), QString());
    try {
        app.FileOpen(dir.filePath(QStringLiteral("a.tif")), true);
        ADD_FAILURE() << "no error";
    } catch (const AppError& e) {
        EXPECT_EQ(e.Number(), 91);
    }
    EXPECT_THROW(app.ExecAction(QStringLiteral("次ページ")), AppError);
    EXPECT_THROW(app.ManyFileOpen({}), AppError);
}

TEST_F(MainWindowTest, TheWindowComesForwardWhenActiveAgainFromADialog)
{
    AddWindowGroup(context.DetailSet);
    const SDC group = context.DetailSet->Thread(frmMain::WindowGroup);
    group->Thread(QStringLiteral("chkActiveForm"))->AddData(QStringLiteral("1"), QStringLiteral("Value"));
    group->Thread(QStringLiteral("txtActiveFormTime"))->AddData(QStringLiteral("600000"), QStringLiteral("Text"));
    frmMain& w = Window();
    w.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&w));
    ASSERT_TRUE(TopMost(w));  // the first show brought it forward
    ProcessClass::SetWindowZOrder(&w, ProcessClass::NoTopMost);

    QWidget dialog(&w, Qt::Dialog);
    dialog.resize(200, 100);
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitFor([&] { return QGuiApplication::focusWindow() == dialog.windowHandle(); }));
    EXPECT_FALSE(TopMost(w));
    dialog.close();
    w.activateWindow();
    ASSERT_TRUE(QTest::qWaitFor([&] { return QGuiApplication::focusWindow() == w.windowHandle(); }));
    EXPECT_TRUE(TopMost(w));
}

TEST_F(MainWindowTest, TheOuterSizeGoesThroughTheSettingsFileUnchanged)
{
    AddWindowGroup(context.DetailSet);
    const SDC geometry = context.DetailSet->CreateThread(QStringLiteral("FormSet"))->CreateThread(QStringLiteral("Form"));
    geometry->AddData(QStringLiteral("1500"), QStringLiteral("Top"));
    geometry->AddData(QStringLiteral("1200"), QStringLiteral("Left"));
    geometry->AddData(QStringLiteral("12000"), QStringLiteral("Height"));
    geometry->AddData(QStringLiteral("15000"), QStringLiteral("Width"));
    context.CreateCommands();
    for (int round = 1; round <= 3; ++round) {
        auto w = std::make_unique<frmMain>(context);
        w->Load();
        w->show();
        w->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(w.get()));
        const double twips = w->TwipsPerPixel();
        EXPECT_EQ(qRound(w->frameGeometry().width() * twips), 15000) << "round " << round;
        EXPECT_EQ(qRound(w->frameGeometry().height() * twips), 12000) << "round " << round;
        EXPECT_LT(w->width(), w->frameGeometry().width());
        w->close();
        context.DetailSet = std::make_shared<StructuredDataClass>();
        DataSaveLoadClass io;
        io.SetData(context.DetailSet);
        io.Load(context.SettingsPath, QStringLiteral("DetailSet"));
        const SDC saved = context.DetailSet->ThreadOfPath(QStringLiteral("\\FormSet\\Form\\"));
        ASSERT_TRUE(saved);
        EXPECT_EQ(saved->DataValue(QStringLiteral("Width")), QStringLiteral("15000")) << "round " << round;
        EXPECT_EQ(saved->DataValue(QStringLiteral("Height")), QStringLiteral("12000")) << "round " << round;
        context.CreateCommands();
    }
}
