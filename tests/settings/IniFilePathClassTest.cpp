// Where settings are read from and saved to, with the per-user folder in a temporary place.
#include "common/TestFiles.h"
#include "settings/IniFilePathClass.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTemporaryDir>

namespace {

class IniFilePathClassTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(temp_.isValid());
        hadConfig_ = qEnvironmentVariableIsSet("XDG_CONFIG_HOME");
        savedConfig_ = qgetenv("XDG_CONFIG_HOME");
        savedHome_ = qgetenv("HOME");
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(Config()));
        paths_.SetCompanyName(QStringLiteral("Ombrelark"));
        paths_.SetApplicationName(QStringLiteral("Marnoquill"));
        paths_.SetIniFileName(QStringLiteral("Marnoquill.ini"));
    }
    void TearDown() override
    {
        qputenv("HOME", savedHome_);
        if (hadConfig_)
            qputenv("XDG_CONFIG_HOME", savedConfig_);
        else
            qunsetenv("XDG_CONFIG_HOME");
    }
    QString Config() const { return temp_.path() + QStringLiteral("/設定 dir"); }
    QString UserFolder() const { return Config() + QStringLiteral("/Ombrelark/Marnoquill"); }
    QString Shipped() const { return QCoreApplication::applicationDirPath() + QStringLiteral("/Marnoquill.ini"); }

    QTemporaryDir temp_;
    IniFilePathClass paths_;
    bool hadConfig_ = false;
    QByteArray savedConfig_;
    QByteArray savedHome_;
};

TEST_F(IniFilePathClassTest, FirstRunReadsBesideTheProgramAndSavesInTheNewUserFolder)
{
    EXPECT_EQ(paths_.GetIniFilePathForOpen(), Shipped());
    EXPECT_TRUE(QFileInfo(UserFolder()).isDir());
    EXPECT_EQ(paths_.MyAppDataPath(), UserFolder());
    EXPECT_EQ(paths_.IniFilePathForSave(), UserFolder() + QStringLiteral("/Marnoquill.ini"));
}

TEST_F(IniFilePathClassTest, SecondRunReadsTheUsersCopy)
{
    paths_.GetIniFilePathForOpen();
    testfiles::WriteBytes(paths_.IniFilePathForSave(), "[DetailSet]\r\n");
    IniFilePathClass again;
    again.SetCompanyName(QStringLiteral("Ombrelark"));
    again.SetApplicationName(QStringLiteral("Marnoquill"));
    again.SetIniFileName(QStringLiteral("Marnoquill.ini"));
    EXPECT_EQ(again.GetIniFilePathForOpen(), UserFolder() + QStringLiteral("/Marnoquill.ini"));
    EXPECT_EQ(again.IniFilePathForSave(), UserFolder() + QStringLiteral("/Marnoquill.ini"));
}

TEST_F(IniFilePathClassTest, WithoutConfigVariableTheHomeConfigFolderServes)
{
    qputenv("HOME", QFile::encodeName(temp_.path()));
    qputenv("XDG_CONFIG_HOME", "");
    EXPECT_EQ(paths_.GetMyAppDataPath(), temp_.path() + QStringLiteral("/.config/Ombrelark/Marnoquill"));
    EXPECT_TRUE(QFileInfo(temp_.path() + QStringLiteral("/.config/Ombrelark/Marnoquill")).isDir());
    EXPECT_EQ(paths_.MyAppDataPath(), QString());  // the fields stay untouched
    EXPECT_EQ(paths_.IniFilePathForSave(), QString());
}

TEST_F(IniFilePathClassTest, AFolderThatCannotBeMadeDoesNotStopTheStart)
{
    testfiles::WriteBytes(Config(), "a file where the folder should be");
    EXPECT_EQ(paths_.GetIniFilePathForOpen(), Shipped());
    EXPECT_EQ(paths_.IniFilePathForSave(), UserFolder() + QStringLiteral("/Marnoquill.ini"));
    EXPECT_EQ(IniFilePathClass::ProgramFolder(), QCoreApplication::applicationDirPath());
}

} // namespace
