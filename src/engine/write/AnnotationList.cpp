// Annotations as they stand in the tree: listed, found by index, removed, read and changed by
// property, hidden and shown.

#include "engine/write/Annotations.h"

#include "engine/write/AnnotationProperties.h"
#include "engine/write/Emit.h"
#include "engine/write/NodeAccess.h"
#include "engine/write/Placements.h"

#include <algorithm>

namespace xdw::annot {

namespace {

// The record a property is read from or written to: a sticky note keeps its text properties
// on the text it holds.
Node* Target(Node& vPlacement, QStringView vName)
{
    Node& record = Shown(vPlacement);
    const PropertyName* p = FindProperty(vName);
    if (record.kind == KindFusen && p && p->textFamily && !record.children.empty()
        && !record.children.front().children.empty())
        return &record.children.front().children.front();
    return &record;
}

} // namespace

std::vector<AnnotationInfo> ListAnnotations(const Node& vParent)
{
    std::vector<AnnotationInfo> list;
    const std::vector<Node>* holder = Holder(const_cast<Node&>(vParent));
    if (!holder)
        return list;
    for (const Node& placement : *holder) {
        if (!IsAnnotation(placement))
            continue;
        const Node& record = *ShownOf(placement);
        AnnotationInfo info;
        info.index = static_cast<int>(list.size());
        info.kind = record.kind;
        if (const std::optional<std::vector<qint64>> at = nodes::Numbers(placement, AttrPosition); at && at->size() == 2) {
            info.x = (*at)[0];
            info.y = (*at)[1];
        }
        const QSize size = SizeOf(placement);
        info.width = size.width();
        info.height = size.height();
        if (record.kind == KindLine) {
            info.horVec = nodes::NamedNumber(record, u"%HorVec").value_or(info.width);
            info.verVec = nodes::NamedNumber(record, u"%VerVec").value_or(info.height);
        }
        info.children = static_cast<int>(std::count_if(record.children.begin(), record.children.end(), IsAnnotation));
        info.hidden = IsHidden(placement);
        list.push_back(info);
    }
    return list;
}

Node* AnnotationAt(Node& vParent, int vIndex)
{
    std::vector<Node>* holder = Holder(vParent);
    if (!holder || vIndex < 0)
        return nullptr;
    int seen = 0;
    for (Node& placement : *holder)
        if (IsAnnotation(placement) && seen++ == vIndex)
            return &placement;
    return nullptr;
}

const Node* AnnotationAt(const Node& vParent, int vIndex)
{
    return AnnotationAt(const_cast<Node&>(vParent), vIndex);
}

bool RemoveAnnotation(Node& vParent, int vIndex)
{
    Node* placement = AnnotationAt(vParent, vIndex);
    if (!placement)
        return false;
    std::vector<Node>* holder = Holder(vParent);
    holder->erase(holder->begin() + (placement - holder->data()));
    return true;
}

std::optional<QVariant> GetProperty(const Node& vPlacement, QStringView vName)
{
    if (!IsAnnotation(vPlacement))
        return std::nullopt;
    return GetValue(*Target(const_cast<Node&>(vPlacement), vName), vName);
}

bool SetProperty(Node& vPlacement, QStringView vName, const QVariant& vValue, const Compressor& vCompress)
{
    if (!IsAnnotation(vPlacement) || !SetValue(*Target(vPlacement, vName), vName, vValue))
        return false;
    Redraw(vPlacement, vCompress);
    return true;
}

bool IsHidden(const Node& vPlacement)
{
    const Node* record = ShownOf(vPlacement);
    return record && nodes::NamedNumber(*record, u"%hidden").value_or(0) != 0;
}

void SetHidden(Node& vPlacement, bool vHidden)
{
    nodes::SetNamed(Shown(vPlacement), QStringLiteral("%hidden"), NamedNumbers, emit::Numbers({vHidden ? 1 : 0}));
}

} // namespace xdw::annot
