#pragma once
// One SQLite connection. Failures are error 7000 with texts that begin "SQLite." and the name of
// the operation, so that they read the same as those of the statements they run.

#include "filelist/SQLiteStatementClass.h"

#include <QString>

#include <memory>

class SQLiteClass {
public:
    SQLiteClass() = default;
    ~SQLiteClass();  // closes a connection still open; its errors are ignored
    SQLiteClass(const SQLiteClass&) = delete;
    SQLiteClass& operator=(const SQLiteClass&) = delete;

    QString DataBaseFileName() const { return dataBaseFileName_; }
    int Result() const { return result_; }
    QString ErrStr() const;
    // Milliseconds another process may hold the file before a statement gives up. Setting it
    // runs the pragma at once, so it needs an open connection; Open_ applies the stored value.
    int BusyTimeout() const { return busyTimeout_; }
    void SetBusyTimeout(int v);
    // 0 immediate, 1 exclusive, 2 deferred; any other number begins a plain transaction.
    int TransactionType() const { return transactionType_; }
    void SetTransactionType(int v) { transactionType_ = v; }

    void Open_(const QString& pDataBaseFileName);
    std::unique_ptr<SQLiteStatementClass> Prepare(const QString& pSql);
    void Exec(const QString& pSql);
    void BeginTransaction();
    void CommitTransaction();
    void RollBackTransaction();
    void Close_();

    // The C connection, null while closed: for tracing what reaches SQLite.
    sqlite3* Handle() const { return connection_; }

private:
    void RequireOpen(const char* vOperation) const;

    QString dataBaseFileName_;
    sqlite3* connection_ = nullptr;
    int result_ = 0;
    int busyTimeout_ = 3000;
    int transactionType_ = 0;
};
