#include "engine/write/Tree.h"

#include "document/XdwApi.h"
#include "engine/Container.h"
#include "engine/FormatError.h"
#include "engine/Records.h"
#include "engine/Tlv.h"
#include "engine/write/Emit.h"

#include <algorithm>

namespace xdw {

namespace {

constexpr quint32 AttrDeclarations = 51;
constexpr quint32 FirstNamed = 2001;
constexpr size_t MaxDepth = 32;

Node NodeOf(const Record& vRecord, const Container& vContainer)
{
    Node node;
    node.kind = vRecord.kind;
    for (const Attribute& a : vRecord.attributes) {
        // The declarations become a list of their own: kept as an attribute they would go
        // stale the moment a name is added, and a long list moved out to an entry is read in.
        if (a.number == AttrDeclarations) {
            node.declarations = DeclarationList(ValueOf(a, vContainer));
            continue;
        }
        node.attributes.push_back({a.tagClass, a.constructed, a.number, a.value.toByteArray()});
    }
    return node;
}

QByteArray DeclarationList(const std::vector<Declaration>& vDeclarations)
{
    QByteArray list;
    for (const Declaration& d : vDeclarations) {
        const QByteArray name = emit::NarrowText(d.name);
        list += emit::Numbers({d.number, d.type, d.index, name.size()}) + emit::Item(name);
    }
    return list;
}

QByteArray RecordOf(const Node& vNode, int vDepth)
{
    QByteArray value = emit::Tlv(0x80, emit::Int(vDepth)) + emit::Tlv(0x62, emit::Int(vNode.kind));
    for (const NodeAttribute& a : vNode.attributes) {
        const quint8 classBits = static_cast<quint8>(a.tagClass << 6 | (a.constructed ? 0x20 : 0));
        value += emit::Tagged(a.number, a.value, classBits);
    }
    if (!vNode.declarations.empty())
        value += emit::Tagged(AttrDeclarations, DeclarationList(vNode.declarations));
    return emit::Tlv(0x62, value);
}

bool NumberTaken(const Node& vNode, quint32 vNumber)
{
    return vNode.Find(vNumber)
        || std::any_of(vNode.declarations.begin(), vNode.declarations.end(),
                       [&](const Declaration& d) { return d.number == vNumber; });
}

} // namespace

const NodeAttribute* Node::Find(quint32 vNumber) const
{
    for (const NodeAttribute& a : attributes)
        if (a.number == vNumber)
            return &a;
    return nullptr;
}

NodeAttribute* Node::Find(quint32 vNumber)
{
    return const_cast<NodeAttribute*>(std::as_const(*this).Find(vNumber));
}

void Node::Set(quint32 vNumber, const QByteArray& vValue)
{
    if (NodeAttribute* a = Find(vNumber)) {
        // A value replaces a reference too: the entry it named is simply no longer used here.
        a->tagClass = 2;
        a->constructed = false;
        a->value = vValue;
        return;
    }
    attributes.push_back({2, false, vNumber, vValue});
}

void Node::Remove(quint32 vNumber)
{
    std::erase_if(attributes, [&](const NodeAttribute& a) { return a.number == vNumber; });
}

const Declaration* Node::Declared(QStringView vName) const
{
    for (const Declaration& d : declarations)
        if (d.number >= FirstNamed && d.name == vName)
            return &d;
    return nullptr;
}

const NodeAttribute* Node::Named(QStringView vName) const
{
    const Declaration* d = Declared(vName);
    return d ? Find(d->number) : nullptr;
}

void Node::SetNamed(const QString& vName, qint64 vType, const QByteArray& vValue)
{
    for (Declaration& d : declarations) {
        if (d.number >= FirstNamed && d.name == vName) {
            d.type = vType;
            Set(d.number, vValue);
            return;
        }
    }
    quint32 number = FirstNamed;
    while (NumberTaken(*this, number))
        ++number;
    declarations.push_back({number, vType, -1, vName});
    attributes.push_back({2, false, number, vValue});
}

bool Node::RemoveNamed(QStringView vName)
{
    const auto d = std::find_if(declarations.begin(), declarations.end(), [&](const Declaration& v) {
        return v.number >= FirstNamed && v.name == vName;
    });
    if (d == declarations.end())
        return false;
    Remove(d->number);
    declarations.erase(d);
    return true;
}

Node ReadTree(const Container& vContainer)
{
    const std::vector<Record> records = ReadRecords(vContainer.Properties(), vContainer);
    std::vector<Node> nodes;
    nodes.reserve(records.size());
    for (const Record& r : records)
        nodes.push_back(NodeOf(r, vContainer));
    // From the last record back, each node goes into its parent once all of its own children
    // (which follow it) are in; they arrive last first, so each list is turned round when full.
    for (size_t i = records.size(); i-- > 1;) {
        std::reverse(nodes[i].children.begin(), nodes[i].children.end());
        nodes[static_cast<size_t>(records[i].parent)].children.push_back(std::move(nodes[i]));
    }
    std::reverse(nodes[0].children.begin(), nodes[0].children.end());
    return std::move(nodes[0]);
}

QByteArray WriteRecords(const Node& vRoot)
{
    QByteArray out;
    // Depth first with a stack of (node, next child), so a deep tree costs no recursion.
    std::vector<std::pair<const Node*, size_t>> open{{&vRoot, 0}};
    out += RecordOf(vRoot, 0);
    while (!open.empty()) {
        auto& [node, next] = open.back();
        if (next == node->children.size()) {
            open.pop_back();
            continue;
        }
        const Node& child = node->children[next++];
        // A reader takes no deeper nesting, and a binder puts a document three levels down.
        if (open.size() > MaxDepth)
            throw FormatError{XdwResult::InvalidArg, QStringLiteral("records nested deeper than %1").arg(MaxDepth)};
        out += RecordOf(child, static_cast<int>(open.size()));
        open.emplace_back(&child, 0);
    }
    return out;
}

} // namespace xdw
