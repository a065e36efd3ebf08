#include "engine/write/Navigate.h"

#include "document/XdwApi.h"
#include "engine/FormatError.h"
#include "engine/Tlv.h"
#include "engine/write/Emit.h"

#include <algorithm>

namespace xdw::edit {

namespace {

// Ids are 32-bit numbers to the vendor's software.
constexpr qint64 MaxId = 0x7FFFFFFF;

Node* ChildOf(Node& vNode, quint32 vKind)
{
    for (Node& child : vNode.children)
        if (child.kind == vKind)
            return &child;
    return nullptr;
}

// The reference's fields with the entry number replaced and the rest as they were.
QByteArray Renumbered(const QByteArray& vReference, qint64 vEntry)
{
    QByteArray out;
    TlvReader reader(vReference);
    while (!reader.AtEnd()) {
        const Element e = reader.Next();
        if (e.tagClass == 2 && e.number == 1)
            out += emit::Tlv(0x81, emit::Int(vEntry));
        else
            out += QByteArrayView(vReference).sliced(e.start, e.end - e.start).toByteArray();
    }
    return out;
}

} // namespace

void BadArgument(const QString& vReason)
{
    throw FormatError{XdwResult::InvalidArg, vReason};
}

EditableFile Unsaved(int vGeneration, quint32 vKind, std::initializer_list<quint32> vChildren)
{
    EditableFile file;
    file.generation = vGeneration;
    file.rootKind = vKind;
    file.root.kind = vKind;
    for (quint32 kind : vChildren)
        file.root.children.push_back(Node{kind, {}, {}, {}});
    return file;
}

std::vector<std::pair<Node*, size_t>> BinderSlots(Node& vRoot)
{
    std::vector<std::pair<Node*, size_t>> slots;
    if (vRoot.kind != KindBinder)
        return slots;
    Node* list = ChildOf(vRoot, KindDocumentList);
    if (!list)
        return slots;
    for (size_t i = 0; i < list->children.size(); ++i)
        if (list->children[i].kind == KindBinderSlot && ChildOf(list->children[i], KindDocument))
            slots.emplace_back(list, i);
    return slots;
}

std::vector<Node*> Documents(Node& vRoot)
{
    if (vRoot.kind == KindDocument)
        return {&vRoot};
    std::vector<Node*> documents;
    for (const auto& [list, index] : BinderSlots(vRoot))
        documents.push_back(ChildOf(list->children[index], KindDocument));
    return documents;
}

Node& PageList(Node& vDocument)
{
    if (Node* list = ChildOf(vDocument, KindPageList))
        return *list;
    // A document keeps its page list first, before the lists of page forms and attachments.
    vDocument.children.insert(vDocument.children.begin(), Node{KindPageList, {}, {}, {}});
    return vDocument.children.front();
}

std::vector<PageSlot> Pages(Node& vRoot)
{
    std::vector<PageSlot> pages;
    for (Node* document : Documents(vRoot)) {
        Node* list = ChildOf(*document, KindPageList);
        if (!list)
            continue;
        for (size_t i = 0; i < list->children.size(); ++i)
            if (list->children[i].kind == KindPage)
                pages.push_back({document, list, i});
    }
    return pages;
}

PageSlot PageAt(Node& vRoot, int vPage)
{
    const std::vector<PageSlot> pages = Pages(vRoot);
    if (vPage < 1 || vPage > static_cast<int>(pages.size()))
        BadArgument(QStringLiteral("page %1 of %2").arg(vPage).arg(pages.size()));
    return pages[static_cast<size_t>(vPage - 1)];
}

std::vector<qint64> NumbersOf(const NodeAttribute* vAttribute)
{
    if (!vAttribute || vAttribute->tagClass != 2)
        return {};
    return NumberList(vAttribute->value);
}

qint64 NextId(Node& vList)
{
    std::vector<qint64> last = NumbersOf(vList.Named(LastId));
    qint64 highest = last.empty() ? 0 : last.front();
    // The list's own count is trusted no further than the ids its children carry.
    for (const Node& child : vList.children) {
        const std::vector<qint64> id = NumbersOf(child.Find(AttrId));
        if (!id.empty())
            highest = std::max(highest, id.front());
        for (const Node& inner : child.children) {
            const std::vector<qint64> innerId = NumbersOf(inner.Find(AttrId));
            if (child.kind == KindBinderSlot && !innerId.empty())
                highest = std::max(highest, innerId.front());
        }
    }
    if (highest >= MaxId)
        Refuse(QStringLiteral("ids run out at %1").arg(highest));
    vList.SetNamed(LastId, NamedNumbers, emit::Numbers({highest + 1}));
    return highest + 1;
}

Node Carry(const Node& vNode, const EditableFile& vFrom, EditableFile& vTo,
           std::map<qint64, qint64>& vMoved)
{
    Node copy = vNode;
    // Every node of the copy, walked with a list rather than by recursion.
    std::vector<Node*> open{&copy};
    while (!open.empty()) {
        Node* node = open.back();
        open.pop_back();
        for (NodeAttribute& a : node->attributes) {
            if (a.tagClass != 3)
                continue;
            const std::optional<QByteArrayView> entry = Fields(a.value).Get(1);
            if (!entry)
                Refuse(QStringLiteral("reference without its entry"));
            const qint64 from = Count(*entry);
            auto moved = vMoved.find(from);
            if (moved == vMoved.end())
                moved = vMoved.emplace(from, vTo.AddEntry(vFrom.EntryBody(from))).first;
            a.value = Renumbered(a.value, moved->second);
        }
        for (Node& child : node->children)
            open.push_back(&child);
    }
    return copy;
}

} // namespace xdw::edit
