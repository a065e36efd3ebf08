#include "engine/write/Binder.h"

#include "engine/Records.h"
#include "engine/write/Edit.h"
#include "engine/write/Emit.h"
#include "engine/write/Navigate.h"

namespace xdw {

using namespace edit;

namespace {

std::vector<std::pair<Node*, size_t>> SlotsOf(const EditableFile& vBinder)
{
    if (vBinder.root.kind != KindBinder)
        BadArgument(QStringLiteral("the file is no binder"));
    return BinderSlots(const_cast<Node&>(vBinder.root));
}

// The slot of document vPosition: its list and index there.
std::pair<Node*, size_t> SlotAt(const EditableFile& vBinder, int vPosition)
{
    const auto slots = SlotsOf(vBinder);
    if (vPosition < 1 || vPosition > static_cast<int>(slots.size()))
        BadArgument(QStringLiteral("document %1 of %2").arg(vPosition).arg(slots.size()));
    return slots[static_cast<size_t>(vPosition - 1)];
}

const Node& DocumentAt(const EditableFile& vBinder, int vPosition)
{
    const auto [list, index] = SlotAt(vBinder, vPosition);
    for (const Node& child : list->children[index].children)
        if (child.kind == KindDocument)
            return child;
    BadArgument(QStringLiteral("document %1 is missing").arg(vPosition));
}

Node& DocumentList(EditableFile& vBinder)
{
    for (Node& child : vBinder.root.children)
        if (child.kind == KindDocumentList)
            return child;
    vBinder.root.children.insert(vBinder.root.children.begin(), Node{KindDocumentList, {}, {}, {}});
    return vBinder.root.children.front();
}

} // namespace

EditableFile NewBinder(int vGeneration)
{
    EditableFile file = Unsaved(vGeneration, KindBinder, {KindDocumentList, KindPageForms});
    // An A4 cover in colour 5, as the binders we have seen carry.
    file.root.SetNamed(QStringLiteral("%bindersize"), NamedSizePair, emit::Numbers({21000, 29700}));
    file.root.SetNamed(QStringLiteral("%bindercolor"), NamedNumbers, emit::Numbers({5}));
    return file;
}

int DocumentCount(const EditableFile& vBinder)
{
    return static_cast<int>(SlotsOf(vBinder).size());
}

void InsertDocument(EditableFile& vBinder, int vPosition, const EditableFile& vDocument, const QString& vName)
{
    const auto slots = SlotsOf(vBinder);
    if (vPosition < 1 || vPosition > static_cast<int>(slots.size()) + 1)
        BadArgument(QStringLiteral("position %1 of %2 documents").arg(vPosition).arg(slots.size()));
    if (vDocument.root.kind != KindDocument)
        BadArgument(QStringLiteral("only a document goes into a binder"));
    std::map<qint64, qint64> moved;
    Node document = Carry(vDocument.root, vDocument, vBinder, moved);
    Node& list = DocumentList(vBinder);
    document.Remove(AttrWideName);
    document.Set(AttrName, emit::NarrowText(vName));
    document.Set(AttrId, emit::Numbers({NextId(list)}));
    // Before the slot that holds document vPosition now, or after the last one.
    size_t at = list.children.size();
    if (static_cast<size_t>(vPosition) <= slots.size())
        at = slots[static_cast<size_t>(vPosition - 1)].second;
    else if (!slots.empty())
        at = slots.back().second + 1;
    Node slot{KindBinderSlot, {}, {}, {}};
    slot.children.push_back(std::move(document));
    list.children.insert(list.children.begin() + static_cast<std::ptrdiff_t>(at), std::move(slot));
}

QString DocumentName(const EditableFile& vBinder, int vPosition)
{
    const Node& document = DocumentAt(vBinder, vPosition);
    if (const NodeAttribute* name = document.Find(AttrName); name && name->tagClass == 2)
        return NarrowText(name->value);
    if (const NodeAttribute* wide = document.Find(AttrWideName); wide && wide->tagClass == 2)
        return WideText(wide->value);
    return {};
}

EditableFile ExtractDocument(const EditableFile& vBinder, int vPosition)
{
    const Node& document = DocumentAt(vBinder, vPosition);
    EditableFile out = NewDocument(vBinder.generation);
    std::map<qint64, qint64> moved;
    out.root = Carry(document, vBinder, out, moved);
    // A standalone document goes by its file's name and is nobody's member.
    for (quint32 number : {AttrId, AttrName, AttrWideName})
        out.root.Remove(number);
    return out;
}

void DeleteDocument(EditableFile& vBinder, int vPosition)
{
    const auto [list, index] = SlotAt(vBinder, vPosition);
    list->children.erase(list->children.begin() + static_cast<std::ptrdiff_t>(index));
}

} // namespace xdw
