#pragma once
// The record tree as something to change and save: each node owns its attributes (bytes, not
// views into a file) and its children, so pages can be inserted, moved between documents,
// rotated or given attributes, and the whole written back as a record list. Attributes this
// program does not understand are kept byte for byte, so a save changes only what was asked.

#include "engine/Records.h"

#include <QByteArray>
#include <QString>
#include <QStringView>
#include <QtGlobal>

#include <vector>

namespace xdw {

class Container;

struct NodeAttribute {
    quint8 tagClass = 2;      // 2 a value, 3 a reference to an entry (81 entry, 82 length)
    bool constructed = false;
    quint32 number = 0;
    QByteArray value;
};

struct Node {
    quint32 kind = 0;
    // In stored order. The declaration list (attribute 51) is not among them: it is rebuilt
    // from `declarations` when written.
    std::vector<NodeAttribute> attributes;
    std::vector<Declaration> declarations;
    std::vector<Node> children;

    const NodeAttribute* Find(quint32 vNumber) const;
    NodeAttribute* Find(quint32 vNumber);
    // Replaces the value of a numbered attribute, or appends it.
    void Set(quint32 vNumber, const QByteArray& vValue);
    void Remove(quint32 vNumber);

    const NodeAttribute* Named(QStringView vName) const;
    const Declaration* Declared(QStringView vName) const;
    // Sets a named attribute, declaring it with the next free number from 2001 when new.
    void SetNamed(const QString& vName, qint64 vType, const QByteArray& vValue);
    // False when the record has no such name.
    bool RemoveNamed(QStringView vName);
};

// The tree of the file's current state. References to entries stay references: the saver
// carries the entries they name. Refuses the file (FormatError) as the reader does.
Node ReadTree(const Container& vContainer);

// The expanded properties block of a tree: one 62 record per node, depth first, each as
// 62 { 80 depth, 62 kind, attributes in order, 9F 33 declarations when any }. A tree nested
// deeper than a reader takes (32) is refused with InvalidArg.
QByteArray WriteRecords(const Node& vRoot);

} // namespace xdw
