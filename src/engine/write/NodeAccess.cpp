#include "engine/write/NodeAccess.h"

#include "engine/FormatError.h"
#include "engine/Records.h"
#include "engine/Tlv.h"

#include <algorithm>

namespace xdw::nodes {

namespace {

constexpr quint32 FirstNamed = 2001;

const Declaration* Declared(const Node& vNode, QStringView vName)
{
    for (const Declaration& d : vNode.declarations)
        if (d.name == vName)
            return &d;
    return nullptr;
}

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

const NodeAttribute* Find(const Node& vNode, quint32 vNumber)
{
    for (const NodeAttribute& a : vNode.attributes)
        if (a.number == vNumber)
            return &a;
    return nullptr;
}

void Set(Node& vNode, quint32 vNumber, const QByteArray& vValue)
{
    for (NodeAttribute& a : vNode.attributes) {
        if (a.number == vNumber) {
            a.tagClass = 2;
            a.constructed = false;
            a.value = vValue;
            return;
        }
    }
    vNode.attributes.push_back(NodeAttribute{2, false, vNumber, vValue});
}

void Remove(Node& vNode, quint32 vNumber)
{
    std::erase_if(vNode.attributes, [vNumber](const NodeAttribute& a) { return a.number == vNumber; });
}

const NodeAttribute* Named(const Node& vNode, QStringView vName)
{
    const Declaration* d = Declared(vNode, vName);
    return d ? Find(vNode, d->number) : nullptr;
}

void SetNamed(Node& vNode, const QString& vName, qint64 vType, const QByteArray& vValue)
{
    if (const Declaration* d = Declared(vNode, vName)) {
        Set(vNode, d->number, vValue);
        return;
    }
    quint32 number = FirstNamed;
    for (const Declaration& d : vNode.declarations)
        number = std::max(number, d.number + 1);
    for (const NodeAttribute& a : vNode.attributes)
        if (a.number >= FirstNamed)
            number = std::max(number, a.number + 1);
    vNode.declarations.push_back(Declaration{number, vType, -1, vName});
    Set(vNode, number, vValue);
}

bool RemoveNamed(Node& vNode, QStringView vName)
{
    const auto d = std::find_if(vNode.declarations.begin(), vNode.declarations.end(),
                                [vName](const Declaration& v) { return v.name == vName; });
    if (d == vNode.declarations.end())
        return false;
    Remove(vNode, d->number);
    vNode.declarations.erase(d);
    return true;
}

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
