#pragma once
// Finding one's way in an editable tree, shared by the edits: the documents of a file (the root,
// or those a binder holds), their pages in order, numbers stored as number lists, and subtrees
// carried from one file to another with the entries they refer to.

#include "engine/write/Saver.h"

#include <QString>

#include <initializer_list>
#include <map>
#include <optional>
#include <vector>

namespace xdw::edit {

inline constexpr quint32 KindPageList = 0x1303;
inline constexpr quint32 KindPage = 0x1301;
inline constexpr quint32 KindPlacement = 0x1302;
inline constexpr quint32 KindPageForms = 0x1304;
inline constexpr quint32 KindAttachments = 0x1306;
inline constexpr quint32 KindDocumentList = 0x1401;
inline constexpr quint32 KindBinderSlot = 0x1402;
inline constexpr quint32 AttrId = 3;
inline constexpr quint32 AttrName = 4;
inline constexpr quint32 AttrSize = 5;
inline constexpr quint32 AttrPosition = 52;
inline constexpr quint32 AttrRotation = 61;
inline constexpr quint32 AttrWideName = 70;
inline const QString LastId = QStringLiteral("lastmid");

// Where a page sits: its page list and its index among the list's children.
struct PageSlot {
    Node* document = nullptr;
    Node* list = nullptr;
    size_t index = 0;
    Node& Page() const { return list->children[index]; }
};

// A bad position or page number: the runtime's "argument out of range".
[[noreturn]] void BadArgument(const QString& vReason);

// A file not saved yet: a root of vKind with empty children of vChildren.
EditableFile Unsaved(int vGeneration, quint32 vKind, std::initializer_list<quint32> vChildren);

// The document records: the root of a document, or each C013 of a binder in order.
std::vector<Node*> Documents(Node& vRoot);
// The binder's slots (1402 under 1401), each holding one document; empty for a document.
std::vector<std::pair<Node*, size_t>> BinderSlots(Node& vRoot);
// A document's page list, made when it has none.
Node& PageList(Node& vDocument);
// Every page of the file in order, across a binder's documents.
std::vector<PageSlot> Pages(Node& vRoot);
// The page slot of 1-based vPage; BadArgument outside 1..count.
PageSlot PageAt(Node& vRoot, int vPage);

// A number list attribute's values; empty when absent or not stored as a value.
std::vector<qint64> NumbersOf(const NodeAttribute* vAttribute);
// The next id of a list that counts its children's ids in lastmid (page lists, binders'
// document lists): one past the larger of lastmid and every id below it, recorded as lastmid.
qint64 NextId(Node& vList);

// A copy of vNode whose references name entries of vTo: each entry of vFrom it refers to is
// copied once per vMoved (old number to new), so pages sharing a picture keep sharing it.
Node Carry(const Node& vNode, const EditableFile& vFrom, EditableFile& vTo,
           std::map<qint64, qint64>& vMoved);

} // namespace xdw::edit
