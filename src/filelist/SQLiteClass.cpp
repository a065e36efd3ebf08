#include "filelist/SQLiteClass.h"

#include "support/AppError.h"

#include <sqlite3.h>

namespace {

const QString kNotOpen = QStringLiteral("データベースファイルがオープンされていません。");

[[noreturn]] void Raise(const QString& vText) { throw AppError(AppError::Database, vText); }

} // namespace

SQLiteClass::~SQLiteClass()
{
    if (connection_)
        sqlite3_close(connection_);
}

QString SQLiteClass::ErrStr() const { return QString::fromUtf8(sqlite3_errstr(result_)); }

void SQLiteClass::RequireOpen(const char* vOperation) const
{
    if (!connection_)
        Raise(QStringLiteral("SQLite.") + QLatin1String(vOperation) + QStringLiteral(": ") + kNotOpen);
}

void SQLiteClass::SetBusyTimeout(int v)
{
    Exec(QStringLiteral("pragma busy_timeout = ") + QString::number(v));
    busyTimeout_ = v;
}

void SQLiteClass::Open_(const QString& pDataBaseFileName)
{
    if (connection_)
        Raise(QStringLiteral("SQLite.Open_: データベースファイルが既にオープンされています。 オープン中のデータベースファイル: ")
              + dataBaseFileName_ + QStringLiteral(" オープンしようとしたデータベースファイル: ") + pDataBaseFileName);
    sqlite3* connection = nullptr;
    result_ = sqlite3_open(pDataBaseFileName.toUtf8().constData(), &connection);
    if (result_ != SQLITE_OK) {
        // SQLite hands out a connection even when it fails to open; it still has to be closed.
        sqlite3_close(connection);
        Raise(QStringLiteral("SQLite.Open_: データベースファイル ") + pDataBaseFileName
              + QStringLiteral(" のオープンに失敗しました。 (") + QString::number(result_) + QStringLiteral(") ") + ErrStr());
    }
    connection_ = connection;
    dataBaseFileName_ = pDataBaseFileName;
    SetBusyTimeout(busyTimeout_);
}

std::unique_ptr<SQLiteStatementClass> SQLiteClass::Prepare(const QString& pSql)
{
    RequireOpen("Prepare");
    auto statement = std::make_unique<SQLiteStatementClass>();
    try {
        statement->Initialize(connection_, pSql);
    } catch (const AppError&) {
        result_ = statement->Result();
        throw;
    }
    result_ = statement->Result();
    return statement;
}

void SQLiteClass::Exec(const QString& pSql)
{
    RequireOpen("Exec");
    const auto statement = Prepare(pSql);
    try {
        statement->Step();
    } catch (const AppError&) {
        result_ = statement->Result();
        throw;
    }
    result_ = statement->Result();
}

void SQLiteClass::BeginTransaction()
{
    RequireOpen("BeginTransaction");
    QString word;
    switch (transactionType_) {
    case 0: word = QStringLiteral("immediate"); break;
    case 1: word = QStringLiteral("exclusive"); break;
    case 2: word = QStringLiteral("deferred"); break;
    default: break;
    }
    Exec(QStringLiteral("begin ") + word + QStringLiteral(" transaction"));
}

void SQLiteClass::CommitTransaction()
{
    RequireOpen("CommitTransaction");
    Exec(QStringLiteral("commit transaction"));
}

void SQLiteClass::RollBackTransaction()
{
    RequireOpen("RollBackTransaction");
    Exec(QStringLiteral("rollback transaction"));
}

void SQLiteClass::Close_()
{
    RequireOpen("Close_");
    result_ = sqlite3_close(connection_);
    if (result_ != SQLITE_OK)
        Raise(QStringLiteral("SQLite.Close_: データベースファイル ") + dataBaseFileName_
              + QStringLiteral(" のクローズに失敗しました。 (") + QString::number(result_) + QStringLiteral(") ") + ErrStr());
    dataBaseFileName_.clear();
    connection_ = nullptr;
}
