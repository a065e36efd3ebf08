// The connection and statement classes against real database files: the texts of their
// failures, which a user reads in a message box, and the binding rules callers depend on.

#include "filelist/SQLiteClass.h"
#include "support/AppError.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sqlite3.h>

namespace {

using namespace Qt::StringLiterals;

class SQLiteLayerTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        path = dir.filePath(u"t.db"_s);
        db.Open_(path);
        db.Exec(u"create table t (id integer, name text, score)"_s);
        db.Exec(u"insert into t values (1, 'a', 1.5)"_s);
        db.Exec(u"insert into t values (2, 'b', null)"_s);
        db.Exec(u"insert into t values (3, 'c', 'x')"_s);
    }

    // The description of the error 7000 that vCall raises, or "" when it raises none.
    template <typename F>
    static QString Failure(F vCall)
    {
        try {
            vCall();
        } catch (const AppError& e) {
            EXPECT_EQ(e.Number(), 7000);
            return e.Description();
        }
        return {};
    }

    QTemporaryDir dir;
    QString path;
    SQLiteClass db;
};

TEST_F(SQLiteLayerTest, ClosedConnectionTextsNameTheOperation)
{
    SQLiteClass closed;
    const QString tail = u"データベースファイルがオープンされていません。"_s;
    EXPECT_EQ(Failure([&] { closed.Prepare(u"select 1"_s); }), u"SQLite.Prepare: "_s + tail);
    EXPECT_EQ(Failure([&] { closed.Exec(u"select 1"_s); }), u"SQLite.Exec: "_s + tail);
    EXPECT_EQ(Failure([&] { closed.BeginTransaction(); }), u"SQLite.BeginTransaction: "_s + tail);
    EXPECT_EQ(Failure([&] { closed.CommitTransaction(); }), u"SQLite.CommitTransaction: "_s + tail);
    EXPECT_EQ(Failure([&] { closed.RollBackTransaction(); }), u"SQLite.RollBackTransaction: "_s + tail);
    EXPECT_EQ(Failure([&] { closed.Close_(); }), u"SQLite.Close_: "_s + tail);
    // The busy time-out runs its pragma at once, so a closed connection refuses it like Exec.
    EXPECT_EQ(Failure([&] { closed.SetBusyTimeout(10); }), u"SQLite.Exec: "_s + tail);
    EXPECT_EQ(closed.BusyTimeout(), 3000);
}

TEST_F(SQLiteLayerTest, OpeningTwiceOrOpeningTheImpossibleSaysWhichFiles)
{
    const QString other = dir.filePath(u"other.db"_s);
    EXPECT_EQ(Failure([&] { db.Open_(other); }),
              u"SQLite.Open_: データベースファイルが既にオープンされています。 オープン中のデータベースファイル: "_s + path
                  + u" オープンしようとしたデータベースファイル: "_s + other);

    SQLiteClass second;
    const QString nowhere = dir.filePath(u"missing/folder/x.db"_s);
    EXPECT_EQ(Failure([&] { second.Open_(nowhere); }),
              u"SQLite.Open_: データベースファイル "_s + nowhere
                  + u" のオープンに失敗しました。 (14) unable to open database file"_s);
    EXPECT_EQ(second.DataBaseFileName(), QString());
    EXPECT_EQ(second.Handle(), nullptr);

    db.Close_();
    EXPECT_EQ(db.DataBaseFileName(), QString());
    db.Open_(other);  // a closed connection opens again
    EXPECT_EQ(db.DataBaseFileName(), other);
}

TEST_F(SQLiteLayerTest, SyntaxErrorsAndFailedStepsCarryTheSql)
{
    EXPECT_EQ(Failure([&] { db.Prepare(u"selec 1"_s); }),
              u"SQLiteStatement.Initialize: SQL [selec 1] のステートメントの生成に失敗しました。 ※ SQL構文エラー (1) SQL logic error"_s);
    EXPECT_EQ(db.Result(), 1);

    db.Exec(u"create table u (k integer primary key)"_s);
    const auto insert = db.Prepare(u"insert into u values (?)"_s);
    insert->Step({{u"integer"_s, u"5"_s}});
    EXPECT_EQ(Failure([&] { insert->Step({{u"integer"_s, u"5"_s}, {u"?1"_s, u"text"_s, u"5"_s}}); }),
              u"SQLiteStatement.Step: stepに失敗しました。 [insert into u values (?)] [integer, 5; ?1, text, 5] (19) constraint failed"_s);
}

TEST_F(SQLiteLayerTest, StepWalksOnWithoutParametersAndStartsAgainWithThem)
{
    const auto reader = db.Prepare(u"select id from t where id >= ? order by id"_s);
    ASSERT_EQ(reader->Step({{u"integer"_s, u"2"_s}}), 100);
    EXPECT_EQ(reader->Data().Value(u"id"_s), u"2"_s);
    ASSERT_EQ(reader->Step(), 100);
    EXPECT_EQ(reader->Data().Value(u"id"_s), u"3"_s);
    EXPECT_EQ(reader->Step(), 101);
    // Parameters reset the statement: the walk begins at the first row again.
    ASSERT_EQ(reader->Step({{u"integer"_s, u"1"_s}}), 100);
    EXPECT_EQ(reader->Data().Value(u"id"_s), u"1"_s);
}

TEST_F(SQLiteLayerTest, BindingByPositionQuestionNumberAndName)
{
    const auto reader = db.Prepare(u"select ?1 as a, ?2 as b, :n as c, ?4 as d"_s);
    reader->Step({{u"text"_s, u"一"_s}, {u"?4"_s, u"float"_s, u"2.5"_s}, {u":n"_s, u"null"_s, u"ignored"_s}});
    const SQLiteRow row = reader->Data();
    EXPECT_EQ(row.Value(u"a"_s), u"一"_s);
    EXPECT_EQ(row.Value(u"b"_s), QString());  // never bound: null
    EXPECT_EQ(row.Value(u"c"_s), QString());
    EXPECT_EQ(row.Value(u"d"_s), u"2.5"_s);
    EXPECT_EQ(row.Count(), 4);
}

TEST_F(SQLiteLayerTest, BindingRefusalsNameTheItem)
{
    const QString sql = u"select :n, ?"_s;
    const auto statement = db.Prepare(sql);
    const QString first = u"SQLiteStatement.Bind: バインドパラメーターのインデックス "_s;
    // Integers are 16 bits wide, as they always were; a float takes the same value.
    EXPECT_EQ(Failure([&] { statement->Bind({{u"integer"_s, u"40000"_s}}); }),
              first + u"0 のタイプ integer に値 40000 は指定できません。 ["_s + sql + u"]"_s);
    EXPECT_EQ(Failure([&] { statement->Bind({{u"float"_s, u"40000"_s}}); }), QString());
    EXPECT_EQ(Failure([&] { statement->Bind({{u"text"_s, u"a"_s}, {u"?x"_s, u"text"_s, u"b"_s}}); }),
              first + u"1 の要素で指定されたキー ?x が不正です。 ["_s + sql + u"]"_s);
    EXPECT_EQ(Failure([&] { statement->Bind({{u":nope"_s, u"text"_s, u"b"_s}}); }),
              first + u"0 の要素で指定されたキー :nope は存在しません。 ["_s + sql + u"]"_s);
    EXPECT_EQ(Failure([&] { statement->Bind({{u"text"_s}}); }),
              first + u"0 の要素数が 2 または 3 ではありません。 ["_s + sql + u"]"_s);
    EXPECT_EQ(Failure([&] { statement->Bind({{u"blob"_s, u"1"_s}}); }),
              first + u"0 のタイプ blob は指定できません。 ["_s + sql + u"]"_s);
    EXPECT_EQ(Failure([&] { statement->Bind({{u"?9"_s, u"text"_s, u"b"_s}}); }),
              first + u"0 の要素 [?9, text, b] のバインドに失敗しました。 ["_s + sql + u"] (25)column index out of range"_s);
}

TEST_F(SQLiteLayerTest, RowsGiveTextForEveryColumnType)
{
    const auto reader = db.Prepare(u"select count(*) as record_count, max(score) as m, x'00' as bl from t where id < 3"_s);
    ASSERT_EQ(reader->Step(), 100);
    const SQLiteRow row = reader->Data();
    EXPECT_EQ(row.Value(u"RECORD_COUNT"_s), u"2"_s);  // names compare as the old collection did
    EXPECT_EQ(row.Value(u"m"_s), u"1.5"_s);
    EXPECT_TRUE(row.Exists(u"bl"_s));

    const auto twice = db.Prepare(u"select 1 as k, 2 as K"_s);
    twice->Step();
    EXPECT_EQ(Failure([&] { twice->Data(); }), u"SQLiteStatement.Data: キー K 、値 2 の設定に失敗しました。"_s);

    reader->Finalize();
    EXPECT_EQ(Failure([&] { reader->Step(); }), u"SQLiteStatement.Step: ステートメントハンドルが設定されていません。"_s);
    EXPECT_EQ(Failure([&] { reader->Data(); }), u"SQLiteStatement.Data: ステートメントハンドルが設定されていません。"_s);
    EXPECT_EQ(Failure([&] { reader->Finalize(); }), u"SQLiteStatement.Finalize: ステートメントハンドルが設定されていません。"_s);
}

int RecordStatement(unsigned, void* vContext, void*, void* vSql)
{
    static_cast<QStringList*>(vContext)->append(QString::fromUtf8(static_cast<const char*>(vSql)));
    return 0;
}

TEST_F(SQLiteLayerTest, TransactionWordsFollowTheType)
{
    QStringList seen;
    sqlite3_trace_v2(db.Handle(), SQLITE_TRACE_STMT, RecordStatement, &seen);
    for (int type : {0, 1, 2, 7}) {
        db.SetTransactionType(type);
        db.BeginTransaction();
        db.RollBackTransaction();
    }
    db.BeginTransaction();
    db.CommitTransaction();
    EXPECT_EQ(seen, QStringList({u"begin immediate transaction"_s, u"rollback transaction"_s,
                                 u"begin exclusive transaction"_s, u"rollback transaction"_s,
                                 u"begin deferred transaction"_s, u"rollback transaction"_s,
                                 u"begin  transaction"_s, u"rollback transaction"_s,
                                 u"begin  transaction"_s, u"commit transaction"_s}));
}

} // namespace
