#include "filelist/SqlBlockClass.h"

void SqlBlockClass::Operator(const QString& vItemName, const QString& vOperator, const QString& vValue, int vDataType)
{
    if (vOperator.isEmpty()) {
        conditions_.emplace_back(QStringLiteral("(") + vItemName + QStringLiteral(")"));
    } else {
        QString value;
        if (EscapeByType(vValue, vDataType, value))
            conditions_.emplace_back(QStringLiteral("(") + vItemName + QLatin1Char(' ') + vOperator
                                     + QLatin1Char(' ') + value + QStringLiteral(")"));
    }
    operators_.push_back(logicalOperator_);
}

void SqlBlockClass::Add(const std::shared_ptr<SqlBlockClass>& vSqlBlockClass)
{
    conditions_.emplace_back(vSqlBlockClass);
    operators_.push_back(logicalOperator_);
}

QString SqlBlockClass::CreateWhere() const
{
    QString text;
    for (size_t i = 0; i < conditions_.size(); ++i) {
        const Condition& condition = conditions_[i];
        const QString entry = std::holds_alternative<QString>(condition)
                                  ? std::get<QString>(condition)
                                  : std::get<std::shared_ptr<SqlBlockClass>>(condition)->CreateWhere();
        if (i == 0) {
            text = entry;  // the first stands alone, whatever operator it was given
            continue;
        }
        const QString& op = i < operators_.size() ? operators_[i] : QString();
        text += op.isEmpty() ? QLatin1Char(' ') + entry : QLatin1Char(' ') + op + QLatin1Char(' ') + entry;
    }
    if (!optionValue_.isEmpty())
        return optionValue_ + QStringLiteral(" (") + text + QStringLiteral(")");
    if (!logicalOperator_.isEmpty())
        return QStringLiteral("(") + text + QStringLiteral(")");
    return text;
}
