#pragma once
// One prepared statement. Every SQLite failure becomes error 7000 whose text names the
// operation, the SQL and SQLite's own code and text, because a user's report of a failed folder
// read is all we ever see of it. Rows come out as text keyed by column name.
//
// A statement does not keep its connection alive: drop statements before their SQLiteClass.

#include <QList>
#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

// One bind item: {type, value} binds at its position + 1; {key, type, value} binds at "?n" or at a
// named parameter (the key carries its own ":", "@" or "$"). Types: "integer", "float", "text",
// "null". An empty list binds nothing and leaves the statement where it stands.
using SQLiteBindParams = QList<QStringList>;

// The current row: column name to text, in column order. Names compare without regard to case.
class SQLiteRow {
public:
    QString Value(const QString& vName) const;  // "" for a column that isn't there
    bool Exists(const QString& vName) const;
    qsizetype Count() const { return static_cast<qsizetype>(columns_.size()); }
    QString Name(qsizetype vIndex) const { return columns_[static_cast<size_t>(vIndex)].first; }
    bool Add(const QString& vName, const QString& vValue);  // false for a name already there

private:
    std::vector<std::pair<QString, QString>> columns_;
};

class SQLiteStatementClass {
public:
    SQLiteStatementClass() = default;
    ~SQLiteStatementClass();  // finalises a statement still held; its errors are ignored
    SQLiteStatementClass(const SQLiteStatementClass&) = delete;
    SQLiteStatementClass& operator=(const SQLiteStatementClass&) = delete;

    int Result() const { return result_; }
    QString ErrStr() const;
    QString SQL() const { return sql_; }

    void Initialize(sqlite3* phDb, const QString& pSql);
    void Bind(const SQLiteBindParams& pBindParams);
    // Binds (which resets, when there is something to bind), steps, and gives 100 for a row or
    // 101 for the end.
    int Step(const SQLiteBindParams& pBindParams = {});
    SQLiteRow Data() const;
    void Finalize();

private:
    void BindItem(int vPosition, const QStringList& vItem);
    [[noreturn]] void Raise(const QString& vText) const;

    sqlite3_stmt* statement_ = nullptr;
    QString sql_;
    int result_ = 0;
    SQLiteBindParams lastParams_;
};
