// The SQL text builder: values escaped into the text and the statement shapes, byte for byte,
// since whatever it writes goes to SQLite as it is.

#include "filelist/SqlCreateClass.h"

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;

TEST(SqlEscapeTest, ValuesAreWrittenSafely)
{
    EXPECT_EQ(SqlCreateClass::SQLite_EscapeString(u"it's"_s), u"'it''s'"_s);
    EXPECT_EQ(SqlCreateClass::SQLite_EscapeString(QString()), u"''"_s);
    EXPECT_EQ(SqlCreateClass::SQLite_EscapeNumeric(u"abc"_s), u"null"_s);
    EXPECT_EQ(SqlCreateClass::SQLite_EscapeNumeric(u"12.5"_s), u"12.5"_s);
    EXPECT_EQ(SqlCreateClass::SQLite_EscapeNumeric(QString()), u"null"_s);
    EXPECT_EQ(SqlCreateClass::SQLite_EscapeDateTime(u"2010/04/01 10:00:00"_s), u"'2010-04-01 10:00:00'"_s);
    EXPECT_EQ(SqlCreateClass::SQLite_EscapeDateTime(QString()), u"null"_s);
    EXPECT_EQ(SqlBlockClass::SQLite_EscapeLike(u"50%_a\\b'"_s, u"%{0}"_s), u"'%50\\%\\_a\\\\b''' escape '\\'"_s);
    EXPECT_EQ(SqlBlockClass::SQLite_EscapeLike(u"x"_s), u"'x' escape '\\'"_s);
}

// Insert, select and delete are pinned through the file list store; the update only here.
TEST(SqlCreateClassTest, UpdatesAndRepeatedItems)
{
    SqlCreateClass sql;
    sql.SetTableName(u"T"_s);
    sql.PushItemAndValue(u"a"_s, u"1"_s, SqlEscape::Numeric);
    sql.PushItemAndValue(u"b"_s, u"x'y"_s);
    EXPECT_EQ(sql.CreateUpdate(), u"update T set a = 1,b = 'x''y'"_s);
    sql.SetUpdateFrom(u"U"_s);
    sql.SetWhere(u"a = 2"_s);
    EXPECT_EQ(sql.CreateUpdate(), u"update T set a = 1,b = 'x''y' From U where a = 2"_s);
    // A repeated item keeps its first place and its first value.
    sql.PushItemAndValue(u"a"_s, u"9"_s, SqlEscape::Numeric);
    EXPECT_EQ(sql.CreateInsert(), u"insert into T(a,b) values (1,'x''y')"_s);
    EXPECT_EQ(sql.Item(3), QString());
    sql.AllClear();
    EXPECT_EQ(sql.CreateDelete(), u"delete from "_s);
}

TEST(SqlCreateClassTest, UnpairedListsGiveTheReasonInPlaceOfTheStatement)
{
    SqlCreateClass sql;
    sql.SetTableName(u"T"_s);
    EXPECT_EQ(sql.CreateSelect(), u"Itemに何も設定されていません"_s);
    EXPECT_EQ(sql.CreateInsert(), u"Itemに何も設定されていません"_s);
    sql.PushItem(u"a"_s);
    EXPECT_EQ(sql.CreateInsert(), u"vValueに何も設定されていません"_s);
    sql.PushItem(u"b"_s);
    sql.PushValue(u"1"_s, 7);  // no such type: nothing is added
    sql.PushValue(u"1"_s, SqlEscape::Numeric);
    EXPECT_EQ(sql.CreateUpdate(), u"ItemとValueの数が一致しません"_s);
    EXPECT_EQ(sql.SQL(), QString());  // a refusal leaves the last statement alone
}

TEST(SqlBlockClassTest, ConditionsNestWithTheirOperators)
{
    SqlCreateClass sql;
    const auto outer = sql.Block(u"or"_s, u"outer"_s);
    const auto inner = sql.Block(u"and"_s, u"inner"_s);
    inner->Operator(u"a"_s, u"="_s, u"1"_s, SqlEscape::Numeric);
    inner->Operator(u"b"_s, u"="_s, u"2"_s, SqlEscape::Numeric);
    EXPECT_EQ(inner->CreateWhere(), u"((a = 1) and (b = 2))"_s);

    outer->Operator(u"c is null"_s, QString(), QString());
    outer->Add(inner);
    outer->Operator(u"d"_s, u"<"_s, u"2010/01/02"_s, SqlEscape::DateTime);
    EXPECT_EQ(outer->CreateWhere(), u"((c is null) or ((a = 1) and (b = 2)) or (d < '2010-01-02'))"_s);

    const auto negated = sql.Block(QString(), u"not"_s, u"not"_s);
    negated->Operator(u"e"_s, u"like"_s, u"x"_s);
    EXPECT_EQ(negated->CreateWhere(), u"not ((e like 'x'))"_s);

    // No operator and no option: the conditions as they are, joined by a blank.
    const auto bare = sql.Block(QString(), u"bare"_s);
    bare->Operator(u"f"_s, u"="_s, u"1"_s, SqlEscape::Numeric);
    bare->Operator(u"g"_s, u"="_s, u"2"_s, SqlEscape::Numeric);
    EXPECT_EQ(bare->CreateWhere(), u"(f = 1) (g = 2)"_s);

    EXPECT_EQ(sql.Block(u"inner"_s, SqlCreateClass::LookUpOnly), inner);
    EXPECT_EQ(sql.Block(u"nowhere"_s, SqlCreateClass::LookUpOnly), nullptr);
    EXPECT_EQ(inner->LogicalOperator(), u"and"_s);  // the look-up changed nothing
}

} // namespace
