#pragma once
// The placement side of annotations, shared by the code that makes them and the code that lists
// and changes them: a placement (1302) holds one shown record, an annotation is a placement whose
// record is not the page's own content, and annotations sit on a page or inside the record of
// another annotation.

#include "engine/write/Tree.h"

#include <QSize>
#include <QtGlobal>

#include <vector>

namespace xdw::annot {

inline constexpr quint32 KindPage = 0x1301;
inline constexpr quint32 KindContent = 0x8010;
inline constexpr quint32 AttrId = 3;
inline constexpr quint32 AttrSize = 5;
inline constexpr quint32 AttrDrawing = 7;
inline constexpr quint32 AttrPosition = 52;
inline constexpr qint64 Reach = 240000;   // 2.4 m: the farthest any position or size goes

// The record a placement shows; refuses a placement without one.
Node& Shown(Node& vPlacement);
const Node* ShownOf(const Node& vPlacement);
bool IsAnnotation(const Node& vPlacement);
// Where annotations held by vParent sit: a page's children, or those of a placement's record.
std::vector<Node>* Holder(Node& vParent);
QSize SizeOf(const Node& vPlacement);
// Sets the size everywhere it is kept: childdim, the record's size and a text's unturned size.
void Resize(Node& vPlacement, QSize vSize);
Node MakePlacement(qint64 vX, qint64 vY, Node vRecord, QSize vSize);

} // namespace xdw::annot
