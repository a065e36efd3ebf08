#pragma once
// The throw-away database behind opening a whole folder. The walk writes each find into it and
// the tabs are then opened from a statement read row by row, sorted by SQLite when the settings
// ask for it, so that a folder of any size costs no list in memory. One file per process, used
// for one bulk open at a time, inside one transaction:
//
//     CreateDatabase(path); BeginTransaction(); ClearAll(); procNo = GetProcNo(InputFileList);
//     AddFileList(...) for each find;  Sort(...) or GeteSqlOfFileListReader(procNo);  step rows;
//     Commit(); drop the object (closing the file), then delete the file.
//
// Statements are plain text from SqlCreateClass; failures are SQLite's error 7000.

#include "filelist/SQLiteClass.h"

#include <QString>

#include <memory>

class SqlCreateClass;

class AppFileListClass {
public:
    // The only named process the viewer registers.
    static inline const QString InputFileList = QStringLiteral("InputFileList");
    // What Sort orders by, and which way.
    enum : qint16 { SortByFileName = 0, SortByFullPath = 1, SortByDateTime = 2 };
    enum : qint16 { Ascending = 0, Descending = 1 };

    QString DbFilePath() const { return dbFilePath_; }
    // Opens (or reopens a leftover of) the file and creates what is missing of the schema.
    void CreateDatabase(const QString& vDbFilePath);
    void BeginTransaction() { sqlite_.BeginTransaction(); }
    void Commit() { sqlite_.CommitTransaction(); }
    void ClearAll();
    // The process's number, registering the name when it is new.
    qint16 GetProcNo(const QString& vProcName);
    // Raises 7000 for a path and name already there for the process.
    void AddFileList(qint16 vProcNo, const QString& vPath, const QString& vFileName, qint32 vNo);
    qint32 GetFileListAfterEditRecordCount(qint16 vTreeLevel, qint16 vProcNo);
    qint32 GetFileListRecordCount(qint16 vProcNo);
    // The finds of a process, in the order the table gives them.
    std::unique_ptr<SQLiteStatementClass> GeteSqlOfFileListReader(qint16 vProcNo);
    // Copies the finds of InputFileList with their sort key into FileListAfterEdit (level 1) and
    // gives a statement over that copy in order. Sorting again replaces the copy.
    std::unique_ptr<SQLiteStatementClass> Sort(qint16 vSortItem, qint16 vSortOrder);

    // The connection, for a caller that must watch what reaches SQLite.
    SQLiteClass& Connection() { return sqlite_; }

private:
    qint32 Count(SqlCreateClass& vSql);

    QString dbFilePath_;
    SQLiteClass sqlite_;
};
