// Folder searches, free names, the calls that change the file system and their error texts,
// locks and open checks, all on real folders made per test.
#include "common/TestFiles.h"
#include "support/AppError.h"
#include "support/DirClass.h"
#include "support/DirClass2.h"
#include "support/TempFileClass.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <cerrno>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using testfiles::ReadBytes;
using testfiles::WriteBytes;

QStringList Values(const SDC& vList)
{
    QStringList out;
    for (qint16 i = 1; i <= vList->Count(); ++i)
        out << vList->DataValueOfNumber(i);
    return out;
}

QString StrError(int vCode) { return QString::fromLocal8Bit(std::strerror(vCode)); }

// Expects vCall to raise 6800 with exactly vText.
template <class Call>
void ExpectFileSystemError(Call vCall, const QString& vText)
{
    try {
        vCall();
        ADD_FAILURE() << "no error raised, expected " << vText.toStdString();
    } catch (const AppError& e) {
        EXPECT_EQ(e.Number(), AppError::FileSystem);
        EXPECT_EQ(e.Description().toStdString(), vText.toStdString());
    }
}

class DirClassTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(temp_.isValid()); }
    QString Root() const { return temp_.path(); }
    QString At(const QString& vRelative) const { return temp_.path() + QLatin1Char('/') + vRelative; }
    void Touch(const QString& vRelative, const QByteArray& vBytes = "x")
    {
        QDir().mkpath(QFileInfo(At(vRelative)).absolutePath());
        WriteBytes(At(vRelative), vBytes);
    }
    void MakeTree()
    {
        Touch(QStringLiteral("b.xdw"));
        Touch(QStringLiteral("SCAN0001.TIF"));
        Touch(QStringLiteral("c.xbd"));
        Touch(QStringLiteral("note.txt"));
        Touch(QStringLiteral("見積 \"最終\" 'v2'.xdw"));
        Touch(QStringLiteral("sub/d.XDW"));
        Touch(QStringLiteral("sub/deeper/e.xdw"));
        Touch(QStringLiteral("a-sub/f.xdw"));
        QDir().mkpath(At(QStringLiteral("folder.xdw")));
    }

    QTemporaryDir temp_;
};

TEST(DirClassStrings, PathPiecesUseSlashAndKeepOneSeparator)
{
    EXPECT_EQ(DirClass::AddYen(QStringLiteral("/a/")), QStringLiteral("/a/"));
    EXPECT_EQ(DirClass::AddYen(QStringLiteral("/a")), QStringLiteral("/a/"));
    EXPECT_EQ(DirClass::DelYen(QStringLiteral("/a/")), QStringLiteral("/a"));
    EXPECT_EQ(DirClass::DelYen(QStringLiteral("/a")), QStringLiteral("/a"));
    EXPECT_EQ(DirClass::FolderFormat(QStringLiteral("/a/b/")), QStringLiteral("/a/b"));
    EXPECT_EQ(DirClass::FolderFormat(QStringLiteral("/")), QStringLiteral("/"));

    EXPECT_EQ(DirClass::GetFileNameFromFullPath(QStringLiteral("/a/b c.xdw")), QStringLiteral("b c.xdw"));
    EXPECT_EQ(DirClass::GetFileNameFromFullPath(QStringLiteral("plain")), QStringLiteral("plain"));
    EXPECT_EQ(DirClass::GetPathFromFullPath(QStringLiteral("/a/b/c.xdw")), QStringLiteral("/a/b"));
    EXPECT_EQ(DirClass::GetPathFromFullPath(QStringLiteral("/c.xdw")), QStringLiteral("/"));
    EXPECT_EQ(DirClass::GetPathFromFullPath(QStringLiteral("c.xdw")), QString());

    EXPECT_EQ(DirClass::GetFileTypeString(QStringLiteral("a.b.TIF")), QStringLiteral("TIF"));
    EXPECT_EQ(DirClass::GetFileTypeString(QStringLiteral("noext")), QStringLiteral("noext"));
    EXPECT_EQ(DirClass::GetBeforeFileTypeString(QStringLiteral("/x/a.b.tif")), QStringLiteral("/x/a.b"));
    EXPECT_EQ(DirClass::StripNull(QStringLiteral("abc") + QChar(0) + QStringLiteral("junk")), QStringLiteral("abc"));
}

TEST(DirClassStrings, DeleteCanNotUseFileNameDropsWindowsForbiddenCharacters)
{
    EXPECT_EQ(DirClass::DeleteCanNotUseFileName(QStringLiteral("  a\\b/c:d*e?f\"g<h>i|j\r\nk\tl\rm\nn  ")),
              QStringLiteral("abcdefghijklmn"));
    // Inner blanks and Japanese text stay.
    EXPECT_EQ(DirClass::DeleteCanNotUseFileName(QStringLiteral(" 請求書 2024年 ")), QStringLiteral("請求書 2024年"));
    EXPECT_EQ(DirClass2::ChangeKbSize(0), 0);
    EXPECT_EQ(DirClass2::ChangeKbSize(1), 1);
    EXPECT_EQ(DirClass2::ChangeKbSize(1024), 1);
    EXPECT_EQ(DirClass2::ChangeKbSize(1025), 2);
}

TEST_F(DirClassTest, PatternListFindsEachKindWithoutRegardToCaseOrBlanks)
{
    MakeTree();
    DirClass dir;
    dir.SerchFileName(QStringLiteral("*.xdw ;  *.xbd;*.tif"), Root() + QStringLiteral("/"));

    EXPECT_EQ(dir.PathName(), Root());
    EXPECT_EQ(Values(dir.FileList()), (QStringList{QStringLiteral("b.xdw"), QStringLiteral("見積 \"最終\" 'v2'.xdw"),
                                                   QStringLiteral("c.xbd"), QStringLiteral("SCAN0001.TIF")}));
    EXPECT_EQ(Values(dir.PathList()), QStringList(4, Root() + QStringLiteral("/")));
    EXPECT_EQ(dir.FileDateList()->Count(), 4);
    // A folder whose name fits the pattern is a folder find, not a file.
    EXPECT_EQ(Values(dir.DirList()), QStringList{QStringLiteral("folder.xdw")});
    EXPECT_EQ(Values(dir.DirPathList()), QStringList{Root() + QStringLiteral("/")});
    // Without the flag the walk stays in the one folder.
    EXPECT_EQ(Values(dir.AllDirList()), QStringList{Root() + QStringLiteral("/")});
}

TEST_F(DirClassTest, WildcardsActAsOnWindows)
{
    Touch(QStringLiteral("a1.tif"));
    Touch(QStringLiteral("a12.tif"));
    Touch(QStringLiteral("README"));
    Touch(QStringLiteral("x.tiff"));
    DirClass dir;
    dir.SetPathName(Root());
    dir.SerchFileName(QStringLiteral("a?.TIF"));
    EXPECT_EQ(Values(dir.FileList()), QStringList{QStringLiteral("a1.tif")});
    // "*.*" takes names without a dot as well.
    dir.SerchFileName(QStringLiteral("*.*"));
    EXPECT_EQ(dir.FileList()->Count(), 4);
    dir.SerchFileName(QStringLiteral("*.tif"));
    EXPECT_EQ(Values(dir.FileList()), (QStringList{QStringLiteral("a1.tif"), QStringLiteral("a12.tif")}));
    // A file that two patterns find is one find.
    dir.SerchFileName(QStringLiteral("a*;*.tif"));
    EXPECT_EQ(Values(dir.FileList()), (QStringList{QStringLiteral("a1.tif"), QStringLiteral("a12.tif")}));
}

TEST_F(DirClassTest, SubFoldersAreWalkedDepthFirstAndCallbackTakesTheFiles)
{
    MakeTree();
    DirClass dir;
    dir.SetSubDirSearchFlag(true);
    dir.SerchFileName(QStringLiteral("*.xdw"), Root());
    const QString r = Root() + QStringLiteral("/");
    EXPECT_EQ(Values(dir.FileList()), (QStringList{QStringLiteral("b.xdw"), QStringLiteral("見積 \"最終\" 'v2'.xdw"),
                                                   QStringLiteral("f.xdw"), QStringLiteral("d.XDW"),
                                                   QStringLiteral("e.xdw")}));
    EXPECT_EQ(Values(dir.PathList()), (QStringList{r, r, r + QStringLiteral("a-sub/"), r + QStringLiteral("sub/"),
                                                   r + QStringLiteral("sub/deeper/")}));
    EXPECT_EQ(Values(dir.AllDirList()),
              (QStringList{r, r + QStringLiteral("a-sub/"), r + QStringLiteral("folder.xdw/"), r + QStringLiteral("sub/"),
                           r + QStringLiteral("sub/deeper/")}));

    QStringList finds;
    dir.SerchFileName(QStringLiteral("*.xdw"), Root(), true,
                      [&](const QString& vName, const QString& vPath) { finds << vPath + vName; });
    EXPECT_EQ(finds.size(), 5);
    EXPECT_EQ(finds.last(), r + QStringLiteral("sub/deeper/e.xdw"));
    EXPECT_EQ(dir.FileList()->Count(), 0);
    EXPECT_EQ(dir.FindFile(QStringLiteral("E.XDW")), r + QStringLiteral("sub/deeper/e.xdw"));
    EXPECT_EQ(dir.FindFile(QStringLiteral("none.*")), QString());
}

TEST_F(DirClassTest, LinkLoopsEndTheWalk)
{
    Touch(QStringLiteral("loop/a.xdw"));
    ASSERT_EQ(::symlink("..", QFile::encodeName(At(QStringLiteral("loop/up"))).constData()), 0);
    DirClass dir;
    dir.SetSubDirSearchFlag(true);
    dir.SerchFileName(QStringLiteral("*.xdw"), Root());
    EXPECT_EQ(Values(dir.FileList()), QStringList{QStringLiteral("a.xdw")});
}

TEST_F(DirClassTest, TimeStampIsLocalLastWrite)
{
    Touch(QStringLiteral("t.xdw"));
    const QDateTime when(QDate(2021, 3, 4), QTime(5, 6, 7), Qt::LocalTime);
    QFile f(At(QStringLiteral("t.xdw")));
    ASSERT_TRUE(f.open(QIODevice::ReadWrite));
    ASSERT_TRUE(f.setFileTime(when, QFileDevice::FileModificationTime));
    f.close();
    DirClass dir;
    dir.SerchFileName(QStringLiteral("*.xdw"), Root());
    EXPECT_EQ(Values(dir.FileDateList()), QStringList{QStringLiteral("2021/03/04 05:06:07")});
    EXPECT_EQ(DirClass::GetFileTimeLastWrite(At(QStringLiteral("t.xdw"))), QStringLiteral("2021/03/04 05:06:07"));
    EXPECT_FALSE(DirClass::GetFileTimeCreation(At(QStringLiteral("t.xdw"))).isEmpty());
    EXPECT_EQ(DirClass::GetFileTimeLastAccess(At(QStringLiteral("gone"))), QString());
}

TEST_F(DirClassTest, MissingFolderGivesEmptyListsOtherFailuresRaise)
{
    DirClass dir;
    dir.SerchFileName(QStringLiteral("*.xdw"), At(QStringLiteral("missing")));
    EXPECT_EQ(dir.FileList()->Count(), 0);
    EXPECT_EQ(dir.AllDirList()->Count(), 0);

    Touch(QStringLiteral("plain.txt"));
    const QString folder = At(QStringLiteral("plain.txt/"));
    ExpectFileSystemError([&] { dir.SerchFileName(QStringLiteral("*.xdw ; *.tif"), folder); },
                          QStringLiteral("SerchFileName(") + QString::number(ENOTDIR) + QLatin1Char(')')
                              + StrError(ENOTDIR) + QStringLiteral(" Folder = \"") + folder
                              + QStringLiteral(" File = \"*.xdw\""));
}

TEST_F(DirClassTest, UnreadableSubFolderRaises)
{
    if (testfiles::RunningAsRoot())
        GTEST_SKIP() << "permission bits don't stop root";
    Touch(QStringLiteral("closed/a.xdw"));
    ASSERT_EQ(::chmod(QFile::encodeName(At(QStringLiteral("closed"))).constData(), 0), 0);
    DirClass dir;
    dir.SetSubDirSearchFlag(true);
    try {
        dir.SerchFileName(QStringLiteral("*.xdw"), Root());
        ADD_FAILURE() << "no error";
    } catch (const AppError& e) {
        EXPECT_EQ(e.Number(), AppError::FileSystem);
        EXPECT_TRUE(e.Description().startsWith(QStringLiteral("SerchFileName(%1)").arg(EACCES)));
    }
    ::chmod(QFile::encodeName(At(QStringLiteral("closed"))).constData(), 0700);
}

TEST_F(DirClassTest, CreateNamesCountUpFromTheGivenNumber)
{
    const QString free = At(QStringLiteral("報告 書.v1.xdw"));
    EXPECT_EQ(DirClass::CreateFileName(free), free);
    Touch(QStringLiteral("報告 書.v1.xdw"));
    Touch(QStringLiteral("報告 書.v1_0001.xdw"));
    EXPECT_EQ(DirClass::CreateFileName(free), At(QStringLiteral("報告 書.v1_0002.xdw")));
    EXPECT_EQ(DirClass::CreateFileName(free, 7), At(QStringLiteral("報告 書.v1_0007.xdw")));

    // The dot of a folder is no type.
    Touch(QStringLiteral("d.1/plain"));
    EXPECT_EQ(DirClass::CreateFileName(At(QStringLiteral("d.1/plain"))), At(QStringLiteral("d.1/plain_0001")));

    QDir().mkpath(At(QStringLiteral("work")));
    EXPECT_EQ(DirClass::CreateFolderName(At(QStringLiteral("work"))), At(QStringLiteral("work_0001")));
    EXPECT_EQ(DirClass::CreateFolderName(At(QStringLiteral("new"))), At(QStringLiteral("new")));
}

TEST_F(DirClassTest, CreateFolderMakesMissingLevelsWithCleanNames)
{
    Touch(QStringLiteral("a/keep:me/x"));
    EXPECT_TRUE(DirClass::CreateFolder(At(QStringLiteral("a/keep:me/b*c/日本 語/")), 1));
    // The level that was there keeps its name; the new ones are cleaned.
    EXPECT_TRUE(DirClass::ExistsDir(At(QStringLiteral("a/keep:me/bc/日本 語"))));
    EXPECT_TRUE(DirClass::CreateFolder(At(QStringLiteral("a"))));

    // A file in the way is a level that isn't a folder yet, and can't become one.
    Touch(QStringLiteral("file"));
    ExpectFileSystemError([&] { DirClass::CreateFolder(At(QStringLiteral("file/sub"))); },
                          QStringLiteral("CreateDirectory(%1)").arg(EEXIST) + StrError(EEXIST)
                              + QStringLiteral(" Path = \"") + At(QStringLiteral("file")) + QLatin1Char('"'));

    const QString before = QDir::currentPath();
    DirClass::ChangeFolder(At(QStringLiteral("a")));
    EXPECT_EQ(QDir::currentPath(), At(QStringLiteral("a")));
    EXPECT_TRUE(DirClass::CreateFolder(QStringLiteral("rel/ative")));
    EXPECT_TRUE(DirClass::ExistsDir(At(QStringLiteral("a/rel/ative"))));
    DirClass::ChangeFolder(before);
    ExpectFileSystemError([&] { DirClass::ChangeFolder(At(QStringLiteral("nowhere"))); },
                          QStringLiteral("SetCurrentDirectory(%1)").arg(ENOENT) + StrError(ENOENT)
                              + QStringLiteral(" FolderName = \"") + At(QStringLiteral("nowhere")) + QLatin1Char('"'));
}

TEST_F(DirClassTest, SystemCallsRaiseWithCodeTextAndPaths)
{
    const QString missing = At(QStringLiteral("無い \"file\".xdw"));
    ExpectFileSystemError([&] { DirClass::DeleteFile(missing, 5); },
                          QStringLiteral("DeleteFile(%1)").arg(ENOENT) + StrError(ENOENT)
                              + QStringLiteral(" FileName = \"") + missing + QLatin1Char('"'));

    Touch(QStringLiteral("from.xdw"), "one");
    Touch(QStringLiteral("to.xdw"), "two");
    // A move never replaces what is there.
    ExpectFileSystemError([&] { DirClass::MoveFile(At(QStringLiteral("from.xdw")), At(QStringLiteral("to.xdw"))); },
                          QStringLiteral("MoveFile(%1)").arg(EEXIST) + StrError(EEXIST)
                              + QStringLiteral(" FromFileName = \"") + At(QStringLiteral("from.xdw"))
                              + QStringLiteral("\" ToFileName = \"") + At(QStringLiteral("to.xdw")) + QLatin1Char('"'));
    EXPECT_EQ(ReadBytes(At(QStringLiteral("to.xdw"))), QByteArray("two"));
    DirClass::MoveFile(At(QStringLiteral("from.xdw")), At(QStringLiteral("移動 後.xdw")));
    EXPECT_FALSE(DirClass::ExistsFile(At(QStringLiteral("from.xdw"))));
    EXPECT_EQ(ReadBytes(At(QStringLiteral("移動 後.xdw"))), QByteArray("one"));

    EXPECT_THROW(DirClass::CopyFile(At(QStringLiteral("移動 後.xdw")), At(QStringLiteral("to.xdw")), true), AppError);
    DirClass::CopyFile(At(QStringLiteral("移動 後.xdw")), At(QStringLiteral("to.xdw")));
    EXPECT_EQ(ReadBytes(At(QStringLiteral("to.xdw"))), QByteArray("one"));

    DirClass::DeleteFile(At(QStringLiteral("to.xdw")));
    EXPECT_FALSE(DirClass::ExistsFile(At(QStringLiteral("to.xdw"))));

    DirClass::CreateDirectory(At(QStringLiteral("d")));
    ExpectFileSystemError([&] { DirClass::CreateDirectory(At(QStringLiteral("d"))); },
                          QStringLiteral("CreateDirectory(%1)").arg(EEXIST) + StrError(EEXIST)
                              + QStringLiteral(" Path = \"") + At(QStringLiteral("d")) + QLatin1Char('"'));
    Touch(QStringLiteral("d/x"));
    EXPECT_THROW(DirClass::RemoveDirectory(At(QStringLiteral("d"))), AppError);
    DirClass::DeleteFile(At(QStringLiteral("d/x")));
    DirClass::RemoveDirectory(At(QStringLiteral("d")));
    EXPECT_FALSE(DirClass::ExistsDir(At(QStringLiteral("d"))));
    EXPECT_EQ(DirClass::LastDllErrorText(ENOENT), StrError(ENOENT));
}

TEST_F(DirClassTest, LockKeepsOpenChecksOutUntilReleased)
{
    Touch(QStringLiteral("held.xdw"));
    const QString path = At(QStringLiteral("held.xdw"));
    DirClass dir;
    EXPECT_TRUE(DirClass::OpenCheck(path));
    EXPECT_FALSE(dir.LockFile(At(QStringLiteral("missing.xdw"))));
    EXPECT_EQ(dir.LockFileNo(), -1);

    ASSERT_TRUE(dir.LockFile(path));
    EXPECT_GE(dir.LockFileNo(), 0);
    EXPECT_FALSE(DirClass::OpenCheck(path));
    EXPECT_FALSE(DirClass::RetryOpenCheck(path, 0));  // one try, no wait

    // The retry gives the event loop its turns, so a release that comes from there is seen.
    QTimer::singleShot(150, [&] { dir.UnLockFile(path); });
    EXPECT_TRUE(DirClass::RetryOpenCheck(path, 10));
    EXPECT_EQ(dir.LockFileNo(), -1);

    {
        DirClass scoped;
        ASSERT_TRUE(scoped.LockFile(path));
    }
    EXPECT_TRUE(DirClass::OpenCheck(path));
    EXPECT_FALSE(DirClass::OpenCheck(At(QStringLiteral("missing.xdw"))));
    EXPECT_FALSE(DirClass::ExistsFile(At(QStringLiteral("missing.xdw"))));
}

TEST_F(DirClassTest, FileSizeCheckSeesAGrowingFile)
{
    Touch(QStringLiteral("grow.tif"), "12345");
    const QString path = At(QStringLiteral("grow.tif"));
    EXPECT_TRUE(DirClass::FileSizeCheck(path, 2));
    // The first turn of the event loop comes after the first sample.
    QTimer::singleShot(0, [&] { Touch(QStringLiteral("grow.tif"), "1234567890"); });
    EXPECT_FALSE(DirClass::FileSizeCheck(path, 2));
}

TEST_F(DirClassTest, RemoveCtrlCharKeepsLineEndsAndDoubleByteCharacters)
{
    // 0x81 0x7F: the second byte of a double-byte character is not tested, even when the pair
    // is split by the 4095-byte blocks.
    const QByteArray input("a\x01\tb\r\n\x7f\x1b" "c\x81\x7f" "d\xe0\x05" "e", 15);
    const QByteArray padding(4094 - input.size(), 'p');  // the next lead byte ends the first block
    Touch(QStringLiteral("in.txt"), input + padding + "\x81\x7f\x02");
    DirClass::RemoveCtrlChar(At(QStringLiteral("in.txt")), At(QStringLiteral("out.txt")));
    const QByteArray expected = QByteArray("a\tb\r\nc\x81\x7f" "d\xe0\x05" "e", 12) + padding + "\x81\x7f";
    EXPECT_EQ(ReadBytes(At(QStringLiteral("out.txt"))), expected);
}

TEST_F(DirClassTest, RemoveCtrlCharReportsAnInputItCannotOpen)
{
    const QString missing = At(QStringLiteral("none.txt"));
    ExpectFileSystemError([&] { DirClass::RemoveCtrlChar(missing, At(QStringLiteral("out.txt"))); },
                          QStringLiteral("DirClass.RemoveCtrlChar:入力ファイルがオープンできません。(") + missing
                              + QLatin1Char(')'));
}

TEST_F(DirClassTest, SpecialFoldersFollowTheDesktopConventions)
{
    const QByteArray savedConfig = qgetenv("XDG_CONFIG_HOME");
    const bool hadConfig = qEnvironmentVariableIsSet("XDG_CONFIG_HOME");
    const QByteArray savedHome = qgetenv("HOME");
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(At(QStringLiteral("conf"))));
    EXPECT_EQ(DirClass::GetSpecialFolder(1), At(QStringLiteral("conf")));
    EXPECT_EQ(DirClass::GetSpecialFolder(0), At(QStringLiteral("conf/autostart")));
    qputenv("HOME", QFile::encodeName(Root()));
    qputenv("XDG_CONFIG_HOME", "");
    EXPECT_EQ(DirClass::GetSpecialFolder(1), At(QStringLiteral(".config")));
    qunsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(DirClass::GetSpecialFolder(1), At(QStringLiteral(".config")));
    EXPECT_EQ(DirClass::GetSpecialFolder(31), QString());
    EXPECT_EQ(DirClass::GetSpecialFolder(-1), QString());
    EXPECT_EQ(DirClass::GetSpecialFolder(17), QString());
    qputenv("HOME", savedHome);
    if (hadConfig)
        qputenv("XDG_CONFIG_HOME", savedConfig);
}

TEST_F(DirClassTest, TempFilesGetFreeNamesAndAreDeletedAtTheEnd)
{
    QDir().mkpath(At(QStringLiteral("work")));
    Touch(QStringLiteral("work/TempImage.bmp"));
    QString first;
    QString second;
    {
        TempFileClass temp;
        first = temp.RegisterTempFile(QStringLiteral("/somewhere/TempImage.bmp"), At(QStringLiteral("work")));
        EXPECT_EQ(first, At(QStringLiteral("work/TempImage_0001.bmp")));
        Touch(QStringLiteral("work/TempImage_0001.bmp"));
        second = temp.RegisterTempFile(QStringLiteral("原本 1.xdw"), At(QStringLiteral("work/")));
        EXPECT_EQ(second, At(QStringLiteral("work/原本 1.xdw")));
        EXPECT_EQ(temp.FileList()->Count(), 2);
        // A name never made is passed over.
        temp.DeleteTempFile();
        EXPECT_FALSE(DirClass::ExistsFile(first));
        Touch(QStringLiteral("work/原本 1.xdw"));
    }
    EXPECT_FALSE(DirClass::ExistsFile(second));
    EXPECT_TRUE(DirClass::ExistsFile(At(QStringLiteral("work/TempImage.bmp"))));
}

} // namespace
