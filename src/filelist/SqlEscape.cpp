#include "filelist/SqlEscape.h"

namespace {

const QString kQuote = QStringLiteral("'");

} // namespace

QString SqlEscape::SQLite_EscapeNumeric(const QString& vValue)
{
    bool ok = false;
    vValue.trimmed().toDouble(&ok);
    return ok ? vValue : QStringLiteral("null");
}

QString SqlEscape::SQLite_EscapeString(const QString& vValue)
{
    return kQuote + QString(vValue).replace(kQuote, QStringLiteral("''")) + kQuote;
}

QString SqlEscape::SQLite_EscapeDateTime(const QString& vValue)
{
    if (vValue.isEmpty())
        return QStringLiteral("null");
    return kQuote + QString(vValue).replace(QLatin1Char('/'), QLatin1Char('-')) + kQuote;
}

QString SqlEscape::SQLite_EscapeLike(const QString& vValue, const QString& vFormat)
{
    // The backslash first, or the marks added after it would be doubled again.
    QString text = vValue;
    text.replace(QStringLiteral("\\"), QStringLiteral("\\\\"));
    text.replace(kQuote, QStringLiteral("''"));
    text.replace(QStringLiteral("%"), QStringLiteral("\\%"));
    text.replace(QStringLiteral("_"), QStringLiteral("\\_"));
    if (!vFormat.isEmpty())
        text = QString(vFormat).replace(QStringLiteral("{0}"), text);
    return kQuote + text + QStringLiteral("' escape '\\'");
}

bool SqlEscape::EscapeByType(const QString& vValue, int vDataType, QString& vOut)
{
    switch (vDataType) {
    case String: vOut = SQLite_EscapeString(vValue); return true;
    case Numeric: vOut = SQLite_EscapeNumeric(vValue); return true;
    case DateTime: vOut = SQLite_EscapeDateTime(vValue); return true;
    default: return false;
    }
}
