// The help and the settings folder go to the desktop's opener. Here the opener is a small script
// put first on PATH (or no opener at all), and the real window's commands are run.
#include "viewer/MainWindowFixture.h"

#include <QCoreApplication>
#include <QFile>
#include <QScopeGuard>
#include <QTest>

namespace {

// A PATH holding only vFolder, for the length of a test.
class ScopedPath {
public:
    explicit ScopedPath(const QString& vFolder) : saved_(qgetenv("PATH")) { qputenv("PATH", vFolder.toLocal8Bit()); }
    ~ScopedPath() { qputenv("PATH", saved_); }

private:
    QByteArray saved_;
};

void WriteOpener(const QString& vFolder, const QByteArray& vBody)
{
    QFile script(vFolder + QStringLiteral("/xdg-open"));
    ASSERT_TRUE(script.open(QIODevice::WriteOnly));
    script.write("#!/bin/sh\n" + vBody);
    script.close();
    script.setPermissions(script.permissions() | QFileDevice::ExeOwner);
}

} // namespace

class OpenerTest : public MainWindowTest {
protected:
    QString Bin() const { return dir.filePath(QStringLiteral("bin")); }
    QString SettingsFolder() const { return dir.path(); }
    QString HelpPath() const { return QCoreApplication::applicationDirPath() + QStringLiteral("/Marnoquill.html"); }
    void SetUp() override
    {
        MainWindowTest::SetUp();
        ASSERT_TRUE(QDir().mkpath(Bin()));
    }
};

TEST_F(OpenerTest, WithoutAnOpenerTheMessageNamesWhatToOpen)
{
    ScopedPath path(Bin());  // an empty folder: no xdg-open anywhere
    frmMain& w = Window();
    w.DispHelp();
    ASSERT_EQ(shown.Count(), 1);
    EXPECT_EQ(shown.Last().text, QStringLiteral("ヘルプを開けませんでした。次のファイルをブラウザで開いてください。\n") + HelpPath());
    w.OpenIniFolder();
    ASSERT_EQ(shown.Count(), 2);
    EXPECT_EQ(shown.Last().text,
              QStringLiteral("設定ファイルのフォルダを開けませんでした。次のフォルダを開いてください。\n") + SettingsFolder());
}

TEST_F(OpenerTest, AnOpenerThatFailsIsReportedWhenItEnds)
{
    WriteOpener(Bin(), "exit 4\n");  // xdg-open's "the action failed"
    ScopedPath path(Bin());
    frmMain& w = Window();
    w.OpenIniFolder();
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown.Count() == 1; }, 10000));
    EXPECT_TRUE(shown.Last().text.endsWith(QLatin1Char('\n') + SettingsFolder()));
}

TEST_F(OpenerTest, AWorkingOpenerIsGivenThePathAndNothingIsSaid)
{
    const QString record = dir.filePath(QStringLiteral("opened.txt"));
    const QByteArray target = record.toLocal8Bit();
    WriteOpener(Bin(), "printf '%s' \"$1\" > '" + target + ".part' && mv '" + target + ".part' '" + target + "'\n");
    ScopedPath path(Bin() + QStringLiteral(":/bin:/usr/bin"));  // the script itself needs mv
    frmMain& w = Window();
    w.DispHelp();
    EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::exists(record); }, 10000));
    QTest::qWait(50);  // let the opener's end reach the event loop
    QFile file(record);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromUtf8(file.readAll()), HelpPath());
    EXPECT_EQ(shown.Count(), 0);
}
