#include "filelist/AppFileListClass.h"

#include "filelist/SqlCreateClass.h"

#include <QDateTime>
#include <QFileInfo>

namespace {

// The schema, in the order it has always been created; each tolerates an existing file.
const QString kSchema[] = {
    QStringLiteral("create table if not exists ProcNo (ProcNo integer primary key AUTOINCREMENT, ProcName TEXT NOT NULL UNIQUE)"),
    QStringLiteral("create index if not exists ProcNoIdx on ProcNo(ProcNo)"),
    QStringLiteral("create table if not exists FileList (ProcNo integer,Path , FileName, No integer, primary key (ProcNo, Path, FileName))"),
    QStringLiteral("create table if not exists FileListAfterEdit (Level integer, ProcNo integer, Path , FileName, No integer, Group1, Group2, primary key (Level, ProcNo, Path , FileName))"),
    QStringLiteral("create index if not exists FileListAfterEditNo on FileListAfterEdit(No)"),
    QStringLiteral("create index if not exists FileListAfterEditGroup1Index on FileListAfterEdit(Group1)"),
    QStringLiteral("create index if not exists FileListAfterEditGroup2Index on FileListAfterEdit(Group2)"),
};

const QString kCondition = QStringLiteral("条件");
const QString kLevel = QStringLiteral("1");  // the only processing level there is

// Every WHERE of the store is one "and" block of comparisons, read back by its name.
QString WhereOf(SqlCreateClass& vSql) { return vSql.Block(kCondition, SqlCreateClass::LookUpOnly)->CreateWhere(); }

// The level and the process of FileListAfterEdit; the level goes in as text, which the column's
// integer affinity turns back into a number.
void WhereLevelAndProc(SqlCreateClass& vSql, qint16 vTreeLevel, qint16 vProcNo)
{
    const auto block = vSql.Block(QStringLiteral("and"), kCondition);
    block->Operator(QStringLiteral("Level"), QStringLiteral("="), QString::number(vTreeLevel), SqlEscape::String);
    block->Operator(QStringLiteral("ProcNo"), QStringLiteral("="), QString::number(vProcNo), SqlEscape::Numeric);
    vSql.SetWhere(WhereOf(vSql));
}

void WhereProc(SqlCreateClass& vSql, qint16 vProcNo)
{
    vSql.Block(QStringLiteral("and"), kCondition)
        ->Operator(QStringLiteral("ProcNo"), QStringLiteral("="), QString::number(vProcNo), SqlEscape::Numeric);
    vSql.SetWhere(WhereOf(vSql));
}

} // namespace

void AppFileListClass::CreateDatabase(const QString& vDbFilePath)
{
    dbFilePath_ = vDbFilePath;
    sqlite_.Open_(vDbFilePath);
    sqlite_.BeginTransaction();
    for (const QString& statement : kSchema)
        sqlite_.Exec(statement);
    sqlite_.CommitTransaction();
}

void AppFileListClass::ClearAll()
{
    for (const char* table : {"FileList", "FileListAfterEdit", "ProcNo"}) {
        SqlCreateClass sql;
        sql.SetTableName(QLatin1String(table));
        sqlite_.Exec(sql.CreateDelete());
    }
}

qint16 AppFileListClass::GetProcNo(const QString& vProcName)
{
    auto lookUp = [&] {
        SqlCreateClass sql;
        sql.SetTableName(QStringLiteral("ProcNo"));
        sql.PushItem(QStringLiteral("ProcNo"));
        sql.Block(QStringLiteral("and"), kCondition)
            ->Operator(QStringLiteral("ProcName"), QStringLiteral("="), vProcName, SqlEscape::String);
        sql.SetWhere(WhereOf(sql));
        const auto reader = sqlite_.Prepare(sql.CreateSelect());
        qint16 number = -1;
        while (reader->Step() == 100)
            number = reader->Data().Value(QStringLiteral("ProcNo")).toShort();
        return number;
    };
    qint16 number = lookUp();
    if (number == -1) {
        SqlCreateClass sql;
        sql.SetTableName(QStringLiteral("ProcNo"));
        sql.PushItemAndValue(QStringLiteral("ProcName"), vProcName, SqlEscape::String);
        sqlite_.Exec(sql.CreateInsert());
        number = lookUp();
    }
    return number;
}

void AppFileListClass::AddFileList(qint16 vProcNo, const QString& vPath, const QString& vFileName, qint32 vNo)
{
    SqlCreateClass sql;
    sql.SetTableName(QStringLiteral("FileList"));
    sql.PushItemAndValue(QStringLiteral("ProcNo"), QString::number(vProcNo), SqlEscape::String);
    sql.PushItemAndValue(QStringLiteral("Path"), vPath, SqlEscape::String);
    sql.PushItemAndValue(QStringLiteral("FileName"), vFileName, SqlEscape::String);
    sql.PushItemAndValue(QStringLiteral("No"), QString::number(vNo), SqlEscape::Numeric);
    sqlite_.Exec(sql.CreateInsert());
}

qint32 AppFileListClass::Count(SqlCreateClass& vSql)
{
    vSql.PushItem(QStringLiteral("count(*) as record_count"));
    const auto reader = sqlite_.Prepare(vSql.CreateSelect());
    qint32 count = 0;
    while (reader->Step() == 100)
        count = reader->Data().Value(QStringLiteral("record_count")).toInt();
    return count;
}

qint32 AppFileListClass::GetFileListAfterEditRecordCount(qint16 vTreeLevel, qint16 vProcNo)
{
    SqlCreateClass sql;
    sql.SetTableName(QStringLiteral("FileListAfterEdit"));
    WhereLevelAndProc(sql, vTreeLevel, vProcNo);
    return Count(sql);
}

qint32 AppFileListClass::GetFileListRecordCount(qint16 vProcNo)
{
    SqlCreateClass sql;
    sql.SetTableName(QStringLiteral("FileList"));
    WhereProc(sql, vProcNo);
    return Count(sql);
}

std::unique_ptr<SQLiteStatementClass> AppFileListClass::GeteSqlOfFileListReader(qint16 vProcNo)
{
    SqlCreateClass sql;
    sql.SetTableName(QStringLiteral("FileList"));
    sql.PushItem(QStringLiteral("*"));
    WhereProc(sql, vProcNo);
    return sqlite_.Prepare(sql.CreateSelect());
}

std::unique_ptr<SQLiteStatementClass> AppFileListClass::Sort(qint16 vSortItem, qint16 vSortOrder)
{
    const qint16 procNo = GetProcNo(InputFileList);
    {
        SqlCreateClass sql;
        sql.SetTableName(QStringLiteral("FileListAfterEdit"));
        WhereLevelAndProc(sql, 1, procNo);
        sqlite_.Exec(sql.CreateDelete());
    }

    const auto reader = GeteSqlOfFileListReader(procNo);
    qint32 number = 1;
    while (reader->Step() == 100) {
        const SQLiteRow row = reader->Data();
        const QString path = row.Value(QStringLiteral("Path"));
        const QString fileName = row.Value(QStringLiteral("FileName"));
        QString key;
        if (vSortItem == SortByFileName)
            key = fileName;
        else if (vSortItem == SortByFullPath)
            key = path + QLatin1Char('/') + fileName;
        else if (vSortItem == SortByDateTime)
            key = QFileInfo(path + QLatin1Char('/') + fileName).lastModified().toString(QStringLiteral("yyyy/MM/dd HH:mm:ss"));
        SqlCreateClass sql;
        sql.SetTableName(QStringLiteral("FileListAfterEdit"));
        sql.PushItemAndValue(QStringLiteral("Level"), kLevel, SqlEscape::Numeric);
        sql.PushItemAndValue(QStringLiteral("ProcNo"), QString::number(procNo), SqlEscape::Numeric);
        sql.PushItemAndValue(QStringLiteral("Path"), path, SqlEscape::String);
        sql.PushItemAndValue(QStringLiteral("FileName"), fileName, SqlEscape::String);
        sql.PushItemAndValue(QStringLiteral("No"), QString::number(number), SqlEscape::Numeric);
        sql.PushItemAndValue(QStringLiteral("Group1"), key, SqlEscape::String);
        sql.PushItemAndValue(QStringLiteral("Group2"), QString(), SqlEscape::String);
        sqlite_.Exec(sql.CreateInsert());
        ++number;
    }

    SqlCreateClass sql;
    sql.SetTableName(QStringLiteral("FileListAfterEdit"));
    sql.PushItem(QStringLiteral("*"));
    WhereLevelAndProc(sql, 1, procNo);
    sql.SetOtherOption(vSortOrder != 0 ? QStringLiteral("order by Group1 DESC") : QStringLiteral("order by Group1 ASC"));
    return sqlite_.Prepare(sql.CreateSelect());
}
