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

using namespace Qt::Literals::StringLiterals;

namespace {

using testfiles::ReadBytes;

QStringList Values(const SDC& vList)
{
    QStringList out;
    for (qint16 i = 1; i <= vList->Count(); ++i)
        out << vList->DataValueOfNumber(i);
    return out;
}

// The description of a failed system call: its name, the errno and the system's text, the paths.
QString CallText(const char* vCall, int vCode, const QString& vPaths)
{
    return QString::fromLatin1(vCall) + u'(' + QString::number(vCode) + u')'
           + QString::fromLocal8Bit(std::strerror(vCode)) + u' ' + vPaths;
}

QString Quoted(const QString& vLabel, const QString& vPath) { return vLabel + u" = \""_s + vPath + u'"'; }

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
    QString At(const QString& vRelative) const { return temp_.path() + u'/' + vRelative; }
    void Touch(const QString& vRelative, const QByteArray& vBytes = "x")
    {
        QDir().mkpath(QFileInfo(At(vRelative)).absolutePath());
        testfiles::WriteBytes(At(vRelative), vBytes);
    }

    QTemporaryDir temp_;
};

TEST(DirClassStrings, PathPiecesAndCleanNames)
{
    const std::pair<QString, QString> cases[] = {
        {DirClass::AddYen(u"/a/"_s), u"/a/"_s}, {DirClass::FolderFormat(u"/"_s), u"/"_s},
        {DirClass::GetPathFromFullPath(u"/c.xdw"_s), u"/"_s}, {DirClass::GetPathFromFullPath(u"c.xdw"_s), QString()},
        {DirClass::GetFileTypeString(u"noext"_s), u"noext"_s}, {DirClass::GetBeforeFileTypeString(u"/x/a.b.tif"_s), u"/x/a.b"_s},
        {DirClass::StripNull(u"abc"_s + QChar(0) + u"junk"_s), u"abc"_s},
        // Characters Windows forbids in names go, and the blanks around; inner blanks stay.
        {DirClass::DeleteCanNotUseFileName(u"  a\\b/c:d*e?f\"g<h>i|j\r\nk\tl\rm\nn  "_s), u"abcdefghijklmn"_s},
        {DirClass::DeleteCanNotUseFileName(u" 請求書 2024年 "_s), u"請求書 2024年"_s},
    };
    for (const auto& [got, want] : cases)
        EXPECT_EQ(got, want) << want.toStdString();
    // Every started kilobyte counts.
    for (const auto& [bytes, kb] : {std::pair<qint64, qint64>{0, 0}, {1, 1}, {1024, 1}, {1025, 2}})
        EXPECT_EQ(DirClass2::ChangeKbSize(bytes), kb) << bytes;
}

TEST_F(DirClassTest, PatternListFindsFilesAndFoldersAndSubFoldersAreWalkedDepthFirst)
{
    for (const QString& name : {u"b.xdw"_s, u"SCAN0001.TIF"_s, u"c.xbd"_s, u"note.txt"_s, u"見積 \"最終\" 'v2'.xdw"_s,
                                u"sub/d.XDW"_s, u"sub/deeper/e.xdw"_s, u"a-sub/f.xdw"_s})
        Touch(name);
    QDir().mkpath(At(u"folder.xdw"_s));
    QFile stamped(At(u"b.xdw"_s));
    ASSERT_TRUE(stamped.open(QIODevice::ReadWrite));
    ASSERT_TRUE(stamped.setFileTime(QDateTime(QDate(2021, 3, 4), QTime(5, 6, 7)), QFileDevice::FileModificationTime));
    stamped.close();
    const QString r = Root() + u'/';
    DirClass dir;
    dir.SerchFileName(u"*.xdw ;  *.xbd;*.tif"_s, r);  // blanks and case don't matter
    EXPECT_EQ(Values(dir.FileList()), (QStringList{u"b.xdw"_s, u"見積 \"最終\" 'v2'.xdw"_s, u"c.xbd"_s, u"SCAN0001.TIF"_s}));
    EXPECT_EQ(Values(dir.PathList()), QStringList(4, r));
    EXPECT_EQ(dir.FileDateList()->DataValueOfNumber(1), u"2021/03/04 05:06:07"_s);  // local last write
    // A folder whose name fits the pattern is a folder find, not a file.
    EXPECT_EQ(Values(dir.DirList()), QStringList{u"folder.xdw"_s});
    EXPECT_EQ(Values(dir.DirPathList()), QStringList{r});
    // Without the flag the walk stays in the one folder.
    EXPECT_EQ(Values(dir.AllDirList()), QStringList{r});

    dir.SetSubDirSearchFlag(true);
    dir.SerchFileName(u"*.xdw"_s, Root());
    EXPECT_EQ(Values(dir.FileList()),
              (QStringList{u"b.xdw"_s, u"見積 \"最終\" 'v2'.xdw"_s, u"f.xdw"_s, u"d.XDW"_s, u"e.xdw"_s}));
    EXPECT_EQ(Values(dir.PathList()), (QStringList{r, r, r + u"a-sub/"_s, r + u"sub/"_s, r + u"sub/deeper/"_s}));
    EXPECT_EQ(Values(dir.AllDirList()), (QStringList{r, r + u"a-sub/"_s, r + u"folder.xdw/"_s, r + u"sub/"_s,
                                                     r + u"sub/deeper/"_s}));
    // A callback takes the files instead of the lists.
    QStringList finds;
    dir.SerchFileName(u"*.xdw"_s, Root(), true, [&](const QString& vName, const QString& vPath) { finds << vPath + vName; });
    EXPECT_EQ(finds.size(), 5);
    EXPECT_EQ(dir.FileList()->Count(), 0);
    EXPECT_EQ(dir.FindFile(u"E.XDW"_s), r + u"sub/deeper/e.xdw"_s);
    EXPECT_EQ(dir.FindFile(u"none.*"_s), QString());
}

TEST_F(DirClassTest, WildcardsActAsOnWindows)
{
    for (const QString& name : {u"a1.tif"_s, u"a12.tif"_s, u"README"_s, u"x.tiff"_s})
        Touch(name);
    DirClass dir;
    dir.SetPathName(Root());
    const std::pair<QString, QStringList> cases[] = {
        {u"a?.TIF"_s, {u"a1.tif"_s}},
        {u"*.*"_s, {u"a1.tif"_s, u"a12.tif"_s, u"README"_s, u"x.tiff"_s}},  // names without a dot too
        {u"*.tif"_s, {u"a1.tif"_s, u"a12.tif"_s}},
        {u"a*;*.tif"_s, {u"a1.tif"_s, u"a12.tif"_s}},  // found by two patterns, still one find
    };
    for (const auto& [pattern, names] : cases) {
        dir.SerchFileName(pattern);
        EXPECT_EQ(Values(dir.FileList()), names) << pattern.toStdString();
    }
}

TEST_F(DirClassTest, LinkLoopsAndMissingFoldersEndTheWalkOtherFailuresRaise)
{
    Touch(u"loop/a.xdw"_s);
    ASSERT_EQ(::symlink("..", QFile::encodeName(At(u"loop/up"_s)).constData()), 0);
    DirClass dir;
    dir.SetSubDirSearchFlag(true);
    dir.SerchFileName(u"*.xdw"_s, Root());
    EXPECT_EQ(Values(dir.FileList()), QStringList{u"a.xdw"_s});

    dir.SerchFileName(u"*.xdw"_s, At(u"missing"_s));
    EXPECT_EQ(dir.FileList()->Count() + dir.AllDirList()->Count(), 0);

    Touch(u"plain.txt"_s);
    const QString folder = At(u"plain.txt/"_s);
    ExpectFileSystemError([&] { dir.SerchFileName(u"*.xdw ; *.tif"_s, folder); },
                          CallText("SerchFileName", ENOTDIR, u"Folder = \""_s + folder + u" File = \"*.xdw\""_s));
}

TEST_F(DirClassTest, UnreadableSubFolderRaises)
{
    if (testfiles::RunningAsRoot())
        GTEST_SKIP() << "permission bits don't stop root";
    Touch(u"closed/a.xdw"_s);
    ASSERT_EQ(::chmod(QFile::encodeName(At(u"closed"_s)).constData(), 0), 0);
    DirClass dir;
    dir.SetSubDirSearchFlag(true);
    ExpectFileSystemError([&] { dir.SerchFileName(u"*.xdw"_s, Root()); },
                          CallText("SerchFileName", EACCES, u"Folder = \""_s + At(u"closed/"_s) + u" File = \"*.xdw\""_s));
    ::chmod(QFile::encodeName(At(u"closed"_s)).constData(), 0700);
}

TEST_F(DirClassTest, FreeNamesCountUpAndTempFilesAreDeletedAtTheEnd)
{
    const QString free = At(u"報告 書.v1.xdw"_s);
    EXPECT_EQ(DirClass::CreateFileName(free), free);
    Touch(u"報告 書.v1.xdw"_s);
    Touch(u"報告 書.v1_0001.xdw"_s);
    EXPECT_EQ(DirClass::CreateFileName(free), At(u"報告 書.v1_0002.xdw"_s));
    // The dot of a folder is no type.
    Touch(u"d.1/plain"_s);
    EXPECT_EQ(DirClass::CreateFileName(At(u"d.1/plain"_s)), At(u"d.1/plain_0001"_s));
    EXPECT_EQ(DirClass::CreateFolderName(At(u"d.1"_s)), At(u"d.1_0001"_s));

    // Temporary copies get free names too, and go at the end.
    Touch(u"work/TempImage.bmp"_s);
    QString first;
    {
        TempFileClass temp;
        first = temp.RegisterTempFile(u"/somewhere/TempImage.bmp"_s, At(u"work"_s));
        EXPECT_EQ(first, At(u"work/TempImage_0001.bmp"_s));
        EXPECT_EQ(temp.RegisterTempFile(u"原本 1.xdw"_s, At(u"work/"_s)), At(u"work/原本 1.xdw"_s));
        Touch(u"work/TempImage_0001.bmp"_s);  // "原本 1.xdw" is never made, and is passed over
    }
    EXPECT_FALSE(DirClass::ExistsFile(first));
    EXPECT_TRUE(DirClass::ExistsFile(At(u"work/TempImage.bmp"_s)));
}

TEST_F(DirClassTest, CreateFolderMakesMissingLevelsWithCleanNamesAndSystemCallsRaiseWithCodeTextAndPaths)
{
    Touch(u"a/keep:me/x"_s);
    EXPECT_TRUE(DirClass::CreateFolder(At(u"a/keep:me/b*c/日本 語/"_s), 1));
    // The level that was there keeps its name; the new ones are cleaned.
    EXPECT_TRUE(DirClass::ExistsDir(At(u"a/keep:me/bc/日本 語"_s)));
    // A file in the way is a level that isn't a folder yet, and can't become one.
    Touch(u"file"_s);
    ExpectFileSystemError([&] { DirClass::CreateFolder(At(u"file/sub"_s)); },
                          CallText("CreateDirectory", EEXIST, Quoted(u"Path"_s, At(u"file"_s))));
    ExpectFileSystemError([&] { DirClass::ChangeFolder(At(u"nowhere"_s)); },
                          CallText("SetCurrentDirectory", ENOENT, Quoted(u"FolderName"_s, At(u"nowhere"_s))));

    // A file that isn't there is reported at once, whatever the retry window.
    const QString missing = At(u"無い \"file\".xdw"_s);
    ExpectFileSystemError([&] { DirClass::DeleteFile(missing, 5); },
                          CallText("DeleteFile", ENOENT, Quoted(u"FileName"_s, missing)));

    const QString from = At(u"from.xdw"_s);
    const QString to = At(u"to.xdw"_s);
    Touch(u"from.xdw"_s, "one");
    Touch(u"to.xdw"_s, "two");
    // A move never replaces what is there; a copy does unless told not to.
    ExpectFileSystemError([&] { DirClass::MoveFile(from, to); },
                          CallText("MoveFile", EEXIST, Quoted(u"FromFileName"_s, from) + u' ' + Quoted(u"ToFileName"_s, to)));
    EXPECT_THROW(DirClass::CopyFile(from, to, true), AppError);
    EXPECT_EQ(ReadBytes(to), QByteArray("two"));
    DirClass::CopyFile(from, to);
    EXPECT_EQ(ReadBytes(to), QByteArray("one"));

    Touch(u"d/x"_s);
    EXPECT_THROW(DirClass::RemoveDirectory(At(u"d"_s)), AppError);  // not empty
}

TEST_F(DirClassTest, OpenChecksWaitForLocksAndGrowingFiles)
{
    Touch(u"held.xdw"_s);
    const QString path = At(u"held.xdw"_s);
    DirClass dir;
    EXPECT_FALSE(DirClass::OpenCheck(At(u"missing.xdw"_s)));
    EXPECT_FALSE(dir.LockFile(At(u"missing.xdw"_s)));
    ASSERT_TRUE(dir.LockFile(path));
    EXPECT_FALSE(DirClass::RetryOpenCheck(path, 0));  // one try, no wait
    // The retry gives the event loop its turns, so a release that comes from there is seen.
    QTimer::singleShot(50, [&] { dir.UnLockFile(path); });
    EXPECT_TRUE(DirClass::RetryOpenCheck(path, 0.5));
    {
        DirClass scoped;
        ASSERT_TRUE(scoped.LockFile(path));
    }
    EXPECT_TRUE(DirClass::OpenCheck(path));  // the lock goes with its object

    // A file still being written changes its length between the samples.
    Touch(u"grow.tif"_s, "12345");
    EXPECT_TRUE(DirClass::FileSizeCheck(At(u"grow.tif"_s), 2));
    // The first turn of the event loop comes after the first sample.
    QTimer::singleShot(0, [&] { Touch(u"grow.tif"_s, "1234567890"); });
    EXPECT_FALSE(DirClass::FileSizeCheck(At(u"grow.tif"_s), 2));
}

TEST_F(DirClassTest, RemoveCtrlCharKeepsLineEndsAndDoubleByteCharacters)
{
    // 0x81 0x7F: the second byte of a double-byte character is not tested, even when the pair
    // is split by the 4095-byte blocks.
    const QByteArray input("a\x01\tb\r\n\x7f\x1b" "c\x81\x7f" "d\xe0\x05" "e", 15);
    const QByteArray padding(4094 - input.size(), 'p');  // the next lead byte ends the first block
    Touch(u"in.txt"_s, input + padding + "\x81\x7f\x02");
    DirClass::RemoveCtrlChar(At(u"in.txt"_s), At(u"out.txt"_s));
    const QByteArray expected = QByteArray("a\tb\r\nc\x81\x7f" "d\xe0\x05" "e", 12) + padding + "\x81\x7f";
    EXPECT_EQ(ReadBytes(At(u"out.txt"_s)), expected);

    // An input that stays missing is reported once the writer's grace time has passed.
    ExpectFileSystemError([&] { DirClass::RemoveCtrlChar(At(u"none.txt"_s), At(u"out.txt"_s)); },
                          u"DirClass.RemoveCtrlChar:入力ファイルがオープンできません。("_s + At(u"none.txt"_s) + u')');
}

TEST(DirClassFolders, StartupLivesInTheConfigFolderAndUnknownNumbersGiveNothing)
{
    // Where the config folder itself lies is the settings paths' business, tested there.
    EXPECT_EQ(DirClass::GetSpecialFolder(0), DirClass::GetSpecialFolder(1) + u"/autostart"_s);
    for (qint16 none : {31, -1, 17})
        EXPECT_EQ(DirClass::GetSpecialFolder(none), QString()) << none;
}

} // namespace
