#include "engine/write/NodeAccess.h"

#include "engine/FormatError.h"
#include "engine/Records.h"
#include "engine/Tlv.h"


namespace xdw::nodes {

namespace {

std::optional<std::vector<qint64>> ListOf(const NodeAttribute* vAttribute)
{
    if (!vAttribute || vAttribute->tagClass != 2)
        return std::nullopt;
    try {
        return NumberList(vAttribute->value);
    } catch (const FormatError&) {
        return std::nullopt;
    }
}

} // namespace

// The tree's own members do the work; these stay as free functions for the annotation code.
const NodeAttribute* Find(const Node& vNode, quint32 vNumber) { return vNode.Find(vNumber); }
void Set(Node& vNode, quint32 vNumber, const QByteArray& vValue) { vNode.Set(vNumber, vValue); }
void Remove(Node& vNode, quint32 vNumber) { vNode.Remove(vNumber); }
const NodeAttribute* Named(const Node& vNode, QStringView vName) { return vNode.Named(vName); }

void SetNamed(Node& vNode, const QString& vName, qint64 vType, const QByteArray& vValue)
{
    vNode.SetNamed(vName, vType, vValue);
}

bool RemoveNamed(Node& vNode, QStringView vName) { return vNode.RemoveNamed(vName); }

std::optional<std::vector<qint64>> NamedNumbers(const Node& vNode, QStringView vName)
{
    return ListOf(Named(vNode, vName));
}

std::optional<qint64> NamedNumber(const Node& vNode, QStringView vName)
{
    const std::optional<std::vector<qint64>> list = NamedNumbers(vNode, vName);
    if (!list || list->empty())
        return std::nullopt;
    return list->front();
}

std::optional<QString> NamedText(const Node& vNode, QStringView vName)
{
    const NodeAttribute* a = Named(vNode, vName);
    if (!a || a->tagClass != 2)
        return std::nullopt;
    return vName.endsWith(u"(w") ? WideText(a->value) : NarrowText(a->value);
}

std::optional<std::vector<qint64>> Numbers(const Node& vNode, quint32 vNumber)
{
    return ListOf(Find(vNode, vNumber));
}

} // namespace xdw::nodes
