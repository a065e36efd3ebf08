#include "engine/write/Placements.h"

#include "document/XdwApi.h"
#include "engine/FormatError.h"
#include "engine/write/AnnotationDrawing.h"
#include "engine/write/Emit.h"
#include "engine/write/NodeAccess.h"

#include <algorithm>

namespace xdw::annot {

Node& Shown(Node& vPlacement)
{
    if (vPlacement.children.empty())
        throw FormatError{XdwResult::InvalidArg, QStringLiteral("placement without an annotation")};
    return vPlacement.children.front();
}

const Node* ShownOf(const Node& vPlacement)
{
    return vPlacement.kind == KindPlacement && !vPlacement.children.empty() ? &vPlacement.children.front() : nullptr;
}

bool IsAnnotation(const Node& vPlacement)
{
    const Node* shown = ShownOf(vPlacement);
    return shown && shown->kind != KindContent;
}


std::vector<Node>* Holder(Node& vParent)
{
    if (vParent.kind == KindPage)
        return &vParent.children;
    if (vParent.kind == KindPlacement && !vParent.children.empty())
        return &vParent.children.front().children;
    return nullptr;
}

QSize SizeOf(const Node& vPlacement)
{
    const std::optional<std::vector<qint64>> size = nodes::NamedNumbers(vPlacement, u"childdim");
    if (!size || size->size() != 2)
        return {};
    return QSize(static_cast<int>(std::clamp<qint64>((*size)[0], 0, Reach)),
                 static_cast<int>(std::clamp<qint64>((*size)[1], 0, Reach)));
}

void Resize(Node& vPlacement, QSize vSize)
{
    const QByteArray pair = emit::Numbers({vSize.width(), vSize.height()});
    nodes::SetNamed(vPlacement, QStringLiteral("childdim"), NamedSizePair, pair);
    Node& record = Shown(vPlacement);
    nodes::Set(record, AttrSize, pair);
    if (record.kind == KindText)
        nodes::SetNamed(record, QStringLiteral("%NoRotateTextDim"), NamedSizePair, pair);
}

Node MakePlacement(qint64 vX, qint64 vY, Node vRecord, QSize vSize)
{
    Node placement;
    placement.kind = KindPlacement;
    nodes::Set(placement, AttrPosition, emit::Numbers({vX, vY}));
    placement.children.push_back(std::move(vRecord));
    Resize(placement, vSize);
    return placement;
}

} // namespace xdw::annot
