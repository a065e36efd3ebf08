#pragma once
// The text of a WHERE condition, built from comparisons and nested blocks. A block with a
// logical operator brackets its whole text, so that nesting keeps the meaning without the caller
// counting brackets.

#include "filelist/SqlEscape.h"

#include <QString>

#include <memory>
#include <variant>
#include <vector>

class SqlBlockClass : public SqlEscape {
public:
    // The operator that the next Operator or Add records in front of its condition.
    QString LogicalOperator() const { return logicalOperator_; }
    void SetLogicalOperator(const QString& v) { logicalOperator_ = v; }
    QString BlockName() const { return blockName_; }
    void SetBlockName(const QString& v) { blockName_ = v; }
    // A word put before the bracket, such as "not".
    QString OptionValue() const { return optionValue_; }
    void SetOptionValue(const QString& v) { optionValue_ = v; }

    // "(item operator value)"; with no operator, vItemName is a whole raw condition.
    void Operator(const QString& vItemName, const QString& vOperator, const QString& vValue, int vDataType = String);
    void Add(const std::shared_ptr<SqlBlockClass>& vSqlBlockClass);
    QString CreateWhere() const;

private:
    using Condition = std::variant<QString, std::shared_ptr<SqlBlockClass>>;

    std::vector<Condition> conditions_;
    // One per Operator or Add call, even one that added no condition: that is why the two
    // lists are kept apart and paired by position.
    std::vector<QString> operators_;
    QString logicalOperator_;
    QString optionValue_;
    QString blockName_;
};
