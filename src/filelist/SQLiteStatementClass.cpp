#include "filelist/SQLiteStatementClass.h"

#include "support/AppError.h"

#include <sqlite3.h>

#include <cmath>

namespace {

const QString kBindIndex = QStringLiteral("SQLiteStatement.Bind: バインドパラメーターのインデックス ");

QString ErrorText(int vCode) { return QString::fromUtf8(sqlite3_errstr(vCode)); }

// A whole number the way the old layer converted it: rounded half to even, and 16 bits at most.
// The limit stays, since settings written for that layer expect the same refusals.
bool ToInt16(const QString& vText, int& vOut)
{
    bool ok = false;
    const double value = vText.trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(value))
        return false;
    const double rounded = std::nearbyint(value);
    if (rounded < -32768 || rounded > 32767)
        return false;
    vOut = static_cast<int>(rounded);
    return true;
}

QString JoinParams(const SQLiteBindParams& vParams)
{
    QStringList items;
    for (const QStringList& item : vParams)
        items << item.join(QStringLiteral(", "));
    return items.join(QStringLiteral("; "));
}

} // namespace

// ---- the row ---------------------------------------------------------------------------------

QString SQLiteRow::Value(const QString& vName) const
{
    for (const auto& column : columns_)
        if (column.first.compare(vName, Qt::CaseInsensitive) == 0)
            return column.second;
    return {};
}

bool SQLiteRow::Exists(const QString& vName) const
{
    for (const auto& column : columns_)
        if (column.first.compare(vName, Qt::CaseInsensitive) == 0)
            return true;
    return false;
}

bool SQLiteRow::Add(const QString& vName, const QString& vValue)
{
    if (Exists(vName))
        return false;
    columns_.emplace_back(vName, vValue);
    return true;
}

// ---- the statement ---------------------------------------------------------------------------

SQLiteStatementClass::~SQLiteStatementClass()
{
    if (statement_)
        sqlite3_finalize(statement_);
}

QString SQLiteStatementClass::ErrStr() const { return ErrorText(result_); }

void SQLiteStatementClass::Raise(const QString& vText) const { throw AppError(AppError::Database, vText); }

void SQLiteStatementClass::Initialize(sqlite3* phDb, const QString& pSql)
{
    const QByteArray sql = pSql.toUtf8();
    sqlite3_stmt* statement = nullptr;
    result_ = sqlite3_prepare_v2(phDb, sql.constData(), static_cast<int>(sql.size()), &statement, nullptr);
    if (result_ != SQLITE_OK) {
        sqlite3_finalize(statement);
        Raise(QStringLiteral("SQLiteStatement.Initialize: SQL [") + pSql
              + QStringLiteral("] のステートメントの生成に失敗しました。 ※ SQL構文エラー (")
              + QString::number(result_) + QStringLiteral(") ") + ErrStr());
    }
    if (statement_)
        sqlite3_finalize(statement_);
    statement_ = statement;
    sql_ = pSql;
}

void SQLiteStatementClass::Bind(const SQLiteBindParams& pBindParams)
{
    if (!statement_)
        Raise(QStringLiteral("SQLiteStatement.Bind: ステートメントハンドルが設定されていません。"));
    lastParams_.clear();
    result_ = 0;
    // Nothing to bind is not a fresh start: stepping goes on from the current row.
    if (pBindParams.isEmpty())
        return;
    const int reset = sqlite3_reset(statement_);
    if (reset != SQLITE_OK)
        Raise(QStringLiteral("SQLiteStatement.Bind: resetに失敗しました。 (") + QString::number(reset)
              + QStringLiteral(") ") + ErrorText(reset));
    lastParams_ = pBindParams;
    for (int i = 0; i < pBindParams.size(); ++i)
        BindItem(i, pBindParams[i]);
}

void SQLiteStatementClass::BindItem(int vPosition, const QStringList& vItem)
{
    const QString first = kBindIndex + QString::number(vPosition);
    const QString tail = QStringLiteral(" [") + sql_ + QStringLiteral("]");
    int index = vPosition + 1;
    QString key;
    QString type;
    QString value;
    if (vItem.size() == 2) {
        type = vItem[0];
        value = vItem[1];
    } else if (vItem.size() == 3) {
        key = vItem[0];
        if (key.startsWith(QLatin1Char('?'))) {
            if (!ToInt16(key.mid(1), index))
                Raise(first + QStringLiteral(" の要素で指定されたキー ") + key + QStringLiteral(" が不正です。") + tail);
        } else {
            index = sqlite3_bind_parameter_index(statement_, key.toUtf8().constData());
            if (index == 0)
                Raise(first + QStringLiteral(" の要素で指定されたキー ") + key + QStringLiteral(" は存在しません。") + tail);
        }
        type = vItem[1];
        value = vItem[2];
    } else {
        Raise(first + QStringLiteral(" の要素数が 2 または 3 ではありません。") + tail);
    }

    const QString badValue = first + QStringLiteral(" のタイプ ") + type + QStringLiteral(" に値 ") + value
                             + QStringLiteral(" は指定できません。") + tail;
    if (type == QLatin1String("integer")) {
        int number = 0;
        if (!ToInt16(value, number))
            Raise(badValue);
        result_ = sqlite3_bind_int(statement_, index, number);
    } else if (type == QLatin1String("float")) {
        bool ok = false;
        const double number = value.trimmed().toDouble(&ok);
        if (!ok)
            Raise(badValue);
        result_ = sqlite3_bind_double(statement_, index, number);
    } else if (type == QLatin1String("text")) {
        const QByteArray text = value.toUtf8();
        result_ = sqlite3_bind_text(statement_, index, text.constData(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
    } else if (type == QLatin1String("null")) {
        result_ = sqlite3_bind_null(statement_, index);
    } else {
        Raise(first + QStringLiteral(" のタイプ ") + type + QStringLiteral(" は指定できません。") + tail);
    }
    if (result_ != SQLITE_OK) {
        const QString what = (key.isEmpty() ? QString() : key + QStringLiteral(", ")) + type + QStringLiteral(", ") + value;
        Raise(first + QStringLiteral(" の要素 [") + what + QStringLiteral("] のバインドに失敗しました。") + tail
              + QStringLiteral(" (") + QString::number(result_) + QStringLiteral(")") + ErrStr());
    }
}

int SQLiteStatementClass::Step(const SQLiteBindParams& pBindParams)
{
    if (!statement_)
        Raise(QStringLiteral("SQLiteStatement.Step: ステートメントハンドルが設定されていません。"));
    Bind(pBindParams);
    result_ = sqlite3_step(statement_);
    if (result_ == SQLITE_ROW || result_ == SQLITE_DONE)
        return result_;
    QString text = QStringLiteral("SQLiteStatement.Step: stepに失敗しました。 [") + sql_ + QStringLiteral("]");
    if (!pBindParams.isEmpty())
        text += QStringLiteral(" [") + JoinParams(pBindParams) + QStringLiteral("]");
    Raise(text + QStringLiteral(" (") + QString::number(result_) + QStringLiteral(") ") + ErrStr());
}

SQLiteRow SQLiteStatementClass::Data() const
{
    if (!statement_)
        Raise(QStringLiteral("SQLiteStatement.Data: ステートメントハンドルが設定されていません。"));
    SQLiteRow row;
    const int count = sqlite3_column_count(statement_);
    for (int i = 0; i < count; ++i) {
        const QString name = QString::fromUtf8(sqlite3_column_name(statement_, i));
        QString value;
        switch (sqlite3_column_type(statement_, i)) {
        case SQLITE_INTEGER:
            value = QString::number(sqlite3_column_int(statement_, i));
            break;
        case SQLITE_FLOAT:
            value = QString::number(sqlite3_column_double(statement_, i), 'g', 15);
            break;
        case SQLITE_TEXT: {
            const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, i));
            value = QString::fromUtf8(text, sqlite3_column_bytes(statement_, i));
            break;
        }
        case SQLITE_BLOB:
            // Only so that the column's key exists; the address means nothing to a caller.
            value = QString::number(reinterpret_cast<quintptr>(sqlite3_column_blob(statement_, i)));
            break;
        default:
            break;
        }
        if (!row.Add(name, value))
            Raise(QStringLiteral("SQLiteStatement.Data: キー ") + name + QStringLiteral(" 、値 ") + value
                  + QStringLiteral(" の設定に失敗しました。"));
    }
    return row;
}

void SQLiteStatementClass::Finalize()
{
    if (!statement_)
        Raise(QStringLiteral("SQLiteStatement.Finalize: ステートメントハンドルが設定されていません。"));
    result_ = sqlite3_finalize(statement_);
    // sqlite3_finalize releases the statement whatever it returns; the code repeats the last
    // step's failure.
    statement_ = nullptr;
    if (result_ != SQLITE_OK)
        Raise(QStringLiteral("SQLiteStatement.Finalize: finalizeに失敗しました。 (") + QString::number(result_)
              + QStringLiteral(") ") + ErrStr());
}
