// The file list store on real database files: the exact statements that reach SQLite, and what
// comes back out in which order.

#include "filelist/AppFileListClass.h"
#include "support/AppError.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sqlite3.h>

namespace {

using namespace Qt::StringLiterals;

// Every statement that any connection of this process begins, from the moment it opens: SQLite
// calls an automatic extension on each new connection, which installs the trace there.
QStringList* gStatements = nullptr;

int Record(unsigned, void*, void*, void* vSql)
{
    if (gStatements)
        gStatements->append(QString::fromUtf8(static_cast<const char*>(vSql)));
    return 0;
}

int TraceEveryConnection(sqlite3* vDb, char**, const sqlite3_api_routines*)
{
    sqlite3_trace_v2(vDb, SQLITE_TRACE_STMT, Record, nullptr);
    return SQLITE_OK;
}

class AppFileListTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        dbPath = dir.filePath(u"Marnoquill_FileList_1.db"_s);
        gStatements = &statements;
        sqlite3_auto_extension(reinterpret_cast<void (*)()>(TraceEveryConnection));
    }
    void TearDown() override
    {
        sqlite3_cancel_auto_extension(reinterpret_cast<void (*)()>(TraceEveryConnection));
        gStatements = nullptr;
    }

    // A database ready for a walk, as the main window prepares it.
    qint16 Begin(AppFileListClass& vList)
    {
        vList.CreateDatabase(dbPath);
        vList.BeginTransaction();
        vList.ClearAll();
        return vList.GetProcNo(AppFileListClass::InputFileList);
    }

    static QStringList Names(SQLiteStatementClass& vReader)
    {
        QStringList names;
        while (vReader.Step() == 100)
            names << vReader.Data().Value(u"FileName"_s);
        return names;
    }

    // A real file with a chosen time of last change.
    QString Touch(const QString& vName, const QDateTime& vWritten)
    {
        const QString path = dir.filePath(vName);
        QFile f(path);
        EXPECT_TRUE(f.open(QIODevice::WriteOnly));
        EXPECT_TRUE(f.setFileTime(vWritten, QFileDevice::FileModificationTime));
        return path;
    }

    QTemporaryDir dir;
    QString dbPath;
    QStringList statements;
};

TEST_F(AppFileListTest, EveryStatementReachesSQLiteAsWritten)
{
    AppFileListClass list;
    list.CreateDatabase(dbPath);
    EXPECT_EQ(statements, QStringList({
        u"pragma busy_timeout = 3000"_s,
        u"begin immediate transaction"_s,
        u"create table if not exists ProcNo (ProcNo integer primary key AUTOINCREMENT, ProcName TEXT NOT NULL UNIQUE)"_s,
        u"create index if not exists ProcNoIdx on ProcNo(ProcNo)"_s,
        u"create table if not exists FileList (ProcNo integer,Path , FileName, No integer, primary key (ProcNo, Path, FileName))"_s,
        u"create table if not exists FileListAfterEdit (Level integer, ProcNo integer, Path , FileName, No integer, Group1, Group2, primary key (Level, ProcNo, Path , FileName))"_s,
        u"create index if not exists FileListAfterEditNo on FileListAfterEdit(No)"_s,
        u"create index if not exists FileListAfterEditGroup1Index on FileListAfterEdit(Group1)"_s,
        u"create index if not exists FileListAfterEditGroup2Index on FileListAfterEdit(Group2)"_s,
        u"commit transaction"_s,
    }));

    // Numbers are never handed out twice, even after the table is emptied: the third read of a
    // process's life is process 3.
    statements.clear();
    list.BeginTransaction();
    for (int i = 0; i < 3; ++i) {
        list.ClearAll();
        list.GetProcNo(AppFileListClass::InputFileList);
    }
    EXPECT_EQ(statements.mid(0, 7), QStringList({
        u"begin immediate transaction"_s,
        u"delete from FileList"_s,
        u"delete from FileListAfterEdit"_s,
        u"delete from ProcNo"_s,
        u"select ProcNo from ProcNo where ((ProcName = 'InputFileList'))"_s,
        u"insert into ProcNo(ProcName) values ('InputFileList')"_s,
        u"select ProcNo from ProcNo where ((ProcName = 'InputFileList'))"_s,
    }));

    statements.clear();
    list.AddFileList(3, u"C:\\a\\"_s, u"b.xdw"_s, 12);
    EXPECT_EQ(list.GetFileListRecordCount(3), 1);
    EXPECT_EQ(list.GetFileListAfterEditRecordCount(1, 3), 0);
    EXPECT_EQ(Names(*list.GeteSqlOfFileListReader(3)), QStringList({u"b.xdw"_s}));
    EXPECT_EQ(Names(*list.Sort(AppFileListClass::SortByFileName, AppFileListClass::Ascending)), QStringList({u"b.xdw"_s}));
    list.Sort(AppFileListClass::SortByFileName, AppFileListClass::Descending)->Step();
    list.Commit();
    EXPECT_EQ(statements, QStringList({
        u"insert into FileList(ProcNo,Path,FileName,No) values ('3','C:\\a\\','b.xdw',12)"_s,
        u"select count(*) as record_count from FileList where ((ProcNo = 3))"_s,
        u"select count(*) as record_count from FileListAfterEdit where ((Level = '1') and (ProcNo = 3))"_s,
        u"select * from FileList where ((ProcNo = 3))"_s,
        u"select ProcNo from ProcNo where ((ProcName = 'InputFileList'))"_s,
        u"delete from FileListAfterEdit where ((Level = '1') and (ProcNo = 3))"_s,
        u"select * from FileList where ((ProcNo = 3))"_s,
        u"insert into FileListAfterEdit(Level,ProcNo,Path,FileName,No,Group1,Group2) values (1,3,'C:\\a\\','b.xdw',1,'b.xdw','')"_s,
        u"select * from FileListAfterEdit where ((Level = '1') and (ProcNo = 3)) order by Group1 ASC"_s,
        u"select ProcNo from ProcNo where ((ProcName = 'InputFileList'))"_s,
        u"delete from FileListAfterEdit where ((Level = '1') and (ProcNo = 3))"_s,
        u"select * from FileList where ((ProcNo = 3))"_s,
        u"insert into FileListAfterEdit(Level,ProcNo,Path,FileName,No,Group1,Group2) values (1,3,'C:\\a\\','b.xdw',1,'b.xdw','')"_s,
        u"select * from FileListAfterEdit where ((Level = '1') and (ProcNo = 3)) order by Group1 DESC"_s,
        u"commit transaction"_s,
    }));
}

TEST_F(AppFileListTest, ProcessNumbersAndDuplicateFinds)
{
    AppFileListClass list;
    const qint16 procNo = Begin(list);
    EXPECT_GT(procNo, 0);
    EXPECT_EQ(list.GetProcNo(AppFileListClass::InputFileList), procNo);
    EXPECT_NE(list.GetProcNo(u"Other"_s), procNo);

    list.AddFileList(procNo, u"/d/"_s, u"a.tif"_s, 1);
    list.AddFileList(procNo, u"/e/"_s, u"a.tif"_s, 2);  // same name, other folder: a find of its own
    try {
        list.AddFileList(procNo, u"/d/"_s, u"a.tif"_s, 3);
        ADD_FAILURE() << "a second row for one path and name";
    } catch (const AppError& e) {
        EXPECT_EQ(e.Number(), 7000);
        EXPECT_EQ(e.Description(), u"SQLiteStatement.Step: stepに失敗しました。 [insert into FileList(ProcNo,Path,FileName,No) values ('"_s
                                       + QString::number(procNo) + u"','/d/','a.tif',3)] (19) constraint failed"_s);
    }
    EXPECT_EQ(list.GetFileListRecordCount(procNo), 2);
}

TEST_F(AppFileListTest, AwkwardNamesComeBackWhole)
{
    const QStringList awkward = {u"it's.tif"_s, u"日本語の書類.xdw"_s, u"with  two spaces .tif"_s, u"line\nbreak.tif"_s,
                                 u"''.tif"_s, u"%_\\.tif"_s};
    AppFileListClass list;
    const qint16 procNo = Begin(list);
    const QString folder = u"/srv/共有 フォルダ/o'brien/"_s;
    for (int i = 0; i < awkward.size(); ++i)
        list.AddFileList(procNo, folder, awkward[i], i + 1);

    const auto reader = list.Sort(AppFileListClass::SortByFileName, AppFileListClass::Ascending);
    QStringList names;
    while (reader->Step() == 100) {
        const SQLiteRow row = reader->Data();
        EXPECT_EQ(row.Value(u"Path"_s), folder);
        names << row.Value(u"FileName"_s);
    }
    QStringList expected = awkward;
    std::sort(expected.begin(), expected.end(), [](const QString& a, const QString& b) { return a.toUtf8() < b.toUtf8(); });
    EXPECT_EQ(names, expected);
}

TEST_F(AppFileListTest, SortOrdersAndSortingAgain)
{
    // Written in an order that is neither by name nor by time.
    const QDateTime base(QDate(2024, 5, 1), QTime(9, 0));
    Touch(u"b.tif"_s, base.addSecs(60));
    Touch(u"c.tif"_s, base);
    Touch(u"a.tif"_s, base.addDays(3));
    Touch(u"B2.tif"_s, base.addSecs(30));
    AppFileListClass list;
    const qint16 procNo = Begin(list);
    const QString folder = dir.path() + u"/"_s;
    int no = 1;
    for (const QString& name : {u"b.tif"_s, u"c.tif"_s, u"a.tif"_s, u"B2.tif"_s})
        list.AddFileList(procNo, folder, name, no++);

    // Names compare as bytes: capitals first, digits not as numbers.
    EXPECT_EQ(Names(*list.Sort(AppFileListClass::SortByFileName, AppFileListClass::Ascending)),
              QStringList({u"B2.tif"_s, u"a.tif"_s, u"b.tif"_s, u"c.tif"_s}));
    EXPECT_EQ(Names(*list.Sort(AppFileListClass::SortByFileName, AppFileListClass::Descending)),
              QStringList({u"c.tif"_s, u"b.tif"_s, u"a.tif"_s, u"B2.tif"_s}));
    EXPECT_EQ(Names(*list.Sort(AppFileListClass::SortByDateTime, AppFileListClass::Ascending)),
              QStringList({u"c.tif"_s, u"B2.tif"_s, u"b.tif"_s, u"a.tif"_s}));
    EXPECT_EQ(Names(*list.Sort(AppFileListClass::SortByDateTime, AppFileListClass::Descending)),
              QStringList({u"a.tif"_s, u"b.tif"_s, u"B2.tif"_s, u"c.tif"_s}));
    // Each sort replaced the copy rather than adding to it.
    EXPECT_EQ(list.GetFileListAfterEditRecordCount(1, procNo), 4);
    // Unsorted, the finds come back in the order of the table's key, folder and name as bytes,
    // not in the order they were written.
    EXPECT_EQ(Names(*list.GeteSqlOfFileListReader(procNo)),
              QStringList({u"B2.tif"_s, u"a.tif"_s, u"b.tif"_s, u"c.tif"_s}));
}

TEST_F(AppFileListTest, EmptyWalkAndALeftoverFileOfTheSameName)
{
    {
        AppFileListClass list;
        const qint16 procNo = Begin(list);
        EXPECT_EQ(list.GetFileListRecordCount(procNo), 0);
        EXPECT_EQ(list.GeteSqlOfFileListReader(procNo)->Step(), 101);
        EXPECT_EQ(list.Sort(AppFileListClass::SortByFileName, AppFileListClass::Ascending)->Step(), 101);
        list.AddFileList(procNo, u"/old/"_s, u"stale.tif"_s, 1);
        list.Commit();
    }
    // A process that ended without deleting its file leaves rows; the next of that id takes the
    // file over and starts clean.
    AppFileListClass list;
    const qint16 procNo = Begin(list);
    EXPECT_EQ(list.GetFileListRecordCount(procNo), 0);
    EXPECT_EQ(list.DbFilePath(), dbPath);
}

} // namespace
