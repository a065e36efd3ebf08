#include "filelist/SqlCreateClass.h"

#include <QStringList>

namespace {

const QString kNoItems = QStringLiteral("Itemに何も設定されていません");
const QString kNoValues = QStringLiteral("vValueに何も設定されていません");
const QString kCountsDiffer = QStringLiteral("ItemとValueの数が一致しません");

} // namespace

const QString* SqlCreateClass::Find(const Keyed& vList, const QString& vKey)
{
    for (const auto& entry : vList)
        if (entry.first.compare(vKey, Qt::CaseInsensitive) == 0)
            return &entry.second;
    return nullptr;
}

void SqlCreateClass::AddOnce(Keyed& vList, const QString& vKey, const QString& vText)
{
    if (!Find(vList, vKey))
        vList.emplace_back(vKey, vText);
}

QString SqlCreateClass::Joined(const Keyed& vList)
{
    QStringList texts;
    for (const auto& entry : vList)
        texts << entry.second;
    return texts.join(QLatin1Char(','));
}

QString SqlCreateClass::Item(qint16 vIndex) const
{
    return vIndex >= 1 && vIndex <= ItemCount() ? items_[static_cast<size_t>(vIndex - 1)].second : QString();
}

QString SqlCreateClass::Value(qint16 vIndex) const
{
    return vIndex >= 1 && vIndex <= ValueCount() ? values_[static_cast<size_t>(vIndex - 1)].second : QString();
}

void SqlCreateClass::AllClear()
{
    tableName_.clear();
    where_.clear();
    otherOption_.clear();
    sql_.clear();
    updateFrom_.clear();
    items_.clear();
    values_.clear();
    itemIndex_.clear();
}

qint16 SqlCreateClass::ItemPosition(const QString& vItem)
{
    if (const QString* known = Find(itemIndex_, vItem))
        return known->toShort();
    const QString position = QString::number(itemIndex_.size() + 1);
    itemIndex_.emplace_back(vItem, position);
    return position.toShort();
}

void SqlCreateClass::PushItem(const QString& vItem)
{
    AddOnce(items_, QString::number(ItemPosition(vItem)), vItem);
}

void SqlCreateClass::PushValue(const QString& vValue, int vDataType)
{
    QString escaped;
    if (EscapeByType(vValue, vDataType, escaped))
        AddOnce(values_, QString::number(values_.size() + 1), escaped);
}

void SqlCreateClass::PushItemAndValue(const QString& vItem, const QString& vValue, int vDataType)
{
    const QString position = QString::number(ItemPosition(vItem));
    AddOnce(items_, position, vItem);
    QString escaped;
    if (EscapeByType(vValue, vDataType, escaped))
        AddOnce(values_, position, escaped);
}

QString SqlCreateClass::PairCheck() const
{
    if (items_.empty())
        return kNoItems;
    if (values_.empty())
        return kNoValues;
    if (items_.size() != values_.size())
        return kCountsDiffer;
    return {};
}

QString SqlCreateClass::CreateInsert()
{
    if (const QString problem = PairCheck(); !problem.isEmpty())
        return problem;
    sql_ = QStringLiteral("insert into ") + tableName_ + QStringLiteral("(") + Joined(items_)
           + QStringLiteral(") values (") + Joined(values_) + QStringLiteral(")");
    return sql_;
}

QString SqlCreateClass::CreateUpdate()
{
    if (const QString problem = PairCheck(); !problem.isEmpty())
        return problem;
    QString sets;
    for (size_t i = 0; i < items_.size(); ++i)
        sets += (i ? QStringLiteral(",") : QString()) + items_[i].second + QStringLiteral(" = ") + values_[i].second;
    QString text = QStringLiteral("update ") + tableName_ + QStringLiteral(" set ") + sets;
    if (!updateFrom_.trimmed().isEmpty())
        text += QStringLiteral(" From ") + updateFrom_;
    if (!where_.trimmed().isEmpty())
        text += QStringLiteral(" where ") + where_;
    sql_ = text;
    return sql_;
}

QString SqlCreateClass::CreateDelete()
{
    QString text = QStringLiteral("delete from ") + tableName_;
    if (!where_.isEmpty())
        text += QStringLiteral(" where ") + where_;
    sql_ = text;
    return sql_;
}

QString SqlCreateClass::CreateSelect()
{
    if (items_.empty())
        return kNoItems;
    QString text = QStringLiteral("select ") + Joined(items_) + QStringLiteral(" from ") + tableName_;
    if (!where_.isEmpty())
        text += QStringLiteral(" where ") + where_;
    if (!otherOption_.isEmpty())
        text += QLatin1Char(' ') + otherOption_;
    sql_ = text;
    return sql_;
}

std::shared_ptr<SqlBlockClass> SqlCreateClass::Block(const QString& vLogicalOperator, const QString& vBlockName,
                                                     const QString& vOptionValue)
{
    const bool lookUpOnly = vBlockName == LookUpOnly;
    const QString name = lookUpOnly ? vLogicalOperator : vBlockName;
    std::shared_ptr<SqlBlockClass> block;
    for (const auto& entry : blocks_)
        if (entry.first.compare(name, Qt::CaseInsensitive) == 0)
            block = entry.second;
    if (lookUpOnly)
        return block;
    if (!block) {
        block = std::make_shared<SqlBlockClass>();
        blocks_.emplace_back(name, block);
    }
    block->SetLogicalOperator(vLogicalOperator);
    if (!vOptionValue.isEmpty())
        block->SetOptionValue(vOptionValue);
    return block;
}
