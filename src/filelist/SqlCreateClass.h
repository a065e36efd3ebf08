#pragma once
// Insert, update, delete and select statements as text, from pushed items and values. Nothing
// is bound: values are escaped into the text (SqlEscape), and the text goes to SQLiteClass.
// WHERE texts come from named blocks (SqlBlockClass) kept here until AllClear.

#include "filelist/SqlBlockClass.h"

#include <QString>

#include <memory>
#include <utility>
#include <vector>

class SqlCreateClass : public SqlEscape {
public:
    // The name given to Block that asks for an existing block only.
    static inline const QString LookUpOnly = QStringLiteral("SqlBlockClassNullString");

    QString TableName() const { return tableName_; }
    void SetTableName(const QString& v) { tableName_ = v; }
    QString Where() const { return where_; }  // without the word "where"
    void SetWhere(const QString& v) { where_ = v; }
    QString OtherOption() const { return otherOption_; }  // behind a select: "order by ..."
    void SetOtherOption(const QString& v) { otherOption_ = v; }
    QString SQL() const { return sql_; }  // the last statement built
    void SetSQL(const QString& v) { sql_ = v; }
    QString UpdateFrom() const { return updateFrom_; }
    void SetUpdateFrom(const QString& v) { updateFrom_ = v; }

    QString Item(qint16 vIndex) const;   // from 1; "" out of range
    QString Value(qint16 vIndex) const;  // escaped
    qint16 ItemCount() const { return static_cast<qint16>(items_.size()); }
    qint16 ValueCount() const { return static_cast<qint16>(values_.size()); }

    void AllClear();
    void ValueClear() { values_.clear(); }
    // An item pushed again keeps its first place and is not repeated.
    void PushItem(const QString& vItem);
    void PushValue(const QString& vValue, int vDataType = String);
    // The value lands at its item's place, so for a repeated item the first value stays.
    void PushItemAndValue(const QString& vItem, const QString& vValue, int vDataType = String);

    // Each returns the statement and keeps it in SQL; a list that doesn't pair up returns the
    // reason instead, which SQLite then refuses as a syntax error.
    QString CreateInsert();
    QString CreateUpdate();
    QString CreateDelete();
    QString CreateSelect();

    // The block of that name, made when new, with its operator (and a non-empty option) set.
    // With vBlockName == LookUpOnly, vLogicalOperator is the name, and an unknown name gives null.
    std::shared_ptr<SqlBlockClass> Block(const QString& vLogicalOperator, const QString& vBlockName = {},
                                         const QString& vOptionValue = {});

private:
    // Collections keyed by text, in insertion order, refusing a second key in silence.
    using Keyed = std::vector<std::pair<QString, QString>>;
    static const QString* Find(const Keyed& vList, const QString& vKey);
    static void AddOnce(Keyed& vList, const QString& vKey, const QString& vText);
    static QString Joined(const Keyed& vList);
    QString PairCheck() const;
    qint16 ItemPosition(const QString& vItem);

    QString tableName_;
    QString where_;
    QString otherOption_;
    QString sql_;
    QString updateFrom_;
    std::vector<std::pair<QString, std::shared_ptr<SqlBlockClass>>> blocks_;
    Keyed items_;
    Keyed values_;
    Keyed itemIndex_;  // item text to its position
};
